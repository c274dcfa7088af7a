/// Finding objects: one by its full name, or all that the readers support.
#include "abc_input_archive_manager.h"
#include "abc_internal.h"
#include "log_message.h"
#include "reader_scope.h"

#include <vo_app_base/app_progress_bar.h>
#include <vo_sys/sys_timer.h>

#include <algorithm>
#include <exception>
#include <string>

using namespace Alembic::AbcGeom;

namespace {

constexpr int max_object_depth = 1000; // deeper objects are not listed, long before the stack is in danger
constexpr std::size_t max_listed_objects = 10'000'000;
// Instances of instances let a kilobyte stand for any number of objects. So much memory they may take in a list always,
// and so much for each object that is stored: scenes of many instances have many objects. Usual names let that be about
// a hundred instanced objects for each stored one, and fifty thousand always.
constexpr std::size_t free_instance_bytes = std::size_t(16) << 20;
constexpr std::size_t instance_bytes_per_stored = std::size_t(32) << 10;
constexpr std::size_t instance_bytes = 256; // what a list takes for an object in an instance, beside its full name
constexpr double progress_interval = 50.0;  // milliseconds between two steps of a bar that only shows activity

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

// What is damaged must not cost other objects their place in the list: it has no children, or is left out.

std::size_t count_children(const IObject& object)
{
    try {
        return object.getNumChildren();
    } catch (const std::exception&) {
        return 0;
    }
}

IObject open_child(const IObject& parent, std::size_t index)
{
    try {
        return parent.getChild(index);
    } catch (const std::exception&) {
        return IObject();
    }
}

bool is_child_instance(const IObject& parent, std::size_t index)
{
    try {
        return parent.isChildInstance(index);
    } catch (const std::exception&) {
        return false;
    }
}

/// Counts objects below `parent` as they are stored, instances not followed, until there are `enough`.
void count_stored_objects(const IObject& parent, int depth, std::size_t enough, std::size_t& count)
{
    const std::size_t child_count = count_children(parent);
    for (std::size_t i = 0; i < child_count && count < enough; ++i) {
        ++count;
        if (depth + 1 == max_object_depth || is_child_instance(parent, i)) continue;
        const IObject child = open_child(parent, i);
        if (child.valid()) count_stored_objects(child, depth + 1, enough, count);
    }
}

/// How much of a listing is left: ends it at max_listed_objects, and what is seen through instances long before.
class ListBudget
{
public:
    explicit ListBudget(const IObject& root)
        : root_(root)
    {
    }

    bool has_left() const { return listed_ < max_listed_objects; }
    /// No more objects in instances: has told the log so.
    bool is_without_instances() const { return is_without_instances_; }

    void count(const IObject& object)
    {
        ++listed_;
        if (!object.valid() || !object.isInstanceDescendant()) return;
        ++instanced_;
        instanced_bytes_ += instance_bytes + 2 * object.getFullName().size(); // the object has the name, and the list
        if (instanced_bytes_ < max_instanced_bytes_) return;
        std::size_t stored = 0;
        // So many allow as much as max_listed_objects does: more need not be counted.
        constexpr std::size_t enough = max_listed_objects * instance_bytes / instance_bytes_per_stored;
        count_stored_objects(root_, 0, enough, stored);
        max_instanced_bytes_ = free_instance_bytes + stored * instance_bytes_per_stored;
        if (instanced_bytes_ < max_instanced_bytes_) return;
        is_without_instances_ = true;
        log_message(log_level_warning, [&](CoreLogStream& stream) {
            stream << "The objects of '" << root_.getArchive().getName().c_str()
                   << "' multiply through instances: after " << instanced_
                   << " no more of them are listed. They can still be read by their full names.\n";
        });
    }

private:
    const IObject& root_;
    std::size_t listed_ = 0;
    std::size_t instanced_ = 0;
    std::size_t instanced_bytes_ = 0;
    std::size_t max_instanced_bytes_ = free_instance_bytes; ///< or more: found out when that many are listed
    bool is_without_instances_ = false;
};

void list_objects(const IObject& parent, CoreHashTable<CoreString, IObject>& objects, AppProgressBar* progress,
                  int depth, ListBudget& budget)
{
    if (depth == max_object_depth) return;
    SysTimer timer;
    const bool is_in_instance = parent.isInstanceDescendant();
    const std::size_t child_count = count_children(parent);
    for (std::size_t i = 0; i < child_count && budget.has_left(); ++i) {
        if (budget.is_without_instances() && (is_in_instance || is_child_instance(parent, i))) continue;
        show_activity(progress, timer);
        const IObject child = open_child(parent, i);
        budget.count(child);
        if (!child.valid()) continue;
        if (is_supported(child)) objects.insert(child.getFullName(), child);
        list_objects(child, objects, progress, depth + 1, budget);
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
    ListBudget budget(parent);
    list_objects(parent, objects, progress, 0, budget);
}
