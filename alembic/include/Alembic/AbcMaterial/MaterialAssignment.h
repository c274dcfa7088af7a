/// Materials of objects: assigned by the full name of a material object, or written on the object itself.
#pragma once

#include <Alembic/AbcMaterial/IMaterial.h>
#include <Alembic/AbcMaterial/OMaterial.h>

#include <string>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

inline const std::string MATERIALASSIGN_PROPNAME = ".material.assign";
inline const std::string MATERIAL_PROPNAME = ".material";

/// Writes the assignment into the object's own compound, or the compound given.
ALEMBIC_EXPORT void addMaterialAssignment(Abc::OObject object, const std::string& value,
                                          const std::string& propName = MATERIALASSIGN_PROPNAME);
ALEMBIC_EXPORT void addMaterialAssignment(Abc::OCompoundProperty property, const std::string& value,
                                          const std::string& propName = MATERIALASSIGN_PROPNAME);

/// False, `result` untouched, without an assignment.
ALEMBIC_EXPORT bool getMaterialAssignmentPath(Abc::IObject object, std::string& result,
                                              const std::string& propName = MATERIALASSIGN_PROPNAME);
ALEMBIC_EXPORT bool getMaterialAssignmentPath(Abc::ICompoundProperty property, std::string& result,
                                              const std::string& propName = MATERIALASSIGN_PROPNAME);

/// Creates a material on the object itself.
ALEMBIC_EXPORT OMaterialSchema addMaterial(Abc::OObject object, const std::string& propName = MATERIAL_PROPNAME);
ALEMBIC_EXPORT OMaterialSchema addMaterial(Abc::OCompoundProperty property,
                                           const std::string& propName = MATERIAL_PROPNAME);

/// The material on the object itself. False, `result` untouched, when there is none.
ALEMBIC_EXPORT bool hasMaterial(Abc::IObject object, IMaterialSchema& result,
                                const std::string& propName = MATERIAL_PROPNAME);
ALEMBIC_EXPORT bool hasMaterial(Abc::ICompoundProperty compound, IMaterialSchema& result,
                                const std::string& propName = MATERIAL_PROPNAME);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
