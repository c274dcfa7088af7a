/// @file
/// Reads scalar samples.
#include "core/ogawa/scalar_property_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

void ScalarPropertyReader::getSample(AbcA::index_t sample, void* intoLocation)
{
    const Ogawa::DataReader data = stored_data(sample);
    require_data(data);
    const AbcA::DataType& type = getHeader().getDataType();
    if (is_text(type.getPod())) {
        read_text(data, type.getPod(), intoLocation, type.getExtent());
        return;
    }
    const std::uint64_t expected = Ogawa::digest_size + type.getNumBytes();
    if (data.size() != expected)
        ABCA_THROW("ScalarPropertyReader::getSample size is not correct expected: " << expected
                                                                                    << " got: " << data.size());
    data.read(Ogawa::digest_size, intoLocation, type.getNumBytes());
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
