/// Visibility of objects.
#include <Alembic/AbcGeom/Visibility.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

OVisibilityProperty CreateVisibilityProperty(OObject& object, uint32_t timeSamplingID)
{
    return OVisibilityProperty(object.getProperties(), kVisibilityPropertyName, timeSamplingID);
}

OVisibilityProperty CreateVisibilityProperty(OObject& object, AbcA::TimeSamplingPtr timeSampling)
{
    return OVisibilityProperty(object.getProperties(), kVisibilityPropertyName, timeSampling);
}

IVisibilityProperty GetVisibilityProperty(IObject& schemaObject)
{
    const ICompoundProperty properties = schemaObject.getProperties();
    if (!properties.getPropertyHeader(kVisibilityPropertyName)) {
        return IVisibilityProperty();
    }
    return IVisibilityProperty(properties, kVisibilityPropertyName);
}

ObjectVisibility GetVisibility(IObject& schemaObject, const ISampleSelector& selector)
{
    const IVisibilityProperty property = GetVisibilityProperty(schemaObject);
    if (!property || property.getNumSamples() == 0) {
        return kVisibilityDeferred;
    }
    return static_cast<ObjectVisibility>(property.getValue(selector));
}

bool IsAncestorInvisible(IObject schemaObject, const ISampleSelector& selector)
{
    if (!schemaObject.valid()) {
        ABCA_THROW("IsAncestorInvisible (): object passed in isn't valid.");
    }
    for (IObject object = schemaObject; object.valid(); object = object.getParent()) {
        const ObjectVisibility visibility = GetVisibility(object, selector);
        if (visibility != kVisibilityDeferred) {
            return visibility == kVisibilityHidden;
        }
    }
    return false;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
