/// @file
/// Reads array samples, which are data sets.
#include "core/hdf5/array_property_reader.h"

#include "core/hdf5/archive_reader.h"
#include "core/hdf5/attribute.h"
#include "core/hdf5/limits.h"
#include "core/hdf5/pod_types.h"
#include "core/hdf5/texts.h"

#include <algorithm>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreCommon::is_text;

/// The stored dimensions, and their product; rank 0 when there are none.
AbcA::Dimensions stored_dimensions(const SamplePlace& place, std::uint64_t& points)
{
    const auto extents = read_numbers<std::uint32_t>(place.group, place.name + ".dims");
    AbcA::Dimensions dimensions;
    if (!extents) return dimensions;
    dimensions.setRank(extents->size());
    points = 1;
    for (std::size_t i = 0; i < extents->size(); ++i) {
        dimensions[i] = (*extents)[i];
        if (__builtin_mul_overflow(points, dimensions[i], &points)) points = ~std::uint64_t(0);
    }
    return dimensions;
}

/// All characters of a data set of texts.
template <class Unit>
std::vector<Unit> read_units(const DataSet& data, AbcA::PlainOldDataType pod)
{
    std::vector<Unit> units(static_cast<std::size_t>(data.count()));
    data.read(memory_type(pod).id(), units.data());
    return units;
}

/// The number of texts, worked out without stored dimensions.
std::uint64_t count_texts(const DataSet& data, AbcA::PlainOldDataType pod)
{
    return with_text_types(pod, nullptr, [&](auto unit, auto*) {
        const auto units = read_units<decltype(unit)>(data, pod);
        return static_cast<std::uint64_t>(std::count(units.begin(), units.end(), decltype(unit)(0)));
    });
}

} // namespace

DataSet ArrayPropertyReader::open(const SamplePlace& place) const
{
    Handle data_set = compound().file().open_linked(place.group, place.name, H5I_DATASET);
    if (!data_set) {
        const bool is_first = place.group == compound().group();
        ABCA_THROW("Invalid property: " << getName() << ", missing " << (is_first ? "smp1" : place.name));
    }
    return DataSet(std::move(data_set), getHeader().getDataType().getPod(), getName(), compound().file());
}

/// The shape of a sample. Its number of elements always fits the stored values: of numbers it takes them all, of texts
/// each takes at least its closing zero.
AbcA::Dimensions ArrayPropertyReader::dimensions(const SamplePlace& place, const DataSet& data) const
{
    const AbcA::DataType& type = getHeader().getDataType();
    const std::uint64_t fitting = data.count() / type.getExtent();
    std::uint64_t points = 0;
    const AbcA::Dimensions stored = stored_dimensions(place, points);
    if (stored.rank() == 0) {
        points = is_text(type.getPod()) ? count_texts(data, type.getPod()) / type.getExtent() : fitting;
    }
    const bool fits =
        is_text(type.getPod()) ? points <= fitting : points == fitting && fitting * type.getExtent() == data.count();
    if (!fits)
        ABCA_THROW("Invalid property: " << getName() << ", a sample has " << data.count()
                                        << " stored values, which is not what its dimensions ask for");
    if (is_text(type.getPod())) require_memory(points * type.getExtent(), data);
    return stored.rank() == 0 ? AbcA::Dimensions(points) : stored;
}

void ArrayPropertyReader::require_memory(std::uint64_t texts, const DataSet& data) const
{
    static_assert(sizeof(std::string) == sizeof(std::wstring), "strings of both kinds take the same");
    const std::uint64_t file_size = compound().file().size();
    const std::uint64_t bytes =
        texts * sizeof(std::string) + data.count() * stored_size(getHeader().getDataType().getPod());
    if (bytes > std::max(text_floor, text_factor * file_size))
        ABCA_THROW("Invalid property: " << getName() << ", a sample has " << texts
                                        << " strings, too many for a file of " << file_size << " bytes");
}

void ArrayPropertyReader::read(const DataSet& data, std::uint64_t points, void* into) const
{
    const AbcA::DataType& type = getHeader().getDataType();
    if (!is_text(type.getPod())) return data.read(memory_type(type.getPod()).id(), into);
    with_text_types(type.getPod(), into, [&](auto unit, auto* texts) {
        split_texts(read_units<decltype(unit)>(data, type.getPod()), texts, points * type.getExtent(), getName());
    });
}

AbcA::ArraySamplePtr ArrayPropertyReader::read_sample(AbcA::index_t index)
{
    const LibraryLock lock;
    const SamplePlace place = place_of(index);
    const DataSet data = open(place);
    const AbcA::Dimensions shape = dimensions(place, data);
    AbcA::ArraySamplePtr sample = AbcA::AllocateArraySample(getHeader().getDataType(), shape);
    read(data, shape.numPoints(), const_cast<void*>(sample->getData()));
    return sample;
}

void ArrayPropertyReader::getSample(AbcA::index_t sampleIndex, AbcA::ArraySamplePtr& sample)
{
    // The cache is the client's and may have a lock of its own: it is not asked while ours is held.
    const AbcA::ReadArraySampleCachePtr cache = compound().archive().getReadArraySampleCachePtr();
    AbcA::ArraySampleKey key;
    if (!cache || !getKey(sampleIndex, key)) {
        sample = read_sample(sampleIndex);
        return;
    }
    AbcA::Dimensions shape;
    getDimensions(sampleIndex, shape);
    const AbcA::ArraySamplePtr found = cache->find(key).getSample();
    // Equal bytes may be elements of another extent, or of another shape.
    if (found && found->getDataType() == getHeader().getDataType() && found->getDimensions() == shape) {
        sample = found;
        return;
    }
    sample = read_sample(sampleIndex);
    if (!found) cache->store(key, sample);
}

bool ArrayPropertyReader::getKey(AbcA::index_t sampleIndex, AbcA::ArraySampleKey& key)
{
    const LibraryLock lock;
    const DataSet data = open(place_of(sampleIndex));
    const auto digest = read_numbers<std::uint8_t>(data.id(), "key");
    if (!digest || digest->size() != sizeof key.digest.d) return false;
    key.origPOD = getHeader().getDataType().getPod();
    key.readPOD = key.origPOD;
    key.numBytes = data.count() * stored_size(key.origPOD);
    std::copy(digest->begin(), digest->end(), key.digest.d);
    return true;
}

void ArrayPropertyReader::getDimensions(AbcA::index_t sampleIndex, AbcA::Dimensions& dim)
{
    const LibraryLock lock;
    const SamplePlace place = place_of(sampleIndex);
    dim = dimensions(place, open(place));
}

void ArrayPropertyReader::getAs(AbcA::index_t sample, void* intoLocation, AbcA::PlainOldDataType pod)
{
    const AbcA::PlainOldDataType stored = getHeader().getDataType().getPod();
    const auto converts = [](AbcA::PlainOldDataType type) { return !is_text(type) && type != AbcA::kFloat16POD; };
    if (pod != stored && !(converts(pod) && converts(stored)))
        ABCA_THROW("Cannot convert the data to or from a string, wstring or float16_t.");
    const LibraryLock lock;
    const SamplePlace place = place_of(sample);
    const DataSet data = open(place);
    const AbcA::Dimensions shape = dimensions(place, data);
    if (pod == stored)
        read(data, shape.numPoints(), intoLocation);
    else
        data.read(memory_type(pod).id(), intoLocation);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
