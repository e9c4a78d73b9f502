#include "import/ColumnTable.h"

#include "import/ImportText.h"
#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace
{

using Kind = ImportedSpectrum::Kind;

/// Walks through the cells of a line: separated by one `separator` each, or by white space where that is ' '.
class CellScanner
{
public:
    CellScanner(std::string_view line, char separator)
        : m_rest(line)
        , m_tokens(line)
        , m_separator(separator)
    {
    }

    bool next(std::string_view *cell)
    {
        if (m_separator == ' ')
            return m_tokens.next(cell);
        if (m_atEnd)
            return false;
        const std::size_t end = m_rest.find(m_separator);
        m_atEnd = end == std::string_view::npos;
        *cell = trimmed(m_rest.substr(0, end));
        m_rest.remove_prefix(m_atEnd ? m_rest.size() : end + 1);
        return !m_atEnd || !cell->empty(); // a separator at the end of a line stands before nothing
    }

private:
    static std::string_view trimmed(std::string_view cell)
    {
        const auto isBlank = [](char c) {
            return c == ' ' || c == '\t' || c == '\r' || c == '"';
        };
        while (!cell.empty() && isBlank(cell.front()))
            cell.remove_prefix(1);
        while (!cell.empty() && isBlank(cell.back()))
            cell.remove_suffix(1);
        return cell;
    }

    std::string_view m_rest;
    numeric::TokenScanner m_tokens;
    char m_separator;
    bool m_atEnd = false;
};

bool toNumber(std::string_view cell, double *number)
{
    const char *p = cell.data();
    if (numeric::readPlainDecimal(p, cell.data() + cell.size(), number) && p == cell.data() + cell.size())
        return true;
    bool good = false;
    *number = QByteArray::fromRawData(cell.data(), static_cast<int>(cell.size())).toDouble(&good);
    return good;
}

QString shortened(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(std::min<std::size_t>(cell.size(), 40)));
}

QStringList cellsOf(std::string_view line, char separator)
{
    QStringList cells;
    CellScanner scanner(line, separator);
    std::string_view cell;
    while (scanner.next(&cell) && cells.size() <= mostColumns)
        cells << QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
    return cells;
}

bool isComment(std::string_view line)
{
    std::string_view token;
    return !numeric::TokenScanner(line).next(&token) || QByteArray("#*%;").contains(token.front());
}

/// What separates the cells of a line of numbers.
char separatorOf(std::string_view line)
{
    for (const char candidate : {';', ','}) {
        if (line.find(candidate) != std::string_view::npos)
            return candidate;
    }
    return ' ';
}

bool beginsWithNumber(std::string_view line)
{
    CellScanner scanner(line, separatorOf(line));
    std::string_view cell;
    double number;
    return scanner.next(&cell) && toNumber(cell, &number);
}

/// Takes the words of a line above the numbers as labels, if they are as many; "Energy (keV)" is label and unit.
void label(std::string_view line, char separator, ColumnTable *table)
{
    while (!line.empty() && (QByteArray("#*%;").contains(line.front()) || line.front() == ' '))
        line.remove_prefix(1);
    for (const char candidate : {separator, ' ', ',', '\t'}) {
        const QStringList words = cellsOf(line, candidate);
        if (words.size() != table->columns.size())
            continue;
        static const QRegularExpression withUnit(QStringLiteral("\\A([^(\\[]+?)\\s*[(\\[]([^)\\]]*)[)\\]]\\z"));
        for (const QString &word : words) {
            const QRegularExpressionMatch match = withUnit.match(word);
            table->labels << (match.hasMatch() ? match.captured(1) : word);
            table->units << match.captured(2).trimmed();
        }
        return;
    }
}

/// A decimal comma between columns that commas separate makes two numbers of one: more columns than the line above has
/// names. Prose among the comments has none.
bool hasDecimalCommas(std::string_view above, char separator, const ColumnTable &table, QString *error)
{
    if (separator != ',' || !table.labels.isEmpty())
        return false;
    const QStringList words = cellsOf(above, above.find(',') != std::string_view::npos ? ',' : ' ');
    const int names = words.size();
    static const QRegularExpression first(QStringLiteral("energ|ev\\b|angle|theta"),
                                          QRegularExpression::CaseInsensitiveOption);
    if (names < 2 || names >= table.columns.size() || (isComment(above) && !first.match(words[0]).hasMatch()))
        return false;
    *error = ImportText::tr("%1 names for %2 columns; decimals take a point").arg(names).arg(table.columns.size());
    return true;
}

/// Finds columns by what they are called.
class Columns
{
public:
    explicit Columns(const ColumnTable &table)
        : m_table(table)
    {
    }

    int find(const QStringList &names) const
    {
        for (const QString &name : names) {
            for (int i = 0; i < m_table.columns.size(); ++i) {
                if (label(i).compare(name, Qt::CaseInsensitive) == 0)
                    return i;
            }
        }
        return -1;
    }
    QString label(int i) const { return m_table.labels.value(i); }
    QString unit(int i) const { return m_table.units.value(i); }
    QString name(int i) const { return label(i).isEmpty() ? ImportText::tr("column %1").arg(i + 1) : label(i); }

private:
    const ColumnTable &m_table;
};

