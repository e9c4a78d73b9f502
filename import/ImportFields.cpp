#include "import/ImportFields.h"

#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/OptionTexts.h"
#include "import/SpectrumFiles.h"

#include <QDir>
#include <QFileInfo>

namespace
{

/// False where I0 is to come from a text that is empty or cannot be taken.
bool takeIncident(const ImportFields &fields, ImportOptions *options)
{
    switch (fields.incident) {
    case ImportFields::Incident::AsInFiles:
        return true;
    case ImportFields::Incident::Region:
        return readRegion(fields.incidentText, &options->incidentRegion);
    case ImportFields::Incident::Flat:
        options->flat = fields.incidentText;
        break;
    case ImportFields::Incident::Values:
        options->incident = fields.incidentText;
        break;
    }
    return !fields.incidentText.isEmpty();
}

} // namespace

QString optionsFromFields(const ImportFields &fields, ImportOptions *options)
{
    *options = ImportOptions();
    options->inputs = fields.inputs;
    options->references = fields.references;
    options->directory = fields.directory;
    if (fields.energies.startsWith(QLatin1String("::")))
        options->energy = withoutColons(fields.energies);
    else
        options->energies = fields.energies;
    options->data = withoutColons(fields.data);
    options->dark = fields.dark;
    options->signal = fields.signal;
    options->bin = fields.bin;
    options->align = fields.align;
    if (fields.inputs.isEmpty() && fields.references.isEmpty())
        return ImportText::tr("Choose images or spectra first.");
    if (fields.directory.isEmpty())
        return ImportText::tr("Choose a folder for what is written.");
    if (!fields.valences.isEmpty() && !readNumbers(fields.valences, &options->valences))
        return ImportText::tr("Valences are numbers with commas between them.");
    if (!takeIncident(fields, options))
        return fields.incident == ImportFields::Incident::Region
                   ? ImportText::tr("A region is x0,y0,x1,y1 in pixels, with x0 < x1 and y0 < y1.")
                   : ImportText::tr("Choose the file that I0 comes from.");
    if (!fields.pick.isEmpty() && !readPick(fields.pick, options))
        return ImportText::tr("A job takes 2 to 8 energies: a number, or energies with commas between them.");
    if (!fields.crop.isEmpty() && !readRegion(fields.crop, &options->crop))
        return ImportText::tr("A region is x0,y0,x1,y1 in pixels, with x0 < x1 and y0 < y1.");
    return QString();
}

QString proposedFolder(const QStringList &inputs)
{
    if (inputs.isEmpty())
        return QString();
    const QFileInfo first(splitName(inputs.first()).file);
    return first.dir().filePath(first.completeBaseName() + QLatin1String("_import"));
}

ImportableFiles importableOf(const QStringList &paths)
{
    const QStringList suffixes = {"xdi", "prj", "xmu", "nor", "csv"};
    ImportableFiles files;
    for (const QString &path : paths) {
        InputKind kind;
        QString unused;
        if (!kindOf(path, &kind, &unused))
            continue;
        SpectrumFile spectrum;
        if (kind != InputKind::Spectrum)
            files.images << path;
        else if (suffixes.contains(QFileInfo(path).suffix().toLower()) && readSpectrumFile(path, &spectrum, &unused))
            files.spectra << path;
    }
    return files;
}
