/// Rotations as three angles in a given order.
#pragma once

#include "vo_core/export.h"
#include "vo_gmath/gmath_matrix4x4.h"

class VO_HOST_EXPORT GMathRotation
{
public:
    /// The name tells the order in which the axes act on a point: XYZ rotates about X first, then Y, then Z, so its
    /// matrix is Rz * Ry * Rx. A code that is none of these counts as XYZ.
    enum Order : unsigned int {
        ORDER_XYZ = 0x2001,
        ORDER_XZY = 0x1101,
        ORDER_YZX = 0x0001,
        ORDER_YXZ = 0x2101,
        ORDER_ZXY = 0x1001,
        ORDER_ZYX = 0x0101,
    };

    /// The rotation matrix of three angles about X, Y and Z, in degrees.
    static GMathMatrix4x4<double> compute_matrix(const GMathVec3<double>& degrees, const unsigned int& order);
    /// Angles whose `compute_matrix` gives the upper 3x3 part of `matrix`, which must be a rotation. The angle of the
    /// middle axis lies in [-90, 90] degrees; where it is +-90 the last axis keeps angle 0.
    static GMathVec3<double> compute_angles(const GMathMatrix4x4<double>& matrix, const unsigned int& order);
};
