#pragma once

#include "import/ImportCommand.h"
#include "mapdata/MapFileReader.h"
#include "tests/Tables.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTextStream>

#include <functional>
#include <vector>

/// What the tests of flokluk-import share: a folder with inputs, a command line, and what came of it.
namespace importtools
{

/// A stack whose pixels are all different: the counts behind the sample at energy e, row y and column x.
struct Stack {
    int energies = 3, height = 4, width = 5;

    double counts(int e, int y, int x) const { return 100 * e + 10 * y + x + 1; }
    /// Pixel by pixel in any order of the three dimensions: "eyx", "yxe", ...
    template <class Value = double>
    std::vector<Value> values(const char *order = "eyx", double factor = 1.0, double offset = 0.0) const
    {
        const auto lengthOf = [this](char axis) {
            return axis == 'e' ? energies : axis == 'y' ? height : width;
        };
        std::vector<Value> values;
        for (int a = 0; a < lengthOf(order[0]); ++a) {
            for (int b = 0; b < lengthOf(order[1]); ++b) {
                for (int c = 0; c < lengthOf(order[2]); ++c) {
                    const int places[] = {a, b, c};
                    const auto at = [&](char axis) {
                        return places[QByteArray(order).indexOf(axis)];
                    };
                    values.push_back(static_cast<Value>(counts(at('e'), at('y'), at('x')) * factor + offset));
                }
            }
        }
        return values;
    }
};

class ImportFolder
{
public:
    QString path(const QString &name) const { return m_dir.filePath(name); }
    bool write(const QString &name, const QByteArray &bytes) const { return tables::writeBytes(path(name), bytes); }
    /// What lies in the folder of the results, hidden files too; "none" when there is no such folder.
    QStringList written() const
    {
        const QDir folder(path("out"));
        return folder.exists() ? folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                               : QStringList("none");
    }

    /// Runs "INPUT ... OPTIONS", words with blanks between them; those that are files of this folder get its path.
    int run(const QString &line, bool isList = false)
    {
        QStringList arguments = {"flokluk-import"};
        for (const QString &word : line.split(' ')) {
            const bool isFile = QFile::exists(path(word.section("::", 0, 0))) && !word.startsWith("::");
            arguments << (isFile ? path(word) : word);
        }
        if (!isList)
            arguments << "--out" << path("out");
        out.clear();
        err.clear();
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        return runImportCommand(arguments, &outStream, &errStream);
    }

    QStringList maps() const { return QDir(path("out")).entryList({"map*"}, QDir::Files, QDir::Name); }
    A2DData map(int index) const
    {
        A2DData data;
        loadMapFile(path("out/" + maps().value(index)), &data);
        return data;
    }
    QJsonObject json(const QString &name) const
    {
        return QJsonDocument::fromJson(tables::bytesOf(path("out/" + name))).object();
    }

    QString out, err;

private:
    QTemporaryDir m_dir;
};

/// The header of a microscope's stack, one of its images, and all of its files as "a.hdr".
inline QByteArray ximHeader(const QByteArray &energies = "3, 700, 701.5, 703")
{
    return "ScanDefinition = { Label = \"a.hdr\"; Type = \"Image Stack; (x)\"; Dwell = 1;\n Regions = (1,\n{\n"
           "PAxis = { Name = \"Sample X\"; Unit = \"um\"; Min = 0; Dir = 1;\n Points = (5, 0, 0.1, 0.2, 0.3, "
           "0.4);\n};\n"
           "QAxis = { Name = \"Sample Y\"; Unit = \"um\"; Points = (4, 7, 7.5, 8, 8.5); };\n});\n"
           "StackAxis = { Name = \"Energy\"; Unit = \"eV\"; Points = (" +
           energies +
           ");\n};\nChannels = (1,\n{ Name = \"counter\"; Unit = \"counts\";});\n};\nTime = 2020 Nov 03 12:33;\n";
}

inline QByteArray ximImage(int e, int columns = 5)
{
    QByteArray text;
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < columns; ++x)
            text += QByteArray::number(Stack().counts(e, y, x)) + '\t';
        text += '\n';
    }
    return text;
}

inline bool writeXim(const ImportFolder &folder, const QByteArray &energies = "3, 700, 701.5, 703")
{
    bool good =
        folder.write("a.hdr", ximHeader(energies)) && folder.write("a.xsp", "% energy I0\n699 1000\n704 2000\n");
    for (int e = 0; e < 3; ++e)
        good = folder.write(QString("a_a00%1.xim").arg(e), ximImage(e)) && good;
    return good;
}

/// What differs from the wanted values in the maps, empty when nothing does: `wanted` gives I and I0 of a pixel.
inline QString differences(const ImportFolder &folder, const Stack &size,
                           const std::function<std::pair<double, double>(int e, int y, int x)> &wanted)
{
    if (folder.maps().size() != size.energies)
        return QString("%1 maps; %2").arg(folder.maps().size()).arg(folder.err);
    for (int e = 0; e < size.energies; ++e) {
        const A2DData map = folder.map(e);
        if (map.nx() != size.width || map.ny() != size.height || map.count() != size.width * size.height)
            return QString("map %1 is %2 x %3 of %4").arg(e).arg(map.nx()).arg(map.ny()).arg(map.count());
        for (int i = 0; i < map.count(); ++i) {
            const auto [I, I0] = wanted(e, i / size.width, i % size.width);
            const MapRecord record = map.record(i);
            if (!tables::isClose(record.I, I, 1e-8) || !tables::isClose(record.I0, I0, 1e-8))
                return QString("pixel %1 of map %2: %3 of %4").arg(i).arg(e).arg(record.I).arg(record.I0);
        }
    }
    return QString();
}

} // namespace importtools
