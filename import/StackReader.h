#pragma once

#include "import/ImageStack.h"
#include "import/ImportOptions.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// One energy of a stack as its map has it.
struct Exposure {
    Image signal;       ///< I; the absorption itself where level is 0 and there is no `incident`
    Image incident;     ///< I0 of each pixel; empty where one value holds for all
    double level = 0.0; ///< I0 of all pixels
};

/// ln(I0 / I) of each pixel, or the stored absorption; 0 where it is no finite number. In the place of the signal.
void toAbsorption(Exposure *exposure);

/// Reads a stack by rising energy: dark frames taken away, cropped, binned, with its I0.
class StackReader
{
public:
    /// Checks the stack against the options and reads what all energies share. False, with one sentence, when energies
    /// or I0 are missing or do not fit.
    [[nodiscard]] bool prepare(ImageStack *stack, const ImportOptions &options, QString *error);

    int count() const { return m_order.size(); }
    int width() const { return m_width; } ///< of the exposures, in pixels
    int height() const { return m_height; }
    const QVector<double> &energies() const { return m_energies; } ///< eV, rising
    const PixelAxis &x() const { return m_x; }
    const PixelAxis &y() const { return m_y; }
    const QString &incidentSource() const { return m_incidentSource; } ///< where I0 comes from, for people

    /// False, with one sentence, when the image cannot be read or I0 is not positive everywhere.
    [[nodiscard]] bool read(int index, Exposure *exposure, QString *error);

private:
    bool takeEnergies(QString *error);
    bool takeGeometry(QString *error);
    bool takeDark(QString *error);
    bool takeIncident(QString *error);
    bool takeFlat(QString *error);
    bool chooseIncident(QString *error);
    bool readFlat(int frame, Image *image, QString *error);
    bool checkIncident(const Image &image, double energy, QString *error) const;
    bool sameSize(const FrameSource &frames, const QString &what, QString *error) const;
    void reduce(Image *image) const;
    PixelAxis reduced(const PixelAxis &axis, int first, int count) const;

    ImageStack *m_stack = nullptr;
    ImportOptions m_options;
    QString m_name; ///< of the stack's first file
    QVector<int> m_order;
    QVector<double> m_energies;
    PixelAxis m_x, m_y;
    QRect m_crop;
    int m_width = 0, m_height = 0;
    Image m_dark; ///< uncropped
    Image m_flat; ///< I0 of all energies, reduced
    bool m_flatIsPerEnergy = false;
    bool m_usesRegion = false;
    QString m_incidentSource;
};
