#include "analysis/ResultWriter.h"

#include "analysis/FourPoints.h"
#include "numeric/NumberText.h"
#include "numeric/OutputFile.h"

#include <cstring>
#include <vector>

using numeric::writeG6Padded;

namespace
{

constexpr std::size_t longestLine = (2 + ResultRecords::quantityCount) * (1 + numeric::g6MaxLength) + 8;
constexpr std::size_t bufferSize = std::size_t(1) << 20;

/// Collects the text and hands it to the file in large pieces.
class TextBuffer
{
public:
    explicit TextBuffer(QIODevice *file)
        : m_file(file)
        , m_bytes(bufferSize)
    {
    }

    /// Room for one line; what was written is told to advance().
    char *room()
    {
        if (m_used + longestLine > m_bytes.size())
            flush();
        return m_bytes.data() + m_used;
    }
    void advance(const char *end) { m_used = static_cast<std::size_t>(end - m_bytes.data()); }

    void flush()
    {
        m_file->write(m_bytes.data(), static_cast<qint64>(m_used));
        m_used = 0;
    }

private:
    QIODevice *m_file;
    std::vector<char> m_bytes;
    std::size_t m_used = 0;
};

char *writeText(const char *text, char *out)
{
    const std::size_t length = std::strlen(text);
    std::memcpy(out, text, length);
    return out + length;
}

char *writePosition(const ResultRecords &results, std::size_t i, char *out)
{
    *out++ = ' ';
    out = writeG6Padded(results.x()[i], out);
    *out++ = ' ';
    return writeG6Padded(results.y()[i], out);
}

char *writeFourPoints(const ResultRecords &results, std::size_t i, const ValencePair &valences, char *out)
{
    const double a = results.a()[i];
    out = writeText("    ", writePosition(results, i, out));
    out = writeG6Padded(a, out);
    *out++ = ' ';
    out = writeG6Padded(valences.known ? mixedValence(valences.first, valences.second, a) : 0.0, out);
    *out++ = ' ';
    return writeG6Padded(results.t()[i], out);
}

char *writeNonEquivalent(const ResultRecords &results, std::size_t i, const RecordSelection &selection, char *out)
{
    out = writePosition(results, i, out);
    for (int position = 0; position < ResultRecords::quantityCount; ++position) {
        if (!selection[static_cast<std::size_t>(position)])
            continue;
        *out++ = ' ';
        out = writeG6Padded(results.quantity(position)[i], out);
    }
    return out;
}

} // namespace

WriteOutcome writeResultFile(const QString &path, const ResultRecords &results, const ValencePair &valences,
                             const RecordSelection &selection)
{
    numeric::OutputFile file(path);
    if (!file.open())
        return WriteOutcome::CannotOpen;
    for (const QString &line : results.headerLines)
        file.device()->write((line + QLatin1Char('\n')).toUtf8());
    file.device()->write("\n");

    TextBuffer buffer(file.device());
    std::size_t i = 0;
    for (int row = 0; row < results.height(); ++row) {
        for (int column = 0; column < results.width(); ++column, ++i) {
            char *line = buffer.room();
            line = results.method() == ResultRecords::Method::FourPoints
                       ? writeFourPoints(results, i, valences, line)
                       : writeNonEquivalent(results, i, selection, line);
            *line++ = '\n';
            buffer.advance(line);
        }
        char *const line = buffer.room();
        *line = '\n';
        buffer.advance(line + 1);
    }
    buffer.flush();
    return file.commit() ? WriteOutcome::Written : WriteOutcome::CannotWrite;
}
