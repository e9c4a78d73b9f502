#include "display/Histgram.h"

#include <QCheckBox>
#include <QLineEdit>

Histgram::Histgram(QObject *parent)
    : QObject(parent)
{
}

void Histgram::setUp()
{
    if (!minEdit || !maxEdit || !numEdit)
        return;
    setBoxes(minEdit->text().toDouble(), maxEdit->text().toDouble(), numEdit->text().toDouble());
    checkState = check && check->isChecked();
}
