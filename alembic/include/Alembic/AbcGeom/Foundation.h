/// What every header of AbcGeom builds on: shared enumerations and small helpers over positions and properties.
#pragma once

#include <Alembic/Abc/All.h>
#include <Alembic/Util/Prefetch.h>

#include <string>

namespace Alembic {
namespace AbcGeom {

namespace Abc = ::Alembic::Abc;
using namespace Abc;

inline namespace ALEMBIC_VERSION_NS {

/// How the topology of a mesh, of curves or of a patch changes over its samples.
enum MeshTopologyVariance : int {
    kConstantTopology = 0,      ///< nothing changes, positions neither
    kHomogenousTopology = 1,    ///< positions move, the connections stay
    kHomogeneousTopology = 1,   ///< the same, spelled out
    kHeterogenousTopology = 2,  ///< the connections change
    kHeterogeneousTopology = 2, ///< the same, spelled out
};

/// Kinds of a transform's operations; the high four bits of a stored operation.
enum XformOperationType : int {
    kScaleOperation = 0,     ///< x y z
    kTranslateOperation = 1, ///< x y z
    kRotateOperation = 2,    ///< axis x y z, angle in degrees
    kMatrixOperation = 3,    ///< sixteen numbers, row by row; row vectors
    kRotateXOperation = 4,   ///< angle in degrees
    kRotateYOperation = 5,   ///< angle in degrees
    kRotateZOperation = 6,   ///< angle in degrees
};

/// Kinds of a camera's film back operations.
enum FilmBackXformOperationType : int {
    kScaleFilmBackOperation = 0,     ///< x y; stored as the letter s
    kTranslateFilmBackOperation = 1, ///< x y; stored as the letter t
    kMatrixFilmBackOperation = 2,    ///< nine numbers, row by row; stored as the letter m
};

ALEMBIC_EXPORT double DegreesToRadians(double degrees);
ALEMBIC_EXPORT double RadiansToDegrees(double radians);

/// Whether a property can be read as a geometry parameter: every array, and a compound whose metadata name a type
/// (`podName` and `podExtent`).
ALEMBIC_EXPORT bool IsGeomParam(const AbcA::PropertyHeader& header);

/// The box of all elements of `sample`, an array of three-dimensional vectors; the empty box for no elements.
template <class ARRAY>
Box3d ComputeBoundsFromPositions(const ARRAY& sample)
{
    Box3d bounds;
    const size_t count = sample.size();
    // As Box3d::extendBy() compares (what is not a number never counts), without a branch and in registers.
    const auto extend = [](double& low, double& high, double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    };
    double low_x = bounds.min.x, low_y = bounds.min.y, low_z = bounds.min.z;
    double high_x = bounds.max.x, high_y = bounds.max.y, high_z = bounds.max.z;
    for (size_t i = 0; i < count; ++i) {
        const auto& position = sample[i];
        Util::prefetch_ahead(&position);
        extend(low_x, high_x, double(position.x));
        extend(low_y, high_y, double(position.y));
        extend(low_z, high_z, double(position.z));
    }
    return Box3d(V3d(low_x, low_y, low_z), V3d(high_x, high_y, high_z));
}

/// Writes the next sample of a property: `sample` where it is there, else the previous one again. Does nothing without
/// a property. An empty array is there; a default-made sample is not.
template <class PROPERTY, class SAMPLE>
void SetPropUsePrevIfNull(PROPERTY property, SAMPLE sample)
{
    if (!property) {
        return;
    }
    if (sample) {
        property.set(sample);
    } else {
        property.setFromPrevious();
    }
}

/// The same for text; the empty text repeats the previous sample.
ALEMBIC_EXPORT void SetPropUsePrevIfNull(OStringProperty property, std::string sample);
ALEMBIC_EXPORT void SetPropUsePrevIfNull(OWstringProperty property, std::wstring sample);

/// The same for boxes; a box without volume (flat or empty) repeats the previous sample.
ALEMBIC_EXPORT void SetPropUsePrevIfNull(OBox3dProperty property, Box3d sample);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
