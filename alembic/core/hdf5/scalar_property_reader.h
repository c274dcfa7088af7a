/// @file
/// Scalar properties of an HDF5 archive.
#pragma once

#include "core/hdf5/simple_property_reader.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

class ScalarPropertyReader final : public SimplePropertyReader<AbcA::ScalarPropertyReader>
{
public:
    using SimplePropertyReader::SimplePropertyReader;

    AbcA::ScalarPropertyReaderPtr asScalarPtr() override { return shared_from_this(); }
    void getSample(AbcA::index_t sample, void* intoLocation) override;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
