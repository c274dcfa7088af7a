/// Face sets, read.
#include <Alembic/AbcGeom/IFaceSet.h>

#include "geom/property_lookup.h"

#include <algorithm>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void IFaceSetSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IFaceSetSchema::init()");
    faces_ = required_property<IInt32ArrayProperty>(*this, ".faces", matching);
    exclusivity_ = optional_property<IUInt32Property>(*this, ".facesExclusive", matching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t IFaceSetSchema::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IFaceSetSchema::getNumSamples()");
    return greatest_sample_count(*this);
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

AbcA::TimeSamplingPtr IFaceSetSchema::getTimeSampling() const
{
    return faces_.getTimeSampling();
}

void IFaceSetSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IFaceSetSchema::get()");
    faces_.get(sample.faces_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

FaceSetExclusivity IFaceSetSchema::getFaceExclusivity() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IFaceSetSchema::getFaceExclusivity()");
    const size_t count = exclusivity_.getNumSamples();
    if (count > 0) {
        return static_cast<FaceSetExclusivity>(exclusivity_.getValue(static_cast<AbcA::index_t>(count - 1)));
    }
    ALEMBIC_ABC_SAFE_CALL_END();
    return kFaceSetNonExclusive;
}

void IFaceSetSchema::reset()
{
    faces_.reset();
    exclusivity_.reset();
    IGeomBaseSchema<FaceSetSchemaInfo>::reset();
}

void append_face_set_names(const IObject& mesh, std::vector<std::string>& names)
{
    const size_t first = names.size();
    const size_t child_count = mesh.getNumChildren();
    for (size_t i = 0; i < child_count; ++i) {
        const AbcA::ObjectHeader& header = mesh.getChildHeader(i);
        if (IFaceSet::matches(header)) {
            names.push_back(header.getName());
        }
    }
    std::sort(names.begin() + static_cast<std::ptrdiff_t>(first), names.end());
}

bool has_face_set(const IObject& mesh, const std::string& name)
{
    const AbcA::ObjectHeader* header = mesh.getChildHeader(name);
    return header && IFaceSet::matches(*header);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
