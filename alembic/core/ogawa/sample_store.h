/// @file
/// Stores the samples of a whole archive: equal ones once, whatever property they belong to.
#pragma once

#include "large_sample_filter.h"
#include "ogawa/file_writer.h"
#include "sample_table.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Turns samples into stored bytes, and writes those that the archive does not hold yet.
class SampleStore
{
public:
    explicit SampleStore(Ogawa::FileWriter& file)
        : file_(file)
    {
    }

    /// The bytes that stand in an archive for `pod_count` values of type `pod` at `data`: numbers are the caller's own
    /// memory, strings are put into a buffer that the next call overwrites. Throws for a string with a zero character
    /// and for sizes that memory cannot hold; `property` names the property in the text.
    Ogawa::Bytes encode(const void* data, Util::PlainOldDataType pod, std::uint64_t pod_count,
                        const std::string& property);

    /// A sample's key, and where it stands in the archive.
    struct Stored
    {
        SampleKey key;
        std::uint64_t entry = Ogawa::empty_data; ///< child entry of its data block
    };

    /// Stores encoded bytes of values of type `pod`, unless they are those of `last` (null for none) or the archive is
    /// known to hold them: then the entry is that of the data block that is there. All bytes are read once (of wide
    /// strings a quarter).
    Stored store(const Ogawa::Bytes& encoded, Util::PlainOldDataType pod, const Stored* last);

    /// To be told of every property that is made: how many samples are remembered depends on that.
    void make_room_for_property() { stored_.make_room_for_property(); }

private:
    Ogawa::FileWriter& file_;
    SampleTable stored_;
    LargeSampleFilter large_samples_;
    std::vector<char> encoded_strings_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
