#pragma once

class QAbstractButton;
class QLabel;
class QLineEdit;
class QString;

/// Sizes for rows of many controls: as narrow as their texts allow, whatever the language and the font.
namespace compact
{

/// As wide as the button's text needs, without the style's generous least width, and no higher than a field.
void fitButton(QAbstractButton *button);

/// Wide enough for the text `least`; where the layout has room, up to the width of the text `most`.
void fitField(QLineEdit *field, const QString &least, const QString &most);

/// Of one width in every row, with or without the title above it: wide enough for the title and the text `least`.
void fitColumn(QLineEdit *field, const QLabel *title, const QString &least);

} // namespace compact
