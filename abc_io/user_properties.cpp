/// AbcInput::get_property_names: the user properties and arbitrary geometry parameters of an object.
#include "abc_input.h"
#include "reader_scope.h"

#include <Alembic/Abc/ICompoundProperty.h>

#include <string>
#include <unordered_set>

using namespace Alembic::Abc;

namespace {

constexpr int max_property_depth = 64; // compounds within compounds; deeper ones are not listed

class NameList
{
public:
    explicit NameList(CoreVector<CoreString>& names)
        : names_(names)
    {
    }

    /// Adds what can be loaded of `parent`, every name with `prefix` before it.
    void add_properties(const ICompoundProperty& parent, const std::string& prefix, int depth = 0)
    {
        for (std::size_t i = 0; i < parent.getNumProperties(); ++i) {
            const PropertyHeader& header = parent.getPropertyHeader(i);
            const std::string name = prefix + header.getName();
            if (header.isSimple()) {
                if (header.getDataType().getPod() != Alembic::Util::kUnknownPOD) add(name);
                continue;
            }
            if (depth == max_property_depth) continue;
            const ICompoundProperty compound(parent, header.getName());
            if (is_indexed_param(compound))
                add(name);
            else
                add_properties(compound, name + ".", depth + 1);
        }
    }

private:
    /// An indexed geometry parameter is stored as a compound of values and indices, and is one property all the same.
    static bool is_indexed_param(const ICompoundProperty& compound)
    {
        return compound.getPropertyHeader(".vals") && compound.getPropertyHeader(".indices");
    }

    void add(const std::string& name)
    {
        if (known_.insert(name).second) names_.add(CoreString(name));
    }

    CoreVector<CoreString>& names_;
    std::unordered_set<std::string> known_;
};

/// Adds what stands in the compound `group` of each schema of the object.
void add_group(const ICompoundProperty& properties, const std::string& group, NameList& list)
{
    for (std::size_t i = 0; i < properties.getNumProperties(); ++i) {
        const PropertyHeader& header = properties.getPropertyHeader(i);
        if (!header.isCompound()) continue;
        const ICompoundProperty schema(properties, header.getName());
        const PropertyHeader* const found = schema.getPropertyHeader(group);
        if (found && found->isCompound()) list.add_properties(ICompoundProperty(schema, group), "");
    }
}

} // namespace

bool AbcInput::get_property_names(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                  CoreVector<CoreString>& names)
{
    const ScopedLock lock(handle);
    const IObject object = find_object(handle, object_name);
    if (!object.valid()) return false;
    names.remove_all();
    NameList list(names);
    const ICompoundProperty properties = object.getProperties();
    add_group(properties, ".userProperties", list);
    add_group(properties, ".arbGeomParams", list);
    return true;
}
