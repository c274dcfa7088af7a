/// The type and the values of one user property or geometry parameter, as the host's record.
#pragma once

#include "abc_input.h"
#include "user_property_walk.h"

#include <vo_resource/resource_property.h>

/// What is known of the property without reading its samples.
AbcInput::PropertyType read_property_type(const UserProperty& property);

/// The property at the sample nearest to `time` (seconds); no elements when it has no samples. False, `result`
/// untouched, and a warning logged, when an index lies beyond the values, when indices are no unsigned 32-bit numbers,
/// or when there are more values than a host array holds. Alembic's exceptions pass.
bool read_nearest_property(const UserProperty& property, double time, ResourceProperty& result);

/// The property at `time`: blended between the samples before and after it when it is floating-point and both have the
/// same number of elements and the same indices; otherwise as read_nearest_property.
bool interpolate_property(const UserProperty& property, double time, ResourceProperty& result);
