/// AbcCurveHeader: curves at one time, with all that is drawn of them.
#pragma once

#include "vo_abc_io_export.h"

#include <vo_core/core_array.h>
#include <vo_core/core_string.h>
#include <vo_core/core_vector.h>
#include <vo_geometry/geometry_color_map.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>
#include <vo_gmath/gmath_vec3.h>

#include <cstdint>

/// The curves of one object at one time, lengths in archive units. Filled by AbcInput::load_curve, which leaves alone
/// what the object has not: pass a fresh record. Copies are whole; a record that was moved from keeps its three types
/// and is otherwise empty.
class VO_ABC_IO_EXPORT AbcCurveHeader
{
public:
    /// Interpolation basis of cubic curves; the numbers are those of the archive.
    enum BasisType : std::int32_t {
        BASIS_TYPE_NONE = 0,       ///< no basis, as linear curves have
        BASIS_TYPE_BEZIER = 1,     ///< Bezier
        BASIS_TYPE_BSPLINE = 2,    ///< B-spline
        BASIS_TYPE_CATMULLROM = 3, ///< Catmull-Rom
        BASIS_TYPE_HERMITE = 4,    ///< Hermite
        BASIS_TYPE_POWER = 5,      ///< power basis
        BASIS_TYPE_COUNT = 6,      ///< number of bases, not a basis
    };

    /// Degree of the curves; the numbers are those of the archive.
    enum CurveType : std::int32_t {
        CURVE_TYPE_CUBIC = 0,          ///< cubic, in the basis given beside
        CURVE_TYPE_LINEAR = 1,         ///< straight from point to point
        CURVE_TYPE_VARIABLE_ORDER = 2, ///< each curve has the order given in `orders`
        CURVE_TYPE_COUNT = 3,          ///< number of types, not a type
    };

    /// Whether curves are closed; the numbers are those of the archive.
    enum PeriodicityType : std::int32_t {
        PERIODICITY_TYPE_NON_PERIODIC = 0, ///< open
        PERIODICITY_TYPE_PERIODIC = 1,     ///< closed: the end is joined to the start
        PERIODICITY_TYPE_COUNT = 2,        ///< number of types, not a type
    };

    /// The enumerator's own name; "BASIS_TYPE_UNKNOWN" for any other value.
    static const char* get_basis_type_name(const BasisType& type);
    /// The enumerator's own name; "CURVE_TYPE_UNKNOWN" for any other value.
    static const char* get_curve_type_name(const CurveType& type);
    /// The enumerator's own name; "PERIODICITY_TYPE_UNKNOWN" for any other value.
    static const char* get_periodicity_type_name(const PeriodicityType& type);

    BasisType basis_type = BASIS_TYPE_NONE;  ///< as stored, also a number that has no name here; like the next two
    CurveType curve_type = CURVE_TYPE_CUBIC; ///< of all curves of the object
    PeriodicityType periodicity_type = PERIODICITY_TYPE_NON_PERIODIC; ///< of all curves of the object
    CoreArray<GMathVec3<float>> positions; ///< control points of all curves, curve after curve
    CoreArray<unsigned int> vertex_counts; ///< control points of each curve; never more in all than there are positions
    CoreArray<unsigned char> orders;       ///< of each curve, for CURVE_TYPE_VARIABLE_ORDER; empty: none are stored
    CoreArray<float> radii;                ///< half of stored widths, or stored radii; empty: the object has neither
    CoreArray<unsigned int> radius_indices;   ///< into `radii`, never beyond; empty: radius i belongs to point i
    CoreArray<GeometryUvMap> uv_maps;         ///< none or one; values (u, v, 0)
    CoreArray<GeometryColorMap> color_maps;   ///< none or one
    CoreArray<GeometryNormalMap> normal_maps; ///< none or one, with one index per point
    CoreVector<CoreString> property_names;    ///< properties that can be loaded: see AbcInput::get_property_names
};
