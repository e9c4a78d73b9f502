#pragma once

#include "mapdata/A2DData.h"
#include "mapdata/MapHeader.h"

#include <string_view>

/// Turns lines into pixel records and collects the header lines between them. Writes into the slots [first, first +
/// slots) of the columns and never beyond: records without a slot are dropped.
class PixelLineParser
{
public:
    /// `header` says which kind of file it is and which columns to take; see MapHeader::continuation().
    PixelLineParser(const MapHeader &header, const A2DData::Columns &columns, qint64 first, qint64 slots);

    /// Reads a block of whole lines; the last may lack its line feed.
    void parse(std::string_view block);

    /// Records so far.
    qint64 count() const { return m_next - m_first; }
    /// Whether records were dropped.
    bool lacksRoom() const { return m_lacksRoom; }
    /// The header as it stands after the lines read.
    const MapHeader &header() const { return m_header; }

private:
    bool readUsualLine(const char *&p, const char *end);
    void readAnyLine(std::string_view line);
    void readDataLine(std::string_view line);
    void add(double x, double y, double I, double I0);

    MapHeader m_header;
    RecordLayout m_layout;
    A2DData::Columns m_columns;
    qint64 m_first;
    qint64 m_next;
    qint64 m_end;
    bool m_lacksRoom = false;
};

/// Whether the first token of the line begins with "#".
bool isHeaderLine(std::string_view line);
