/// @file
/// Samples as the abstract layer hands them over.
#include "simple_property_writers.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

void OgawaScalarWriter::setSample(const void* sample)
{
    samples_.append(sample, record_.header.getDataType().getExtent(), nullptr);
}

void OgawaArrayWriter::setSample(const AbcA::ArraySample& sample)
{
    const AbcA::DataType& type = record_.header.getDataType();
    if (sample.getDataType() != type)
        ABCA_THROW("DataType on ArraySample iSamp: "
                   << sample.getDataType() << ", does not match the DataType of the Array property: " << type);
    const AbcA::Dimensions& dimensions = sample.getDimensions();
    std::uint64_t pod_count = dimensions.rank() > 0 ? type.getExtent() : 0;
    bool is_empty = false;
    bool has_overflow = false;
    for (std::size_t axis = 0; axis < dimensions.rank(); ++axis) {
        is_empty = is_empty || dimensions[axis] == 0;
        has_overflow = __builtin_mul_overflow(pod_count, dimensions[axis], &pod_count) || has_overflow;
    }
    if (has_overflow && !is_empty)
        ABCA_THROW("Sample of property '" << getName() << "' has impossible dimensions: " << dimensions);
    samples_.append(sample.getData(), is_empty ? 0 : pod_count, &dimensions);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
