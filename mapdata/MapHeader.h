#pragma once

#include <QString>

#include <optional>

/// How a data line becomes a pixel record; tokens are counted from 0, and token 0 and 1 are x and y.
struct RecordLayout {
    qint64 tokensNeeded = 4;      ///< tokens a line must have at least; further ones are ignored
    qint64 tokenI = 2;            ///< the token of the transmitted intensity
    qint64 tokenI0 = 3;           ///< the token of the incident intensity
    bool threeMakeARecord = true; ///< with exactly three tokens the third is the transmission ratio: I, with I0 = 1
};

/// What the header lines of a map data file say.
class MapHeader
{
public:
    /// Takes one header line, simplified. The first line of a file decides about its kind.
    void addLine(const QString &line, bool isFirstOfFile);

    /// Takes over what the header lines further down in the file said.
    void append(const MapHeader &later);

    /// A header of the same kind and columns that has not seen a line.
    MapHeader continuation() const;

    /// Whether the header names the columns of I0 and I; then the size of the map comes from its positions.
    bool isColumnMapped() const { return m_isColumnMapped; }
    RecordLayout layout() const;
    bool hasColumnsOf(const MapHeader &other) const;

    /// All lines, with a line feed between them.
    const QString &text() const { return m_text; }
    /// The energy as written in the last energy line; null without one.
    const QString &energyText() const { return m_energyText; }
    /// Pixels per row and rows, from the axis lines; 0 without one or when the number is beyond an int.
    int nx() const { return m_nx.value_or(0); }
    int ny() const { return m_ny.value_or(0); }

private:
    QString m_text;
    QString m_energyText;
    std::optional<int> m_nx;
    std::optional<int> m_ny;
    bool m_isColumnMapped = false;
    int m_columnI0 = 0;
    int m_columnI = 0;
};
