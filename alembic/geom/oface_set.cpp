/// Face sets, written; bounds of some faces of a mesh.
#include <Alembic/AbcGeom/OFaceSet.h>

#include "geom/schema_parts.h"

#include <algorithm>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

struct OFaceSetSchema::State : OSchemaState
{
    SelfBoundsPart self_bounds{*this};
    ArrayPart<Abc::Int32TPTraits> faces{*this, ".faces"};
    ScalarPart<Abc::Uint32TPTraits> exclusive{*this, ".facesExclusive"};
    FaceSetExclusivity exclusivity = kFaceSetNonExclusive;

    State(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
        : OSchemaState(std::move(compound), time_sampling_index, sparse)
    {
        self_bounds.create();
        faces.create();
    }

    void write(const Sample& sample)
    {
        if (num_samples() == 0 && !sample.getFaces().valid())
            ABCA_THROW("Sample 0 must have valid data for all faceset components");
        self_bounds.set(sample.getSelfBounds());
        faces.write(sample.getFaces(), Absent::repeats);
        if (exclusive.exists() && exclusive.property().getNumSamples() < faces.property().getNumSamples())
            write_exclusivity();
        count_sample();
    }

    // Only the last sample counts for readers, so earlier ones need not be filled in.
    void write_exclusivity()
    {
        if (!exclusive.exists()) exclusive.create();
        exclusive.property().set(static_cast<uint32_t>(exclusivity));
    }
};

OFaceSetSchema::OFaceSetSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                               const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OGeomBaseSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OFaceSetSchema", arg0, arg1, arg2, arg3);
}

OFaceSetSchema::OFaceSetSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                               const Argument& arg1, const Argument& arg2)
    : OFaceSetSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OFaceSetSchema::set(const Sample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OFaceSetSchema::set()");
    writable_state<State>().write(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OFaceSetSchema::setFaceExclusivity(FaceSetExclusivity facesExclusive)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OFaceSetSchema::setFaceExclusivity()");
    State& state = writable_state<State>();
    if (facesExclusive == state.exclusivity) return;
    state.exclusivity = facesExclusive;
    state.write_exclusivity();
    ALEMBIC_ABC_SAFE_CALL_END();
}

FaceSetExclusivity OFaceSetSchema::getFaceExclusivity()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OFaceSetSchema::getFaceExclusivity()");
    return writable_state<State>().exclusivity;
    ALEMBIC_ABC_SAFE_CALL_END();
    return kFaceSetNonExclusive;
}

Abc::Box3d computeBoundsFromPositionsByFaces(const Abc::Int32ArraySample& faces,
                                             const Abc::Int32ArraySample& meshFaceCounts,
                                             const Abc::Int32ArraySample& vertexIndices,
                                             const Abc::P3fArraySample& meshP)
{
    const size_t face_count = meshFaceCounts.size();
    const size_t index_count = vertexIndices.size();
    std::vector<size_t> first_index(face_count + 1, 0); // of each face
    for (size_t i = 0; i < face_count; ++i)
        first_index[i + 1] = first_index[i] + static_cast<size_t>(std::max(0, meshFaceCounts[i]));

    Abc::Box3d bounds;
    for (size_t i = 0; i < faces.size(); ++i) {
        if (faces[i] < 0 || static_cast<size_t>(faces[i]) >= face_count) continue;
        const size_t face = static_cast<size_t>(faces[i]);
        const size_t end = std::min(first_index[face + 1], index_count);
        for (size_t k = first_index[face]; k < end; ++k)
            if (vertexIndices[k] >= 0 && static_cast<size_t>(vertexIndices[k]) < meshP.size())
                bounds.extendBy(Abc::V3d(meshP[static_cast<size_t>(vertexIndices[k])]));
    }
    return bounds;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
