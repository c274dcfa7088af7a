/// Small vector helpers of the renderer.
#pragma once

#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_vec3.h>

#include <cmath>

using Vec3 = GMathVec3<float>;
using Matrix = GMathMatrix4x4<double>;

/// Of length 1, or `fallback` for what has no direction.
inline Vec3 normalize(const Vec3& vector, const Vec3& fallback)
{
    const float length = vector.get_length();
    return length > 0.0f && std::isfinite(length) ? vector * (1.0f / length) : fallback;
}

inline Vec3 mix(const Vec3& a, const Vec3& b, float weight_of_b)
{
    return a * (1.0f - weight_of_b) + b * weight_of_b;
}

/// Component by component.
inline Vec3 scale(const Vec3& a, const Vec3& b)
{
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

/// Finite, and far enough from the ends of the number range for a ray tracer.
inline bool is_drawable(const Vec3& position)
{
    constexpr float limit = 1e15f;
    return std::abs(position.x) < limit && std::abs(position.y) < limit && std::abs(position.z) < limit;
}

inline Vec3 transform_point(const Matrix& matrix, const Vec3& point)
{
    const GMathVec3<double> moved = matrix.transform_point({point.x, point.y, point.z});
    return {static_cast<float>(moved.x), static_cast<float>(moved.y), static_cast<float>(moved.z)};
}

inline Vec3 transform_vector(const Matrix& matrix, const Vec3& vector)
{
    const GMathVec3<double> moved = matrix.transform_vector({vector.x, vector.y, vector.z});
    return {static_cast<float>(moved.x), static_cast<float>(moved.y), static_cast<float>(moved.z)};
}
