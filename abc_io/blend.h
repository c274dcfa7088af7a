/// Arithmetic on arrays of float triples between two samples: positions in the middle, and the velocity over the span.
#pragma once

#include <cstddef>

/// How a sum of two weighted samples is rounded.
enum class BlendRounding {
    FLOAT_PRODUCTS,  ///< weights rounded to float, products and sum in float (meshes, normals)
    DOUBLE_PRODUCTS, ///< weights in double, each product rounded to float before the float sum (curves, points)
};

// Results go in place, where an output is the array named for it, or elsewhere: then past the cache, as suits arrays
// that are larger than it. Arrays must not overlap otherwise.

/// `values` become the floats at `weight` (0 at floor, 1 at ceil), `velocities` become (ceil - floor) * `per_second`.
/// In place: `values` is `floor`, `velocities` is `ceil`. All arrays have `count` floats.
void blend_with_velocities(const float* floor, const float* ceil, float* values, float* velocities, std::size_t count,
                           double weight, double per_second, BlendRounding rounding);

/// `values` become the floats at `weight` (0 at floor, 1 at ceil). In place: `values` is `floor`.
void blend(const float* floor, const float* ceil, float* values, std::size_t count, double weight,
           BlendRounding rounding);

/// `values[i] += velocities[i] * seconds`, rounded as `rounding` says; always in place.
void extrapolate(float* values, const float* velocities, std::size_t count, double seconds, BlendRounding rounding);

/// `velocities[i] = (next[i] - values[i]) * per_second`, rounded as `rounding` says. In place: `velocities` is `next`.
void difference(const float* values, const float* next, float* velocities, std::size_t count, double per_second,
                BlendRounding rounding);
