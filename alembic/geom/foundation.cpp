/// Small helpers that all geometry schemas share.
#include <Alembic/AbcGeom/Foundation.h>

#include <cmath>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

double DegreesToRadians(double degrees)
{
    return degrees * M_PI / 180.0;
}

double RadiansToDegrees(double radians)
{
    return radians * 180.0 / M_PI;
}

bool IsGeomParam(const AbcA::PropertyHeader& header)
{
    if (header.isArray()) {
        return true;
    }
    return header.isCompound() && !header.getMetaData().get("podName").empty() &&
           !header.getMetaData().get("podExtent").empty();
}

namespace {

template <class PROPERTY, class VALUE>
void set_or_repeat(PROPERTY& property, const VALUE& value, bool is_there)
{
    if (!property) {
        return;
    }
    if (is_there) {
        property.set(value);
    } else {
        property.setFromPrevious();
    }
}

} // namespace

void SetPropUsePrevIfNull(OStringProperty property, std::string sample)
{
    set_or_repeat(property, sample, !sample.empty());
}

void SetPropUsePrevIfNull(OWstringProperty property, std::wstring sample)
{
    set_or_repeat(property, sample, !sample.empty());
}

void SetPropUsePrevIfNull(OBox3dProperty property, Box3d sample)
{
    set_or_repeat(property, sample, sample.hasVolume());
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
