/// AbcPivotData: its matrix.
#include "abc_pivot_data.h"

namespace {

constexpr unsigned int matrix_size = 16;

} // namespace

AbcPivotData::AbcPivotData()
    : matrix(GMathMatrix4x4<double>().get_data(), matrix_size)
{
}

GMathMatrix4x4<double> AbcPivotData::get_global_matrix() const
{
    if (!use_matrix || matrix.get_count() < matrix_size) return transform.compute_global_matrix();
    GMathTransform with_matrix = transform;
    with_matrix.set_global_matrix(transform.compute_global_matrix() * GMathMatrix4x4<double>(matrix.get_data()));
    return with_matrix.compute_global_matrix();
}

std::size_t AbcPivotData::get_memory_size() const
{
    return sizeof(*this) - sizeof(matrix) + matrix.get_memory_size();
}
