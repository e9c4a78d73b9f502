#include "numeric/PlainNumber.h"

#include <QRegularExpression>

namespace numeric
{

QString halfWidth(QString text)
{
    constexpr ushort first = 0xFF01, last = 0xFF5E, offset = 0xFEE0; // the full-width forms of ASCII
    constexpr ushort minus = 0x2212, blank = 0x3000;
    for (QChar &c : text) {
        if (c.unicode() >= first && c.unicode() <= last)
            c = QChar(c.unicode() - offset);
        else if (c.unicode() == minus)
            c = QLatin1Char('-');
        else if (c.unicode() == blank)
            c = QLatin1Char(' ');
    }
    return text;
}

PlainNumber plainNumber(const QString &typed)
{
    static const QRegularExpression withComma(QStringLiteral(R"(^\s*([+-]?\d*),(\d*)([eE][+-]?\d+)?\s*$)"));
    const QString text = halfWidth(typed);
    const QRegularExpressionMatch match = withComma.match(text);
    if (!match.hasMatch())
        return {text, {}};
    const QString exponent = match.captured(3);
    const QString number = match.captured(1) + QLatin1Char('.') + match.captured(2) + exponent;
    if (match.capturedLength(2) != 3)
        return {number, {}};
    return {text, {match.captured(1) + match.captured(2) + exponent, number}};
}

} // namespace numeric
