#include "import/XimStack.h"

#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/StackFiles.h"
#include "import/StackHeader.h"
#include "numeric/TextScanner.h"

#include <QDir>
#include <QFileInfo>

namespace
{

/// Reads rows of numbers, all of one length; a comma may stand between them.
bool parseImage(QByteArray text, const QString &name, Image *image, QString *error)
{
    text.replace(',', ' ');
    image->width = image->height = 0;
    image->values.clear();
    numeric::LineScanner lines({text.constData(), static_cast<std::size_t>(text.size())});
    std::string_view line, token;
    while (lines.next(&line)) {
        numeric::TokenScanner tokens(line);
        qint64 count = 0;
        for (; tokens.next(&token); ++count) {
            bool good = false;
            image->values.push_back(QByteArray(token.data(), static_cast<int>(token.size())).toDouble(&good));
            if (!good || count >= longestSide) {
                *error = ImportText::tr("%1: row %2 holds a word that is no number, or far too many numbers")
                             .arg(name)
                             .arg(image->height + 1);
                return false;
            }
        }
        if (count == 0)
            continue;
        if (image->height == 0)
            image->width = static_cast<int>(count);
        if (count != image->width) {
            *error = ImportText::tr("%1: row %2 has %3 columns").arg(name).arg(image->height + 1).arg(count);
            return false;
        }
        ++image->height;
    }
    return isImageSize(image->width, image->height, name, error);
}

class XimFrames : public FrameSource
{
public:
    XimFrames(const QStringList &files, int width, int height)
        : m_files(files)
        , m_width(width)
        , m_height(height)
    {
    }

    int width() const override { return m_width; }
    int height() const override { return m_height; }
    int count() const override { return m_files.size(); }

    bool read(int frame, Image *image, QString *error) override
    {
        QByteArray text;
        const QString name = QDir::toNativeSeparators(m_files[frame]);
        if (!readFile(m_files[frame], &text, error) || !parseImage(text, name, image, error))
            return false;
        if (image->width == m_width && image->height == m_height)
            return true;
        *error = ImportText::tr("%1 has %2 pixels, the others have %3")
                     .arg(name, sizeText(image->width, image->height), sizeText(m_width, m_height));
        return false;
    }

private:
    QStringList m_files;
    int m_width, m_height;
};

bool readHeader(const QString &path, StackHeader *header, QString *error)
{
    QByteArray text;
    if (!readFile(path, &text, error))
        return false;
    if (parseStackHeader(text, header, error))
        return true;
    *error = QDir::toNativeSeparators(path) + QLatin1String(": ") + *error;
    return false;
}

} // namespace

bool openXimStack(const QString &path, ImageStack *stack, QString *error)
{
    StackHeader header;
    if (!readHeader(path, &header, error) ||
        !isImageSize(header.x.points.size(), header.y.points.size(), QDir::toNativeSeparators(path), error))
        return false;
    const QDir folder = QFileInfo(path).dir();
    const QString stem = QFileInfo(path).completeBaseName();
    QStringList images;
    for (int i = 0; i < header.energy.points.size(); ++i) {
        images << folder.filePath(QStringLiteral("%1_a%2.xim").arg(stem).arg(i, 3, 10, QLatin1Char('0')));
        if (!QFileInfo(images.last()).isFile()) {
            *error = ImportText::tr("%1 lists %2 energies, but there is no %3")
                         .arg(QDir::toNativeSeparators(path))
                         .arg(header.energy.points.size())
                         .arg(QFileInfo(images.last()).fileName());
            return false;
        }
    }
    if (header.regions > 1)
        stack->warnings << ImportText::tr("of %1 regions the first was imported").arg(header.regions);
    stack->layout = QStringLiteral("stack header with text images");
    stack->files << path << images;
    stack->energies = inEv(header.energy.points, header.energy.unit);
    stack->x = {header.x.unit.isEmpty() ? QStringLiteral("um") : header.x.unit, header.x.points};
    stack->y = {header.y.unit.isEmpty() ? QStringLiteral("um") : header.y.unit, header.y.points};
    stack->images = std::make_unique<XimFrames>(images, header.x.points.size(), header.y.points.size());
    const QString incident = folder.filePath(stem + QLatin1String(".xsp"));
    if (!QFileInfo(incident).isFile())
        return true;
    stack->files << incident;
    stack->parts << QStringLiteral("I0: ") + QFileInfo(incident).fileName();
    return readIncident(incident, stack->energies, &stack->incident, error);
}

Frames openXimFrames(const QString &path, QString *error)
{
    QByteArray text;
    Image image;
    if (!readFile(path, &text, error) || !parseImage(text, QDir::toNativeSeparators(path), &image, error))
        return nullptr;
    return std::make_unique<XimFrames>(QStringList(path), image.width, image.height);
}

bool listXim(const QString &path, QStringList *lines, QString *error)
{
    StackHeader header;
    if (!readHeader(path, &header, error))
        return false;
    const QVector<double> energies = inEv(header.energy.points, header.energy.unit);
    *lines << ImportText::tr("stack of %1 images of %2 pixels, %3 to %4 eV, %5 regions")
                  .arg(energies.size())
                  .arg(sizeText(header.x.points.size(), header.y.points.size()))
                  .arg(energies.first(), 0, 'g', 8)
                  .arg(energies.last(), 0, 'g', 8)
                  .arg(header.regions);
    return true;
}
