/// @file
/// Stored samples: 16 bytes of digest, then the values. Numbers go straight from the file to their place.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "core/common/text.h"
#include "ogawa/data_reader.h"

#include <cstdint>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

using AbcCoreCommon::is_text;

/// Throws "ReadData invalid: Null IDataPtr." for no data.
void require_data(const Ogawa::DataReader& data);

/// Bytes of the values: all but the digest; 0 for a sample without elements. Throws when there is only a part of a
/// digest.
std::uint64_t payload_size(const Ogawa::DataReader& data);

/// The shape of an array sample; its number of elements always fits the stored bytes: of numbers it takes them all, of
/// texts each takes at least its closing zero. `stored` is the sample's dimensions block, which may be empty or absent.
AbcA::Dimensions read_dimensions(const Ogawa::DataReader& data, const Ogawa::DataReader& stored,
                                 const AbcA::DataType& type);

/// The number of elements that the stored bytes hold, whatever the dimensions say.
std::uint64_t guess_point_count(const Ogawa::DataReader& data, const AbcA::DataType& type);

/// Reads `points` elements of `type`, the number that read_dimensions() gave, to `into`: that many times extent numbers
/// or constructed std::string / std::wstring.
void read_array(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t points, void* into);

/// Reads `points` numbers times extent from element `first` on; both within guess_point_count().
void read_array_part(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t first,
                     std::uint64_t points, void* into);

/// As read_array(), for numbers that become numbers of another type, see convert_numbers().
void read_array_as(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t points, void* into,
                   AbcA::PlainOldDataType pod);

/// Reads `count` texts (std::string or std::wstring by `pod`) to `into`, one for each closing zero; those that are not
/// stored become empty, what follows the last zero is ignored.
void read_text(const Ogawa::DataReader& data, AbcA::PlainOldDataType pod, void* into, std::uint64_t count);

/// Throws when fewer than `count` texts are stored.
void require_text_count(const Ogawa::DataReader& data, AbcA::PlainOldDataType pod, std::uint64_t count);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
