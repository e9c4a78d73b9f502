#pragma once

class QAbstractButton;
class QLineEdit;
class QString;

/// Sizes for rows of many controls: as narrow as their texts allow, whatever the language and the font.
namespace compact
{

/// As wide as the button's text needs, without the style's generous least width.
void fitButton(QAbstractButton *button);

/// Wide enough for the text `least`; where the layout has room, up to the width of the text `most`.
void fitField(QLineEdit *field, const QString &least, const QString &most);

/// Shows a number in a field: general format, six significant digits, from its first character on.
void showNumber(QLineEdit *field, double value);

} // namespace compact
