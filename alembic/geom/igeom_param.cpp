/// Geometry parameters, read: what does not depend on their type.
#include <Alembic/AbcGeom/IGeomParam.h>

#include <cstdlib>
#include <limits>
#include <numeric>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

bool geom_param_compound_matches(const AbcA::PropertyHeader& header, const AbcA::DataType& type,
                                 const char* interpretation, SchemaInterpMatching matching)
{
    const AbcA::MetaData& metadata = header.getMetaData();
    if (metadata.get("podName") != PODName(type.getPod())) {
        return false;
    }
    const bool any_extent = interpretation[0] == '\0';
    if (!any_extent && metadata.get("podExtent") != std::to_string(int(type.getExtent()))) {
        return false;
    }
    return matching != kStrictMatching || metadata.get("interpretation") == interpretation;
}

size_t geom_param_array_extent(const AbcA::MetaData& metaData)
{
    const long long extent = std::strtoll(metaData.get("arrayExtent").c_str(), nullptr, 10);
    return extent > 1 ? static_cast<size_t>(extent) : 1;
}

UInt32ArraySamplePtr made_up_indices(size_t count)
{
    if (count > size_t(std::numeric_limits<uint32_t>::max()) + 1) {
        ABCA_THROW("A geometry parameter of " << count << " values cannot be read with indices of 32 bits.");
    }
    AbcA::ArraySamplePtr indices = AbcA::AllocateArraySample(Uint32TPTraits::dataType(), Dimensions(count));
    uint32_t* first = static_cast<uint32_t*>(const_cast<void*>(indices->getData()));
    std::iota(first, first + count, uint32_t(0));
    return UInt32ArraySample::share(std::move(indices));
}

void throw_bad_geom_param_index(const std::string& name, uint32_t index, size_t value_count)
{
    ABCA_THROW("Corrupt geometry parameter '" << name << "': an index is " << index << ", but there are " << value_count
                                              << " values. Read it indexed to see what is stored.");
}

#define ALEMBIC_ABCGEOM_DEFINE_IGEOMPARAM(NAME, TRAITS) template class ITypedGeomParam<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABCGEOM_DEFINE_IGEOMPARAM)
#undef ALEMBIC_ABCGEOM_DEFINE_IGEOMPARAM

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
