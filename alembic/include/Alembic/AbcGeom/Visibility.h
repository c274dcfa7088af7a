/// Whether an object is to be seen: property `visible` of the object itself (not of its schema).
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

enum ObjectVisibility : int {
    kVisibilityDeferred = -1, ///< as the parent
    kVisibilityHidden = 0,
    kVisibilityVisible = 1,
};

/// Name of the property, one int8 a sample.
const std::string kVisibilityPropertyName = "visible";

typedef ICharProperty IVisibilityProperty;
typedef OCharProperty OVisibilityProperty;

/// Creates the property on `object`; set it with `int8_t(kVisibilityHidden)` and so on.
ALEMBIC_EXPORT OVisibilityProperty CreateVisibilityProperty(OObject& object, uint32_t timeSamplingID);
ALEMBIC_EXPORT OVisibilityProperty CreateVisibilityProperty(OObject& object, AbcA::TimeSamplingPtr timeSampling);

/// The property of `schemaObject`; invalid when the object has none. Throws when it is of another type.
ALEMBIC_EXPORT IVisibilityProperty GetVisibilityProperty(IObject& schemaObject);

/// What `schemaObject` itself says, unchecked; deferred when it says nothing.
ALEMBIC_EXPORT ObjectVisibility GetVisibility(IObject& schemaObject,
                                              const ISampleSelector& selector = ISampleSelector());

/// Whether the object is hidden: the first that does not defer decides, from the object upwards. Deferred up to the top
/// is visible. Throws for an invalid object.
ALEMBIC_EXPORT bool IsAncestorInvisible(IObject schemaObject, const ISampleSelector& selector = ISampleSelector());

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
