#include <Alembic/AbcGeom/OFaceSet.h>

#include "geom/schema_parts.h"

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

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
