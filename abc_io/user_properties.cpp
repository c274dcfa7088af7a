/// AbcInput: the names and types of an object's user properties and arbitrary geometry parameters, and their values.
#include "abc_input.h"
#include "reader_scope.h"
#include "user_property_values.h"
#include "user_property_walk.h"

#include <string>
#include <unordered_set>
#include <utility>

using namespace Alembic::AbcGeom;

namespace {

/// Finds the property on the object that the handle is set on, whatever its kind, and returns what `read(property)`
/// returns; all under the handle's lock. False without an object or such a property.
template <class Read>
bool with_handle_property(const AbcInputArchiveHandle& handle, const CoreString& name, Read&& read)
{
    const ScopedLock lock(handle);
    const std::shared_ptr<IObject> object = share_alembic_object(handle);
    UserProperty property;
    return object && object->valid() && find_user_property(*object, name.get_data(), property) && read(property);
}

} // namespace

bool AbcInput::get_property_names(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                  CoreVector<CoreString>& names)
{
    const ScopedLock lock(handle);
    const IObject object = find_object(handle, object_name);
    if (!object.valid()) return false;
    names.remove_all();
    std::unordered_set<std::string> known;
    walk_user_properties(object, [&](const UserProperty& property) {
        if (known.insert(property.name).second) names.add(CoreString(property.name));
        return true;
    });
    return true;
}

bool AbcInput::get_property_type(const AbcInputArchiveHandle& handle, const CoreString& property_name,
                                 PropertyType& type)
{
    return with_handle_property(handle, property_name, [&](const UserProperty& property) {
        type = read_property_type(property);
        return true;
    });
}

bool AbcInput::load_property(const AbcFileList& files, const CoreString& object_name, const CoreString& property_name,
                             const double& time, ResourceProperty& property)
{
    const ScopedArchive archive(files);
    if (!archive) return false;
    const ScopedLock lock(archive.get_handle());
    const IObject object = find_object(archive.get_handle(), object_name);
    UserProperty found;
    return object.valid() && find_user_property(object, property_name.get_data(), found) &&
           read_nearest_property(found, time, property);
}

bool AbcInput::load_property(const AbcInputArchiveHandle& handle, const CoreString& property_name, const double& time,
                             ResourceProperty& property)
{
    return with_handle_property(
        handle, property_name, [&](const UserProperty& found) { return read_nearest_property(found, time, property); });
}

bool AbcInput::evaluate_property(const AbcInputArchiveHandle& handle, const CoreString& property_name,
                                 const double& time, ResourceProperty& property)
{
    return with_handle_property(handle, property_name,
                                [&](const UserProperty& found) { return interpolate_property(found, time, property); });
}
