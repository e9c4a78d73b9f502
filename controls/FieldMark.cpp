#include "controls/FieldMark.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStringList>
#include <QToolTip>

FieldMark::FieldMark(QWidget *control)
    : QWidget(control)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(control->rect());
    control->installEventFilter(this);
    show();
}

FieldMark *FieldMark::of(const QWidget *control)
{
    return control->findChild<FieldMark *>(QString(), Qt::FindDirectChildrenOnly);
}

void FieldMark::set(QWidget *control, Why why, const QString &reason)
{
    FieldMark *mark = of(control);
    if (!mark && reason.isEmpty())
        return;
    if (!mark)
        mark = new FieldMark(control);
    mark->m_reasons.at(static_cast<std::size_t>(why)) = reason;
    mark->setVisible(!mark->text().isEmpty());
}

QString FieldMark::reasons(const QWidget *control)
{
    const FieldMark *const mark = of(control);
    return mark ? mark->text() : QString();
}

QString FieldMark::text() const
{
    QStringList lines(m_reasons.begin(), m_reasons.end());
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

bool FieldMark::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        resize(static_cast<QResizeEvent *>(event)->size());
    if (event->type() != QEvent::ToolTip || text().isEmpty())
        return QWidget::eventFilter(watched, event);
    QStringList lines{text()};
    if (const auto *const field = qobject_cast<const QLineEdit *>(parentWidget()))
        lines << field->text();
    lines << parentWidget()->toolTip();
    lines.removeAll(QString());
    lines.removeDuplicates();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), lines.join(QLatin1Char('\n')), parentWidget());
    return true;
}

void FieldMark::paintEvent(QPaintEvent *)
{
    constexpr int width = 2; // pixels
    QPainter p(this);
    p.setPen(QPen(QColor(210, 30, 0), width));
    p.drawRect(rect().adjusted(1, 1, -1, -1));
}
