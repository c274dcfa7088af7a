/// Three coordinates.
#pragma once

#include <cmath>
#include <cstddef>

/// Plain data: nothing beside the coordinates, not filled by default; `GMathVec3<float>{}` is zero.
template <class T>
struct GMathVec3
{
    T x, y, z;

    GMathVec3() = default;
    constexpr GMathVec3(T x_value, T y_value, T z_value)
        : x(x_value)
        , y(y_value)
        , z(z_value)
    {
    }

    T& operator[](std::size_t axis) { return axis == 0 ? x : axis == 1 ? y : z; }
    const T& operator[](std::size_t axis) const { return axis == 0 ? x : axis == 1 ? y : z; }

    T get_length() const { return std::sqrt(dot(*this, *this)); }

    friend constexpr T dot(const GMathVec3& a, const GMathVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
    friend constexpr GMathVec3 cross(const GMathVec3& a, const GMathVec3& b)
    {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }
    friend constexpr bool operator==(const GMathVec3& a, const GMathVec3& b)
    {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
    friend constexpr bool operator!=(const GMathVec3& a, const GMathVec3& b) { return !(a == b); }
    friend constexpr GMathVec3 operator+(const GMathVec3& a, const GMathVec3& b)
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr GMathVec3 operator-(const GMathVec3& a, const GMathVec3& b)
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr GMathVec3 operator-(const GMathVec3& a) { return {-a.x, -a.y, -a.z}; }
    friend constexpr GMathVec3 operator*(const GMathVec3& a, T factor)
    {
        return {a.x * factor, a.y * factor, a.z * factor};
    }
};

static_assert(sizeof(GMathVec3<float>) == 12, "arrays of it are filled from files as they are");
static_assert(sizeof(GMathVec3<double>) == 24, "arrays of it are filled from files as they are");
