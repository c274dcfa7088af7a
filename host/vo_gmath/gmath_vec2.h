/// Two coordinates.
#pragma once

#include <cstddef>

/// Plain data: nothing beside the coordinates, not filled by default; `GMathVec2<float>{}` is zero.
template <class T>
struct GMathVec2
{
    T x, y;

    GMathVec2() = default;
    constexpr GMathVec2(T x_value, T y_value)
        : x(x_value)
        , y(y_value)
    {
    }

    T& operator[](std::size_t axis) { return axis == 0 ? x : y; }
    const T& operator[](std::size_t axis) const { return axis == 0 ? x : y; }

    friend constexpr bool operator==(const GMathVec2& a, const GMathVec2& b) { return a.x == b.x && a.y == b.y; }
    friend constexpr bool operator!=(const GMathVec2& a, const GMathVec2& b) { return !(a == b); }
    friend constexpr GMathVec2 operator+(const GMathVec2& a, const GMathVec2& b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr GMathVec2 operator-(const GMathVec2& a, const GMathVec2& b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr GMathVec2 operator*(const GMathVec2& a, T factor) { return {a.x * factor, a.y * factor}; }
};

static_assert(sizeof(GMathVec2<float>) == 8, "arrays of it are filled from files as they are");
