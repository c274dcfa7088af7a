#include "closed_curves.h"

#include <algorithm>

unsigned int count_own_points(const AbcCurveHeader& curves, const CoreArray<GMathVec3<float>>& positions,
                              unsigned int first, unsigned int count)
{
    constexpr unsigned int degree = 3;
    if (curves.periodicity_type != AbcCurveHeader::PERIODICITY_TYPE_PERIODIC ||
        curves.curve_type == AbcCurveHeader::CURVE_TYPE_LINEAR || count < 2 * degree)
        return count;
    const GMathVec3<float>* const start = positions.begin() + first;
    const unsigned int own_count = count - degree;
    return std::equal(start, start + degree, start + own_count) ? own_count : count;
}
