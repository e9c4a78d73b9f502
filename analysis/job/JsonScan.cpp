#include "analysis/job/JsonScan.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cstring>

namespace
{

/// Walks through a text that is known to be JSON, but for what it looks for.
class Scan
{
public:
    explicit Scan(const QByteArray &text)
        : m_next(text.constData())
    {
        if (text.startsWith("\xEF\xBB\xBF"))
            m_next += 3;
    }

    QStringList run()
    {
        value(QString());
        return m_found;
    }

private:
    void value(const QString &name);
    void object(const QString &name);
    void list(const QString &name);
    void number(const QString &name);
    QString text();

    void skipBlanks() { m_next += std::strspn(m_next, " \t\r\n"); }
    /// Whether `character` comes next; it is passed then.
    bool take(char character)
    {
        skipBlanks();
        if (*m_next != character)
            return false;
        ++m_next;
        return true;
    }

    const char *m_next;
    QStringList m_found;
};

void Scan::value(const QString &name)
{
    skipBlanks();
    if (*m_next == '{')
        object(name);
    else if (*m_next == '[')
        list(name);
    else if (*m_next == '"')
        text();
    else
        number(name);
}

void Scan::object(const QString &name)
{
    QSet<QString> known, told;
    ++m_next; // the brace
    skipBlanks();
    while (*m_next == '"') {
        const QString key = text();
        const QString keyName = keyWithin(name, key);
        if (known.contains(key) && !told.contains(key)) {
            m_found << keyName + QLatin1String(" is given twice");
            told.insert(key);
        }
        known.insert(key);
        take(':');
        value(keyName);
        take(',');
        skipBlanks();
    }
    take('}');
}

void Scan::list(const QString &name)
{
    ++m_next; // the bracket
    for (int i = 0; *m_next != '\0' && !take(']'); ++i) {
        value(entryOf(name, i));
        take(',');
    }
}

void Scan::number(const QString &name)
{
    const char *const start = m_next;
    m_next += std::max<std::size_t>(std::strcspn(m_next, ",]} \t\r\n"), *m_next == '\0' ? 0 : 1);
    const QString word = QString::fromUtf8(start, static_cast<int>(m_next - start));
    static const QRegularExpression known(
        QStringLiteral("^(true|false|null|-?(0|[1-9][0-9]*)(\\.[0-9]+)?([eE][-+]?[0-9]+)?)$"));
    if (!known.match(word).hasMatch())
        m_found << QStringLiteral("%1: %2 is no number in JSON").arg(name, word);
}

/// The next text, with its escapes resolved.
QString Scan::text()
{
    const char *const start = m_next;
    for (++m_next; *m_next != '\0' && *m_next != '"'; ++m_next) {
        if (*m_next == '\\' && m_next[1] != '\0')
            ++m_next;
    }
    if (*m_next == '"')
        ++m_next;
    const QByteArray token(start, static_cast<int>(m_next - start));
    return QJsonDocument::fromJson('[' + token + ']').array().at(0).toString();
}

} // namespace

QStringList doubtfulJson(const QByteArray &text)
{
    return Scan(text).run();
}

QString keyWithin(const QString &object, const QString &key)
{
    QString name = object.isEmpty() ? key : object + QLatin1Char('.') + key;
    for (QChar &character : name) {
        if (!character.isPrint())
            character = QChar::ReplacementCharacter;
    }
    return name;
}

QString entryOf(const QString &list, int index)
{
    return QStringLiteral("%1[%2]").arg(list).arg(index);
}
