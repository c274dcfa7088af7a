/// Order and closure of curves.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

enum CurveType : int {
    kCubic = 0,
    kLinear = 1,
    kVariableOrder = 2, ///< an order for each curve is stored with the curves
};

enum CurvePeriodicity : int {
    kNonPeriodic = 0,
    kPeriodic = 1, ///< closed: the last point is followed by the first
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
