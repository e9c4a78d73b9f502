#pragma once

#include <QWidget>

#include <memory>

/// A map of made-up particles, side x side pixels.
std::unique_ptr<QWidget> makeMap(int side);
/// A colour bar of each type, plain and stretched.
std::unique_ptr<QWidget> makeBars();
/// The first colours of curves.
std::unique_ptr<QWidget> makeLines();
