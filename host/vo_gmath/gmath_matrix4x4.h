/// 4x4 matrix for column vectors.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "vo_gmath/gmath_vec3.h"

/// `m[row][column]`, row after row in memory. Points are columns: the translation is `m[0..2][3]`, the right factor of
/// a product acts first, world = parent * local. The identity by default.
template <class T>
class GMathMatrix4x4
{
public:
    T m[4][4];

    constexpr GMathMatrix4x4()
        : m{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}
    {
    }
    /// 16 values, row after row.
    explicit GMathMatrix4x4(const T* values) { std::copy(values, values + 16, get_data()); }

    T* operator[](std::size_t row) { return m[row]; }
    const T* operator[](std::size_t row) const { return m[row]; }
    /// 16 values, row after row.
    T* get_data() { return &m[0][0]; }
    const T* get_data() const { return &m[0][0]; }

    static GMathMatrix4x4 make_translation(const GMathVec3<T>& offset)
    {
        GMathMatrix4x4 result;
        for (int axis = 0; axis < 3; ++axis)
            result.m[axis][3] = offset[axis];
        return result;
    }
    static GMathMatrix4x4 make_scale(const GMathVec3<T>& factors)
    {
        GMathMatrix4x4 result;
        for (int axis = 0; axis < 3; ++axis)
            result.m[axis][axis] = factors[axis];
        return result;
    }

    GMathMatrix4x4 get_transpose() const
    {
        GMathMatrix4x4 result;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                result.m[row][column] = m[column][row];
        return result;
    }

    /// False, `inverse` untouched, when the matrix has none. Rows are eliminated by the largest pivot.
    bool compute_inverse(GMathMatrix4x4& inverse) const
    {
        GMathMatrix4x4 left = *this, right;
        for (int column = 0; column < 4; ++column) {
            int pivot = column;
            for (int row = column + 1; row < 4; ++row)
                if (std::abs(left.m[row][column]) > std::abs(left.m[pivot][column])) pivot = row;
            const T pivot_value = left.m[pivot][column];
            if (pivot_value == T(0) || !std::isfinite(pivot_value)) return false;
            std::swap(left.m[pivot], left.m[column]);
            std::swap(right.m[pivot], right.m[column]);
            for (int i = 0; i < 4; ++i) {
                left.m[column][i] /= pivot_value;
                right.m[column][i] /= pivot_value;
            }
            for (int row = 0; row < 4; ++row) {
                const T factor = left.m[row][column];
                if (row == column || factor == T(0)) continue;
                for (int i = 0; i < 4; ++i) {
                    left.m[row][i] -= factor * left.m[column][i];
                    right.m[row][i] -= factor * right.m[column][i];
                }
            }
        }
        inverse = right;
        return true;
    }

    /// The point divided by its homogeneous coordinate where the last row makes one other than 1.
    GMathVec3<T> transform_point(const GMathVec3<T>& point) const
    {
        T out[4];
        for (int row = 0; row < 4; ++row)
            out[row] = m[row][0] * point.x + m[row][1] * point.y + m[row][2] * point.z + m[row][3];
        if (out[3] == T(1)) return {out[0], out[1], out[2]};
        return {out[0] / out[3], out[1] / out[3], out[2] / out[3]};
    }
    /// A direction: the translation has no part in it.
    GMathVec3<T> transform_vector(const GMathVec3<T>& vector) const
    {
        GMathVec3<T> out{};
        for (int row = 0; row < 3; ++row)
            out[row] = m[row][0] * vector.x + m[row][1] * vector.y + m[row][2] * vector.z;
        return out;
    }

    friend GMathMatrix4x4 operator*(const GMathMatrix4x4& a, const GMathMatrix4x4& b)
    {
        GMathMatrix4x4 result;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                result.m[row][column] = a.m[row][0] * b.m[0][column] + a.m[row][1] * b.m[1][column] +
                                        a.m[row][2] * b.m[2][column] + a.m[row][3] * b.m[3][column];
        return result;
    }
    GMathMatrix4x4& operator*=(const GMathMatrix4x4& other) { return *this = *this * other; }

    friend bool operator==(const GMathMatrix4x4& a, const GMathMatrix4x4& b)
    {
        return std::equal(a.get_data(), a.get_data() + 16, b.get_data());
    }
    friend bool operator!=(const GMathMatrix4x4& a, const GMathMatrix4x4& b) { return !(a == b); }
};
