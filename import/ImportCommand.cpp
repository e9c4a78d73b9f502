#include "import/ImportCommand.h"

#include "analysis/job/Progress.h"
#include "import/Import.h"
#include "import/OptionTexts.h"
#include "import/StackFiles.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

namespace
{

struct Option {
    const char *name;
    const char *value; ///< what it takes; null: nothing
    const char *help;
};

constexpr Option optionTable[] = {
    {"out", "DIR", "Folder for the maps, the spectra, job.json and import.json; made when missing."},
    {"refs", "SPECTRUM ...", "Reference spectra: FILE, or FILE::LABEL for one group or column."},
    {"valences", "V1,V2,...", "Valences of the references, in their order."},
    {"energies", "FILE", "Energies of the images, one a line, eV (below 100: keV)."},
    {"pick", "N|E1,E2,...", "How many energies the job takes (8), or which, eV."},
    {"flat", "FILE[::PATH]", "Images without the sample as I0: one per energy, or their mean."},
    {"dark", "FILE[::PATH]", "Images without beam, whose mean is taken away."},
    {"i0", "::PATH|FILE", "I0 of each energy: a dataset of the file, or a text of energy and intensity."},
    {"i0-region", "x0,y0,x1,y1", "Empty region of the images whose mean is I0; pixels from 0, x1 and y1 not included."},
    {"data", "::PATH", "Dataset of an HDF5 file with the images."},
    {"energy", "::PATH", "Dataset of an HDF5 file with the energies."},
    {"signal", "KIND", "transmission (images of I), fluorescence (I / I0) or absorption."},
    {"crop", "x0,y0,x1,y1", "Pixels to keep, counted as for --i0-region."},
    {"bin", "N", "Squares of N x N pixels become one, their mean."},
    {"align", nullptr, "Bring the images of all energies into register."},
    {"format", "1301|2003901", "Layout of the maps (1301)."},
    {"list", nullptr, "Only say what is inside of the files."},
};

void describe(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral(
        "Makes maps, spectra and a job for flokluk of the files of others: stacks of images (HDF5, TIFF, "
        "microscope headers) and spectra (XDI, Athena projects, columns). "
        "Exit code: 0 done, 1 stopped, 2 an input cannot be used, 3 a file could not be written."));
    parser->addPositionalArgument(QStringLiteral("INPUT"),
                                  QStringLiteral("One stack of images (of however many files), and spectra."),
                                  QStringLiteral("[INPUT ...]"));
    for (const Option &option : optionTable) {
        const QString name = QLatin1String(option.name);
        const QString help = QLatin1String(option.help);
        parser->addOption(option.value == nullptr ? QCommandLineOption(name, help)
                                                  : QCommandLineOption(name, help, QLatin1String(option.value)));
    }
    parser->addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    parser->addOption({{QStringLiteral("v"), QStringLiteral("version")},
                       QStringLiteral("Show version, commit and the libraries that are used.")});
}

/// "--refs A B C" as the parser wants it: the option before each of them.
QStringList withRepeatedRefs(const QStringList &arguments)
{
    QStringList repeated;
    bool isRefs = false;
    for (const QString &argument : arguments) {
        const bool isOption = argument.startsWith(QLatin1Char('-')) && argument.size() > 1;
        if (isRefs && !isOption)
            repeated << QStringLiteral("--refs") << argument;
        else if (argument != QLatin1String("--refs"))
            repeated << argument;
        if (isOption)
            isRefs = argument == QLatin1String("--refs");
    }
    return repeated;
}

bool readSignal(const QString &text, ImportOptions *options)
{
    using Signal = ImportOptions::Signal;
    const QStringList names = {"transmission", "fluorescence", "absorption"};
    constexpr Signal signals_[] = {Signal::Transmission, Signal::Fluorescence, Signal::Absorption};
    const int index = names.indexOf(text);
    if (index >= 0)
        options->signal = signals_[index];
    return index >= 0;
}

bool readBin(const QString &text, ImportOptions *options)
{
    bool good = false;
    options->bin = text.toInt(&good);
    return good && options->bin >= 1;
}

/// The sentence about the first value that is wrong; empty when all are right.
QString readValues(const QCommandLineParser &parser, ImportOptions *options)
{
    const auto wrong = [&parser](const char *name, bool good) {
        return parser.isSet(QLatin1String(name)) && !good;
    };
    const auto value = [&parser](const char *name) {
        return parser.value(QLatin1String(name));
    };
    if (wrong("valences", readNumbers(value("valences"), &options->valences)))
        return QStringLiteral("--valences wants numbers with commas between them");
    if (wrong("pick", readPick(value("pick"), options)))
        return QStringLiteral("--pick wants a number from 2 to 8, or up to eight energies with commas between them");
    if (wrong("i0-region", readRegion(value("i0-region"), &options->incidentRegion)))
        return QStringLiteral("--i0-region wants x0,y0,x1,y1 with x0 < x1 and y0 < y1");
    if (wrong("crop", readRegion(value("crop"), &options->crop)))
        return QStringLiteral("--crop wants x0,y0,x1,y1 with x0 < x1 and y0 < y1");
    if (wrong("signal", readSignal(value("signal"), options)))
        return QStringLiteral("--signal wants transmission, fluorescence or absorption");
    if (wrong("bin", readBin(value("bin"), options)))
        return QStringLiteral("--bin wants a number from 1 on");
    const QString format = value("format");
    if (wrong("format", format == QLatin1String("1301") || format == QLatin1String("2003901")))
        return QStringLiteral("--format wants 1301 or 2003901");
    if (format == QLatin1String("2003901"))
        options->layout = ImportOptions::Layout::ColumnMapped;
    if (!parser.isSet(QStringLiteral("valences")))
        options->valences.clear();
    if (!parser.isSet(QStringLiteral("pick")))
        options->pickEnergies.clear();
    if (!parser.isSet(QStringLiteral("bin")))
        options->bin = 1;
    return QString();
}

