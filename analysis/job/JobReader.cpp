#include "analysis/job/JobReader.h"

#include "analysis/job/JsonScan.h"

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
    return keyWithin(m_where, key);
}

bool JobReader::check(bool good, const QString &message)
{
    if (!good)
        m_errors->append(message);
    return good;
}

/// The value of a key; undefined when it is missing, and a mistake when it is not of that type.
QJsonValue JobReader::typed(const QString &key, QJsonValue::Type type, const char *name)
{
    const QJsonValue value = m_object.value(key);
    check(value.isUndefined() || value.type() == type, nameOf(key) + QLatin1String(" must be ") + QLatin1String(name));
    return value;
}

QString JobReader::path(const QString &key)
{
    const QJsonValue value = typed(key, QJsonValue::String, "a text");
    const QString text = value.toString();
    const bool hasControls = std::any_of(text.begin(), text.end(),
                                         [](QChar character) { return character.category() == QChar::Other_Control; });
    check(value != QJsonValue(QString()), nameOf(key) + QLatin1String(" must not be empty"));
    const bool isPath = check(!hasControls, nameOf(key) + QLatin1String(" holds a control character")) &&
                        check(QString::fromUtf8(text.toUtf8()) == text, nameOf(key) + QLatin1String(" is no Unicode"));
    return isPath ? text : QString();
}

double JobReader::number(const QString &key)
{
    return typed(key, QJsonValue::Double, "a number").toDouble();
}

std::optional<std::array<int, 4>> JobReader::rectangle(const QString &key)
{
    const QJsonArray corners = m_object.value(key).toArray();
    std::array<int, 4> rectangle = {};
    bool isGood = corners.size() == 4;
    for (int i = 0; isGood && i < 4; ++i) {
        rectangle[static_cast<std::size_t>(i)] = corners.at(i).toInt(-1); // what is no whole number, too
        isGood = corners.at(i).toInt(-1) >= 0;
    }
    check(isGood || !has(key), nameOf(key) + QLatin1String(" must be four whole numbers from 0, [x0, y0, x1, y1]"));
    return isGood ? std::optional<std::array<int, 4>>(rectangle) : std::nullopt;
}

bool JobReader::truth(const QString &key, bool absent)
{
    return typed(key, QJsonValue::Bool, "true or false").toBool(absent);
}

QJsonObject JobReader::object(const QString &key)
{
    return typed(key, QJsonValue::Object, "an object { }").toObject();
}

QJsonArray JobReader::array(const QString &key, int atMost)
{
    const QJsonArray array = typed(key, QJsonValue::Array, "a list [ ]").toArray();
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
