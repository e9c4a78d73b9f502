#pragma once

#include <QVector>

/// Colours as 0xffRRGGBB, the pixels of QImage::Format_RGB32. In a colour scale, index 0 is the low end.
using ColourTable = QVector<quint32>;

/// How many types of colour scale there are.
constexpr int colourTableTypes = 12;

/// The colours of a scale: 0 to 2 run from black over two colours to white (768 colours), 3 to 8 through the three
/// primary colours in each order (512), 9 to 11 from a primary colour to its complement (256). Any other type is 0.
ColourTable colourTable(int type);

/// Scales besides the types, 256 colours each. From dark blue over green to yellow in steps that look even, to the
/// colour-blind and in grey print, too; and from black to white.
ColourTable evenColours();
ColourTable greyColours();

/// The 45 colours of curves: 15 that tell well apart, three times. The light green stands twice among the 15; the
/// numbering of the curves depends on it.
ColourTable lineColours();

/// `base`, and when that is fewer than `count` colours, mixtures of neighbours in the list until there are `count`.
/// Mixtures that would be too bright on white are darkened. An empty base stays empty.
ColourTable extendedColours(const ColourTable &base, int count);
