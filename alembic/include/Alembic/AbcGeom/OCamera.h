/// Cameras, written.
#pragma once

#include <Alembic/AbcGeom/CameraSample.h>
#include <Alembic/AbcGeom/OSampledSchema.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OCameraSchema : public OSampledSchema<CameraSchemaInfo>
{
public:
    typedef OCameraSchema this_type;

    OCameraSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OCameraSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                  const Argument& arg3 = Argument());
    OCameraSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample decides the number and types of film back operations, and later ones must have the same.
    void set(const CameraSample& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OCameraSchema> OCamera;
typedef Alembic::Util::shared_ptr<OCamera> OCameraPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
