#pragma once

#include "mapdata/A2DData.h"
#include "mapdata/MapHeader.h"

#include <string_view>

/// The positions of a map that was loaded before.
struct KnownPositions {
    const double *x = nullptr;
    const double *y = nullptr;
    qint64 count = 0;
};

/// Turns lines into pixel records and collects the header lines between them. Writes into the slots [first, first +
/// slots) of the columns and never beyond: records without a slot are dropped.
class PixelLineParser
{
public:
    /// `header` says which kind of file it is and which columns to take; see MapHeader::continuation().
    /// As long as the position in each slot is that of `known`, bit for bit, none is stored; with the first other one
    /// all are.
    PixelLineParser(const MapHeader &header, const A2DData::Columns &columns, qint64 first, qint64 slots,
                    const KnownPositions &known = {});

    /// Reads a block of whole lines; the last may lack its line feed.
    void parse(std::string_view block);

    /// Records so far.
    qint64 count() const { return m_next - m_first; }
    /// Whether records were dropped.
    bool lacksRoom() const { return m_lacksRoom; }
    /// Whether all positions so far are the known ones, and none is stored.
    bool hasKnownPositions() const { return m_isKnown; }
    /// Records so far with a value that is no number.
    qint64 unreadable() const { return m_unreadable; }
    /// The header as it stands after the lines read.
    const MapHeader &header() const { return m_header; }

private:
    bool readUsualLine(const char *&p, const char *end);
    void readAnyLine(std::string_view line);
    void readDataLine(std::string_view line);
    bool add(double x, double y, double I, double I0);
    bool isKnown(double x, double y) const;
    void storeKnown();

    MapHeader m_header;
    RecordLayout m_layout;
    A2DData::Columns m_columns;
    qint64 m_first;
    qint64 m_next;
    qint64 m_end;
    KnownPositions m_known;
    bool m_isKnown;
    qint64 m_unreadable = 0;
    bool m_lacksRoom = false;
};

/// Whether the first token of the line begins with "#".
bool isHeaderLine(std::string_view line);
