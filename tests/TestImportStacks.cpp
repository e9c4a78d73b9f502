#include "import/Alignment.h"
#include "import/ImportedSpectrum.h"
#include "import/PickEnergies.h"
#include "import/PlannedPick.h"
#include "import/StackHeader.h"
#include "samples/EdgeModel.h"
#include "samples/ParticleField.h"
#include "samples/Random.h"
#include "tests/ImportTools.h"

#include <cmath>

#ifdef FLOKLUK_HAVE_HDF5
#include "tests/ImportHdf5.h"
#endif
#ifdef FLOKLUK_HAVE_TIFF
#include <tiffio.h>
#endif

using namespace importtools;
using namespace tables;

namespace
{

const Stack stack;

#ifdef FLOKLUK_HAVE_HDF5

using Make = std::function<void(Hdf5Maker *file)>;

/// "/exchange/data" and its energies, the usual way.
void exchange(Hdf5Maker *file, const std::vector<double> &energies = {7.1, 7.11, 7.12})
{
    file->numbers("/exchange/data", stack.values(), {3, 4, 5});
    file->list("/exchange/energy", energies);
}

void stxm(Hdf5Maker *file, const char *signal, const std::vector<double> &values, const std::vector<hsize_t> &shape)
{
    file->numbers(signal, values, shape);
    file->list("/entry/counter/energy", {700, 701, 702});
    file->list("/entry/counter/sample_x", {-1, -0.5, 0, 0.5, 1});
    file->list("/entry/counter/sample_y", {10, 10.25, 10.5, 10.75});
    file->list("/entry/control/data", {500, 499, 498}); // the ring's current
    file->text("/entry/definition", "NXstxm");
    file->attribute("/entry", "NX_class", QStringList("NXentry"));
    file->attribute("/entry/counter", "NX_class", QStringList("NXdata"));
}

void newStxm(Hdf5Maker *file, const char *order, const QStringList &axes, const std::vector<hsize_t> &shape)
{
    stxm(file, "/entry/counter/signal", stack.values(order), shape);
    file->attribute("/entry/counter", "signal", QStringList("signal"));
    file->attribute("/entry/counter", "axes", axes);
}

void oldStxm(Hdf5Maker *file)
{
    stxm(file, "/entry/counter/data", stack.values("xye"), {5, 4, 3});
    file->attribute("/entry/counter/data", "signal", 1);
    file->attribute("/entry/counter/sample_x", "axis", 1);
    file->attribute("/entry/counter/sample_y", "axis", 2);
    file->attribute("/entry/counter/energy", "axis", 3);
}

#endif

#ifdef FLOKLUK_HAVE_TIFF

struct TiffForm {
    int bits = 16, format = SAMPLEFORMAT_UINT, compression = COMPRESSION_NONE;
    int tile = 0; ///< its side; 0: strips
    const char *mode = "w";
};

template <class Value>
void tiffPage(TIFF *file, const std::vector<double> &values, int width, int height, const TiffForm &form)
{
    TIFFSetField(file, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(file, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(file, TIFFTAG_BITSPERSAMPLE, form.bits);
    TIFFSetField(file, TIFFTAG_SAMPLEFORMAT, form.format);
    TIFFSetField(file, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(file, TIFFTAG_COMPRESSION, form.compression);
    TIFFSetField(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    const auto value = [&](int y, int x) {
        return static_cast<Value>(y < height && x < width ? values[static_cast<std::size_t>(y * width + x)] : 0);
    };
    if (form.tile == 0)
        TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, 3); // the last strip is shorter
    else
        TIFFSetField(file, TIFFTAG_TILEWIDTH, form.tile), TIFFSetField(file, TIFFTAG_TILELENGTH, form.tile);
    const int rows = form.tile == 0 ? 3 : form.tile;
    const int columns = form.tile == 0 ? width : form.tile;
    for (int top = 0, piece = 0; top < height; top += rows) {
        for (int left = 0; left < width; left += columns, ++piece) {
            std::vector<Value> pixels;
            for (int y = top; y < (form.tile == 0 ? std::min(top + rows, height) : top + rows); ++y) {
                for (int x = left; x < left + columns; ++x)
                    pixels.push_back(value(y, x));
            }
            const auto bytes = static_cast<tmsize_t>(pixels.size() * sizeof(Value));
            form.tile == 0 ? TIFFWriteEncodedStrip(file, static_cast<std::uint32_t>(piece), pixels.data(), bytes)
                           : TIFFWriteEncodedTile(file, static_cast<std::uint32_t>(piece), pixels.data(), bytes);
        }
    }
    TIFFWriteDirectory(file);
}

/// A file of as many pages as the values fill.
template <class Value = std::uint16_t>
void writeTiff(const QString &path, const std::vector<double> &values, int width = 5, int height = 4,
               const TiffForm &form = {})
{
    TIFF *const file = TIFFOpen(path.toLocal8Bit().constData(), form.mode);
    const auto page = static_cast<std::ptrdiff_t>(width * height);
    for (auto first = values.begin(); first != values.end(); first += page)
        tiffPage<Value>(file, {first, first + page}, width, height, form);
    TIFFClose(file);
}

std::vector<double> frame(int e, double factor = 1.0)
{
    const std::vector<double> all = stack.values("eyx", factor);
    return {all.begin() + e * 20, all.begin() + (e + 1) * 20};
}

#endif

} // namespace

class TestImportStacks : public QObject
{
    Q_OBJECT

private slots:
    /// Every layout, order of dimensions, type and storage gives each pixel its value, energy and position.
    void hdf5Layouts()
    {
#ifdef FLOKLUK_HAVE_HDF5
        struct Case {
            const char *name;
            Make make;
            QString options;
            double I0;
            double energy; ///< of the second map, eV
            double y;      ///< of the last row
        };
        const QStringList eyx = {"energy", "sample_y", "sample_x"};
        const auto stored = [](const Storage &storage, const char *order, const std::vector<hsize_t> &shape) {
            return [=](Hdf5Maker *file) {
                file->numbers("/a/b", stack.values(order), shape, storage);
                file->list("/a/e", {7100, 7110, 7120});
            };
        };
        const QString byPath = "--data ::/a/b --energy ::/a/e --flat flat.h5::/flat";
        forEach<Case>(
            {{"NXstxm",
              [&](Hdf5Maker *f) {
                  newStxm(f, "eyx", eyx, {3, 4, 5});
              },
              "--flat flat.h5::/flat", 800, 701, 10.75},
             {"NXstxm, energy last",
              [&](Hdf5Maker *f) {
                  newStxm(f, "yxe", {"sample_y", "sample_x", "energy"}, {4, 5, 3});
              },
              "--flat flat.h5::/flat", 800, 701, 10.75},
             {"NXstxm, one text of axes",
              [&](Hdf5Maker *f) {
                  newStxm(f, "exy", {"energy:sample_x:sample_y"}, {3, 5, 4});
              },
              "--flat flat.h5::/flat", 800, 701, 10.75},
             {"NXstxm of older programs", oldStxm, "--flat flat.h5::/flat", 800, 701, 10.75},
             {"Data Exchange, I0 by energy",
              [](Hdf5Maker *f) {
                  exchange(f);
                  f->list("/spectromicroscopy/normalization/white_spectrum", {800, 800, 800});
              },
              "", 800, 7110, 3},
             {"Data Exchange, x:y",
              [](Hdf5Maker *f) {
                  f->numbers("/exchange/data", stack.values("xye"), {5, 4, 3});
                  f->attribute("/exchange/data", "axes", QStringList("x:y"));
                  f->list("/exchange/energy", {7100, 7110, 7120});
                  f->numbers("/exchange/data_white", std::vector<double>(20, 800), {5, 4});
              },
              "--i0 i0.txt", 800, 7110, 3},
             {"Data Exchange, white and dark",
              [](Hdf5Maker *f) {
                  f->numbers("/exchange/data", stack.values("eyx", 1, 50), {3, 4, 5});
                  f->list("/exchange/energy", {7.1, 7.11, 7.12});
                  std::vector<double> white(40, 840);
                  std::fill_n(white.begin(), 20, 860.0);
                  f->numbers("/exchange/data_white", white, {2, 4, 5});
                  f->numbers("/exchange/data_dark", std::vector<double>(20, 50), {1, 4, 5});
              },
              "", 800, 7110, 3},
             {"full-field TXM",
              [](Hdf5Maker *f) {
                  f->numbers("/img_xanes", stack.values("eyx", 1, 50), {3, 4, 5}, {H5T_NATIVE_FLOAT, {}});
                  f->numbers("/img_bkg", std::vector<double>(60, 850), {3, 4, 5});
                  f->numbers("/img_dark", std::vector<double>(20, 50), {1, 4, 5});
                  f->list("/X_eng", {7.1, 7.11, 7.12});
              },
              "", 800, 7110, 3},
             {"by paths", stored({}, "eyx", {3, 4, 5}), byPath, 800, 7110, 3},
             {"unsigned 16 bits, packed", stored({H5T_STD_U16BE, {2, 3, 2}, true}, "eyx", {3, 4, 5}), byPath, 800, 7110,
              3},
             {"signed 32 bits", stored({H5T_STD_I32LE}, "eyx", {3, 4, 5}), byPath, 800, 7110, 3},
             {"signed 16 bits, energy last", stored({H5T_STD_I16LE}, "yxe", {4, 5, 3}), byPath, 800, 7110, 3},
             {"floats, energy in the middle",
              stored({H5T_IEEE_F32BE,
                      { 2,
                        2,
                        2 }},
                     "yex", {4, 3, 5}),
              byPath, 800, 7110, 3},
             {"64 bits", stored({H5T_STD_U64LE}, "eyx", {3, 4, 5}), byPath, 800, 7110, 3},
             { "energies from a file",
               [](Hdf5Maker *f) {
                   f->numbers("/a/b", stack.values(), {3, 4, 5});
               },
               "--data ::/a/b --energies energies.txt --i0 i0.txt",
               800,
               7110,
               3 }},
            [](const Case &c) {
                ImportFolder folder;
                QVERIFY(folder.write("energies.txt", "# eV\n* more\n7.1\n7.11 keV\n7.12\n"));
                QVERIFY(folder.write("i0.txt", "7000 800\n7200 800\n"));
                Hdf5Maker(folder.path("flat.h5")).numbers("/flat", std::vector<double>(20, 800), {4, 5});
                {
                    Hdf5Maker file(folder.path("a.h5"));
                    c.make(&file);
                }
                for (const char *format : {"", " --format 2003901"}) {
                    QVERIFY2(folder.run("a.h5 " + c.options + format) == 0, qPrintable(folder.err));
                    const auto wanted = [&c](int e, int y, int x) {
                        return std::make_pair(stack.counts(e, y, x), c.I0);
                    };
                    QCOMPARE(differences(folder, stack, wanted), QString());
                }
                QCOMPARE(
                    folder.json("import.json")["stack"].toObject()["maps"].toArray()[1].toObject()["energy"].toDouble(),
                    c.energy);
                QCOMPARE(folder.map(0).record(19).y, c.y);
            });
#else
        QSKIP("without HDF5");
#endif
    }

    /// What becomes of pixels and positions on the way, and of what I0 is.
    void options()
    {
#ifdef FLOKLUK_HAVE_HDF5
        struct Case {
            const char *name;
            QString options;
            Stack size;
            std::function<std::pair<double, double>(int e, int y, int x)> wanted;
            double x; ///< of the second column
        };
        const auto counts = [](int e, int y, int x) {
            return stack.counts(e, y, x);
        };
        forEach<Case>(
            {{"dark and flat", "--dark dark.h5::/dark --flat flat.h5::/flat", stack,
              [&](int e, int y, int x) { return std::make_pair(counts(e, y, x) - 1, 799.0); }, -0.5},
             {"mean of a region", "--i0-region 1,2,3,4", stack,
              [&](int e, int y, int x) { return std::make_pair(counts(e, y, x), counts(e, 2, 1) + 5.5); }, -0.5},
             {"crop",
              "--crop 1,1,4,3 --flat flat.h5::/flat",
              {3, 2, 3},
              [&](int e, int y, int x) { return std::make_pair(counts(e, y + 1, x + 1), 800.0); },
              0},
             {"bin",
              "--bin 2 --i0-region 1,2,3,4",
              {3, 2, 2},
              [&](int e, int y, int x) { return std::make_pair(counts(e, 2 * y, 2 * x) + 5.5, counts(e, 2, 1) + 5.5); },
              0.25},
             {"crop, then bin",
              "--crop 1,0,5,4 --bin 2 --i0-region 1,2,3,4",
              {3, 2, 2},
              [&](int e, int y, int x) {
                  return std::make_pair(counts(e, 2 * y, 2 * x + 1) + 5.5, counts(e, 2, 1) + 5.5);
              },
              0.75},
             {"flat per energy", "--flat flat.h5::/each", stack,
              [&](int e, int y, int x) { return std::make_pair(counts(e, y, x), 2 * counts(e, y, x)); }, -0.5},
             {"I0 images of the file", "--i0 ::/each", stack,
              [&](int e, int y, int x) { return std::make_pair(counts(e, y, x), 3 * counts(e, y, x)); }, -0.5},
             {"fluorescence", "--signal fluorescence --flat flat.h5::/flat", stack,
              [&](int e, int y, int x) { return std::make_pair(counts(e, y, x) / 800, 0.0); }, -0.5},
             { "absorption",
               "--signal absorption",
               stack,
               [&](int e, int y, int x) { return std::make_pair(counts(e, y, x), 0.0); },
               -0.5 }},
            [](const Case &c) {
                ImportFolder folder;
                {
                    Hdf5Maker flat(folder.path("flat.h5"));
                    flat.numbers("/flat", std::vector<double>(20, 800), {4, 5});
                    flat.numbers("/each", stack.values("eyx", 2), {3, 4, 5});
                    Hdf5Maker(folder.path("dark.h5")).numbers("/dark", {std::vector<double>(20, 1)}, {4, 5});
                    Hdf5Maker file(folder.path("a.h5"));
                    newStxm(&file, "eyx", {"energy", "sample_y", "sample_x"}, {3, 4, 5});
                    file.numbers("/each", stack.values("eyx", 3), {3, 4, 5});
                }
                QVERIFY2(folder.run("a.h5 " + c.options) == 0, qPrintable(folder.err));
                QCOMPARE(differences(folder, c.size, c.wanted), QString());
                QCOMPARE(folder.map(0).record(1).x, c.x);
            });
#else
        QSKIP("without HDF5");
#endif
    }

    /// Every form of values in a file comes out as it went in; files per energy find their energies and their I0.
    void tiffFiles()
    {
#ifdef FLOKLUK_HAVE_TIFF
        struct Case {
            const char *name;
            std::function<void(const ImportFolder &folder)> make;
            QString line;
            double I0;
        };
        const auto pages = [](void (*write)(const QString &, const std::vector<double> &, int, int, const TiffForm &),
                              const TiffForm &form) {
            return [=](const ImportFolder &folder) {
                write(folder.path("a.tif"), stack.values("eyx", form.bits == 8 ? 0.25 : 1), 5, 4, form);
                folder.write("a.txt", "# energies\n7.1\n7.11\n7.12\n");
            };
        };
        const auto files = [](const char *pattern, bool areFlatsEach) {
            return [=](const ImportFolder &folder) {
                for (int e = 0; e < 3; ++e) {
                    const QString energy = QString::number(7120 - 10 * e) + ".5";
                    writeTiff(folder.path(QString(pattern).arg(energy)), frame(2 - e));
                    if (areFlatsEach)
                        writeTiff(folder.path("flat_" + QString(pattern).arg(energy)), std::vector<double>(20, 800));
                }
                if (!areFlatsEach)
                    writeTiff(folder.path("bkg.tif"), std::vector<double>(20, 800));
            };
        };
        const QString one = "a.tif --i0 i0.txt";
        forEach<Case>(
            {{"16 bits", pages(writeTiff<std::uint16_t>, {}), one, 800},
             {"8 bits", pages(writeTiff<std::uint8_t>, {8}), one, 800},
             {"32 bits, big-endian",
              pages(writeTiff<std::uint32_t>, {32, SAMPLEFORMAT_UINT, COMPRESSION_NONE, 0, "wb"}), one, 800},
             {"signed, BigTIFF", pages(writeTiff<std::int16_t>, {16, SAMPLEFORMAT_INT, COMPRESSION_NONE, 0, "w8"}), one,
              800},
             {"floats, tiles", pages(writeTiff<float>, {32, SAMPLEFORMAT_IEEEFP, COMPRESSION_NONE, 16}), one, 800},
             {"doubles, LZW", pages(writeTiff<double>, {64, SAMPLEFORMAT_IEEEFP, COMPRESSION_LZW}), one, 800},
             {"Deflate, tiles", pages(writeTiff<std::uint16_t>, {16, SAMPLEFORMAT_UINT, COMPRESSION_ADOBE_DEFLATE, 16}),
              one, 800},
             {"PackBits", pages(writeTiff<std::uint16_t>, {16, SAMPLEFORMAT_UINT, COMPRESSION_PACKBITS}), one, 800},
             {"energy in the name", files("s_%1_eV_1.tif", true),
              "s_7120.5_eV_1.tif s_7110.5_eV_1.tif s_7100.5_eV_1.tif flat_s_7120.5_eV_1.tif flat_s_7100.5_eV_1.tif "
              "flat_s_7110.5_eV_1.tif",
              800},
             { "a folder, one flat",
               files("s%1eV.tif", false),
               ".",
               800 }},
            [](const Case &c) {
                ImportFolder folder;
                folder.write("i0.txt", "7000 800\n7200 800\n");
                c.make(folder);
                QVERIFY2(folder.run(c.line == "." ? QFileInfo(folder.path("bkg.tif")).path() : c.line) == 0,
                         qPrintable(folder.err));
                const bool isSmall = QByteArray(c.name) == "8 bits";
                const auto wanted = [&](int e, int y, int x) {
                    const double value = stack.counts(e, y, x);
                    return std::make_pair(isSmall ? std::floor(value / 4) : value, c.I0);
                };
                QCOMPARE(differences(folder, stack, wanted), QString());
                QVERIFY(folder.maps()[1].contains("_7110."));
            });
#else
        QSKIP("without TIFF");
#endif
    }

    /// Text images of a microscope: header, images, I0 between the points of its spectrum.
    void textImages()
    {
        ImportFolder folder;
        QVERIFY(writeXim(folder));
        QVERIFY2(folder.run("a.hdr") == 0, qPrintable(folder.err));
        const auto wanted = [](int e, int y, int x) {
            return std::make_pair(stack.counts(e, y, x), 1200 + 300.0 * e);
        };
        QCOMPARE(differences(folder, stack, wanted), QString());
        QVERIFY(folder.map(0).headerText().contains("AXIS 1 y um 7 0.5 3"));
        QCOMPARE(folder.run("a.hdr --list", true), 0);
        QVERIFY2(folder.out.contains("3 images of 5 x 4 pixels, 700 to 703 eV"), qPrintable(folder.out));
    }

    /// Each mistake: exit code 2, one sentence that names it, and nothing in the folder.
    void badInput()
    {
        struct Case {
            const char *name;
            std::function<void(const ImportFolder &folder)> make;
            QString line;
            QString said;
        };
        QVector<Case> cases = {
            {"no file", [](const ImportFolder &) {}, "a.h5", "there is no such file"},
            {"text in the place of an image", [](const ImportFolder &f) { f.write("a.tif", "7000 x\n"); }, "a.tif",
             "a.tif"},
            {"empty", [](const ImportFolder &f) { f.write("a.tif", ""); }, "a.tif", "is empty"},
            {"header cut off", [](const ImportFolder &f) { f.write("a.hdr", ximHeader().left(300)); }, "a.hdr",
             "cut off"},
            {"fewer points than announced", [](const ImportFolder &f) { writeXim(f, "4, 700, 701, 702"); }, "a.hdr",
             "StackAxis"},
            {"image missing", [](const ImportFolder &f) { writeXim(f, "4, 700, 701, 702, 703"); }, "a.hdr",
             "no a_a003.xim"},
            {"image of another shape",
             [](const ImportFolder &f) { writeXim(f), f.write("a_a002.xim", ximImage(2, 6)); }, "a.hdr", "6 x 4"},
            {"I0 elsewhere", [](const ImportFolder &f) { writeXim(f), f.write("a.xsp", "600 1\n701 2\n"); }, "a.hdr",
             "no incident intensity at 701.5"},
            {"I0 zero", [](const ImportFolder &f) { writeXim(f), f.write("a.xsp", "600 0\n710 0\n"); }, "a.hdr",
             "zero or negative"},
            {"no I0", [](const ImportFolder &f) { writeXim(f), QFile::remove(f.path("a.xsp")); }, "a.hdr",
             "--flat FILE, or an empty region"},
            {"more energies", [](const ImportFolder &f) { writeXim(f), f.write("e.txt", "1000\n1001\n"); },
             "a.hdr --energies e.txt", "images is 3, that of energies 2"},
            {"energies of two units", [](const ImportFolder &f) { writeXim(f), f.write("e.txt", "99\n100\n101\n"); },
             "a.hdr --energies e.txt", "name the unit"},
            {"no unit of energies", [](const ImportFolder &f) { writeXim(f), f.write("e.txt", "1000 nm\n"); },
             "a.hdr --energies e.txt", "\"nm\" in line 1"},
            {"I0 of absorptions", [](const ImportFolder &f) { writeXim(f); },
             "a.hdr --signal absorption --i0-region 0,0,1,1", "absorptions have no I0"},
            {"nine energies", [](const ImportFolder &f) { writeXim(f); }, "a.hdr --pick 9", "a number from 2 to 8"},
            {"images as reference", [](const ImportFolder &f) { writeXim(f); }, "--refs a.hdr",
             "name it before --refs"},
            {"no energy in a line", [](const ImportFolder &f) { writeXim(f), f.write("e.txt", "1000\nx\n"); },
             "a.hdr --energies e.txt", "line 2"},
            {"region outside", [](const ImportFolder &f) { writeXim(f); }, "a.hdr --crop 0,0,6,4",
             "0,0,6,4 does not lie within"},
            {"squares too large", [](const ImportFolder &f) { writeXim(f); }, "a.hdr --bin 5",
             "larger than the images"},
            {"I0 twice", [](const ImportFolder &f) { writeXim(f); }, "a.hdr --i0 a.xsp --i0-region 0,0,1,1",
             "one of --flat, --i0"},
            {"no image near", [](const ImportFolder &f) { writeXim(f); }, "a.hdr --pick 700,800",
             "no image near 800 eV"},
            {"far too many columns",
             [](const ImportFolder &f) {
                 writeXim(f), f.write("a_a002.xim", QByteArray(4000000, '1').replace("1", "1 "));
             },
             "a.hdr", "far too many"},
        };
#ifdef FLOKLUK_HAVE_HDF5
        const auto h5 = [](const Make &make) {
            return [make](const ImportFolder &folder) {
                Hdf5Maker file(folder.path("a.h5"));
                make(&file);
            };
        };
        const auto cut = [](const ImportFolder &folder) {
            {
                Hdf5Maker file(folder.path("b.h5"));
                exchange(&file);
            }
            folder.write("a.h5", tables::bytesOf(folder.path("b.h5")).left(2000));
        };
        cases += {
            {"cut off", cut, "a.h5", "damaged or cut off"},
            {"no layout", h5([](Hdf5Maker *f) {
                 f->list("/x", {1, 2});
             }),
             "a.h5", "--list proposes"},
            {"no energies", h5([](Hdf5Maker *f) {
                 f->numbers("/exchange/data", stack.values(), {3, 4, 5});
             }),
             "a.h5", "--energies FILE"},
            {"other energies", h5([](Hdf5Maker *f) {
                 exchange(f, {1, 2});
             }),
             "a.h5", "images is 3, that of energies 2"},
            {"negative energy", h5([](Hdf5Maker *f) {
                 exchange(f, {-1, 2, 3});
             }),
             "a.h5 --i0-region 0,0,1,1", "an energy is zero"},
            {"no data", h5([](Hdf5Maker *f) {
                 f->numbers("/exchange/data", {}, {3, 4, 5}, {-1, {1, 4, 5}, false, true});
             }),
             "a.h5", "holds no data"},
            {"40 million columns", h5([](Hdf5Maker *f) {
                 f->numbers("/exchange/data", {}, {3, 1, 40000000}, {-1, {1, 1, 1000}, false, true});
             }),
             "a.h5", "40000000 columns"},
            {"flat of another shape", h5([](Hdf5Maker *f) {
                 exchange(f), f->numbers("/flat", std::vector<double>(20, 1), {5, 4});
             }),
             "a.h5 --flat a.h5::/flat", "has 4 x 5 pixels"},
            {"a dead pixel", h5([](Hdf5Maker *f) {
                 exchange(f), f->numbers("/flat", std::vector<double>(20, 0), {4, 5});
             }),
             "a.h5 --flat a.h5::/flat", "zero or negative in 20 pixels"},
            {"a wrong path", h5([](Hdf5Maker *f) { exchange(f); }),
             "a.h5 --data ::/exchange/nothing --energy ::/exchange/energy", "no dataset of images"},
            {"a spectrum of images", h5([](Hdf5Maker *f) { exchange(f); }), "--refs a.h5", "a.h5"},
        };
#endif
#ifdef FLOKLUK_HAVE_TIFF
        cases += {
            {"TIFF cut off",
             [](const ImportFolder &f) {
                 writeTiff(f.path("b.tif"), stack.values());
                 f.write("a.tif", tables::bytesOf(f.path("b.tif")).left(60));
             },
             "a.tif", "cut off"},
            {"TIFF without a page", [](const ImportFolder &f) { f.write("a.tif", QByteArray("II*\0\0\0\0\0", 8)); },
             "a.tif", "cut off"},
            {"two stacks", [](const ImportFolder &f) { writeTiff(f.path("a.tif"), stack.values()), writeXim(f); },
             "a.tif a.hdr", "two stacks"},
            {"no energies beside", [](const ImportFolder &f) { writeTiff(f.path("a.tif"), stack.values()); }, "a.tif",
             "--energies FILE"},
            {"files of other sizes",
             [](const ImportFolder &f) {
                 writeTiff(f.path("a_1000eV.tif"), frame(0));
                 writeTiff(f.path("b_1001eV.tif"), frame(0), 4, 5);
             },
             "a_1000eV.tif b_1001eV.tif --i0-region 0,0,1,1", "4 x 5"},
            {"I0 for one of two",
             [](const ImportFolder &f) {
                 for (const char *n : {"a_1000eV.tif", "b_1001eV.tif", "ref_1000eV.tif"})
                     writeTiff(f.path(n), frame(0));
             },
             "a_1000eV.tif b_1001eV.tif ref_1000eV.tif", "none for 1001 eV"},
        };
#endif
        for (const Case &c : cases) {
            forEach<Case>({c}, [](const Case &one) {
                ImportFolder folder;
                one.make(folder);
                const int code = folder.run(one.line);
                QVERIFY2(folder.err.contains(one.said), qPrintable(folder.err));
                QCOMPARE(code, 2);
                QCOMPARE(folder.err.count('\n'), 1);
                QCOMPARE(folder.written(), QStringList("none"));
            });
        }
    }

    /// A folder that was there keeps what it holds when the import fails, and nothing else comes into it.
    void failureLeavesTheFolder()
    {
        ImportFolder folder;
        QVERIFY(writeXim(folder));
        QCOMPARE(folder.run("a.hdr"), 0);
        const QStringList before = folder.written();
        QVERIFY(folder.write("a_a002.xim", ximImage(2, 6))); // found when two maps have been written
        QCOMPARE(folder.run("a.hdr"), 2);
        QCOMPARE(folder.written(), before);
        QVERIFY(writeXim(folder) && folder.write("a_a002.xim", ximImage(1)));
        QVERIFY(QDir(folder.path("out")).remove("job.json") && QDir(folder.path("out")).mkdir("job.json"));
        QCOMPARE(folder.run("a.hdr"), 3);
        QVERIFY2(folder.err.contains("cannot write"), qPrintable(folder.err));
        QCOMPARE(folder.written(), before); // of maps that were there the former ones
        QCOMPARE(folder.map(2).record(0).I, 201.0);
    }

    /// What can be imported and should be looked at.
    void doubts()
    {
        ImportFolder folder;
        QVERIFY(writeXim(folder, "3, 700, 700, 703"));
        QVERIFY(folder.write("a_a001.xim", "-" + ximImage(1)));
        QCOMPARE(folder.run("a.hdr --pick 700,703,703.1"), 0);
        for (const char *said : {"in all maps: 1;", "several images have the energy 700 eV", "nearest of two energies"})
            QVERIFY2(folder.err.contains(said), qPrintable(folder.err));
#ifdef FLOKLUK_HAVE_TIFF
        writeTiff(folder.path("st.tif"), stack.values());
        writeTiff(folder.path("ref_8324eV.tif"), frame(0));
        QVERIFY(folder.write("en.txt", "8324\n8330\n8340\n"));
        QVERIFY2(folder.run("st.tif ref_8324eV.tif --energies en.txt") == 0, qPrintable(folder.err));
#endif
    }

    /// The job takes the picked energies, by name or by number, and marks the one that the references differ most at.
    void job()
    {
        ImportFolder folder;
        QVERIFY(writeXim(folder));
        QVERIFY(folder.write("r1.dat", "690 0\n701 0.2\n702 1\n710 1\n") &&
                folder.write("r2.dat", "690 0\n701 0.8\n702 1\n710 1\n"));
        QCOMPARE(folder.run("a.hdr --refs r1.dat r2.dat --valences 2,3 --pick 699.9,701.4"), 0);
        const QJsonArray energies = folder.json("job.json")["energies"].toArray();
        QCOMPARE(energies.size(), 2);
        QCOMPARE(energies[1].toObject()["energy"].toDouble(), 701.5);
        QVERIFY(energies[1].toObject()["vPoint"].toBool() && !energies[0].toObject()["vPoint"].toBool());
        QCOMPARE(folder.maps().size(), 3);
        QCOMPARE(folder.json("import.json")["inputs"].toArray().size(), 7);
    }

    void picking()
    {
        PickInput input;
        for (int i = 0; i < 20; ++i) {
            input.energies << i;
            input.thumbnails.push_back({i == 7 ? 5.0F : 0.0F, i == 12 ? 3.0F : 0.0F, i == 13 ? 3.1F : 0.0F});
        }
        QCOMPARE(pickEnergies(input, 20).size(), 20);
        QCOMPARE(pickEnergies(input, 5), QVector<int>({0, 7, 12, 13, 19}));
        QCOMPARE(pickEnergies(input, 8).size(), 8); // of which most are alike
        for (const int edge : {5, 9}) {
            QVector<double> mu;
            for (int i = 0; i < 20; ++i)
                mu << (i < edge ? 1 : 3);
            input.references << mu;
        }
        const QVector<int> picked = pickEnergies(input, 3);
        QVERIFY(picked[1] >= 5 && picked[1] < 9); // one reference is above its edge, the other below
        QCOMPARE(mostDifferent(input, picked), picked[1]);
    }

    /// Planned are only measured energies that the references reach, as the job will be analysed; no plan for
    /// references that are alike.
    void plannedPicking()
    {
        struct Case {
            const char *name;
            int count, other; ///< the second reference
            double spacing;   ///< of the energies, eV
            bool isPlanned, hasVPoint;
        };
        forEach<Case>({{"non-equivalent", 6, 2, 2.5, true, false},
                       {"too few for it", 3, 1, 2.5, true, true},
                       {"dense", 8, 2, 0.01, true, false},
                       {"alike", 6, 0, 2.5, false, false}},
                      [](const Case &c) {
                          const ImportFolder folder;
                          const sample::EdgeModel model;
                          PlannedPickInput input;
                          for (const int j : {0, c.other}) {
                              ImportedSpectrum spectrum;
                              for (double energy = 8100; energy <= 8600; energy += 0.5) {
                                  spectrum.energy << energy;
                                  spectrum.mu << model.mu(j, energy);
                              }
                              QVERIFY(folder.write("r.dat", spectrumFileText(spectrum, "r").text));
                              input.references.emplace_back();
                              QVERIFY(input.references.back().spectrum.read(folder.path("r.dat")));
                          }
                          constexpr int beyond = 8; // are not reached
                          const double last = c.spacing > 1 ? 8600 : 8352;
                          for (int i = -100; i < beyond; ++i)
                              input.energies << last + (i + 0.5) * c.spacing;
                          const PlannedPick found = plannedPick(input, c.count);
                          QCOMPARE(found.error.isEmpty(), c.isPlanned);
                          QCOMPARE(found.picked.size(), c.isPlanned ? c.count : 0);
                          QCOMPARE(found.picked.contains(found.vPoint), c.hasVPoint);
                          QVERIFY(std::is_sorted(found.picked.begin(), found.picked.end()));
                          for (const int i : found.picked)
                              QVERIFY(i >= 0 && (i < 100 || c.spacing < 1));
                      });
    }

    /// Particles that drift, with a noise of 0.05 in absorption: the shifts come out to 0.15 pixels (rms), and the
    /// common area is what all images show.
    void alignment()
    {
#ifdef FLOKLUK_HAVE_KISSFFT
        constexpr int width = 128, height = 96, fine = 4, margin = 6;
        const sample::ParticleField field((width + 2 * margin) * fine, (height + 2 * margin) * fine, 3);
        const sample::EdgeModel model;
        sample::Random random(1, 1);
        std::vector<std::vector<sample::Pixel>> rows(static_cast<std::size_t>(field.height()));
        for (int y = 0; y < field.height(); ++y) {
            rows[static_cast<std::size_t>(y)].resize(static_cast<std::size_t>(field.width()));
            field.fillRow(y, rows[static_cast<std::size_t>(y)].data());
        }
        const double trueX[] = {-1.25, 2.5, 3.75, 4.5, -4.25, 5, -2, 0.75},
                     trueY[] = {3, 0.5, -5, 2.25, 4.5, -1.75, 1, -0.25};
        const auto read = [&](int k, Image *image, QString *) {
            const double energy = sample::mapEnergies[k];
            image->resize(width, height);
            for (int i = 0; i < width * height; ++i) {
                const int left = qRound((i % width + margin - trueX[k]) * fine);
                const int top = qRound((i / width + margin - trueY[k]) * fine);
                double sum = 0;
                for (int j = 0; j < fine * fine; ++j) {
                    const sample::Pixel &pixel =
                        rows[static_cast<std::size_t>(top + j / fine)][static_cast<std::size_t>(left + j % fine)];
                    sum += pixel.background + pixel.backgroundSlope * energy;
                    for (int r = 0; r < sample::referenceCount; ++r)
                        sum += pixel.thickness * pixel.fractions[r] * model.normalized(r, energy);
                }
                image->values[static_cast<std::size_t>(i)] = sum / (fine * fine) + 0.05 * random.normal();
            }
            return true;
        };
        Alignment found;
        QString error;
        QVERIFY(alignImages(
            sample::mapCount, read, [](double) { return true; }, &found, &error));
        double squares = 0;
        for (int k = 0; k < sample::mapCount; ++k) {
            const double dx = found.shifts[k].x - (trueX[k] - trueX[7]);
            const double dy = found.shifts[k].y - (trueY[k] - trueY[7]);
            squares += (dx * dx + dy * dy) / (2 * (sample::mapCount - 1));
        }
        QVERIFY2(std::sqrt(squares) <= 0.15, qPrintable(QString::number(std::sqrt(squares))));
        QVERIFY(found.common.left() >= 5 && found.common.right() <= width - 1 - 4 &&
                found.common.width() >= width - 12);
        QVERIFY(!alignImages(
            2, read, [](double) { return false; }, &found, &error));
#else
        QSKIP("without kissfft");
#endif
    }

    /// Linear between four pixels; a whole shift moves values as they are, up to the border.
    void shiftedImages()
    {
        Image image;
        image.resize(4, 3);
        for (int i = 0; i < 12; ++i)
            image.values[static_cast<std::size_t>(i)] = 10 * (i / 4) + i % 4;
        QCOMPARE(shifted(image, 1.0, -1.0, QRect(0, 1, 3, 2)).values, std::vector<double>({1, 2, 3, 11, 12, 13}));
        QCOMPARE(shifted(image, -0.5, 0.25, QRect(1, 0, 2, 1)).values, std::vector<double>({3, 4}));
    }
};

QTEST_GUILESS_MAIN(TestImportStacks)

#include "TestImportStacks.moc"