/// The energies in eV, from a column of energies or of angles; its index, or -1 with one sentence.
int takeEnergies(const ColumnTable &table, double spacing, ImportedSpectrum *spectrum, QString *error)
{
    const Columns columns(table);
    int at = columns.find({"energy", "e", "ev", "energy_ev"});
    for (int i = 0; at < 0 && i < table.units.size(); ++i) {
        if (QStringList({"ev", "kev"}).contains(table.units[i], Qt::CaseInsensitive))
            at = i;
    }
    const int angle = at < 0 ? columns.find({"angle", "theta"}) : -1;
    if (at < 0 && angle < 0) {
        if (!columns.label(0).isEmpty() && !columns.unit(0).isEmpty()) {
            *error = ImportText::tr("no column is an energy or an angle (the first is \"%1\" in %2)")
                         .arg(columns.label(0), columns.unit(0));
            return -1;
        }
        at = 0; // a text without labels
    }
    const QString unit = columns.unit(at < 0 ? angle : at);
    if (at >= 0 && !unit.isEmpty() && !QStringList({"ev", "kev"}).contains(unit, Qt::CaseInsensitive)) {
        *error = ImportText::tr("the energies are in %1, not in eV or keV").arg(unit);
        return -1;
    }
    if (at >= 0) {
        const QVector<double> &values = table.columns[at];
        const bool isSmall =
            unit.isEmpty() && std::all_of(values.begin(), values.end(), [](double e) { return e < 100.0; });
        const double factor = isSmall || unit.compare(QLatin1String("keV"), Qt::CaseInsensitive) == 0 ? 1000.0 : 1.0;
        for (const double value : values)
            spectrum->energy << value * factor;
        if (isSmall)
            spectrum->notes << ImportText::tr("the energies are below 100 and were taken for keV");
        return at;
    }
    if (!(spacing > 0.0)) {
        *error = ImportText::tr("there are angles but no spacing of the crystal (Mono.d_spacing), so no energies");
        return -1;
    }
    const double toRadians = unit.startsWith(QLatin1String("rad"), Qt::CaseInsensitive) ? 1.0 : std::acos(-1.0) / 180.0;
    for (const double value : table.columns[angle])
        spectrum->energy << hcEvAngstrom / (2.0 * spacing * std::sin(value * toRadians)); // Bragg's law
    return angle;
}

/// Both intensities of an absorption must be positive.
bool arePositive(const QVector<double> &values, const QString &name, QString *error)
{
    const bool good = std::all_of(values.begin(), values.end(), [](double value) { return value > 0.0; });
    if (!good)
        *error = ImportText::tr("%1 is zero or negative at some energy").arg(name);
    return good;
}

/// ln(i0 / i) or i / i0.
bool fromIntensities(const ColumnTable &table, int i0, int i, Kind kind, ImportedSpectrum *spectrum, QString *error)
{
    const Columns columns(table);
    const QVector<double> &incident = table.columns[i0];
    const QVector<double> &measured = table.columns[i];
    spectrum->kind = kind;
    const bool isCounts = kind == Kind::Counts;
    const QString form = isCounts ? QStringLiteral("ln(%1 / %2)") : QStringLiteral("%2 / %1");
    spectrum->source = form.arg(columns.name(i0), columns.name(i));
    if (!arePositive(incident, columns.name(i0), error) || (isCounts && !arePositive(measured, columns.name(i), error)))
        return false;
    for (int k = 0; k < incident.size(); ++k)
        spectrum->mu << (isCounts ? std::log(incident[k] / measured[k]) : measured[k] / incident[k]);
    if (isCounts)
        spectrum->incident = incident;
    return true;
}

const QStringList transmissionNames = {"mutrans", "mu", "xmu", "mux", "absorption", "absorbance", "od"};
const QStringList normalisedNames = {"normtrans", "norm", "flat", "normfluor", "normalized", "normalised"};
const QStringList fluorescenceNames = {"mufluor", "muf"};
const QStringList transmittedNames = {"itrans", "i1", "it"};
const QStringList fluorescenceCounts = {"ifluor", "if"};

bool contains(const QStringList &names, const QString &name)
{
    return names.contains(name, Qt::CaseInsensitive);
}

/// Three columns or more without names, whose energies go up and down.
bool isImage(const ColumnTable &table, const QVector<double> &energies)
{
    return table.labels.isEmpty() && table.columns.size() > 2 && !std::is_sorted(energies.begin(), energies.end()) &&
           !std::is_sorted(energies.rbegin(), energies.rend());
}

