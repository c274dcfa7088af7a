/// Subdivision surfaces, written.
#include <Alembic/AbcGeom/OSubD.h>

#include "geom/omesh_state.h"

#include <utility>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int32_t not_set = ABC_GEOM_SUBD_NULL_INT_VALUE;

} // namespace

OSubDSchema::Sample::Sample(const Abc::P3fArraySample& positions, const Abc::Int32ArraySample& faceIndices,
                            const Abc::Int32ArraySample& faceCounts, const Abc::Int32ArraySample& creaseIndices,
                            const Abc::Int32ArraySample& creaseLengths, const Abc::FloatArraySample& creaseSharpnesses,
                            const Abc::Int32ArraySample& cornerIndices, const Abc::FloatArraySample& cornerSharpnesses,
                            const Abc::Int32ArraySample& holes)
    : OMeshSampleBase(positions, faceIndices, faceCounts, OV2fGeomParam::Sample())
    , crease_indices_(creaseIndices)
    , crease_lengths_(creaseLengths)
    , crease_sharpnesses_(creaseSharpnesses)
    , corner_indices_(cornerIndices)
    , corner_sharpnesses_(cornerSharpnesses)
    , holes_(holes)
{
}

bool OSubDSchema::Sample::has_creases() const
{
    return crease_indices_.valid() || crease_lengths_.valid() || crease_sharpnesses_.valid();
}

bool OSubDSchema::Sample::isPartialSample() const
{
    const bool has_numbers = interpolate_boundary_ != not_set || face_varying_interpolate_boundary_ != not_set ||
                             face_varying_propagate_corners_ != not_set;
    return has_no_mesh() &&
           (has_velocities_or_uvs() || has_numbers || has_creases() || has_corners() || holes_.valid() || has_scheme());
}

struct OSubDSchema::State : OMeshState
{
    template <class... ARGUMENTS>
    explicit State(ARGUMENTS&&... arguments)
        : OMeshState(std::forward<ARGUMENTS>(arguments)...)
    {
        for (ArrayPart<Abc::Int32TPTraits>* part : {&crease_indices, &crease_lengths, &corner_indices, &holes})
            part->start_one_short();
        crease_sharpnesses.start_one_short();
        corner_sharpnesses.start_one_short();
    }

    ScalarPart<Abc::Int32TPTraits> face_varying_interpolate_boundary{*this, ".faceVaryingInterpolateBoundary"};
    ScalarPart<Abc::Int32TPTraits> face_varying_propagate_corners{*this, ".faceVaryingPropagateCorners"};
    ScalarPart<Abc::Int32TPTraits> interpolate_boundary{*this, ".interpolateBoundary"};
    ArrayPart<Abc::Int32TPTraits> crease_indices{*this, ".creaseIndices"};
    ArrayPart<Abc::Int32TPTraits> crease_lengths{*this, ".creaseLengths"};
    ArrayPart<Abc::Float32TPTraits> crease_sharpnesses{*this, ".creaseSharpnesses"};
    ArrayPart<Abc::Int32TPTraits> corner_indices{*this, ".cornerIndices"};
    ArrayPart<Abc::Float32TPTraits> corner_sharpnesses{*this, ".cornerSharpnesses"};
    ArrayPart<Abc::Int32TPTraits> holes{*this, ".holes"};
    ScalarPart<Abc::StringTPTraits> scheme{*this, ".scheme", Sample::default_scheme};

    void write(const Sample& sample, bool is_partial)
    {
        check(sample);
        const Absent absent = is_partial ? Absent::stays_out : Absent::repeats;
        write_mesh(sample, absent);
        // Intended: the order of creation differs between whole and partial samples.
        if (is_partial) write_velocities_and_uvs(sample, absent);
        face_varying_interpolate_boundary.write(sample.getFaceVaryingInterpolateBoundary(), not_set, absent);
        face_varying_propagate_corners.write(sample.getFaceVaryingPropagateCorners(), not_set, absent);
        interpolate_boundary.write(sample.getInterpolateBoundary(), not_set, absent);
        if (!is_partial) write_velocities_and_uvs(sample, absent);
        create_groups(sample);
        crease_indices.write(sample.getCreaseIndices(), absent);
        crease_lengths.write(sample.getCreaseLengths(), absent);
        crease_sharpnesses.write(sample.getCreaseSharpnesses(), absent);
        corner_indices.write(sample.getCornerIndices(), absent);
        corner_sharpnesses.write(sample.getCornerSharpnesses(), absent);
        holes.write(sample.getHoles(), absent);
        if (sample.has_scheme() || (scheme.exists() && !is_partial))
            scheme.write(sample.getSubdivisionScheme(), std::string(), absent);
        count_sample();
    }

    // Creases and corners come as whole groups of properties, also where a sample has a part of a group only.
    void create_groups(const Sample& sample)
    {
        if (sample.has_creases() && !crease_indices.exists()) {
            crease_indices.create();
            crease_lengths.create();
            crease_sharpnesses.create();
        }
        if (sample.has_corners() && !corner_indices.exists()) {
            corner_indices.create();
            corner_sharpnesses.create();
        }
    }
};

OSubDSchema::OSubDSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                         const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OMeshSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OSubDSchema", arg0, arg1, arg2, arg3);
}

OSubDSchema::OSubDSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0, const Argument& arg1,
                         const Argument& arg2)
    : OSubDSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OSubDSchema::set(const Sample& sample)
{
    write_sample<State>(sample);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
