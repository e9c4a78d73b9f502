#include "import/Import.h"
#include "import/ImportRun.h"
#include "import/MapWriter.h"
#include "numeric/JsonArray.h"
#include "numeric/Sha256.h"
#include "version/Version.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace
{

QString textOf(ImportOptions::Signal signal)
{
    switch (signal) {
    case ImportOptions::Signal::Fluorescence:
        return QStringLiteral("fluorescence");
    case ImportOptions::Signal::Absorption:
        return QStringLiteral("absorption");
    case ImportOptions::Signal::Transmission:
        break;
    }
    return QStringLiteral("transmission");
}

QJsonArray corners(const QRect &part)
{
    return {part.left(), part.top(), part.left() + part.width(), part.top() + part.height()};
}

} // namespace

QJsonArray ImportRun::inputRecords()
{
    QStringList files = m_stack.files;
    for (const SpectrumFile &file : qAsConst(m_spectra))
        files << file.path;
    if (!m_options.energies.isEmpty() && !m_stackFiles.isEmpty())
        files << m_options.energies;
    files.removeDuplicates();
    QJsonArray records;
    for (const QString &file : qAsConst(files))
        records.append(QJsonObject{{"file", QDir::current().absoluteFilePath(file)},
                                   {"bytes", static_cast<double>(QFileInfo(file).size())},
                                   {"sha256", QString::fromLatin1(numeric::sha256OfFile(file))}});
    return records;
}

/// Only what was asked for.
QJsonObject ImportRun::optionRecord() const
{
    QJsonObject record{{"signal", textOf(m_options.signal)}, {"pick", m_options.pickCount}};
    const QList<QPair<const char *, QString>> texts = {{"energies", m_options.energies}, {"data", m_options.data},
                                                       {"energy", m_options.energy},     {"i0", m_options.incident},
                                                       {"flat", m_options.flat},         {"dark", m_options.dark}};
    for (const auto &text : texts) {
        if (!text.second.isEmpty())
            record.insert(QLatin1String(text.first), text.second);
    }
    if (!m_options.incidentRegion.isNull())
        record.insert(QStringLiteral("i0Region"), corners(m_options.incidentRegion));
    if (!m_options.crop.isNull())
        record.insert(QStringLiteral("crop"), corners(m_options.crop));
    if (m_options.bin > 1)
        record.insert(QStringLiteral("bin"), m_options.bin);
    if (m_options.align)
        record.insert(QStringLiteral("align"), true);
    if (!m_options.pickEnergies.isEmpty())
        record.insert(QStringLiteral("pick"), numeric::toJsonArray(m_options.pickEnergies));
    if (!m_options.valences.isEmpty())
        record.insert(QStringLiteral("valences"), numeric::toJsonArray(m_options.valences));
    return record;
}

QJsonObject ImportRun::stackRecord() const
{
    QJsonArray maps;
    for (int i = 0; i < m_maps.size(); ++i) {
        QJsonObject map{{"file", m_maps[i]},
                        {"energy", energyText(m_reader.energies()[i]).toDouble()},
                        {"meanAbsorption", m_meanAbsorption[i]},
                        {"inJob", m_picked.contains(i)}};
        if (!m_alignment.isEmpty()) {
            const ImageShift &shift = m_alignment.shifts[i];
            map.insert(QStringLiteral("shift"), QJsonArray{shift.x, shift.y});
            map.insert(QStringLiteral("shiftDisagreement"), shift.disagreement);
        }
        maps.append(map);
    }
    QJsonObject record{
        {"layout", m_stack.layout},
        {"parts", QJsonArray::fromStringList(m_stack.parts)},
        {"images", QJsonArray{m_stack.images->count(), m_stack.images->height(), m_stack.images->width()}},
        {"i0", m_reader.incidentSource()},
        {"mapWidth", m_result.width},
        {"mapHeight", m_result.height},
        {"unit", m_reader.x().unit},
        {"pickedBy", m_pickedBy},
        {"maps", maps}};
    if (!m_alignment.isEmpty())
        record.insert(QStringLiteral("alignedTo"), m_maps[m_alignment.reference]);
    return record;
}

bool ImportRun::writeRecord()
{
    QJsonObject record{{"program", "flokluk-import " + floklukVersion()},
                       {"inputs", inputRecords()},
                       {"options", optionRecord()},
                       {"warnings", QJsonArray::fromStringList(m_result.warnings)}};
    if (!m_maps.isEmpty())
        record.insert(QStringLiteral("stack"), stackRecord());
    QJsonArray spectra;
    for (const WrittenSpectrum &written : qAsConst(m_writtenSpectra))
        spectra.append(written.record);
    record.insert(QStringLiteral("spectra"), spectra);
    return writeText(QStringLiteral("import.json"), QJsonDocument(record).toJson());
}

ImportResult importData(const ImportOptions &options, const ImportProgress &progress)
{
    return ImportRun(options, progress).run();
}
