#include "import/AthenaReader.h"

#include "import/ImportText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstring>

namespace
{

/// Walks through the Perl of a project: assignments of one list or one word, and the end of a record.
class PerlScanner
{
public:
    explicit PerlScanner(const QByteArray &text)
        : m_p(text.constData())
        , m_end(text.constData() + text.size())
    {
    }

    enum class Statement { List, Word, Record, End, CutOff };

    /// The next statement that is one of these; all else is skipped. A list's values, or the one word, are in `values`.
    Statement next(QByteArray *name, QVector<QByteArray> *values)
    {
        while (m_p != m_end) {
            skipBlanks();
            if (m_p == m_end)
                break;
            if (startsWith("[record]")) {
                m_p += std::strlen("[record]");
                return Statement::Record;
            }
            if ((*m_p == '@' || *m_p == '$') && readAssignment(name, values))
                return m_isCutOff ? Statement::CutOff : m_isList ? Statement::List : Statement::Word;
            skipLine();
        }
        return Statement::End;
    }

private:
    bool startsWith(const char *word) const
    {
        const auto length = static_cast<std::ptrdiff_t>(std::strlen(word));
        return m_end - m_p >= length && std::strncmp(m_p, word, static_cast<std::size_t>(length)) == 0;
    }
    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
    static bool isWordCharacter(char c)
    {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '.' ||
               c == '+' || c == '-';
    }
    void skipBlanks()
    {
        while (m_p != m_end && isBlank(*m_p))
            ++m_p;
    }
    void skipLine()
    {
        while (m_p != m_end && *m_p != '\n')
            ++m_p;
    }
    QByteArray readWord()
    {
        const char *const begin = m_p;
        while (m_p != m_end && isWordCharacter(*m_p))
            ++m_p;
        return QByteArray(begin, static_cast<int>(m_p - begin));
    }

    bool readAssignment(QByteArray *name, QVector<QByteArray> *values);
    bool readValue(QByteArray *value);
    bool readList(QVector<QByteArray> *values);

