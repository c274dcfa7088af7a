/// Alembic's data types as the host's, and the samples of a property as the values of the host's record.
#pragma once

#include <Alembic/Abc/All.h>
#include <vo_resource/resource_property.h>

/// The host's type for values of a data type; TYPE_NONE for an unknown one.
ResourceProperty::Type type_of(Alembic::Util::PlainOldDataType pod);

/// What the metadata say the numbers of one element are; matrices need an extent of 9 or 16.
ResourceProperty::Interpretation interpretation_of(const Alembic::Abc::MetaData& metadata, unsigned int extent);

/// Set `result.values` to one sample of the property, whose extent and interpretation `result` has already; to no
/// values when there are no samples. Half floats become floats, wide strings UTF-8, and matrices are turned to column
/// vectors. An array sample must not have more values than a host array can hold.
void read_scalar_values(const Alembic::Abc::IScalarProperty& property, const Alembic::Abc::ISampleSelector& selector,
                        ResourceProperty& result);
void read_array_values(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                       ResourceProperty& result);

/// Turns the floats or doubles of `floor` into those at `weight` (0 at floor, 1 at ceil). Both have as many.
void blend_values(ResourceProperty& floor, const ResourceProperty& ceil, double weight);
