/// Curves of any basis as Bezier segments or straight ones.
#pragma once

#include <abc_curve_header.h>

#include <array>
#include <vector>

/// A point made of stored control points: the sum of weight times point.
struct BlendedPoint
{
    std::array<unsigned int, 4> points;
    std::array<float, 4> weights;

    /// Of values that there are for each control point.
    template <class Values>
    auto of(const Values& values) const
    {
        auto sum = values[points[0]] * weights[0];
        for (std::size_t i = 1; i < 4; ++i)
            sum = sum + values[points[i]] * weights[i];
        return sum;
    }
};

struct CurveSegment
{
    unsigned int first_vertex; ///< of 4 for a Bezier segment, of 2 for a straight one
    unsigned int curve;
};

struct CurveSegments
{
    bool is_cubic = false;
    bool is_closed = false;             ///< each curve returns to its start
    std::vector<BlendedPoint> vertices; ///< positions
    std::vector<BlendedPoint> widths;   ///< as many: where widths, which tangents and coefficients have none, come from
    std::vector<CurveSegment> segments;
};

/// The segments of all curves. A curve of too few points for its basis goes straight from point to point, and so do
/// curves without a known basis and those of varying order, unless all are of order 4: these are B-splines that reach
/// their ends. `positions`, in any space, tell which closed curves repeat their first points.
CurveSegments find_curve_segments(const AbcCurveHeader& curves, const CoreArray<GMathVec3<float>>& positions);
