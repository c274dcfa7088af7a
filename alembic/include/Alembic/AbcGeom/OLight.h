/// Lights, written: what they see is a camera inside.
#pragma once

#include <Alembic/AbcGeom/OCamera.h>
#include <Alembic/AbcGeom/OSampledSchema.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OLightSchema : public OSampledSchema<LightSchemaInfo>
{
public:
    typedef OLightSchema this_type;

    OLightSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OLightSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                 const Argument& arg3 = Argument());
    OLightSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// Writes a sample of the camera `.camera`, which is created with the first one.
    void setCameraSample(const CameraSample& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OLightSchema> OLight;
typedef Alembic::Util::shared_ptr<OLight> OLightPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
