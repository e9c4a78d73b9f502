#pragma once

#include "import/Alignment.h"
#include "import/ImageStack.h"
#include "import/ImportOptions.h"
#include "import/MapWriter.h"
#include "import/OutputFolder.h"
#include "import/PickEnergies.h"
#include "import/SpectrumFiles.h"
#include "import/StackReader.h"

#include <QJsonArray>
#include <QJsonObject>

/// One import, from its options to the files in its folder. What it finds out stands in the members, from which the job
/// and the record are made.
class ImportRun
{
public:
    ImportRun(const ImportOptions &options, const ImportProgress &progress);

    ImportResult run();

private:
    struct WrittenSpectrum {
        QString name;   ///< of its file
        QString source; ///< "feo.xdi", "project.prj::label"
        QJsonObject record;
    };

    static constexpr double mapsDone = 0.97; ///< share of the whole when all maps are written

    bool steps();
    bool checkOptions();
    bool sortInputs();
    bool readReferences();
    bool openImages();
    bool align();
    bool writeReferences();
    bool writeReference(const QByteArray &text, const QString &label, WrittenSpectrum *written);
    bool writeMaps();
    bool writeMap(int index);
    void noteDoubts(int index, const Exposure &exposure, const MapGridText &grid);
    bool checkStackOptions();
    bool checkValences();
    QStringList comments(int index) const;
    bool pick();
    bool takePicked();
    bool planPicked();
    bool takeReferenceValues();
    bool writeJob();
    bool writeRecord();
    bool publish();
    bool overwritesInput();

    QJsonObject stackRecord() const;
    QJsonArray inputRecords();
    QJsonObject optionRecord() const;

    bool fail(ImportResult::Outcome outcome, const QString &error);
    bool failBadInput() { return fail(ImportResult::Outcome::BadInput, m_error); }
    bool tell(const QString &what, double done);
    bool writeText(const QString &name, const QByteArray &text);
    QString uniqueName(const QString &wanted) const;
    QString pathOf(const QString &name) const { return m_folder.pathOf(name); }

    ImportOptions m_options;
    const ImportProgress &m_progress;
    ImportResult m_result;
    QString m_error; ///< of the functions that give one

    QStringList m_stackFiles;
    QStringList m_spectrumNames;
    QVector<SpectrumFile> m_spectra;
    ImageStack m_stack;
    StackReader m_reader;
    Alignment m_alignment; ///< empty where nothing is aligned
    OutputFolder m_folder;
    QVector<WrittenSpectrum> m_writtenSpectra;
    QStringList m_maps; ///< names of the map files, by energy
    PickInput m_pickInput;
    QVector<double> m_meanAbsorption; ///< of each energy
    qint64 m_darkPixels = 0;          ///< of all maps: without an absorption
    QVector<int> m_picked;            ///< energies of the job
    QString m_pickedBy;               ///< "named", "planned" or "contrast"
    int m_vPoint = -1;                ///< of a plan that has one
};
