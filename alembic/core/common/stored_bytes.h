/// @file
/// The bytes that archives store for a sample's values, and their digest.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Digest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Puts `count` strings into `bytes`: the characters of each and a zero, 8 bits a character.
void encode_strings(const std::string* strings, std::uint64_t count, std::vector<char>& bytes);

/// The same with 32 bits a character.
void encode_strings(const std::wstring* strings, std::uint64_t count, std::vector<char>& bytes);

/// The digest of a sample's stored bytes; zero for none.
Util::Digest digest_of(const void* stored, std::size_t size, AbcA::PlainOldDataType pod);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
