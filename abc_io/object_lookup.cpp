/// Finding objects: one by its full name, or all that the readers support.
#include "abc_input_archive_manager.h"
#include "abc_internal.h"
#include "reader_scope.h"

#include <vo_app_base/app_progress_bar.h>
#include <vo_sys/sys_timer.h>

#include <exception>
#include <string>

using namespace Alembic::AbcGeom;

namespace {

constexpr int max_object_depth = 1000; // deeper objects are not listed, long before the stack is in danger
constexpr std::size_t max_listed_objects = 10'000'000; // instances of instances can stand for any number of objects
constexpr double progress_interval = 50.0; // milliseconds between two steps of a bar that only shows activity

/// Cycles the bar from 0.1 to 1.0 and back, a step each interval.
void show_activity(AppProgressBar* progress, SysTimer& timer)
{
    if (!progress || timer.get_elapsed_time() <= progress_interval) return;
    const float value = progress->get_value() + 0.1f;
    progress->set_value(value >= 1.0f ? 0.1f : value);
    timer.reset();
}

bool is_supported(const IObject& object)
{
    return is_kind<IXform>(object) || is_kind<IPolyMesh>(object) || is_kind<ISubD>(object) ||
           is_kind<ICurves>(object) || is_kind<IPoints>(object) || is_kind<ICamera>(object);
}

/// The child; an invalid object when it cannot be opened: a damaged object must not cost the others their place.
IObject open_child(const IObject& parent, std::size_t index)
{
    try {
        return parent.getChild(index);
    } catch (const std::exception&) {
        return IObject();
    }
}

/// `left` counts down over the whole walk.
void list_objects(const IObject& parent, CoreHashTable<CoreString, IObject>& objects, AppProgressBar* progress,
                  int depth, std::size_t& left)
{
    if (depth == max_object_depth) return;
    SysTimer timer;
    const std::size_t child_count = parent.getNumChildren();
    for (std::size_t i = 0; i < child_count && left > 0; ++i) {
        --left;
        show_activity(progress, timer);
        const IObject child = open_child(parent, i);
        if (!child.valid()) continue;
        if (is_supported(child)) objects.insert(child.getFullName(), child);
        list_objects(child, objects, progress, depth + 1, left);
    }
}

} // namespace

bool AbcInternal::get_object_by_full_name(IObject root, const CoreString& full_name, IObject& object)
{
    CoreArray<CoreString> components;
    full_name.split("/", components, CoreString::SPLIT_FLAG_KEEP_EMPTY);
    IObject current = root;
    try {
        for (const CoreString& component : components) {
            if (component.is_empty()) continue;
            const std::string name(component.get_view());
            if (!current.getChildHeader(name)) return false;
            current = current.getChild(name);
            if (!current.valid()) return false; // as the exception below, where the archive's errors are quiet
        }
    } catch (const std::exception&) {
        return false; // a damaged object is one that cannot be had
    }
    object = current;
    return true;
}

void AbcInputArchiveManager::build_file_object_list(IObject parent, CoreHashTable<CoreString, IObject>& objects,
                                                    AppProgressBar* progress)
{
    std::size_t left = max_listed_objects;
    list_objects(parent, objects, progress, 0, left);
}