int list(const QStringList &files, QTextStream *out, QTextStream *err)
{
    for (const QString &file : files) {
        QStringList lines;
        QString error;
        if (!listInput(file, &lines, &error)) {
            *err << "flokluk-import: " << error << '\n';
            return static_cast<int>(ImportResult::Outcome::BadInput);
        }
        if (files.size() > 1)
            *out << "== " << QDir::toNativeSeparators(file) << '\n';
        for (const QString &line : qAsConst(lines))
            *out << line << '\n';
    }
    return 0;
}

void report(const ImportResult &result, QTextStream *out, QTextStream *err)
{
    if (result.outcome != ImportResult::Outcome::Done) {
        *err << "flokluk-import: " << result.error << '\n';
        return;
    }
    for (const QString &warning : result.warnings)
        *err << "flokluk-import: warning: " << warning << '\n';
    if (result.energies > 0)
        *out << result.energies << (result.energies == 1 ? " map of " : " maps of ") << result.width << " x "
             << result.height << " pixels\n";
    if (result.references > 0)
        *out << result.references << (result.references == 1 ? " spectrum\n" : " spectra\n");
    if (result.energies > 0)
        *out << "open with: flokluk-batch --show " << QDir::toNativeSeparators(result.job) << '\n';
}

/// The exit code when all has been said, which a full disk may have kept from being read.
int ended(int code, QTextStream *out, QTextStream *err)
{
    out->flush();
    if (out->status() != QTextStream::Ok) {
        *err << "flokluk-import: cannot write to standard output\n";
        code = static_cast<int>(ImportResult::Outcome::CannotWrite);
    }
    err->flush();
    return code;
}

} // namespace

ImportArguments parseImportArguments(const QStringList &arguments)
{
    ImportArguments result;
    ImportOptions &options = result.options;
    QCommandLineParser parser;
    describe(&parser);
    if (!parser.parse(withRepeatedRefs(arguments))) {
        result.error = parser.errorText();
        return result;
    }
    if (parser.isSet(QStringLiteral("help")))
        result.answer = parser.helpText();
    else if (parser.isSet(QStringLiteral("version")))
        result.answer = importVersion();
    if (!result.answer.isEmpty())
        return result;
    const auto value = [&parser](const char *name) {
        return parser.value(QLatin1String(name));
    };
    options.inputs = parser.positionalArguments();
    options.references = parser.values(QStringLiteral("refs"));
    options.directory = value("out");
    options.energies = value("energies");
    options.flat = value("flat");
    options.dark = value("dark");
    options.incident = value("i0");
    options.data = withoutColons(value("data"));
    options.energy = withoutColons(value("energy"));
    options.align = parser.isSet(QStringLiteral("align"));
    result.error = readValues(parser, &options);
    if (parser.isSet(QStringLiteral("list")))
        result.toList = options.inputs + options.references;
    if (result.error.isEmpty() && parser.isSet(QStringLiteral("list")) && result.toList.isEmpty())
        result.error = QStringLiteral("--list wants a file");
    else if (result.error.isEmpty() && result.toList.isEmpty() && options.directory.isEmpty())
        result.error = QStringLiteral("--out DIR is missing: where shall the files go?");
    return result;
}

int runImportCommand(const QStringList &arguments, QTextStream *out, QTextStream *err, bool isTerminal,
                     const std::function<bool()> &isStopped)
{
    const ImportArguments parsed = parseImportArguments(arguments);
    *out << parsed.answer;
    if (!parsed.answer.isEmpty())
        return ended(0, out, err);
    int code = static_cast<int>(ImportResult::Outcome::BadInput);
    if (!parsed.error.isEmpty()) {
        *err << "flokluk-import: " << parsed.error << "; flokluk-import --help says more\n";
    } else if (!parsed.toList.isEmpty()) {
        code = list(parsed.toList, out, err);
    } else {
        constexpr int steps = 1000;
        ImportResult result;
        {
            Progress bar(err, QStringLiteral("flokluk-import"), steps,
                         isTerminal ? ProgressForm::Bar : ProgressForm::Lines); // ends its line
            result = importData(parsed.options, [&bar, &isStopped](const QString &what, double done) {
                bar.reach(done, what);
                return !isStopped || !isStopped();
            });
        }
        report(result, out, err);
        code = static_cast<int>(result.outcome);
    }
    return ended(code, out, err);
}
