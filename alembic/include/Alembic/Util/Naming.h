/// Names that every application accepts: a letter or `_`, then letters, digits and `_`.
#pragma once

#include <Alembic/Util/Foundation.h>

#include <string>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// True when `name` is such a name; false for an empty one. Letters are those of ASCII, whatever the locale.
ALEMBIC_EXPORT bool isStandardName(const std::string& name);

/// Replaces each character that may not stand where it stands by `fixChar`; an empty name becomes `fixChar`.
/// Throws when `fixChar` is not a letter or `_`.
ALEMBIC_EXPORT void makeStandardName(std::string& name, char fixChar = '_');

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
