/// Curves, written.
#include <Alembic/AbcGeom/OCurves.h>

#include "geom/schema_parts.h"

#include <array>

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
    void create_for(const void*) { create(); }
    void write_default() { property_.set(bytes_of(OCurvesSchema::Sample()).data()); }

    void set_for(const OCurvesSchema::Sample& sample) { set(bytes_of(sample).data()); }

private:
    static std::array<uint8_t, 4> bytes_of(const OCurvesSchema::Sample& sample)
    {
        const uint8_t basis = static_cast<uint8_t>(sample.getBasis());
        return {static_cast<uint8_t>(sample.getType()), static_cast<uint8_t>(sample.getWrap()), basis, basis};
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

    void write(const Sample& sample, bool is_partial)
    {
        check(sample);
        const Absent absent = is_partial ? Absent::stays_out : Absent::repeats;
        self_bounds.write(sample.getSelfBounds(), sample.getPositions(), absent);
        positions.write(sample.getPositions(), Absent::repeats); // Intended: also in a partial sample.
        num_vertices.write_or_start_empty(sample.getCurvesNumVertices(), absent);
        if (!is_partial || sample.getCurvesNumVertices().valid()) basis_and_type.set_for(sample);
        velocities.write(sample.getVelocities(), absent);
        uvs.write(sample.getUVs(), absent);
        normals.write(sample.getNormals(), absent);
        widths.write(sample.getWidths(), absent);
        position_weights.write(sample.getPositionWeights(), absent);
        orders.write(sample.getOrders(), absent);
        knots.write(sample.getKnots(), absent);
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
    write_sample<State>(sample);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
