/// Rotation orders from the axes of a stack of single-axis rotations.
#pragma once

#include <string_view>

/// The host's order (a GMathRotation::Order) for axes in the order they act on a point, as "ZXY". The first two letters
/// decide; XYZ where they do not.
unsigned int rotation_order_of(std::string_view axes);
