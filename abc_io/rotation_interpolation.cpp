/// Rotations between two others: as quaternions, and back to angles.
#include "rotation_interpolation.h"

#include "rotation_order.h"

#include <ImathMatrixAlgo.h>
#include <vo_gmath/gmath_rotation.h>

#include <cmath>

namespace {

using Angles = GMathVec3<double>;

Imath::M44d transposed(const GMathMatrix4x4<double>& matrix)
{
    Imath::M44d result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result[row][column] = matrix[column][row];
    return result;
}

GMathMatrix4x4<double> transposed(const Imath::M44d& matrix)
{
    return GMathMatrix4x4<double>(matrix.getValue()).get_transpose();
}

/// How far the angles are from being about `axes` alone.
double other_angles(std::string_view axes, const Angles& degrees)
{
    double sum = 0.0;
    for (int axis = 0; axis < 3; ++axis)
        if (axes.find("XYZ"[axis]) == std::string_view::npos) sum += std::abs(std::remainder(degrees[axis], 360.0));
    return sum;
}

/// The other angles that make the same rotation, within half a turn each.
Angles turned_over(std::string_view axes, const Angles& degrees)
{
    const int middle = axes.size() < 2 ? 1 : axes[1] - 'X'; // one axis alone is in the order XYZ
    Angles result{};
    for (int axis = 0; axis < 3; ++axis)
        result[axis] = std::remainder(axis == middle ? 180.0 - degrees[axis] : degrees[axis] + 180.0, 360.0);
    return result;
}

} // namespace

Imath::Quatd interpolate_quaternion(const Imath::Quatd& from, const Imath::Quatd& to, double weight)
{
    return Imath::slerpShortestArc(from, to, weight);
}

GMathVec3<double> interpolate_angles(std::string_view axes, const Angles& from, const Angles& to, double weight)
{
    if (from == to) return from; // at rest: the stored angles, without rounding
    const unsigned int order = rotation_order_of(axes);
    const Imath::Quatd rotation =
        interpolate_quaternion(Imath::extractQuat(transposed(GMathRotation::compute_matrix(from, order))),
                               Imath::extractQuat(transposed(GMathRotation::compute_matrix(to, order))), weight);
    const Angles degrees = GMathRotation::compute_angles(transposed(rotation.toMatrix44()), order);

    // A rotation has two triples of angles. With axes missing, the right one is that which needs them less: a turn of
    // 120 degrees about Y is (180, 60, 180) as well.
    const Angles others = turned_over(axes, degrees);
    Angles result = other_angles(axes, others) < other_angles(axes, degrees) ? others : degrees;
    for (int axis = 0; axis < 3; ++axis)
        if (axes.find("XYZ"[axis]) == std::string_view::npos) result[axis] = 0.0;
    return result;
}
