/// Names, units and macros that the abstract layer is written in.
#pragma once

#include <Alembic/Util/All.h>

#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

using namespace Alembic::Util;

/// Position of a sample; negative values stand for "before the first" or "none".
typedef int64_t index_t;

/// A time in seconds.
typedef float64_t chrono_t;

/// `Alembic 1.8.12 (built <date> <time>)`.
ALEMBIC_EXPORT std::string GetLibraryVersion();

/// `1.8.12`.
ALEMBIC_EXPORT std::string GetLibraryVersionShort();

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic

/// An index_t that says "not known".
#define INDEX_UNKNOWN 0x7fffffffffffffffLL

/// The plain data type of chrono_t.
#define kChrono_TPOD kFloat64POD

/// Throws an Alembic::Util::Exception; `TEXT` is a chain: `ABCA_THROW("index " << index)`.
#define ABCA_THROW(TEXT) ALEMBIC_THROW(TEXT)

/// Throws when `CONDITION` is false, in every build.
#define ABCA_ASSERT(CONDITION, TEXT)                                                                                   \
    do {                                                                                                               \
        if (!(CONDITION)) ABCA_THROW(TEXT);                                                                            \
    } while (0)
