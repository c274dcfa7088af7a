/// @file
/// The stored form of property headers, object headers, time samplings and the table of shared metadata.
#pragma once

#include "writer_records.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <string>
#include <unordered_map>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Short metadata strings of an archive, each stored once and referred to by a number of one byte.
class SharedMetadata
{
public:
    /// 0 for empty metadata, 1 to 254 for an entry of the table (a new one where there is room), else
    /// `Ogawa::metadata_in_place`: the string has to be stored where it is used.
    std::uint8_t index_of(const std::string& metadata);

    /// The table as stored: a length byte and the string, entry 1 first.
    const std::string& encoded() const { return encoded_; }

private:
    std::unordered_map<std::string, std::uint8_t> indices_;
    std::string encoded_;
};

/// Each appends one record to `blob`.
void encode_property_header(const WrittenProperty& property, SharedMetadata& table, std::string& blob);
void encode_object_header(const AbcA::ObjectHeader& object, SharedMetadata& table, std::string& blob);
void encode_time_sampling(const AbcA::TimeSampling& sampling, std::uint32_t max_sample_count, std::string& blob);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
