#include "samples/SampleCommand.h"

#include "samples/SampleWriter.h"
#include "version/Version.h"

#include <QCommandLineParser>
#include <QDir>
#include <QRegularExpression>

namespace sample
{

namespace
{

constexpr int smallestSide = 4;
constexpr int largestSide = 16384;
constexpr qulonglong mostCounts = 1000000000;

const QString outName = QStringLiteral("out");
const QString sizeName = QStringLiteral("size");
const QString seedName = QStringLiteral("seed");
const QString noiseName = QStringLiteral("noise");
const QString formatName = QStringLiteral("format");

void describe(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral(
        "Makes a data set of X-ray absorption maps with known answer: three reference spectra, a target spectrum, "
        "eight maps around an edge at 8345 eV, the truth per pixel and two job files that analyse them. "
        "The same options give the same bytes on every machine. Exit code: 0 done, 2 an argument is wrong, 3 a file "
        "could not be written."));
    parser->addOptions({
        {outName, QStringLiteral("Directory for the files; made when it does not exist."), QStringLiteral("DIR")},
        {sizeName, QStringLiteral("Size of the maps in pixels, 4x4 to 16384x16384; 128x96 if not given."),
         QStringLiteral("WxH"), QStringLiteral("128x96")},
        {seedName, QStringLiteral("Number that the particles and the noise follow from; 1 if not given."),
         QStringLiteral("N"), QStringLiteral("1")},
        {noiseName,
         QStringLiteral("Mean incident counts of a pixel, up to 1000000000: fewer are noisier, 0 is without noise; "
                        "40000 if not given."),
         QStringLiteral("COUNTS"), QStringLiteral("40000")},
        {formatName,
         QStringLiteral(
             "Layout of the maps: 1301 (plain) or 2003901 (columns named in the header); 1301 if not given."),
         QStringLiteral("1301|2003901"), QStringLiteral("1301")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")},
        {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show version and commit.")},
    });
}

/// The sentence about the first wrong argument, empty when all are right; fills `options`.
QString readOptions(const QCommandLineParser &parser, SampleOptions *options)
{
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("unexpected argument '%1'.").arg(parser.positionalArguments().first());
    options->directory = parser.value(outName);
    if (options->directory.isEmpty())
        return QStringLiteral("--out DIR is missing: where shall the files go?");

    static const QRegularExpression sizePattern(QStringLiteral("\\A([0-9]{1,5})[xX]([0-9]{1,5})\\z"));
    const QRegularExpressionMatch size = sizePattern.match(parser.value(sizeName));
    options->width = size.captured(1).toInt();
    options->height = size.captured(2).toInt();
    if (!size.hasMatch() || qMin(options->width, options->height) < smallestSide ||
        qMax(options->width, options->height) > largestSide)
        return QStringLiteral("--size takes WIDTHxHEIGHT from 4x4 to 16384x16384, not '%1'.")
            .arg(parser.value(sizeName));

    bool ok;
    options->seed = parser.value(seedName).toULongLong(&ok);
    if (!ok)
        return QStringLiteral("--seed takes a whole number from 0 up, not '%1'.").arg(parser.value(seedName));
    const qulonglong counts = parser.value(noiseName).toULongLong(&ok);
    if (!ok || counts > mostCounts)
        return QStringLiteral("--noise takes a whole number from 0 to 1000000000, not '%1'.")
            .arg(parser.value(noiseName));
    options->noise = static_cast<double>(counts);

    const QString format = parser.value(formatName);
    if (format != QLatin1String("1301") && format != QLatin1String("2003901"))
        return QStringLiteral("--format takes 1301 or 2003901, not '%1'.").arg(format);
    options->format = format == QLatin1String("1301") ? MapFormat::Plain : MapFormat::ColumnMapped;
    return QString();
}

} // namespace

int runCommand(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    const QString name = QStringLiteral("flokluk-sample: ");
    QCommandLineParser parser;
    describe(&parser);
    if (!parser.parse(arguments)) {
        err << name << parser.errorText() << '\n';
        return WrongArgument;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        out << parser.helpText();
        return Success;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        out << versionLine(QStringLiteral("flokluk-sample")) << '\n';
        return Success;
    }
    SampleOptions options;
    QString error = readOptions(parser, &options);
    if (!error.isEmpty()) {
        err << name << error.simplified() << '\n';
        return WrongArgument;
    }
    QStringList written;
    if (!writeSample(options, &written, &error)) {
        err << name << error << '\n';
        return CannotWrite;
    }
    for (const QString &path : qAsConst(written))
        out << QDir::toNativeSeparators(path) << '\n';
    return Success;
}

} // namespace sample
