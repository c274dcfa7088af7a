/// Data keys: a text that tells whether the geometry of two objects is the same.
#pragma once

#include <Alembic/Abc/All.h>
#include <vo_core/core_string.h>

/// The key of an object's geometry at `time` (seconds): "v1:", `kind`, a colon, and 32 hexadecimal digits. They are a
/// hash over what the samples nearest to `time` store: names, types, dimensions and digests of the properties of
/// `schema`, in the order of names, and over the object's face sets, which are always taken from their first sample.
/// What is not there counts as what is there without elements. Bounds, which follow from the rest, and user properties,
/// which are no geometry, do not count. Digests and scalars are read, arrays are not, but for wide strings and for
/// archives without digests. Alembic's exceptions pass.
CoreString geometry_data_key(const char* kind, const Alembic::Abc::IObject& object,
                             const Alembic::Abc::ICompoundProperty& schema, double time);
