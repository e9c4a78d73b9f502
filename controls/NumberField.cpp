#include "controls/NumberField.h"

#include <QFontMetrics>

namespace
{

/// "9.1753e-5": an exponent needs no leading zero.
QString shortText(double value, char format, int decimals)
{
    QString text = QString::number(value, format, decimals);
    return text.replace(QLatin1String("e-0"), QLatin1String("e-")).replace(QLatin1String("e+0"), QLatin1String("e+"));
}

} // namespace

NumberField::NumberField(QWidget *parent)
    : FittedField(parent)
{
}

FittedField::Fit NumberField::fitted(const QString &text, int width) const
{
    constexpr qreal smallest = 8, step = 0.5; // points
    Fit fit{text, font()};
    const auto isTooWide = [&fit, width] {
        return QFontMetrics(fit.font).horizontalAdvance(fit.text) > width;
    };
    for (qreal size = font().pointSizeF() - step; isTooWide() && size >= smallest; size -= step)
        fit.font.setPointSizeF(size);
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    for (int digits = 5; isNumber && isTooWide() && digits > 0; --digits) {
        fit.text = shortText(value, 'g', digits);
        if (isTooWide()) // "-2.008e-4" for "-0.0002008"
            fit.text = shortText(value, 'e', digits - 1);
    }
    return fit;
}
