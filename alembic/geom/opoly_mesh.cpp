/// Polygon meshes, written.
#include <Alembic/AbcGeom/OPolyMesh.h>

#include "geom/omesh_state.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

struct OPolyMeshSchema::State : OMeshState
{
    using OMeshState::OMeshState;

    ParamPart<Abc::N3fTPTraits> normals{*this, "N"};

    void write(const Sample& sample, bool is_partial)
    {
        check(sample);
        const Absent absent = is_partial ? Absent::stays_out : Absent::repeats;
        write_mesh(sample, absent);
        write_velocities_and_uvs(sample, absent);
        normals.write(sample.getNormals(), absent);
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
    write_sample<State>(sample);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
