/// Whether the parts of an object's schema fit each other.
#pragma once

#include "findings.h"
#include "stored_view.h"

#include <vector>

/// Adds what does not fit in a mesh, subdivision mesh, face set, curves or points. Other kinds are passed over.
/// `properties` are all of the object's, and can all be read.
void check_geometry(const AbcA::ObjectReaderPtr& object, const std::vector<StoredProperty>& properties,
                    Findings& findings);

/// Adds transforms that have no inverse, and lenses that see nothing. Other kinds are passed over.
void check_transform_or_camera(const AbcA::ObjectReaderPtr& object, Findings& findings);
