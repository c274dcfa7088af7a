/// @file
/// Refuses a property that is not of the type asked for.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// Throws when the property `name` with this header is not a `wanted` one.
inline void check_type(const std::string& name, const AbcCoreAbstract::PropertyHeader& header,
                       AbcCoreAbstract::PropertyType wanted)
{
    const AbcCoreAbstract::PropertyType type = header.getPropertyType();
    if (type == wanted) return;
    const char* const text = wanted == AbcCoreAbstract::kScalarProperty  ? "a scalar property from a non-scalar: "
                             : wanted == AbcCoreAbstract::kArrayProperty ? "an array property from a non-array: "
                                                                         : "a compound property from a non-compound: ";
    ABCA_THROW("Tried to read " << text << name << ", type: " << static_cast<int>(type));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
