#include "display/MarkLine.h"

#include <QLineEdit>

MarkLine::MarkLine(int kindOfLine, QLineEdit *field, QObject *parent)
    : QObject(parent)
    , edit(field ? field : new QLineEdit)
    , kind(kindOfLine)
    , m_ownsEdit(!field)
{
}

MarkLine::~MarkLine()
{
    if (m_ownsEdit)
        delete edit;
}

double MarkLine::number() const
{
    return edit ? edit->text().toDouble() : 0.0;
}

void MarkLine::setNumber(double value)
{
    if (!edit)
        return;
    edit->setText(QString::number(value, 'g', 6));
    edit->setCursorPosition(0);
}
