#include "import/StackHeader.h"

#include "import/ImportText.h"

#include <QVariant>

#include <cstring>

namespace
{

constexpr int deepest = 16;

/// Reads a value into maps (objects), lists, doubles and texts.
class HeaderParser
{
public:
    explicit HeaderParser(const QByteArray &text)
        : m_p(text.constData())
        , m_end(text.constData() + text.size())
    {
    }

    /// Members up to the closing brace, or to the end at the outermost level; false when the text is cut off.
    bool readMembers(int depth, QVariantMap *members);

private:
    void skipBlanks()
    {
        while (m_p != m_end && std::strchr(" \t\r\n;,", *m_p) != nullptr && *m_p != '\0')
            ++m_p;
    }
    bool at(char c) const { return m_p != m_end && *m_p == c; }
    QByteArray readUntil(const char *stops)
    {
        const char *const begin = m_p;
        while (m_p != m_end && (*m_p == '\0' || std::strchr(stops, *m_p) == nullptr))
            ++m_p;
        return QByteArray(begin, static_cast<int>(m_p - begin)).trimmed();
    }
    bool readValue(int depth, QVariant *value);
    bool readList(int depth, QVariantList *list);

    const char *m_p;
    const char *m_end;
};

bool HeaderParser::readMembers(int depth, QVariantMap *members)
{
    for (;;) {
        skipBlanks();
        if (m_p == m_end)
            return depth == 0;
        if (at('}')) {
            ++m_p;
            if (depth > 0)
                return true;
            continue;
        }
        const QByteArray name = readUntil("={}();\n");
        if (!at('=')) {
            if (m_p != m_end && !at('}'))
                ++m_p;
            continue;
        }
        ++m_p;
        QVariant value;
        if (!readValue(depth + 1, &value))
            return false;
        if (!members->contains(QString::fromUtf8(name)))
            members->insert(QString::fromUtf8(name), value);
    }
}

bool HeaderParser::readValue(int depth, QVariant *value)
{
    skipBlanks();
    if (depth > deepest || m_p == m_end)
        return false;
    if (at('{')) {
        ++m_p;
        QVariantMap members;
        const bool good = readMembers(depth, &members);
        *value = members;
        return good;
    }
    if (at('(')) {
        ++m_p;
        QVariantList list;
        const bool good = readList(depth, &list);
        *value = list;
        return good;
    }
    if (at('"')) {
        ++m_p;
        *value = QString::fromUtf8(readUntil("\""));
        if (m_p == m_end)
            return false;
        ++m_p;
        return true;
    }
    const QByteArray word = readUntil(",;(){}");
    bool isNumber = false;
    const double number = word.toDouble(&isNumber);
    *value = isNumber ? QVariant(number) : QVariant(QString::fromUtf8(word));
    return true;
}

bool HeaderParser::readList(int depth, QVariantList *list)
{
    for (;;) {
        skipBlanks();
        if (m_p == m_end)
            return false;
        if (at(')')) {
            ++m_p;
            return true;
        }
        if (at('}')) // belongs to nothing
            return false;
        QVariant value;
        if (!readValue(depth + 1, &value))
            return false;
        list->append(value);
    }
}

/// False, with one sentence, when there are no points, or not as many as announced.
bool takeAxis(const QVariant &value, const char *name, ScanAxis *axis, QString *error)
{
    const QVariantMap members = value.toMap();
    QVariantList points = members.value(QStringLiteral("Points")).toList();
    const double announced = points.isEmpty() ? 0.0 : points.takeFirst().toDouble();
    axis->name = members.value(QStringLiteral("Name")).toString();
    axis->unit = members.value(QStringLiteral("Unit")).toString();
    bool areNumbers = true;
    for (const QVariant &point : qAsConst(points)) {
        areNumbers = areNumbers && point.type() == QVariant::Double;
        axis->points << point.toDouble();
    }
    if (areNumbers && !points.isEmpty() && announced == points.size())
        return true;
    *error = ImportText::tr("the header has no points for its %1, or not as many as it says").arg(QLatin1String(name));
    return false;
}

} // namespace

bool parseStackHeader(const QByteArray &text, StackHeader *header, QString *error)
{
    QVariantMap root;
    if (!HeaderParser(text).readMembers(0, &root)) {
        *error = ImportText::tr("the header is cut off or no header of a stack");
        return false;
    }
    // Some programs close the definition before the axes that belong to it.
    QVariantMap scan = root.value(QStringLiteral("ScanDefinition")).toMap();
    for (auto it = root.constBegin(); it != root.constEnd(); ++it) {
        if (!scan.contains(it.key()))
            scan.insert(it.key(), it.value());
    }
    QVariantMap region = scan;
    for (const QVariant &entry : scan.value(QStringLiteral("Regions")).toList()) {
        if (entry.type() != QVariant::Map)
            continue;
        if (header->regions++ == 0)
            region = entry.toMap();
    }
    return takeAxis(scan.value(QStringLiteral("StackAxis")), "StackAxis", &header->energy, error) &&
           takeAxis(region.value(QStringLiteral("PAxis")), "PAxis", &header->x, error) &&
           takeAxis(region.value(QStringLiteral("QAxis")), "QAxis", &header->y, error);
}