/// The column that is wanted, an index; -1 with one sentence when there is none.
int wantedColumn(const ColumnTable &table, const QString &wanted, QString *error)
{
    const int found = Columns(table).find({wanted});
    const int number = wanted.toInt();
    if (found >= 0 || (number >= 1 && number <= table.columns.size()))
        return found >= 0 ? found : number - 1;
    QStringList named = table.labels;
    named.removeAll(QString());
    *error = ImportText::tr("there is no column \"%1\" (there are %2)")
                 .arg(wanted, named.mid(0, 20).join(QLatin1String(", ")));
    return -1;
}

/// The column that the absorption is in, where nobody chose one; -1: it follows from intensities.
int usualColumn(const ColumnTable &table, int energy, bool hasTransmitted, bool hasFluorescence)
{
    const Columns columns(table);
    int at = columns.find(transmissionNames);
    if (at >= 0 || hasTransmitted)
        return at;
    at = columns.find(normalisedNames + fluorescenceNames);
    return at >= 0 || hasFluorescence ? at : energy == 0 ? 1 : 0;
}

} // namespace

bool addTableLine(std::string_view line, int lineNumber, char separator, ColumnTable *table, QString *error)
{
    const bool isFirst = table->columns.isEmpty();
    CellScanner scanner(line, separator);
    std::string_view cell;
    int count = 0;
    for (; scanner.next(&cell); ++count) {
        double number;
        if (count >= mostColumns) {
            *error = ImportText::tr("line %1 has more than %2 columns").arg(lineNumber).arg(mostColumns);
            return false;
        }
        if (!toNumber(cell, &number)) {
            *error = ImportText::tr("\"%1\" in line %2 is no number").arg(shortened(cell)).arg(lineNumber);
            return false;
        }
        if (isFirst)
            table->columns.append(QVector<double>());
        if (count < table->columns.size())
            table->columns[count].append(number);
    }
    if (count == table->columns.size())
        return true;
    *error = ImportText::tr("line %1 has another number of columns than the lines before").arg(lineNumber);
    return false;
}

bool readTable(const QByteArray &text, ColumnTable *table, QString *error)
{
    numeric::LineScanner lines({text.constData(), static_cast<std::size_t>(text.size())});
    std::string_view line;
    std::string_view above;
    char separator = ' ';
    for (int number = 1; lines.next(&line); ++number) {
        std::string_view token;
        const bool isEmpty = !numeric::TokenScanner(line).next(&token);
        const bool isFirst = table->columns.isEmpty();
        if (isComment(line) || (isFirst && !beginsWithNumber(line))) {
            if (isFirst && !isEmpty && line.size() < 65536)
                above = line;
            continue;
        }
        if (isFirst)
            separator = separatorOf(line);
        if (!addTableLine(line, number, separator, table, error))
            return false;
    }
    label(above, separator, table);
    return !hasDecimalCommas(above, separator, *table, error);
}

bool spectrumOf(const ColumnTable &table, const QString &wanted, double spacing, ImportedSpectrum *spectrum,
                QString *error)
{
    if (table.columns.size() < 2) {
        *error = ImportText::tr("there are fewer than two columns");
        return false;
    }
    const Columns columns(table);
    const int energy = takeEnergies(table, spacing, spectrum, error);
    if (energy < 0)
        return false;
    spectrum->spacing = spacing;
    const int i0 = columns.find({"i0"});
    const int transmitted = columns.find(transmittedNames);
    const int fluorescence = columns.find(fluorescenceCounts);
    const int chosen = wanted.isEmpty()
                           ? usualColumn(table, energy, i0 >= 0 && transmitted >= 0, i0 >= 0 && fluorescence >= 0)
                           : wantedColumn(table, wanted, error);
    if (chosen < 0 && !wanted.isEmpty())
        return false;
    if (chosen == energy) {
        *error = ImportText::tr("%1 is the energy and cannot be the absorption, too").arg(columns.name(energy));
        return false;
    }
    if (isImage(table, spectrum->energy)) {
        *error = ImportText::tr("its first column neither rises nor falls: an image, not a spectrum");
        return false;
    }
    if (i0 >= 0 && (chosen < 0 ? transmitted >= 0 : chosen == transmitted))
        return fromIntensities(table, i0, transmitted, Kind::Counts, spectrum, error);
    if (i0 >= 0 && (chosen < 0 ? fluorescence >= 0 : chosen == fluorescence))
        return fromIntensities(table, i0, fluorescence, Kind::Ratio, spectrum, error);
    const QString name = columns.label(chosen);
    const bool isTransmission = contains(transmissionNames, name) || (name.isEmpty() && table.columns.size() == 2);
    spectrum->kind = isTransmission ? Kind::Absorption : Kind::Ratio;
    spectrum->source = columns.name(chosen);
    spectrum->mu = table.columns[chosen];
    if (chosen == i0)
        spectrum->notes << ImportText::tr("%1 is an incident intensity, not an absorption").arg(spectrum->source);
    if (wanted.isEmpty() && !isTransmission && !contains(normalisedNames + fluorescenceNames, name))
        spectrum->notes
            << ImportText::tr("of its columns %1 was taken, as none has a known name").arg(spectrum->source);
    return true;
}
