#include "import/XdiReader.h"

#include "import/ImportText.h"
#include "numeric/TextScanner.h"

#include <QRegularExpression>

namespace
{

struct FieldForm {
    const char *name;
    const char *form; ///< regular expression
    bool isRequired;
};
constexpr FieldForm fieldForms[] = {
    {"element.symbol", "[A-Z][a-z]?", true},
    {"element.edge", "K|L[1-3]?|M[1-5]?|N[1-7]?|O[1-7]?", true},
    {"mono.d_spacing", "[0-9.]+([Ee][+-]?[0-9]+)?( .*)?", true},
    {"scan.start_time", "\\d{4}-\\d\\d-\\d\\d[T ]\\d\\d:\\d\\d(:\\d\\d.*)?", false},
    {"facility.energy", "[0-9.]+ *[kMG]?eV", false},
};

class XdiParser
{
public:
    explicit XdiParser(XdiFile *file)
        : m_file(file)
    {
    }

    bool readLine(std::string_view line, QString *error);
    void finish();

private:
    enum class Place { Versions, Fields, Comments, Labels, Numbers };

    bool readHeaderLine(const QString &text, QString *error);
    bool readField(const QString &text, QString *error);
    void checkFields();

    XdiFile *m_file;
    Place m_place = Place::Versions;
    bool m_hasDashes = false;
    int m_number = 0;
    QString m_labels; ///< the last header line
};

bool XdiParser::readLine(std::string_view line, QString *error)
{
    ++m_number;
    std::string_view token;
    if (!numeric::TokenScanner(line).next(&token))
        return true;
    if (token.front() == '#') {
        if (m_place == Place::Numbers)
            return true;
        if (line.size() > 65536) {
            *error = ImportText::tr("line %1 of the header is too long").arg(m_number);
            return false;
        }
        QString text = numeric::simplifiedLine(line);
        while (text.startsWith(QLatin1Char('#')))
            text.remove(0, 1);
        return readHeaderLine(text.trimmed(), error);
    }
    m_place = Place::Numbers;
    return addTableLine(line, m_number, ' ', &m_file->table, error);
}

bool XdiParser::readHeaderLine(const QString &text, QString *error)
{
    static const QRegularExpression dashes(QStringLiteral("\\A-{2,}\\z"));
    static const QRegularExpression slashes(QStringLiteral("\\A/{3,}\\z"));
    if (m_place == Place::Versions) {
        m_file->writers = text.split(QLatin1Char(' '));
        m_file->version = m_file->writers.takeFirst().section(QLatin1Char('/'), 1);
        m_place = Place::Fields;
    } else if (dashes.match(text).hasMatch()) {
        m_place = Place::Labels;
        m_hasDashes = true;
    } else if (m_place == Place::Fields && slashes.match(text).hasMatch()) {
        m_place = Place::Comments;
    } else if (m_place == Place::Fields && !text.isEmpty() && text.contains(QLatin1Char(':'))) {
        return readField(text, error);
    } else if (m_place == Place::Comments) {
        m_file->comments << text;
    }
    m_labels = text;
    return true;
}

bool XdiParser::readField(const QString &text, QString *error)
{
    static const QRegularExpression name(QStringLiteral("\\A([A-Za-z][A-Za-z0-9_-]*)\\.([A-Za-z0-9_-]+)\\z"));
    const int colon = text.indexOf(QLatin1Char(':'));
    const QRegularExpressionMatch match = name.match(text.left(colon).trimmed());
    const QString value = text.mid(colon + 1).trimmed();
    if (!match.hasMatch())
        *error = ImportText::tr("\"%1\" in line %2 is no field of the form Family.key: value")
                     .arg(text.left(40))
                     .arg(m_number);
    else if (value.isEmpty())
        *error = ImportText::tr("the field %1 in line %2 has no value").arg(match.captured(0)).arg(m_number);
    else
        m_file->fields.insert(match.captured(0).toLower(), value);
    return match.hasMatch() && !value.isEmpty();
}

/// Names the columns: each by its own field, else all by the line above the numbers when it has as many words.
void XdiParser::finish()
{
    const int columns = m_file->table.columns.size();
    const QStringList words = m_labels.split(QLatin1Char(' '));
    for (int i = 0; i < columns; ++i) {
        const QString name = QStringLiteral("Column.%1").arg(i + 1);
        const QString field = m_file->fields.value(name.toLower());
        if (field.isEmpty()) {
            m_file->table.labels << (words.size() == columns ? words[i] : QString());
            m_file->table.units << QString();
            m_file->warnings << ImportText::tr("the field %1 is missing").arg(name);
            continue;
        }
        m_file->table.labels << field.section(QLatin1Char(' '), 0, 0);
        m_file->table.units << field.section(QLatin1Char(' '), 1, 1);
    }
    checkFields();
}

void XdiParser::checkFields()
{
    for (const FieldForm &field : fieldForms) {
        const QString value = m_file->fields.value(QLatin1String(field.name));
        const QRegularExpression form(QStringLiteral("\\A(?:%1)\\z").arg(QLatin1String(field.form)));
        if (value.isEmpty() && field.isRequired)
            m_file->warnings << ImportText::tr("the field %1 is missing").arg(QLatin1String(field.name));
        else if (!value.isEmpty() && !form.match(value).hasMatch())
            m_file->warnings << ImportText::tr("the field %1 is \"%2\"").arg(QLatin1String(field.name), value.left(40));
    }
    if (!m_hasDashes)
        m_file->warnings << ImportText::tr("there is no line of dashes below the header");
}

} // namespace

bool isXdi(const QByteArray &text)
{
    QByteArray start = text.left(64);
    if (!start.startsWith('#'))
        return false;
    while (start.startsWith('#') || start.startsWith(' ') || start.startsWith('\t'))
        start.remove(0, 1);
    return start.startsWith("XDI/");
}

bool parseXdi(const QByteArray &text, XdiFile *file, QString *error)
{
    QByteArray lineFeeds;
    if (text.contains('\r') && !text.contains('\n')) {
        lineFeeds = text;
        lineFeeds.replace('\r', '\n');
    }
    const QByteArray &lines = lineFeeds.isEmpty() ? text : lineFeeds;
    numeric::LineScanner scanner({lines.constData(), static_cast<std::size_t>(lines.size())});
    XdiParser parser(file);
    std::string_view line;
    while (scanner.next(&line)) {
        if (!parser.readLine(line, error))
            return false;
    }
    parser.finish();
    if (!file->table.columns.isEmpty())
        return true;
    *error = ImportText::tr("there are no numbers below the header");
    return false;
}

bool spectrumOfXdi(const XdiFile &file, const QString &wanted, ImportedSpectrum *spectrum, QString *error)
{
    const double spacing =
        file.fields.value(QStringLiteral("mono.d_spacing")).section(QLatin1Char(' '), 0, 0).toDouble();
    spectrum->notes << file.warnings;
    spectrum->label = file.fields.value(QStringLiteral("sample.name"));
    return spectrumOf(file.table, wanted, spacing, spectrum, error);
}
