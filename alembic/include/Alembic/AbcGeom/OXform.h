/// Transforms, written.
#pragma once

#include <Alembic/AbcGeom/OSampledSchema.h>
#include <Alembic/AbcGeom/XformOp.h>
#include <Alembic/AbcGeom/XformSample.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Channels that differ by no more than this are taken as equal.
const double kXFORM_DELTA_TOLERANCE = 1e-12;

class ALEMBIC_EXPORT OXformSchema : public OSampledSchema<XformSchemaInfo>
{
public:
    typedef OXformSchema this_type;

    OXformSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OXformSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                 const Argument& arg3 = Argument());
    OXformSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// Writes a sample and freezes its operations: operations added to it later replace the ones it has. The first
    /// sample decides the number and types of operations (255 at most), and later ones must have the same.
    void set(XformSample& sample);

    /// As for every schema; this one has parentheses in its error context.
    void setFromPrevious();

private:
    struct State;
};

typedef Abc::OSchemaObject<OXformSchema> OXform;
typedef Alembic::Util::shared_ptr<OXform> OXformPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
