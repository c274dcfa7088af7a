/// NURBS patches, written.
#include <Alembic/AbcGeom/ONuPatch.h>

#include "geom/schema_parts.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int32_t not_set = ABC_GEOM_NUPATCH_NULL_INT_VALUE;

} // namespace

ONuPatchSchema::Sample::Sample(const Abc::P3fArraySample& pos, const int32_t& numU, const int32_t& numV,
                               const int32_t& uOrder, const int32_t& vOrder, const Abc::FloatArraySample& uKnot,
                               const Abc::FloatArraySample& vKnot, const ON3fGeomParam::Sample& normals,
                               const OV2fGeomParam::Sample& uvs, const Abc::FloatArraySample& posWeight)
    : positions_(pos)
    , position_weights_(posWeight)
    , num_u_(numU)
    , num_v_(numV)
    , u_order_(uOrder)
    , v_order_(vOrder)
    , u_knot_(uKnot)
    , v_knot_(vKnot)
    , uvs_(uvs)
    , normals_(normals)
{
}

void ONuPatchSchema::Sample::setTrimCurve(int32_t trim_nLoops, const Abc::Int32ArraySample& trim_nCurves,
                                          const Abc::Int32ArraySample& trim_n, const Abc::Int32ArraySample& trim_order,
                                          const Abc::FloatArraySample& trim_knot, const Abc::FloatArraySample& trim_min,
                                          const Abc::FloatArraySample& trim_max, const Abc::FloatArraySample& trim_u,
                                          const Abc::FloatArraySample& trim_v, const Abc::FloatArraySample& trim_w)
{
    trim_num_loops_ = trim_nLoops;
    trim_num_curves_ = trim_nCurves;
    trim_num_vertices_ = trim_n;
    trim_order_ = trim_order;
    trim_knot_ = trim_knot;
    trim_min_ = trim_min;
    trim_max_ = trim_max;
    trim_u_ = trim_u;
    trim_v_ = trim_v;
    trim_w_ = trim_w;
    has_trim_ = true;
}

bool ONuPatchSchema::Sample::isPartialSample() const
{
    const bool has_numbers = num_u_ != not_set || num_v_ != not_set || u_order_ != not_set || v_order_ != not_set;
    return !positions_.valid() && (has_numbers || u_knot_.valid() || v_knot_.valid() || uvs_.valid() ||
                                   normals_.valid() || velocities_.valid() || position_weights_.valid() || has_trim_);
}

struct ONuPatchSchema::State : OSchemaState
{
    SelfBoundsPart self_bounds{*this};
    ArrayPart<Abc::P3fTPTraits> positions{*this, "P", scope_metadata(kVertexScope)};
    ScalarPart<Abc::Int32TPTraits> num_u{*this, "nu"};
    ScalarPart<Abc::Int32TPTraits> num_v{*this, "nv"};
    ScalarPart<Abc::Int32TPTraits> u_order{*this, "uOrder"};
    ScalarPart<Abc::Int32TPTraits> v_order{*this, "vOrder"};
    ArrayPart<Abc::Float32TPTraits> u_knot{*this, "uKnot"};
    ArrayPart<Abc::Float32TPTraits> v_knot{*this, "vKnot"};
    ArrayPart<Abc::V3fTPTraits> velocities{*this, ".velocities"};
    ParamPart<Abc::V2fTPTraits> uvs{*this, "uv"};
    ParamPart<Abc::N3fTPTraits> normals{*this, "N"};
    ArrayPart<Abc::Float32TPTraits> position_weights{*this, "w"};
    ScalarPart<Abc::Int32TPTraits> trim_num_loops{*this, "trim_nloops"};
    ArrayPart<Abc::Int32TPTraits> trim_num_curves{*this, "trim_ncurves"};
    ArrayPart<Abc::Int32TPTraits> trim_num_vertices{*this, "trim_n"};
    ArrayPart<Abc::Int32TPTraits> trim_order{*this, "trim_order"};
    ArrayPart<Abc::Float32TPTraits> trim_knot{*this, "trim_knot"};
    ArrayPart<Abc::Float32TPTraits> trim_min{*this, "trim_min"};
    ArrayPart<Abc::Float32TPTraits> trim_max{*this, "trim_max"};
    ArrayPart<Abc::Float32TPTraits> trim_u{*this, "trim_u"};
    ArrayPart<Abc::Float32TPTraits> trim_v{*this, "trim_v"};
    ArrayPart<Abc::Float32TPTraits> trim_w{*this, "trim_w"};

