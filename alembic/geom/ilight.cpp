/// Lights, read.
#include <Alembic/AbcGeom/ILight.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void ILightSchema::init()
{
    if (!getPtr()) {
        return; // the compound itself was an error
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ILightSchema::init()");
    if (getPtr()->getPropertyHeader(".camera")) {
        camera_ = ICameraSchema(*this, ".camera", ErrorHandler::kThrowPolicy);
        camera_.getErrorHandler().setPolicy(getErrorHandlerPolicy());
    }
    child_bounds_ = optional_property<IBox3dProperty>(*this, ".childBnds", kNoMatching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

AbcA::TimeSamplingPtr ILightSchema::getTimeSampling() const
{
    return child_bounds_.getPtr() ? child_bounds_.getTimeSampling() : camera_.getTimeSampling();
}

size_t ILightSchema::getNumSamples() const
{
    return child_bounds_.getPtr() ? child_bounds_.getNumSamples() : camera_.getNumSamples();
}

ICompoundProperty ILightSchema::getArbGeomParams() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ILightSchema::getArbGeomParams()");
    return optional_compound(*this, ".arbGeomParams");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

ICompoundProperty ILightSchema::getUserProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ILightSchema::getUserProperties()");
    return optional_compound(*this, ".userProperties");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

void ILightSchema::reset()
{
    camera_.reset();
    child_bounds_.reset();
    Abc::ISchema<LightSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
