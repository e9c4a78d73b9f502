#include "display/DisplayPicture.h"

#include "numeric/StagedFile.h"

#include <QApplication>
#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFontMetrics>
#include <QPageSize>
#include <QPdfWriter>
#include <QStylePainter>
#include <QWidget>

#include <algorithm>

namespace
{

constexpr double inchPerMetre = 0.0254;
constexpr double pointsPerInch = 72;

QFont titleFont()
{
    QFont font;
    font.setBold(true);
    return font;
}

/// Why a file could not be written.
QString problemOf(const numeric::StagedFile &file)
{
    if (!file.problem().isEmpty())
        return file.problem();
    return QCoreApplication::translate("DisplayPicture", "There was no room for all of it.");
}

} // namespace

int DisplayPicture::titleHeight() const
{
    return title.isEmpty() ? 0 : QFontMetrics(titleFont()).height() * 3 / 2;
}

QSize DisplayPicture::fullSize() const
{
    return QSize(size.width(), size.height() + titleHeight());
}

bool DisplayPicture::paintOn(QPaintDevice *device) const
{
    QStylePainter p;
    if (!p.begin(device, widget))
        return false;
    const QSize full = fullSize();
    p.fillRect(QRect(QPoint(), full), Qt::white);
    if (!title.isEmpty()) {
        p.setFont(titleFont());
        p.setPen(Qt::black);
        const QRect line(0, 0, full.width(), titleHeight());
        p.drawText(line, Qt::AlignCenter, p.fontMetrics().elidedText(title, Qt::ElideRight, full.width()));
        p.setFont(QFont());
    }
    p.translate(0, titleHeight());
    p.setClipRect(QRect(QPoint(), size));
    paint(&p);
    return p.end();
}

double DisplayPicture::printScale() const
{
    constexpr double leastWidth = 1500;
    return std::max({2.0, widget->devicePixelRatioF(), leastWidth / std::max(1, size.width())});
}

QImage DisplayPicture::toImage(double scale) const
{
    if (fullSize().isEmpty())
        return QImage();
    QImage image((QSizeF(fullSize()) * scale).toSize(), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(scale);
    image.setDotsPerMeterX(qRound(widget->logicalDpiX() / inchPerMetre)); // fonts as large as on screen
    image.setDotsPerMeterY(qRound(widget->logicalDpiY() / inchPerMetre));
    return paintOn(&image) ? image : QImage();
}

QString DisplayPicture::save(const QString &path, double scale, numeric::FileSet *set) const
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const bool isPng = suffix == QLatin1String("png");
    if (!isPng && suffix != QLatin1String("pdf"))
        return QCoreApplication::translate("DisplayPicture", "The name must end in .png or .pdf.");
    if (fullSize().isEmpty())
        return nothingToSee();
    if (isPng)
        return saveBytes(path, pngOf(toImage(scale)), set);
    numeric::StagedFile file(path);
    return file.open() && writePdf(&file) && file.commit(set) ? QString() : problemOf(file);
}

QString DisplayPicture::nothingToSee()
{
    return QCoreApplication::translate("DisplayPicture", "There is nothing to see in this display.");
}

/// Maps are noise to the compressor: looking hard for repetitions takes several times as long and gains next to
/// nothing.
QByteArray DisplayPicture::pngOf(const QImage &image)
{
    constexpr int quickly = 60; // of 100: the level of compression, the pixels are the same for any
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG", quickly) ? bytes : QByteArray();
}

QString DisplayPicture::saveBytes(const QString &path, const QByteArray &bytes, numeric::FileSet *set)
{
    numeric::StagedFile file(path);
    const bool isSaved =
        file.open() && !bytes.isEmpty() && file.device()->write(bytes) == bytes.size() && file.commit(set);
    return isSaved ? QString() : problemOf(file);
}

bool DisplayPicture::writePdf(numeric::StagedFile *file) const
{
    QPdfWriter writer(file->device());
    writer.setTitle(title);
    writer.setResolution(widget->logicalDpiX()); // one unit is one pixel on screen
    const QSizeF page = QSizeF(fullSize()) * (pointsPerInch / widget->logicalDpiX());
    writer.setPageSize(QPageSize(page, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    return paintOn(&writer);
}
