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

} // namespace compact
