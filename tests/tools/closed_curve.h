/// Points of a closed curve, with its first ones repeated or not.
#pragma once

#include <Alembic/AbcGeom/All.h>

#include <cmath>
#include <vector>

/// `count` points on a circle of radius 3 about the origin, in the plane z = 0, the first `repeated_count` of them once
/// more at the end.
inline std::vector<Alembic::Abc::V3f> make_closed_curve_points(int count, int repeated_count)
{
    std::vector<Alembic::Abc::V3f> points;
    for (int i = 0; i < count + repeated_count; ++i) {
        const double angle = 2.0 * 3.14159265 * (i % count) / count;
        points.emplace_back(float(3.0 * std::cos(angle)), float(3.0 * std::sin(angle)), 0.0f);
    }
    return points;
}
