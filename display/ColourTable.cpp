#include "display/ColourTable.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace
{

constexpr quint32 opaque = 0xff000000u;
constexpr int segmentColours = 256;

/// The corners between which the colours of each type run, 256 to a segment.
const std::initializer_list<quint32> corners[colourTableTypes] = {
    {0x000000, 0xff0000, 0xffff00, 0xffffff}, // black, red, yellow, white
    {0x000000, 0x00ff00, 0x00ffff, 0xffffff}, // black, green, cyan, white
    {0x000000, 0x0000ff, 0xff00ff, 0xffffff}, // black, blue, magenta, white
    {0xff0000, 0x00ff00, 0x0000ff},           // red, green, blue
    {0xff0000, 0x0000ff, 0x00ff00},           // red, blue, green
    {0x00ff00, 0xff0000, 0x0000ff},           // green, red, blue
    {0x00ff00, 0x0000ff, 0xff0000},           // green, blue, red
    {0x0000ff, 0xff0000, 0x00ff00},           // blue, red, green
    {0x0000ff, 0x00ff00, 0xff0000},           // blue, green, red
    {0xff0000, 0x00ffff},                     // red, cyan
    {0x00ff00, 0xff00ff},                     // green, magenta
    {0x0000ff, 0xffff00},                     // blue, yellow
};

int channel(quint32 colour, int shift)
{
    return static_cast<int>(colour >> shift & 0xff);
}

quint32 pixel(int red, int green, int blue)
{
    return opaque | static_cast<quint32>(red) << 16 | static_cast<quint32>(green) << 8 | static_cast<quint32>(blue);
}

/// Colour i of 0 ... 255 on the way from one corner to the next: every channel stays, rises or falls with i.
quint32 between(quint32 from, quint32 to, int i)
{
    const auto mix = [=](int shift) {
        const int start = channel(from, shift);
        return start + (channel(to, shift) - start) / (segmentColours - 1) * i;
    };
    return pixel(mix(16), mix(8), mix(0));
}

/// `colour`, its dark channels filled from `neighbour`.
quint32 mixture(quint32 colour, quint32 neighbour)
{
    const auto mix = [=](int shift) {
        const int own = channel(colour, shift);
        const int other = channel(neighbour, shift);
        return own < other ? (own + 2 * other) / 3 : own;
    };
    constexpr int tooBright = 500; // sum of the channels: hard to see on white
    const int red = mix(16);
    const int green = mix(8);
    const int blue = mix(0);
    if (red + green + blue <= tooBright)
        return pixel(red, green, blue);
    return pixel(static_cast<int>(red * 0.8), static_cast<int>(green * 0.6), static_cast<int>(blue * 0.8));
}

} // namespace

ColourTable colourTable(int type)
{
    const auto &path = corners[type >= 0 && type < colourTableTypes ? type : 0];
    ColourTable colours;
    colours.reserve(static_cast<int>(path.size() - 1) * segmentColours);
    for (auto corner = path.begin(); corner + 1 != path.end(); ++corner) {
        for (int i = 0; i < segmentColours; ++i)
            colours.append(between(*corner, *(corner + 1), i));
    }
    return colours;
}

ColourTable evenColours()
{
    // Every 32nd colour of "viridis" by S. van der Walt and N. Smith (2015, CC0), whose lightness rises evenly.
    const quint32 knots[] = {0x440154, 0x472d7b, 0x3b528b, 0x2c728e, 0x21918c, 0x28ae80, 0x5ec962, 0xaddc30, 0xfde725};
    constexpr double segments = 8;
    ColourTable colours;
    for (int i = 0; i < segmentColours; ++i) {
        const double at = i * segments / (segmentColours - 1);
        const int knot = std::min(static_cast<int>(at), static_cast<int>(segments) - 1);
        const auto mix = [&](int shift) {
            const int start = channel(knots[knot], shift);
            return static_cast<int>(std::lround(start + (channel(knots[knot + 1], shift) - start) * (at - knot)));
        };
        colours.append(pixel(mix(16), mix(8), mix(0)));
    }
    return colours;
}

ColourTable greyColours()
{
    ColourTable colours;
    for (int i = 0; i < segmentColours; ++i)
        colours.append(pixel(i, i, i));
    return colours;
}

ColourTable lineColours()
{
    const ColourTable cycle = {
        pixel(0, 0, 0),       pixel(255, 0, 0),     pixel(0, 0, 255),     pixel(120, 220, 120), pixel(200, 200, 0),
        pixel(240, 0, 240),   pixel(0, 240, 240),   pixel(160, 0, 0),     pixel(0, 160, 0),     pixel(0, 0, 160),
        pixel(255, 160, 160), pixel(160, 160, 160), pixel(120, 220, 120), pixel(160, 160, 255), pixel(240, 160, 0),
    };
    return cycle + cycle + cycle;
}

ColourTable extendedColours(const ColourTable &base, int count)
{
    ColourTable colours = base;
    while (!colours.isEmpty() && colours.size() < count) {
        const int size = colours.size(); // the next pass runs over the longer list
        for (int k = 1; k <= size && colours.size() < count; ++k)
            colours.append(mixture(colours.at(k % size), colours.at(k - 1)));
    }
    return colours;
}
