/// Values of an object's user properties and arbitrary geometry parameters.
#pragma once

#include "archive_session.h"
#include "text.h"

#include <string>

/// Name and value at the sample nearest to `time` (seconds) of every property that AbcInput::get_property_names lists,
/// in its order: a number, text, an array of them, or null where there is no value. Arrays of more than 16 elements are
/// given as {"type", "count"} alone.
Json read_property_values(const ArchiveSession& session, const std::string& object_path, double time);
