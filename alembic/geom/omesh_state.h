/// The parts that polygon meshes and subdivision surfaces have in common, and their face sets.
#pragma once

#include <Alembic/AbcGeom/OMeshBase.h>

#include "geom/schema_parts.h"

#include <map>
#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class OMeshState : public OSchemaState
{
public:
    /// A schema that is not sparse has its required properties from the start.
    OMeshState(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse);

    SelfBoundsPart self_bounds{*this};
    ArrayPart<Abc::P3fTPTraits> positions{*this, "P", scope_metadata(kVertexScope)};
    ArrayPart<Abc::Int32TPTraits> face_indices{*this, ".faceIndices"};
    ArrayPart<Abc::Int32TPTraits> face_counts{*this, ".faceCounts"};
    ArrayPart<Abc::V3fTPTraits> velocities{*this, ".velocities"};
    ParamPart<Abc::V2fTPTraits> uvs{*this, "uv"};

    /// In byte order of the names. References to them stay good as sets are added.
    std::map<std::string, OFaceSet> face_sets;

protected:
    /// Throws unless a sample can be set: the first one needs all of the mesh.
    void check(const OMeshSampleBase& sample) const;

    /// Bounds, positions and topology.
    void write_mesh(const OMeshSampleBase& sample, Absent absent);
    void write_velocities_and_uvs(const OMeshSampleBase& sample, Absent absent);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
