#include "controls/CompactControls.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QString>

namespace
{
constexpr int fieldPadding = 10; // pixels that a line edit keeps beside its text
constexpr int buttonPadding = 10;
} // namespace

void compact::fitButton(QAbstractButton *button)
{
    const QFontMetrics metrics = button->fontMetrics();
    button->setFixedWidth(metrics.size(Qt::TextShowMnemonic, button->text()).width() + buttonPadding);
    button->setMaximumHeight(QLineEdit().sizeHint().height());
}

void compact::fitField(QLineEdit *field, const QString &least, const QString &most)
{
    const QFontMetrics metrics = field->fontMetrics();
    field->setMinimumWidth(metrics.horizontalAdvance(least) + fieldPadding);
    field->setMaximumWidth(metrics.horizontalAdvance(most) + fieldPadding);
}

void compact::fitColumn(QLineEdit *field, const QLabel *title, const QString &least)
{
    const int text = field->fontMetrics().horizontalAdvance(least) + fieldPadding;
    field->setFixedWidth(qMax(text, title->sizeHint().width()));
}
