/// @file
/// What keeps a hostile or damaged archive from costing more than an error.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Objects nested deeper are refused, and so are compounds within one object: long before any stack is in danger. What
/// would be nested deeper cannot be written either.
constexpr std::uint32_t max_depth = 1200;

/// Every object takes 14 bytes of the file (6 of its header, 8 of its parent's table), and what is kept of it is
/// counted against the file's size: a file that shares groups between parents cannot unfold into a larger tree.
constexpr std::uint64_t child_entry_bytes = 8;

/// Full names repeat the names of all ancestors: all of an archive together may take this many times the file's size,
/// or `full_name_floor` if that is more. Deep production scenes need about a hundredth of it.
constexpr std::uint64_t full_name_factor = 64;
constexpr std::uint64_t full_name_floor = 16u << 20;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
