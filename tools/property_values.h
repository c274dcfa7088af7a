/// Values of an object's user properties and arbitrary geometry parameters.
#pragma once

#include "archive_session.h"
#include "text.h"

#include <string>

/// Name and value at `time` (seconds, interpolated where the type allows) of every property that
/// AbcInput::get_property_names lists, in its order: a number or text, an array of the numbers of one element, or an
/// array of elements; null where there is no value. Arrays of more than 16 elements are given as {"type", "extent",
/// "count"} alone. Geometry parameters are objects with their scope, and their indices if they have any.
Json read_property_values(const ArchiveSession& session, const std::string& object_path, double time);
