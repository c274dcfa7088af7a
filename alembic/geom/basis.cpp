/// Names and steps of the bases of cubic curves.
#include <Alembic/AbcGeom/Basis.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

std::string GetBasisNameFromBasisType(const BasisType basis)
{
    switch (basis) {
    case kBezierBasis:
        return "bezier";
    case kBsplineBasis:
        return "b-spline";
    case kCatmullromBasis:
        return "catmull-rom";
    case kHermiteBasis:
        return "hermite";
    case kPowerBasis:
        return "power";
    default:
        return "none";
    }
}

int GetStepFromBasisType(const BasisType basis)
{
    switch (basis) {
    case kBezierBasis:
        return 3;
    case kHermiteBasis:
        return 2;
    case kPowerBasis:
        return 4;
    default:
        return 1;
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
