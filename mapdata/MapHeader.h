#pragma once

#include "mapdata/MapGrid.h"

#include <QString>
#include <QVector>
#include <QtGlobal>

#include <optional>

/// How a data line becomes a pixel record; tokens are counted from 0.
struct RecordLayout {
    qint64 tokenX = 0;
    qint64 tokenY = 1;
    qint64 tokenI = 2;          ///< transmitted intensity
    qint64 tokenI0 = 3;         ///< incident intensity
    qint64 tokensNeeded = 4;    ///< tokens a line must have at least; further ones are ignored
    qint64 tokensWithoutI0 = 3; ///< a line of exactly so many gives I as transmission ratio, I0 being 1; -1: none does
};
bool operator==(const RecordLayout &l, const RecordLayout &r);

struct MapFormat;

/// What the header lines of a map data file say.
class MapHeader
{
public:
    MapHeader();

    /// Takes one header line, simplified. The first line of a file decides about its format.
    void addLine(const QString &line, bool isFirstOfFile);

    /// Takes over what the header lines further down in the file said.
    void append(const MapHeader &later);

    /// A header of the same format and columns that has not seen a line.
    MapHeader continuation() const;

    /// Where the values stand in the data lines that follow.
    RecordLayout layout() const;
    /// Whether the size of the map follows from the positions of its records, whatever the axis lines say.
    bool sizeIsFromPositions() const;

    /// All lines, with a line feed between them.
    const QString &text() const { return m_text; }
    /// The energy as written in the last energy line; null without one.
    const QString &energyText() const { return m_energyText; }
    /// What the axis lines say; a size is 0 without one or when the number is beyond an int.
    MapGrid grid() const;

private:
    struct Axis {
        int length = 0; ///< pixels
        QString unit;
        MapAxis positions;
    };
    static Axis readAxis(const QVector<QString> &tokens);

    QString m_text;
    QString m_energyText;
    std::optional<Axis> m_x;
    std::optional<Axis> m_y;
    const MapFormat *m_format;
    int m_columnI0 = 0;
    int m_columnI = 0;
};