    const char *m_p;
    const char *m_end;
    bool m_isList = false;
    bool m_isCutOff = false;
};

/// "@x = ( ... )" or "$name = ..."; false for a statement of another form.
bool PerlScanner::readAssignment(QByteArray *name, QVector<QByteArray> *values)
{
    m_isList = *m_p++ == '@';
    m_isCutOff = false;
    *name = readWord();
    skipBlanks();
    if (m_p == m_end || *m_p != '=')
        return false;
    ++m_p;
    skipBlanks();
    values->clear();
    if (!m_isList) {
        QByteArray value;
        if (!readValue(&value))
            return false;
        values->append(value);
        return true;
    }
    if (m_p == m_end || *m_p != '(')
        return false;
    ++m_p;
    return readList(values);
}

/// 'text' with backslashes before quotes, "text", or a bare word; false for anything else.
bool PerlScanner::readValue(QByteArray *value)
{
    value->clear();
    if (m_p == m_end)
        return false;
    const char quote = *m_p;
    if (quote != '\'' && quote != '"') {
        *value = readWord();
        return !value->isEmpty();
    }
    for (++m_p; m_p != m_end && *m_p != quote; ++m_p) {
        if (*m_p == '\\' && m_end - m_p > 1 && (m_p[1] == quote || m_p[1] == '\\'))
            ++m_p;
        value->append(*m_p);
    }
    if (m_p == m_end) {
        m_isCutOff = true;
        return true;
    }
    ++m_p;
    return true;
}

/// The values up to the closing bracket; what is no value (a nested structure) ends the list.
bool PerlScanner::readList(QVector<QByteArray> *values)
{
    for (;;) {
        skipBlanks();
        if (m_p == m_end) {
            m_isCutOff = true;
            return true;
        }
        if (*m_p == ')') {
            ++m_p;
            return true;
        }
        if (*m_p == ',' || *m_p == '=' || *m_p == '>') {
            ++m_p;
            continue;
        }
        QByteArray value;
        if (!readValue(&value))
            return true;
        values->append(value);
    }
}

void takeNumbers(const QVector<QByteArray> &texts, QVector<double> *numbers, AthenaGroup *group)
{
    numbers->clear();
    for (const QByteArray &text : texts) {
        bool good = false;
        numbers->append(text.toDouble(&good));
        group->hasBadNumber = group->hasBadNumber || !good;
    }
}

bool parsePerl(const QByteArray &text, QVector<AthenaGroup> *groups, QString *error)
{
    PerlScanner scanner(text);
    AthenaGroup group;
    bool isOpen = false;
    QByteArray name;
    QVector<QByteArray> values;
    for (;;) {
        const PerlScanner::Statement statement = scanner.next(&name, &values);
        if (statement == PerlScanner::Statement::CutOff || (statement == PerlScanner::Statement::End && isOpen)) {
            *error = ImportText::tr("the project ends within a group: it is cut off");
            return false;
        }
        if (statement == PerlScanner::Statement::End)
            return true;
        if (statement == PerlScanner::Statement::Record) {
            if (isOpen)
                groups->append(group);
            group = AthenaGroup();
            isOpen = false;
        } else if (name == "old_group") {
            group.name = QString::fromUtf8(values.first());
            isOpen = true;
        } else if (isOpen && name == "args") {
            for (int i = 0; i + 1 < values.size(); i += 2)
                group.args.insert(QString::fromUtf8(values[i]), QString::fromUtf8(values[i + 1]));
        } else if (isOpen && (name == "x" || name == "y")) {
            takeNumbers(values, name == "x" ? &group.x : &group.y, &group);
        }
    }
}

QVector<double> numbersOf(const QJsonValue &value, AthenaGroup *group)
{
    QVector<double> numbers;
    const QJsonArray array = value.toArray();
    numbers.reserve(array.size());
    for (const QJsonValue &entry : array) {
        bool good = entry.isDouble();
        numbers.append(good ? entry.toDouble() : entry.toString().toDouble(&good));
        group->hasBadNumber = group->hasBadNumber || !good;
    }
    return numbers;
}

bool parseJson(const QByteArray &text, QVector<AthenaGroup> *groups, QString *error)
{
    QJsonParseError outcome;
    const QJsonObject root = QJsonDocument::fromJson(text, &outcome).object();
    if (outcome.error != QJsonParseError::NoError) {
        *error = ImportText::tr("the project is no whole JSON (%1)").arg(outcome.errorString());
        return false;
    }
    QStringList names;
    for (const QJsonValue &name : root.value(QLatin1String("_____order")).toArray())
        names << name.toString();
    if (names.isEmpty())
        names = root.keys();
    for (const QString &name : qAsConst(names)) {
        const QJsonObject entry = root.value(name).toObject();
        if (name.startsWith(QLatin1String("_____")) || entry.isEmpty())
            continue;
        AthenaGroup group;
        group.name = name;
        const QJsonObject args = entry.value(QLatin1String("args")).toObject();
        for (auto it = args.begin(); it != args.end(); ++it)
            group.args.insert(it.key(), it.value().toVariant().toString());
        group.x = numbersOf(entry.value(QLatin1String("x")), &group);
        group.y = numbersOf(entry.value(QLatin1String("y")), &group);
        groups->append(group);
    }
    return true;
}

QString labelOf(const AthenaGroup &group)
{
    const QString label = group.args.value(QStringLiteral("label"));
    return label.isEmpty() ? group.name : label;
}

bool isTrue(const AthenaGroup &group, const char *key)
{
    const QString value = group.args.value(QLatin1String(key));
    return !value.isEmpty() && value != QLatin1String("0") && value != QLatin1String("false");
}

/// Whether a group is a spectrum over the energy: chi(k), for example, is none.
bool isSpectrum(const AthenaGroup &group)
{
    const QString type = group.args.value(QStringLiteral("datatype"));
    return !type.startsWith(QLatin1String("chi")) && !isTrue(group, "is_chi") && !group.x.isEmpty();
}

bool toSpectrum(const AthenaGroup &group, ImportedSpectrum *spectrum, QString *error)
{
    spectrum->label = labelOf(group);
    if (group.x.size() != group.y.size() || group.x.isEmpty() || group.hasBadNumber) {
        *error = ImportText::tr("the group \"%1\" has %2 energies and %3 values, or some that are no numbers")
                     .arg(spectrum->label)
                     .arg(group.x.size())
                     .arg(group.y.size());
        return false;
    }
    const bool isNormalised =
        group.args.value(QStringLiteral("datatype")).startsWith(QLatin1String("norm")) || isTrue(group, "is_nor");
    spectrum->kind = isNormalised ? ImportedSpectrum::Kind::Ratio : ImportedSpectrum::Kind::Absorption;
    spectrum->source = isNormalised ? QStringLiteral("normalised mu") : QStringLiteral("mu");
    spectrum->energy = group.x;
    spectrum->mu = group.y;
    const double shift = group.args.value(QStringLiteral("bkg_eshift")).toDouble();
    if (std::isfinite(shift) && shift != 0.0) {
        for (double &energy : spectrum->energy)
            energy += shift;
        spectrum->notes << ImportText::tr("the energy shift of its group, %1 eV, was added").arg(shift);
    }
    return true;
}

} // namespace

bool isAthenaProject(const QByteArray &text)
{
    const QByteArray start = text.left(4096);
    const bool isJson = start.trimmed().startsWith('{');
    return start.contains("Athena project file") || start.contains("$old_group") ||
           (isJson && start.contains("\"_____"));
}

bool parseAthena(const QByteArray &text, QVector<AthenaGroup> *groups, QString *error)
{
    groups->clear();
    const bool isJson = text.left(4096).trimmed().startsWith('{');
    if (!(isJson ? parseJson(text, groups, error) : parsePerl(text, groups, error)))
        return false;
    if (!groups->isEmpty())
        return true;
    *error = ImportText::tr("the project has no groups");
    return false;
}

bool spectraOfAthena(const QVector<AthenaGroup> &groups, const QString &wanted, QVector<ImportedSpectrum> *spectra,
                     QString *error)
{
    QStringList labels;
    bool isFound = false;
    for (const AthenaGroup &group : groups) {
        labels << labelOf(group);
        if (wanted.isEmpty() ? !isSpectrum(group) : labelOf(group) != wanted && group.name != wanted)
            continue;
        ImportedSpectrum spectrum;
        if (!toSpectrum(group, &spectrum, error))
            return false;
        spectra->append(spectrum);
        isFound = true;
    }
    if (isFound)
        return true;
    *error = wanted.isEmpty() ? ImportText::tr("none of the groups of the project is a spectrum")
                              : ImportText::tr("there is no group \"%1\" (there are %2)")
                                    .arg(wanted, labels.mid(0, 20).join(QLatin1String(", ")));
    return false;
}
