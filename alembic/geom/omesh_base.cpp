/// What polygon meshes and subdivision surfaces have in common when written.
#include "geom/omesh_state.h"

#include <type_traits>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

OMeshState::OMeshState(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
    : OSchemaState(std::move(compound), time_sampling_index, sparse)
{
    if (sparse) return;
    self_bounds.create();
    positions.create();
    face_indices.create();
    face_counts.create();
}

void OMeshState::check(const OMeshSampleBase& sample) const
{
    if (sparse() || num_samples() > 0) return;
    if (!sample.getPositions().valid() || !sample.getFaceIndices().valid() || !sample.getFaceCounts().valid())
        ABCA_THROW("Sample 0 must have valid data for all mesh components");
}

void OMeshState::write_mesh(const OMeshSampleBase& sample, Absent absent)
{
    self_bounds.write(sample.getSelfBounds(), sample.getPositions(), absent);
    positions.write(sample.getPositions(), Absent::repeats); // Intended: also in a partial sample.
    face_indices.write(sample.getFaceIndices(), absent);
    face_counts.write(sample.getFaceCounts(), absent);
}

void OMeshState::write_velocities_and_uvs(const OMeshSampleBase& sample, Absent absent)
{
    velocities.write(sample.getVelocities(), absent);
    uvs.write(sample.getUVs(), absent);
}

template <class INFO>
OFaceSet& OMeshSchema<INFO>::createFaceSet(const std::string& faceSetName)
{
    const std::string where = this->context("createFaceSet ()");
    ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
    auto& face_sets = this->template writable_state<OMeshState>().face_sets;
    if (face_sets.count(faceSetName) != 0)
        ABCA_THROW("faceSet has already been created in "
                   << (std::is_same<INFO, PolyMeshSchemaInfo>::value ? "polymesh." : "SubD."));
    OFaceSet face_set(this->getObject(), faceSetName);
    return face_sets.emplace(faceSetName, face_set).first->second;
    ALEMBIC_ABC_SAFE_CALL_END();

    thread_local OFaceSet nothing_to_write_to;
    nothing_to_write_to = OFaceSet();
    return nothing_to_write_to;
}

template <class INFO>
void OMeshSchema<INFO>::getFaceSetNames(std::vector<std::string>& faceSetNames)
{
    const std::string where = this->context("getFaceSetNames()");
    ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
    for (const auto& [name, face_set] : this->template writable_state<OMeshState>().face_sets)
        faceSetNames.push_back(name);
    ALEMBIC_ABC_SAFE_CALL_END();
}

template <class INFO>
OFaceSet OMeshSchema<INFO>::getFaceSet(const std::string& faceSetName)
{
    const std::string where = this->context("getFaceSet()");
    ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
    auto& face_sets = this->template writable_state<OMeshState>().face_sets;
    const auto found = face_sets.find(faceSetName);
    if (found == face_sets.end())
        ABCA_THROW("The requested FaceSet name can't be found in "
                   << (std::is_same<INFO, PolyMeshSchemaInfo>::value ? "PolyMesh." : "SubD."));
    return found->second;
    ALEMBIC_ABC_SAFE_CALL_END();
    return OFaceSet();
}

template <class INFO>
bool OMeshSchema<INFO>::hasFaceSet(const std::string& faceSetName)
{
    const std::string where = this->context("hasFaceSet()");
    ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
    return this->template writable_state<OMeshState>().face_sets.count(faceSetName) != 0;
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

template <class INFO>
void OMeshSchema<INFO>::setUVSourceName(const std::string& name)
{
    const std::string where = this->context("setUVSourceName()");
    ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
    this->template writable_state<OMeshState>().uvs.set_source_name(name);
    ALEMBIC_ABC_SAFE_CALL_END();
}

template class OMeshSchema<PolyMeshSchemaInfo>;
template class OMeshSchema<SubDSchemaInfo>;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
