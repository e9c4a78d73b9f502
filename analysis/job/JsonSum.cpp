#include "analysis/job/JsonSum.h"

#include <QCryptographicHash>
#include <QJsonDocument>

QJsonObject withSum(const QJsonObject &object)
{
    // Numbers that are not finite are null from now on, as they are for who reads the file.
    QJsonObject read = QJsonDocument::fromJson(QJsonDocument(object).toJson()).object();
    read.insert("sum", sumOf(read));
    return read;
}

QString sumOf(QJsonObject object)
{
    object.remove(QStringLiteral("sum"));
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}
