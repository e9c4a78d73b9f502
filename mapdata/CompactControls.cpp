#include "mapdata/CompactControls.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionFrame>

namespace
{
constexpr int fieldPadding = 8; // pixels that a line edit keeps beside its text
}

void compact::fitButton(QAbstractButton *button)
{
    const QFontMetrics metrics = button->fontMetrics();
    const int frame = 2 * button->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, button);
    button->setFixedWidth(metrics.size(Qt::TextShowMnemonic, button->text()).width() + metrics.averageCharWidth() * 2 +
                          frame);
}

void compact::fitField(QLineEdit *field, const QString &sample)
{
    const int width = field->fontMetrics().horizontalAdvance(sample) + fieldPadding;
    field->setMinimumWidth(width);
    field->setMaximumWidth(2 * width);
}

void compact::showNumber(QLineEdit *field, double value)
{
    field->setText(QString::number(value, 'g', 6));
    field->setCursorPosition(0);
}
