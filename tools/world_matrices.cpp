#include "world_matrices.h"

#include "object_walk.h"

#include <abc_animation_header.h>
#include <abc_input.h>
#include <abc_pivot_data.h>

#include <algorithm>

const WorldMatrices::Matrix& WorldMatrices::get(const std::string& object_path)
{
    const auto found = matrices_.find(object_path);
    if (found != matrices_.end()) return found->second;
    const Matrix matrix = session_.on_object(object_path, [&] { return compute(object_path); });
    return matrices_.emplace(object_path, matrix).first->second;
}

WorldMatrices::Matrix WorldMatrices::compute(const std::string& object_path)
{
    const std::size_t slash = object_path.find_last_of('/');
    if (slash == object_path.npos || object_path.size() == 1) return Matrix(); // the top
    const std::string parent_path = object_path.substr(0, slash);
    if (get_object_kind(session_.find(object_path)) != ObjectKind::TRANSFORM) return get(parent_path);

    AbcInputArchiveHandle& handle = session_.get_handle();
    AbcAnimationHeader header; // asked for its effect: it sets the transform on the handle
    AbcPivotData pivot_data;
    Matrix parent_from_local;
    if (!AbcInput::get_animation_header(handle, CoreString(object_path), header) ||
        !AbcInput::evaluate_pivot_data(handle, time_, pivot_data) ||
        !AbcInput::evaluate_pivot_matrix(handle, time_, parent_from_local))
        throw session_.error(object_path, "the transform cannot be read: it is damaged. Was the export interrupted?");
    return pivot_data.inherits_transform ? get(parent_path) * parent_from_local : parent_from_local;
}
