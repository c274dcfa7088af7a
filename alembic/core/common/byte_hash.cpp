/// @file
/// The seed of the hashes in memory.
#include "core/common/byte_hash.h"

#include <chrono>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

namespace {

std::uint64_t make_seed()
{
    // The clock and where the system has put this library and stack: enough that a file's maker cannot know it.
    static const char here = 0;
    const char* const stack = reinterpret_cast<const char*>(&stack);
    const auto now = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    const std::uint64_t seed = multiply_and_fold(reinterpret_cast<std::uintptr_t>(&here) ^ 0x2545f4914f6cdd1d,
                                                 reinterpret_cast<std::uintptr_t>(stack) | 1) ^
                               static_cast<std::uint64_t>(now);
    return multiply_and_fold(seed | 1, 0xd6e8feb86659fd93);
}

} // namespace

const std::uint64_t seed_of_process = make_seed();

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
