/// @file
/// Array properties of an Ogawa archive.
#pragma once

#include "core/ogawa/simple_property_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Each stored sample is two blocks: the data, then the dimensions.
class ArrayPropertyReader final : public SimplePropertyReader<AbcA::ArrayPropertyReader, 2>
{
public:
    using SimplePropertyReader::SimplePropertyReader;

    AbcA::ArrayPropertyReaderPtr asArrayPtr() override { return shared_from_this(); }
    void getSample(AbcA::index_t sampleIndex, AbcA::ArraySamplePtr& sample) override;
    bool getKey(AbcA::index_t sampleIndex, AbcA::ArraySampleKey& key) override;
    void getDimensions(AbcA::index_t sampleIndex, AbcA::Dimensions& dim) override;
    bool isScalarLike() override { return record().scalar_like; }
    void getAs(AbcA::index_t sample, void* intoLocation, AbcA::PlainOldDataType pod) override;
    bool getPart(AbcA::index_t sampleIndex, Util::uint64_t first, std::size_t count, void* intoLocation) override;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
