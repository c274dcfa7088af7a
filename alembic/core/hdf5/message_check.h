/// @file
/// Tells sound messages of object headers from damaged ones by their stored bytes.
#pragma once

#include <Alembic/Util/Config.h>

#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Checks an attribute: name, type, space and value must lie in the message, one after the other. Throws for those that do
/// not, and for types other than whole numbers, floating-point numbers and strings of fixed length.
void check_attribute(std::string_view message);

/// Checks a link of a group: its name, and where it leads, must lie in the message. Throws when they do not.
void check_link(std::string_view message);

/// Checks the layout of a data set. Throws when its chunks have no size, or more than can be.
void check_layout(std::string_view message);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
