#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// Takes typed values out of one JSON object of a job and notes every mistake: a missing or unknown key, or a value of
/// the wrong type, which it replaces by a default.
class JobReader
{
public:
    /// `where` names the object in messages, for example "references[0]"; `errors` collects the mistakes.
    JobReader(const QJsonObject &object, const QString &where, QStringList *errors);

    bool has(const QString &key) const { return m_object.contains(key); }
    QString path(const QString &key); ///< of a file, or a name: not empty where the key is given
    double number(const QString &key);
    /// Columns and rows of two corners, [x0, y0, x1, y1]; none where the key is missing or the value wrong.
    std::optional<std::array<int, 4>> rectangle(const QString &key);
    bool truth(const QString &key, bool absent);
    QJsonObject object(const QString &key);
    QJsonArray array(const QString &key, int atMost);

    /// A mistake when one of these keys is missing.
    void require(const QStringList &keys);
    /// A mistake for each key other than these.
    void allowOnly(const QStringList &keys);

    /// The name of a key in messages: where.key.
    QString nameOf(const QString &key) const;

private:
    bool check(bool good, const QString &message);
    QJsonValue typed(const QString &key, QJsonValue::Type type, const char *name);

    QJsonObject m_object;
    QString m_where;
    QStringList *m_errors;
};

/// The entry of `known` that takes the fewest changed letters to reach from `word`.
QString nearestWord(const QString &word, const QStringList &known);

/// The sentence about a key that nobody knows: "settings.EdgeeE is no known key; did you mean "EdgeE"?"
QString unknownKey(const QString &name, const QString &key, const QStringList &known);
