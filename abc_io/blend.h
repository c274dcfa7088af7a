/// Arithmetic on arrays of float triples between two samples: positions in the middle, and the velocity over the span.
#pragma once

#include <cstddef>

/// How a sum of two weighted samples is rounded.
enum class BlendRounding {
    FLOAT_PRODUCTS,  ///< weights rounded to float, products and sum in float (meshes, normals)
    DOUBLE_PRODUCTS, ///< weights in double, each product rounded to float before the float sum (curves, points)
};

/// In place over `count` floats each: `floor` and `ceil` come in as the two samples and leave as the values at `weight`
/// (0 at floor, 1 at ceil) and as the velocities, (ceil - floor) * `per_second`. The two arrays must not overlap.
void blend_with_velocities(float* floor, float* ceil, std::size_t count, double weight, double per_second,
                           BlendRounding rounding);

/// In place over `count` floats: `floor` becomes the values at `weight` (0 at floor, 1 at ceil). No overlap.
void blend(float* floor, const float* ceil, std::size_t count, double weight, BlendRounding rounding);

/// `values[i] += velocities[i] * seconds`, rounded as `rounding` says.
void extrapolate(float* values, const float* velocities, std::size_t count, double seconds, BlendRounding rounding);

/// `next[i] = (next[i] - values[i]) * per_second`, rounded as `rounding` says.
void difference(const float* values, float* next, std::size_t count, double per_second, BlendRounding rounding);
