/// Rotations between two others, along the shorter arc.
#pragma once

#include <ImathQuat.h>
#include <vo_gmath/gmath_vec3.h>

#include <string_view>

/// The rotation at `weight` (0 at `from`, 1 at `to`) of the way; both are unit quaternions.
Imath::Quatd interpolate_quaternion(const Imath::Quatd& from, const Imath::Quatd& to, double weight);

/// Angles about X, Y and Z (degrees) of rotations about the one to three axes of `axes`, each named once, in the order
/// they act on a point: those at `weight` between `from` and `to`. Angles about other axes are 0, in and out; what the
/// rotation half way has of them is lost, so that between two rotations about two axes it may jump where that part
/// passes a quarter turn.
GMathVec3<double> interpolate_angles(std::string_view axes, const GMathVec3<double>& from, const GMathVec3<double>& to,
                                     double weight);
