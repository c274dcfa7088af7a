/// @file
/// Reads array samples.
#include "core/ogawa/array_property_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

void ArrayPropertyReader::getSample(AbcA::index_t sampleIndex, AbcA::ArraySamplePtr& sample)
{
    const Ogawa::DataReader data = stored_data(sampleIndex);
    require_data(data);
    const AbcA::DataType& type = getHeader().getDataType();
    const AbcA::Dimensions dimensions = read_dimensions(data, stored_data(sampleIndex, 1), type);
    if (is_text(type.getPod())) require_text_count(data, type.getPod(), dimensions.numPoints() * type.getExtent());

    // The dimensions agree with the stored size: what is allocated here is what the file holds.
    AbcA::ArraySamplePtr read = AbcA::AllocateArraySample(type, dimensions);
    read_array(data, type, dimensions.numPoints(), const_cast<void*>(read->getData()));
    sample = read;
}

bool ArrayPropertyReader::getKey(AbcA::index_t sampleIndex, AbcA::ArraySampleKey& key)
{
    const Ogawa::DataReader data = stored_data(sampleIndex);
    if (!data) return false;
    key.numBytes = payload_size(data);
    key.origPOD = getHeader().getDataType().getPod();
    key.readPOD = key.origPOD;
    key.digest = AbcA::Digest();
    if (data.size() > 0) data.read(0, key.digest.d, sizeof key.digest.d);
    return true;
}

void ArrayPropertyReader::getDimensions(AbcA::index_t sampleIndex, AbcA::Dimensions& dim)
{
    const Ogawa::DataReader data = stored_data(sampleIndex);
    require_data(data);
    dim = read_dimensions(data, stored_data(sampleIndex, 1), getHeader().getDataType());
}

void ArrayPropertyReader::getAs(AbcA::index_t sample, void* intoLocation, AbcA::PlainOldDataType pod)
{
    const AbcA::DataType& type = getHeader().getDataType();
    if (pod != type.getPod() && (is_text(pod) || is_text(type.getPod())))
        ABCA_THROW("Cannot convert the data to or from a string, or wstring.");
    const Ogawa::DataReader data = stored_data(sample);
    require_data(data);
    const AbcA::Dimensions dimensions = read_dimensions(data, stored_data(sample, 1), type);
    if (pod == type.getPod())
        read_array(data, type, dimensions.numPoints(), intoLocation);
    else
        read_array_as(data, type, dimensions.numPoints(), intoLocation, pod);
}

bool ArrayPropertyReader::getPart(AbcA::index_t sampleIndex, Util::uint64_t first, std::size_t count,
                                  void* intoLocation)
{
    const AbcA::DataType& type = getHeader().getDataType();
    if (is_text(type.getPod())) return false;
    const Ogawa::DataReader data = stored_data(sampleIndex);
    require_data(data);
    const std::uint64_t points = guess_point_count(data, type); // of numbers, the dimensions always say the same
    if (first > points || count > points - first)
        ABCA_THROW("Elements " << first << " to " << first << " + " << count << " of " << points << " were asked for");
    read_array_part(data, type, first, count, intoLocation);
    return true;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
