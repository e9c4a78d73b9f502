#include "display/MarkLine.h"

#include "controls/Field.h"

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

double MarkLine::fieldNumber() const
{
    return edit ? number(edit) : 0.0;
}

void MarkLine::setNumber(double value)
{
    if (edit)
        showNumber(edit, value);
}
