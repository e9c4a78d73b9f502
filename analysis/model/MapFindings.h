#pragma once

#include "analysis/model/Findings.h"

class A2DData;

/// What is doubtful about the maps of the energies in use: maps without a pixel that could be analysed, maps of another
/// size than the first one in use, and pixels elsewhere than its pixels are.
void findInMaps(const AnalysisInput &input, QVector<Finding> *found);

/// Maps without I0 (0 in every record: I counts as the absorption) beside maps with it.
void findMixedIntensities(const AnalysisInput &input, QVector<Finding> *found);

/// How far the pixels of a map lie from those of another one, in steps between neighbours along the same axis (along
/// the other one where there is no step): the largest distance along one axis of two pixels with the same index. A
/// position that is no number is infinitely far away; maps of one pixel are compared with nothing: 0.
double farthestPixel(const A2DData &first, const A2DData &map);
