/// @file
/// Array properties of an HDF5 archive.
#pragma once

#include "core/hdf5/data_set.h"
#include "core/hdf5/simple_property_reader.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

class ArrayPropertyReader final : public SimplePropertyReader<AbcA::ArrayPropertyReader>
{
public:
    using SimplePropertyReader::SimplePropertyReader;

    AbcA::ArrayPropertyReaderPtr asArrayPtr() override { return shared_from_this(); }
    void getSample(AbcA::index_t sampleIndex, AbcA::ArraySamplePtr& sample) override;
    bool getKey(AbcA::index_t sampleIndex, AbcA::ArraySampleKey& key) override;
    void getDimensions(AbcA::index_t sampleIndex, AbcA::Dimensions& dim) override;
    bool isScalarLike() override { return record().scalar_like; }
    void getAs(AbcA::index_t sample, void* intoLocation, AbcA::PlainOldDataType pod) override;

private:
    DataSet open(const SamplePlace& place) const;
    AbcA::Dimensions dimensions(const SamplePlace& place, const DataSet& data) const;
    void require_memory(std::uint64_t texts, const DataSet& data) const;
    AbcA::ArraySamplePtr read_sample(AbcA::index_t index);
    void read(const DataSet& data, std::uint64_t points, void* into) const;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
