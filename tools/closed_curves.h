/// Closed curves, whose ends writers store in two ways.
#pragma once

#include <abc_curve_header.h>

/// How many of a curve's `count` points, from `first` on, its shape goes through before it returns to the first. Closed
/// curves that are not linear may repeat their first three points as their last ones, as knots that do not wrap need
/// them: those do not count. `positions` are those of all curves, in any space.
unsigned int count_own_points(const AbcCurveHeader& curves, const CoreArray<GMathVec3<float>>& positions,
                              unsigned int first, unsigned int count);
