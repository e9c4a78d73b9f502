#pragma once

#include <QString>
#include <QStringList>

namespace numeric
{

/// A number as people type it, made one that programs read.
struct PlainNumber {
    QString text;         ///< as typed where it is no number
    QStringList meanings; ///< "8345" and "8.345": what the text may mean, which is no number therefore; else empty
};

/// Full-width digits, signs, points, commas and letters become plain ones, and a single decimal comma a point. A comma
/// with exactly three digits behind it may have been meant to group them, and stays.
PlainNumber plainNumber(const QString &typed);

/// Only the full-width characters become plain ones; as many characters as before.
QString halfWidth(QString text);

} // namespace numeric