    State(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
        : OSchemaState(std::move(compound), time_sampling_index, sparse)
    {
        if (sparse) return;
        self_bounds.create();
        positions.create();
        num_u.create();
        num_v.create();
        u_order.create();
        v_order.create();
        u_knot.create();
        v_knot.create();
    }

    void check(const Sample& sample) const
    {
        if (sparse() || num_samples() > 0) return;
        if (!sample.getPositions().valid() || !sample.hasKnotSampleData() || sample.getNu() == not_set ||
            sample.getNv() == not_set || sample.getUOrder() == not_set || sample.getVOrder() == not_set)
            ABCA_THROW("Sample 0 must have valid data for all patch components");
    }

    void write(const Sample& sample, bool is_partial)
    {
        check(sample);
        const Absent absent = is_partial ? Absent::stays_out : Absent::repeats;
        self_bounds.write(sample.getSelfBounds(), sample.getPositions(), absent);
        positions.write(sample.getPositions(), Absent::repeats); // Intended: also in a partial sample.
        num_u.write(sample.getNu(), not_set, absent);
        num_v.write(sample.getNv(), not_set, absent);
        u_order.write(sample.getUOrder(), not_set, absent);
        v_order.write(sample.getVOrder(), not_set, absent);
        u_knot.write(sample.getUKnot(), absent);
        v_knot.write(sample.getVKnot(), absent);
        velocities.write(sample.getVelocities(), absent);
        uvs.write(sample.getUVs(), absent);
        normals.write(sample.getNormals(), absent);
        position_weights.write(sample.getPositionWeights(), absent);
        write_trim(sample, absent);
        count_sample();
    }

    // The trim properties come all together, and stay or repeat together.
    void write_trim(const Sample& sample, Absent absent)
    {
        const bool is_given = sample.hasTrimCurve();
        if (is_given)
            trim_num_loops.set(sample.getTrimNumLoops());
        else
            trim_num_loops.leave_out(absent);
        write_trim_array(trim_num_curves, sample.getTrimNumCurves(), is_given, absent);
        write_trim_array(trim_num_vertices, sample.getTrimNumVertices(), is_given, absent);
        write_trim_array(trim_order, sample.getTrimOrder(), is_given, absent);
        write_trim_array(trim_knot, sample.getTrimKnot(), is_given, absent);
        write_trim_array(trim_min, sample.getTrimMin(), is_given, absent);
        write_trim_array(trim_max, sample.getTrimMax(), is_given, absent);
        write_trim_array(trim_u, sample.getTrimU(), is_given, absent);
        write_trim_array(trim_v, sample.getTrimV(), is_given, absent);
        write_trim_array(trim_w, sample.getTrimW(), is_given, absent);
    }

    template <class TRAITS>
    static void write_trim_array(ArrayPart<TRAITS>& part, const Abc::TypedArraySample<TRAITS>& sample, bool is_given,
                                 Absent absent)
    {
        if (is_given)
            part.write_or_start_empty(sample, Absent::repeats);
        else
            part.leave_out(absent);
    }
};

ONuPatchSchema::ONuPatchSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                               const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OGeomBaseSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("ONuPatchSchema", arg0, arg1, arg2, arg3);
}

ONuPatchSchema::ONuPatchSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                               const Argument& arg1, const Argument& arg2)
    : ONuPatchSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void ONuPatchSchema::set(const sample_type& sample)
{
    write_sample<State>(sample);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
