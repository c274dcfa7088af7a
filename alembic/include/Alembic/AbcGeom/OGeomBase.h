/// Base of the writing schemas that have bounds: meshes, subdivision surfaces, curves, points, patches, face sets.
#pragma once

#include <Alembic/AbcGeom/OSampledSchema.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

template <class INFO>
class ALEMBIC_EXPORT OGeomBaseSchema : public OSampledSchema<INFO>
{
public:
    typedef OGeomBaseSchema<INFO> this_type;

    OGeomBaseSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OGeomBaseSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                    const Argument& arg3 = Argument())
        : OSampledSchema<INFO>(parent, name, arg0, arg1, arg2, arg3)
    {
        // A schema with properties of its own starts a state of its own in place of this one.
        this->template start<OSchemaState>("OGeomBaseSchema", arg0, arg1, arg2, arg3);
    }
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
