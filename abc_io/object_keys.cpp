/// AbcInput::make_object_key: the data keys of many objects of one archive, in one pass.
#include "abc_input.h"
#include "abc_input_archive_manager.h"
#include "log_message.h"
#include "reader_scope.h"

#include <Alembic/Abc/IArchive.h>
#include <vo_app_base/app_progress_bar.h>

#include <exception>

using namespace Alembic::AbcGeom;

namespace {

using Manager = AbcInputArchiveManager;

/// The key of a typed object, whatever its kind.
CoreString data_key(const ICurves& curves, double time)
{
    return Manager::get_curve_data_hash_key(curves, time);
}
CoreString data_key(const IPolyMesh& mesh, double time)
{
    return Manager::get_mesh_data_hash_key(mesh, time);
}
CoreString data_key(const ISubD& mesh, double time)
{
    return Manager::get_subd_mesh_data_hash_key(mesh, time);
}
CoreString data_key(const IPoints& points, double time)
{
    return Manager::get_point_data_hash_key(points, time);
}

/// True when the object is of this kind; its key is then set, unless it is damaged.
template <class Kind>
bool set_key_if_kind(const IObject& object, CoreString& key)
{
    if (!is_kind<Kind>(object)) return false;
    if (const auto typed = make_typed_object<Kind>(object)) key = data_key(*typed, 0.0);
    return true;
}

void set_key(const IObject& object, CoreString& key)
{
    try {
        static_cast<void>(set_key_if_kind<ICurves>(object, key) || set_key_if_kind<IPolyMesh>(object, key) ||
                          set_key_if_kind<ISubD>(object, key) || set_key_if_kind<IPoints>(object, key));
    } catch (const std::exception& error) {
        // One damaged object must not cost the others their keys.
        log_message(log_level_warning, [&](CoreLogStream& stream) {
            stream << "The object '" << object.getFullName().c_str() << "' has no data key: " << error.what() << "\n";
        });
    }
}

void set_keys(const AbcInputArchiveHandle& handle, CoreArray<CoreString>& keys,
              const CoreArray<CoreString>& object_names, AppProgressBar* progress)
{
    const ScopedLock lock(handle);
    CoreHashTable<CoreString, IObject> objects;
    Manager::get()->build_file_object_list(find_object(handle, "/"), objects, progress);
    if (progress) {
        progress->set_value(0.0f);
        progress->set_step_count(object_names.get_count());
    }
    for (unsigned int i = 0; i < object_names.get_count() && i < keys.get_count(); ++i) {
        if (const IObject* const listed = objects.find(object_names[i])) {
            set_key(*listed, keys[i]);
        } else {
            // What instances multiply is not listed without end, but can be found.
            const IObject found = find_object(handle, object_names[i]);
            if (found.valid() && CoreString(found.getFullName()) == object_names[i]) set_key(found, keys[i]);
        }
        if (progress) progress->step(i + 1);
    }
}

} // namespace

void AbcInput::make_object_key(const AbcFileList& filenames, CoreArray<CoreString>& keys,
                               const CoreArray<CoreString>& object_names, AppProgressBar* progress)
{
    if (progress) progress->set_value(0.0f);
    if (const ScopedArchive archive(filenames); archive) set_keys(archive.get_handle(), keys, object_names, progress);
    if (progress) progress->set_value(1.0f);
}

CoreString AbcInput::get_object_data_hash_key(const AbcInputArchiveHandle& handle, const double& time)
{
    CoreString key;
    with_handle_object<ICurves, IPolyMesh, ISubD, IPoints>(handle, [&](const auto& object) {
        key = data_key(object, time);
        return true;
    });
    return key;
}
