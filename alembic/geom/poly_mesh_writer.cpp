#include <Alembic/AbcGeom/OPolyMesh.h>

#include "geom/mesh_writer.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

struct OPolyMeshSchema::State : OMeshState
{
    using OMeshState::OMeshState;

    ParamPart<Abc::N3fTPTraits> normals{*this, "N"};

    void write(const Sample& sample)
    {
        check(sample);
        write_mesh(sample);
        velocities.set_or_repeat(sample.getVelocities());
        uvs.set_or_repeat(sample.getUVs());
        normals.set_or_repeat(sample.getNormals());
        count_sample();
    }

    void write_partial(const Sample& sample)
    {
        check(sample);
        write_given(sample);
        normals.set_if_given(sample.getNormals());
        count_sample();
    }
};

OPolyMeshSchema::OPolyMeshSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                                 const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OMeshSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OPolyMeshSchema", arg0, arg1, arg2, arg3);
}

OPolyMeshSchema::OPolyMeshSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                                 const Argument& arg1, const Argument& arg2)
    : OPolyMeshSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OPolyMeshSchema::set(const Sample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OPolyMeshSchema::set()");
    State& state = writable_state<State>();
    if (state.sparse() || sample.isPartialSample())
        selective_set(sample);
    else
        state.write(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OPolyMeshSchema::selective_set(const Sample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OPolyMeshSchema::selectiveSet()");
    writable_state<State>().write_partial(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
