/// Data keys: a text that tells whether the geometry of two objects is the same.
#pragma once

#include <Alembic/Abc/All.h>
#include <vo_core/core_string.h>

/// The key of an object's geometry at `time` (seconds): `kind`, a colon, and 32 hexadecimal digits. They are a hash over
/// the names, types and sample digests of the properties of `schema`, whatever their order, and over the object's face
/// sets, which are always read from their first sample. Bounds, which follow from the rest, and user properties, which
/// are no geometry, do not count. No array is read: the digests are stored in the archive.
CoreString geometry_data_key(const char* kind, const Alembic::Abc::IObject& object,
                             const Alembic::Abc::ICompoundProperty& schema, double time);
