/// Which material an object has: its own, or the path of another's.
#include <Alembic/AbcMaterial/MaterialAssignment.h>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

void addMaterialAssignment(Abc::OObject object, const std::string& value, const std::string& propName)
{
    addMaterialAssignment(object.getProperties(), value, propName);
}

void addMaterialAssignment(Abc::OCompoundProperty property, const std::string& value, const std::string& propName)
{
    Abc::OStringProperty(property, propName).set(value);
}

bool getMaterialAssignmentPath(Abc::IObject object, std::string& result, const std::string& propName)
{
    return getMaterialAssignmentPath(object.getProperties(), result, propName);
}

bool getMaterialAssignmentPath(Abc::ICompoundProperty property, std::string& result, const std::string& propName)
{
    return read_text(property, propName, result);
}

OMaterialSchema addMaterial(Abc::OObject object, const std::string& propName)
{
    return addMaterial(object.getProperties(), propName);
}

OMaterialSchema addMaterial(Abc::OCompoundProperty property, const std::string& propName)
{
    return OMaterialSchema(property, propName);
}

bool hasMaterial(Abc::IObject object, IMaterialSchema& result, const std::string& propName)
{
    return hasMaterial(object.getProperties(), result, propName);
}

bool hasMaterial(Abc::ICompoundProperty compound, IMaterialSchema& result, const std::string& propName)
{
    const AbcA::PropertyHeader* header = compound.getPropertyHeader(propName);
    if (!header || !header->isCompound() || !IMaterialSchema::matches(*header)) return false;
    result = IMaterialSchema(compound, propName);
    return true;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
