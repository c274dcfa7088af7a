/// Points, read.
#include <Alembic/AbcGeom/IPoints.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void IPointsSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPointsSchema::init()");
    matching_ = matching;
    // Old files call positions vectors: their interpretation is never looked at.
    positions_ = required_property<IP3fArrayProperty>(*this, "P", kNoMatching);
    ids_ = required_property<IUInt64ArrayProperty>(*this, ".pointIds", matching);
    velocities_ = optional_property<IV3fArrayProperty>(*this, ".velocities", matching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void IPointsSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPointsSchema::get()");
    positions_.get(sample.positions_, selector);
    ids_.get(sample.ids_, selector);
    get_if_set(velocities_, sample.velocities_, selector);
    read_self_bounds(sample.self_bounds_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IFloatGeomParam IPointsSchema::getWidthsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPointsSchema::getWidthsParam()");
    return optional_param<IFloatGeomParam>(*this, ".widths", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IFloatGeomParam();
}

void IPointsSchema::reset()
{
    positions_.reset();
    ids_.reset();
    velocities_.reset();
    IGeomBaseSchema<PointsSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
