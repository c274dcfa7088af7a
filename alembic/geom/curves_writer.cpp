#include <Alembic/AbcGeom/OCurves.h>

#include "geom/schema_parts.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

OCurvesSchema::Sample::Sample(const Abc::P3fArraySample& pos, const Abc::Int32ArraySample& nVertices,
                              const CurveType& type, CurvePeriodicity wrap, const OFloatGeomParam::Sample& widths,
                              const OV2fGeomParam::Sample& uvs, const ON3fGeomParam::Sample& normals,
                              const BasisType& basis, const Abc::FloatArraySample& posWeight,
                              const Abc::UcharArraySample& orders, const Abc::FloatArraySample& knots)
    : positions_(pos)
    , num_vertices_(nVertices)
    , type_(type)
    , wrap_(wrap)
    , basis_(basis)
    , widths_(widths)
    , uvs_(uvs)
    , normals_(normals)
    , position_weights_(posWeight)
    , orders_(orders)
    , knots_(knots)
{
}

bool OCurvesSchema::Sample::isPartialSample() const
{
    return !positions_.valid() &&
           (num_vertices_.valid() || widths_.valid() || uvs_.valid() || normals_.valid() || position_weights_.valid() ||
            orders_.valid() || knots_.valid() || velocities_.valid());
}

namespace {

/// Type, wrap, basis and basis again, in one scalar of four bytes.
class BasisAndTypePart : public SchemaPartOf<BasisAndTypePart, Abc::OScalarProperty>
{
public:
    explicit BasisAndTypePart(OSchemaState& owner)
        : SchemaPartOf(owner, "curveBasisAndType")
    {
    }

    void create()
    {
        property_ = Abc::OScalarProperty(owner_.compound(), name_, AbcA::DataType(Alembic::Util::kUint8POD, 4),
                                         first_time_sampling());
    }
    void create_for(const uint8_t*) { create(); }
    void write_default() { set_for(OCurvesSchema::Sample()); }

    void set_for(const OCurvesSchema::Sample& sample)
    {
        const uint8_t bytes[4] = {static_cast<uint8_t>(sample.getType()), static_cast<uint8_t>(sample.getWrap()),
                                  static_cast<uint8_t>(sample.getBasis()), static_cast<uint8_t>(sample.getBasis())};
        set(static_cast<const uint8_t*>(bytes));
    }
};

} // namespace

struct OCurvesSchema::State : OSchemaState
{
    SelfBoundsPart self_bounds{*this};
    ArrayPart<Abc::P3fTPTraits> positions{*this, "P", scope_metadata(kVertexScope)};
    ArrayPart<Abc::Int32TPTraits> num_vertices{*this, "nVertices"};
    BasisAndTypePart basis_and_type{*this};
    ArrayPart<Abc::V3fTPTraits> velocities{*this, ".velocities"};
    ParamPart<Abc::V2fTPTraits> uvs{*this, "uv"};
    ParamPart<Abc::N3fTPTraits> normals{*this, "N"};
    ParamPart<Abc::Float32TPTraits> widths{*this, "width"};
    ArrayPart<Abc::Float32TPTraits> position_weights{*this, "w"};
    ArrayPart<Abc::Uint8TPTraits> orders{*this, ".orders"};
    ArrayPart<Abc::Float32TPTraits> knots{*this, ".knots"};

    State(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
        : OSchemaState(std::move(compound), time_sampling_index, sparse)
    {
        if (sparse) return;
        self_bounds.create();
        positions.create();
        num_vertices.create();
        basis_and_type.create();
    }

    void check(const Sample& sample) const
    {
        if (!sparse() && num_samples() == 0 && !sample.getPositions().valid())
            ABCA_THROW("Sample 0 must have valid data for all curve components: it has no positions");
    }

    void write(const Sample& sample)
    {
        check(sample);
        self_bounds.set_for(sample.getSelfBounds(), sample.getPositions());
        positions.set_or_repeat(sample.getPositions());
        num_vertices.set_or_start_empty(sample.getCurvesNumVertices());
        basis_and_type.set_for(sample);
        velocities.set_or_repeat(sample.getVelocities());
        uvs.set_or_repeat(sample.getUVs());
        normals.set_or_repeat(sample.getNormals());
        widths.set_or_repeat(sample.getWidths());
        position_weights.set_or_repeat(sample.getPositionWeights());
        orders.set_or_repeat(sample.getOrders());
        knots.set_or_repeat(sample.getKnots());
        count_sample();
    }

    void write_partial(const Sample& sample)
    {
        check(sample);
        self_bounds.set_for_partial(sample.getSelfBounds(), sample.getPositions());
        positions.set_or_repeat(sample.getPositions()); // Intended: alone among the parts it repeats.
        num_vertices.set_if_given(sample.getCurvesNumVertices());
        if (sample.getCurvesNumVertices().valid()) basis_and_type.set_for(sample);
        velocities.set_if_given(sample.getVelocities());
        uvs.set_if_given(sample.getUVs());
        normals.set_if_given(sample.getNormals());
        widths.set_if_given(sample.getWidths());
        position_weights.set_if_given(sample.getPositionWeights());
        orders.set_if_given(sample.getOrders());
        knots.set_if_given(sample.getKnots());
        count_sample();
    }
};

OCurvesSchema::OCurvesSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OGeomBaseSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OCurvesSchema", arg0, arg1, arg2, arg3);
}

OCurvesSchema::OCurvesSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2)
    : OCurvesSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OCurvesSchema::set(const sample_type& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCurvesSchema::set()");
    State& state = writable_state<State>();
    if (state.sparse() || sample.isPartialSample())
        selective_set(sample);
    else
        state.write(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OCurvesSchema::selective_set(const sample_type& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCurvesSchema::selectiveSet()");
    writable_state<State>().write_partial(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
