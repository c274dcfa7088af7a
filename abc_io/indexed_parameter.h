/// Reading indexed geometry parameters straight into a map's arrays, checked so that no index leaves the values.
#pragma once

#include "read_array.h"
#include "topology.h"

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_poly/reverse_poly_order.h>

#include <cstddef>
#include <numeric>

/// Values of the parameter's sample at `selector`; 0 when the parameter is missing or has no samples. Reads no data.
template <class Parameter>
std::size_t parameter_value_count(const Parameter& parameter, const Alembic::Abc::ISampleSelector& selector)
{
    return parameter.valid() ? element_count(Parameter(parameter).getValueProperty(), selector) : 0;
}

/// Indices of the parameter's sample at `selector`: those stored, or one for each value where none are. Reads no data.
template <class Parameter>
std::size_t parameter_index_count(const Parameter& parameter, const Alembic::Abc::ISampleSelector& selector)
{
    if (!parameter.valid() || !parameter.isIndexed()) return parameter_value_count(parameter, selector);
    return element_count(Parameter(parameter).getIndexProperty(), selector);
}

/// Reads the parameter's indices at `selector`: those stored, or 0, 1, 2 ... where none are. False, with `indices` in
/// an unspecified state, when one of them is not below `value_count`.
template <class Parameter>
bool read_parameter_indices(const Parameter& parameter, const Alembic::Abc::ISampleSelector& selector,
                            std::size_t value_count, CoreArray<unsigned int>& indices)
{
    if (parameter.isIndexed())
        return read_array(Parameter(parameter).getIndexProperty(), selector, indices) &&
               indices_are_below(indices, value_count);
    indices.resize_for_overwrite(value_count);
    std::iota(indices.begin(), indices.end(), 0u);
    return true;
}

/// The same for an index per corner of faces, which leaves in the host's winding.
template <class Parameter>
bool read_corner_parameter_indices(const Parameter& parameter, const Alembic::Abc::ISampleSelector& selector,
                                   std::size_t value_count, const CoreArray<unsigned int>& face_counts,
                                   CoreArray<unsigned int>& indices)
{
    if (parameter.isIndexed())
        return read_corner_indices(Parameter(parameter).getIndexProperty(), selector, value_count, face_counts,
                                   indices);
    if (!read_parameter_indices(parameter, selector, value_count, indices)) return false;
    reverse_poly_order(face_counts, indices);
    return true;
}
