/// What all geometry schemas have in common when read.
#include <Alembic/AbcGeom/IGeomBase.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

IBox3dProperty required_box(const ICompoundProperty& schema, const std::string& name)
{
    return required_property<IBox3dProperty>(schema, name, kNoMatching);
}

IBox3dProperty optional_box(const ICompoundProperty& schema, const std::string& name)
{
    if (!schema.getPtr()) {
        return IBox3dProperty();
    }
    return handed_out(optional_property<IBox3dProperty>(schema, name, kNoMatching), schema.getErrorHandlerPolicy());
}

ICompoundProperty optional_compound(const ICompoundProperty& schema, const std::string& name)
{
    const AbcA::CompoundPropertyReaderPtr compound = schema.getPtr();
    AbcA::CompoundPropertyReaderPtr reader = compound ? compound->getCompoundProperty(name) : nullptr;
    return reader ? ICompoundProperty(std::move(reader), schema.getErrorHandlerPolicy()) : ICompoundProperty();
}

size_t greatest_sample_count(const ICompoundProperty& schema)
{
    const AbcA::CompoundPropertyReaderPtr compound = schema.getPtr();
    const size_t property_count = compound ? compound->getNumProperties() : 0;
    size_t greatest = 0;
    for (size_t i = 0; i < property_count; ++i) {
        const AbcA::PropertyHeader& header = compound->getPropertyHeader(i);
        if (header.isScalar()) {
            greatest = std::max(greatest, compound->getScalarProperty(header.getName())->getNumSamples());
        } else if (header.isArray()) {
            greatest = std::max(greatest, compound->getArrayProperty(header.getName())->getNumSamples());
        }
    }
    return greatest;
}

template class IGeomBaseSchema<GeomBaseSchemaInfo>;
template class IGeomBaseSchema<PolyMeshSchemaInfo>;
template class IGeomBaseSchema<SubDSchemaInfo>;
template class IGeomBaseSchema<FaceSetSchemaInfo>;
template class IGeomBaseSchema<CurvesSchemaInfo>;
template class IGeomBaseSchema<PointsSchemaInfo>;
template class IGeomBaseSchema<NuPatchSchemaInfo>;

bool IGeomBase::matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching)
{
    return matching == kNoMatching || metaData.get("schemaBaseType") == GeomBaseSchemaInfo::title();
}

void IGeomBase::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IGeomBase::get()");
    self_bounds().get(sample.self_bounds_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
