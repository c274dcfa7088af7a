/// The basis that blends the points of cubic curves.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

enum BasisType : int {
    kNoBasis = 0,
    kBezierBasis = 1,
    kBsplineBasis = 2,
    kCatmullromBasis = 3,
    kHermiteBasis = 4,
    kPowerBasis = 5,
};

/// `bezier`, `b-spline`, `catmull-rom`, `hermite`, `power`; `none` for anything else.
ALEMBIC_EXPORT std::string GetBasisNameFromBasisType(const BasisType basis);

/// How many points further the next segment begins: 3, 1, 1, 2, 4; 1 without a basis.
ALEMBIC_EXPORT int GetStepFromBasisType(const BasisType basis);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
