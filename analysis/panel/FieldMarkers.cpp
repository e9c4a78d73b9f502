#include "analysis/panel/FieldMarkers.h"

#include "display/DispArea.h"

#include <QLineEdit>

FieldMarkers::FieldMarkers(DispArea *area, QObject *parent)
    : QObject(parent)
{
    area->markLines = &m_lines;
    connect(&m_lines, &MarkLines::moving, this, &FieldMarkers::moving);
    connect(&m_lines, &MarkLines::newPos, this, [this] {
        if (m_lines.selected >= 0 && m_lines.selected < m_lines.marks.size())
            emit edited(m_lines.marks.at(m_lines.selected)->edit);
    });
}

void FieldMarkers::clear()
{
    m_lines.clear();
    m_marks.clear();
}

void FieldMarkers::add(QLineEdit *field, int base)
{
    constexpr int vertical = 0;
    m_marks.push_back(std::make_unique<MarkLine>(vertical, field));
    m_marks.back()->relative = base >= 0;
    m_marks.back()->baseIndex = base;
    m_lines.marks.append(m_marks.back().get());
}
