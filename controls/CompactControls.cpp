#include "controls/CompactControls.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QLineEdit>
#include <QString>

namespace
{
constexpr int fieldPadding = 10; // pixels that a line edit keeps beside its text
constexpr int buttonPadding = 14;
} // namespace

void compact::fitButton(QAbstractButton *button)
{
    const QFontMetrics metrics = button->fontMetrics();
    button->setFixedWidth(metrics.size(Qt::TextShowMnemonic, button->text()).width() + buttonPadding);
}

void compact::fitField(QLineEdit *field, const QString &least, const QString &most)
{
    const QFontMetrics metrics = field->fontMetrics();
    field->setMinimumWidth(metrics.horizontalAdvance(least) + fieldPadding);
    field->setMaximumWidth(metrics.horizontalAdvance(most) + fieldPadding);
}
