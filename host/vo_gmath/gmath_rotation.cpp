/// Rotations as three angles in a given order.
#include "vo_gmath/gmath_rotation.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double degrees_per_radian = 57.295779513082320877;

/// The axes in the order they act, and whether that order is an even permutation of X, Y, Z (1) or an odd one (-1).
struct AxisOrder
{
    int first, middle, last;
    double parity;
};

AxisOrder get_axis_order(unsigned int order)
{
    switch (order) {
    case GMathRotation::ORDER_XZY:
        return {0, 2, 1, -1.0};
    case GMathRotation::ORDER_YZX:
        return {1, 2, 0, 1.0};
    case GMathRotation::ORDER_YXZ:
        return {1, 0, 2, -1.0};
    case GMathRotation::ORDER_ZXY:
        return {2, 0, 1, 1.0};
    case GMathRotation::ORDER_ZYX:
        return {2, 1, 0, -1.0};
    default:
        return {0, 1, 2, 1.0};
    }
}

GMathMatrix4x4<double> rotation_about_axis(int axis, double degrees)
{
    GMathMatrix4x4<double> matrix;
    if (degrees == 0.0) return matrix;
    const double cosine = std::cos(degrees / degrees_per_radian), sine = std::sin(degrees / degrees_per_radian);
    const int a = (axis + 1) % 3, b = (axis + 2) % 3;
    matrix[a][a] = matrix[b][b] = cosine;
    matrix[b][a] = sine;
    matrix[a][b] = -sine;
    return matrix;
}

} // namespace

GMathMatrix4x4<double> GMathRotation::compute_matrix(const GMathVec3<double>& degrees, const unsigned int& order)
{
    const AxisOrder axes = get_axis_order(order);
    return rotation_about_axis(axes.last, degrees[axes.last]) * rotation_about_axis(axes.middle, degrees[axes.middle]) *
           rotation_about_axis(axes.first, degrees[axes.first]);
}

GMathVec3<double> GMathRotation::compute_angles(const GMathMatrix4x4<double>& matrix, const unsigned int& order)
{
    // Written out for XYZ: row z is (-sin y, cos y sin x, cos y cos x). An odd order mirrors all angles, which is what
    // the parity stands for. The last angle is read after the first is turned back: near gimbal lock rounding leaves
    // open how they share the turn, and only so do they still make the same rotation.
    const AxisOrder axes = get_axis_order(order);
    const int i = axes.first, j = axes.middle, k = axes.last;
    const double cosine = std::hypot(matrix[k][j], matrix[k][k]);
    GMathVec3<double> degrees{};
    degrees[j] = std::atan2(-axes.parity * matrix[k][i], cosine) * degrees_per_radian;
    if (cosine > 1e-12) {
        const double sin_first = matrix[k][j] / cosine, cos_first = matrix[k][k] / cosine;
        degrees[i] = std::atan2(axes.parity * sin_first, cos_first) * degrees_per_radian;
        degrees[k] = std::atan2(-axes.parity * (cos_first * matrix[i][j] - sin_first * matrix[i][k]),
                                cos_first * matrix[j][j] - sin_first * matrix[j][k]) *
                     degrees_per_radian;
    } else {
        // First and last axis turn about the same line: only their sum or difference is known.
        degrees[i] = std::atan2(-axes.parity * matrix[j][k], matrix[j][j]) * degrees_per_radian;
    }
    return degrees;
}
