#include "analysis/panel/StaleMark.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

namespace
{

QIcon dot()
{
    constexpr int size = 10; // pixels
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(230, 120, 0));
    painter.drawEllipse(1, 1, size - 2, size - 2);
    painter.end();
    return QIcon(picture);
}

} // namespace

StaleMark::StaleMark(QAbstractButton *button)
    : m_button(button)
    , m_toolTip(button->toolTip())
{
}

void StaleMark::show(const QStringList &changes)
{
    if (changes == m_changes)
        return;
    m_changes = changes;
    m_button->setIcon(changes.isEmpty() ? QIcon() : dot());
    const QString text = QCoreApplication::translate("FourPs", "Changed since the map was calculated: %1")
                             .arg(changes.join(QStringLiteral("; ")));
    m_button->setToolTip(changes.isEmpty() ? m_toolTip : text + QLatin1Char('\n') + m_toolTip);
}
