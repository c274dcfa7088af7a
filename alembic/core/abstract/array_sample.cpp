/// Keys of array samples: the digest of the bytes as a file stores them.
#include <Alembic/AbcCoreAbstract/ArraySample.h>

#include "core/common/stored_bytes.h"
#include "core/common/text.h"

#include <vector>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

ArraySample::Key ArraySample::getKey() const
{
    const PlainOldDataType pod = data_type_.getPod();
    const size_t value_count = size() * data_type_.getExtent();
    Key key;
    key.numBytes = value_count * PODNumBytes(pod);
    key.origPOD = pod;
    key.readPOD = pod;
    if (value_count == 0 || !data_) return key;

    std::vector<char> encoded;
    if (pod == kStringPOD)
        AbcCoreCommon::encode_strings(static_cast<const std::string*>(data_), value_count, encoded);
    else if (pod == kWstringPOD)
        AbcCoreCommon::encode_strings(static_cast<const std::wstring*>(data_), value_count, encoded);
    const bool is_text = AbcCoreCommon::is_text(pod);
    key.digest =
        AbcCoreCommon::digest_of(is_text ? encoded.data() : data_, is_text ? encoded.size() : key.numBytes, pod);
    return key;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
