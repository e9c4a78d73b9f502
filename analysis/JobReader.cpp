#include "analysis/JobReader.h"

#include <QJsonArray>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace
{

/// Levenshtein, Soviet Physics Doklady 10 (1966) 707, in lower case.
int distance(const QString &from, const QString &to)
{
    QVector<int> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < from.size(); ++i) {
        int diagonal = row[0];
        row[0] = i + 1;
        for (int j = 0; j < to.size(); ++j) {
            const int changed = diagonal + (from[i].toLower() == to[j].toLower() ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.last();
}

} // namespace

QString nearestWord(const QString &word, const QStringList &known)
{
    return *std::min_element(known.begin(), known.end(), [&word](const QString &l, const QString &r) {
        return distance(word, l) < distance(word, r);
    });
}

QString unknownKey(const QString &name, const QString &key, const QStringList &known)
{
    return QStringLiteral("%1 is no known key; did you mean \"%2\"?").arg(name, nearestWord(key, known));
}

JobReader::JobReader(const QJsonObject &object, const QString &where, QStringList *errors)
    : m_object(object)
    , m_where(where)
    , m_errors(errors)
{
}

QString JobReader::nameOf(const QString &key) const
{
    return m_where.isEmpty() ? key : m_where + QLatin1Char('.') + key;
}

bool JobReader::check(bool good, const QString &message)
{
    if (!good)
        m_errors->append(message);
    return good;
}

QString JobReader::text(const QString &key)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.isString(), nameOf(key) + QLatin1String(" must be a text"));
    check(value != QJsonValue(QString()), nameOf(key) + QLatin1String(" must not be empty"));
    return value.toString();
}

double JobReader::number(const QString &key)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.isDouble(), nameOf(key) + QLatin1String(" must be a number"));
    return value.toDouble();
}

bool JobReader::truth(const QString &key, bool absent)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.isBool(), nameOf(key) + QLatin1String(" must be true or false"));
    return value.toBool(absent);
}

QJsonObject JobReader::object(const QString &key)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.isObject(), nameOf(key) + QLatin1String(" must be an object { }"));
    return value.toObject();
}

QJsonArray JobReader::array(const QString &key, int atMost)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.isArray(), nameOf(key) + QLatin1String(" must be a list [ ]"));
    const QJsonArray array = value.toArray();
    check(array.size() <= atMost, QStringLiteral("%1 has %2 entries where at most %3 are possible")
                                      .arg(nameOf(key), QString::number(array.size()), QString::number(atMost)));
    return array;
}

void JobReader::require(const QStringList &keys)
{
    for (const QString &key : keys)
        check(m_object.contains(key), nameOf(key) + QLatin1String(" is missing"));
}

void JobReader::allowOnly(const QStringList &keys)
{
    for (const QString &key : m_object.keys())
        check(keys.contains(key), unknownKey(nameOf(key), key, keys));
}
