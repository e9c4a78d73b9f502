#include "samples/SampleWriter.h"

#include "numeric/StagedFile.h"
#include "samples/NumberText.h"
#include "samples/ParticleField.h"
#include "samples/Random.h"
#include "samples/SampleTexts.h"

#include <QDir>

#include <memory>

namespace sample
{

namespace
{

/// A file that is written in large pieces and appears under its name only when it is complete.
class OutputFile
{
public:
    explicit OutputFile(const QString &path)
        : m_file(path)
    {
    }

    bool open() { return m_file.open(); }
    QByteArray *text() { return &m_text; }

    /// Hands the text on once it is large; errors are kept for finish().
    void flushWhenLarge()
    {
        if (m_text.size() > pieceBytes)
            flush();
    }

    bool finish()
    {
        flush();
        return m_good && m_file.commit();
    }

    QString path() const { return m_file.path(); }
    QString failure() const
    {
        const QString problem = m_file.problem();
        return QStringLiteral("cannot write %1: %2")
            .arg(QDir::toNativeSeparators(path()),
                 problem.isEmpty() ? QStringLiteral("there was no room for all of it") : problem);
    }

private:
    static constexpr int pieceBytes = 1 << 20;

    void flush()
    {
        m_good = m_good && m_file.device()->write(m_text) == m_text.size();
        m_text.resize(0); // keeps the memory, which reserve() pinned
        m_text.reserve(pieceBytes);
    }

    numeric::StagedFile m_file;
    QByteArray m_text;
    bool m_good = true;
};

/// The maps and the truth, filled row by row so that only one row is in memory.
class MapWriter
{
public:
    MapWriter(const SampleOptions &options, const EdgeModel &model)
        : m_options(options)
    {
        for (int k = 0; k < mapCount; ++k) {
            m_noise.emplace_back(options.seed, static_cast<std::uint64_t>(k));
            for (int j = 0; j < referenceCount; ++j)
                m_normalized[k][j] = model.normalized(j, mapEnergies[k]);
        }
    }

    void appendRow(int k, int y, const Pixel *row, QByteArray *text)
    {
        const double energy = mapEnergies[k];
        const double beamDecay = 1.0 - 0.008 * k; // the stored electrons of the source get fewer
        Random &random = m_noise[static_cast<std::size_t>(k)];
        const double mean = (m_options.noise > 0.0 ? m_options.noise : 1.0e6) * beamDecay;
        for (int x = 0; x < m_options.width; ++x) {
            const Pixel &pixel = row[x];
            double absorption = pixel.background + pixel.backgroundSlope * energy;
            for (int j = 0; j < referenceCount; ++j)
                absorption += pixel.thickness * pixel.fractions[j] * m_normalized[k][j];
            double i0 = mean * pixel.beam;
            double transmitted = i0 * portable::exp(-absorption);
            if (m_options.noise > 0.0) {
                i0 = random.counts(i0);
                transmitted = random.counts(transmitted);
            }
            appendPosition(x, y, text);
            const bool plain = m_options.format == MapFormat::Plain;
            if (!plain)
                text->append("0.050 ", 6);
            appendFixed(text, plain ? transmitted : i0, 4);
            text->append(' ');
            appendFixed(text, plain ? i0 : transmitted, 4);
            text->append('\n');
        }
    }

    void appendTruth(int y, const Pixel *row, QByteArray *text) const
    {
        for (int x = 0; x < m_options.width; ++x) {
            const Pixel &pixel = row[x];
            appendPosition(x, y, text);
            for (double fraction : pixel.fractions) {
                appendFixed(text, fraction, 6);
                text->append(' ');
            }
            appendFixed(text, pixel.thickness, 6);
            text->append(' ');
            appendFixed(text, pixel.valence, 6);
            text->append('\n');
        }
    }

private:
    static void appendPosition(int x, int y, QByteArray *text)
    {
        appendFixed(text, x * pixelPitch, 2);
        text->append(' ');
        appendFixed(text, y * pixelPitch, 2);
        text->append(' ');
    }

    const SampleOptions &m_options;
    std::vector<Random> m_noise;
    double m_normalized[mapCount][referenceCount];
};

using Files = std::vector<std::unique_ptr<OutputFile>>;

/// The maps come first, then the truth, then the spectra and the job files.
Files outputFiles(const QDir &directory)
{
    QList<QByteArray> names;
    for (int k = 0; k < mapCount; ++k)
        names += mapFileName(k);
    names += "truth.txt";
    for (int j = 0; j < referenceCount; ++j)
        names += referenceFileName(j);
    names += targetFileName();
    names += "four-points.json";
    names += "non-equivalent.json";
    Files files;
    for (const QByteArray &name : names)
        files.push_back(std::make_unique<OutputFile>(directory.filePath(QString::fromLatin1(name))));
    return files;
}

void fillFiles(const SampleOptions &options, const Files &files)
{
    const EdgeModel model;
    std::size_t next = mapCount + 1;
    for (int j = 0; j <= referenceCount; ++j)
        *files[next++]->text() = spectrumText(model, j, options);
    *files[next++]->text() = jobText(Method::FourPoints);
    *files[next++]->text() = jobText(Method::NonEquivalent);

    const ParticleField field(options.width, options.height, options.seed);
    MapWriter maps(options, model);
    for (int k = 0; k < mapCount; ++k)
        *files[static_cast<std::size_t>(k)]->text() = mapHeader(k, options);
    OutputFile &truth = *files[mapCount];
    *truth.text() = truthHeader(options);

    std::vector<Pixel> row(static_cast<std::size_t>(options.width));
    for (int y = 0; y < options.height; ++y) {
        field.fillRow(y, row.data());
        for (int k = 0; k < mapCount; ++k) {
            OutputFile &file = *files[static_cast<std::size_t>(k)];
            maps.appendRow(k, y, row.data(), file.text());
            file.flushWhenLarge();
        }
        maps.appendTruth(y, row.data(), truth.text());
        truth.flushWhenLarge();
    }
}

} // namespace

bool writeSample(const SampleOptions &options, QStringList *written, QString *error)
{
    if (!QDir().mkpath(options.directory)) {
        *error = QStringLiteral("cannot make the directory %1").arg(QDir::toNativeSeparators(options.directory));
        return false;
    }
    const Files files = outputFiles(QDir(options.directory));
    for (const auto &file : files) {
        if (!file->open()) {
            *error = file->failure();
            return false;
        }
    }
    fillFiles(options, files);
    written->clear();
    for (const auto &file : files) {
        if (!file->finish()) {
            *error = file->failure();
            return false;
        }
        *written += file->path();
    }
    return true;
}

} // namespace sample
