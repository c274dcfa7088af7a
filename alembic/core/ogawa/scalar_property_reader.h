/// @file
/// Scalar properties of an Ogawa archive.
#pragma once

#include "core/ogawa/simple_property_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

class ScalarPropertyReader final : public SimplePropertyReader<AbcA::ScalarPropertyReader, 1>
{
public:
    using SimplePropertyReader::SimplePropertyReader;

    AbcA::ScalarPropertyReaderPtr asScalarPtr() override { return shared_from_this(); }
    void getSample(AbcA::index_t sample, void* intoLocation) override;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
