#include "controls/NumberTyping.h"

#include "controls/FieldMark.h"
#include "numeric/PlainNumber.h"

#include <QLineEdit>

namespace
{

/// Why a text is no number; empty for a number and for nothing at all.
QString mistakeIn(const QString &text)
{
    const numeric::PlainNumber plain = numeric::plainNumber(text);
    bool isNumber = false;
    plain.text.toDouble(&isNumber);
    if (isNumber || text.isEmpty())
        return QString();
    if (plain.meanings.isEmpty())
        return NumberTyping::tr("This is no number; it counts as 0.");
    return NumberTyping::tr("%1 or %2? It counts as 0.").arg(plain.meanings[0], plain.meanings[1]);
}

} // namespace

NumberTyping::NumberTyping(QLineEdit *field)
    : QValidator(field)
    , m_field(field)
{
    field->setValidator(this);
    connect(field, &QLineEdit::editingFinished, this, &NumberTyping::rewrite);
    connect(field, &QLineEdit::textChanged, this, [this] { check(!m_field->hasFocus()); });
}

QValidator::State NumberTyping::validate(QString &input, int &) const
{
    input = numeric::halfWidth(input);
    return Acceptable;
}

void NumberTyping::rewrite()
{
    const QString plain = numeric::plainNumber(m_field->text()).text;
    if (plain != m_field->text())
        m_field->setText(plain);
    check(true);
}

/// While somebody types, a mark can only go.
void NumberTyping::check(bool isFinished)
{
    const QString mistake = mistakeIn(m_field->text());
    if (isFinished || mistake.isEmpty())
        FieldMark::set(m_field, FieldMark::Why::Text, mistake);
}
