#include "user_property_walk.h"

#include <utility>

using namespace Alembic::AbcGeom;

namespace {

constexpr int max_property_depth = 64; // compounds within compounds; deeper ones are not listed
// A damaged file can show one compound in any number of places: what goes beyond is not listed.
constexpr int max_compounds = 1000; // within the compounds of one object
constexpr std::size_t max_name_bytes = std::size_t(1)
                                       << 24; // of one object's properties, with those of their compounds
constexpr std::size_t bytes_beside_name = 16;
constexpr const char* values_name = ".vals";
constexpr const char* indices_name = ".indices";

bool is_array(const PropertyHeader* header)
{
    return header && header->isArray() && header->getDataType().getPod() < Alembic::Util::kNumPlainOldDataTypes;
}

class Walk
{
public:
    /// `target`: the only name that is looked for; null for all.
    Walk(const std::function<bool(const UserProperty&)>& visit, const std::string* target)
        : visit_(visit)
        , target_(target)
    {
    }

    /// Visits what stands in the compound `group` of each schema of the object. False when the visitor has stopped.
    bool go_group(const ICompoundProperty& properties, const std::string& group, bool are_parameters)
    {
        for (std::size_t i = 0; i < properties.getNumProperties(); ++i) {
            const PropertyHeader& header = properties.getPropertyHeader(i);
            if (!header.isCompound()) continue;
            const ICompoundProperty schema(properties, header.getName());
            const PropertyHeader* const found = schema.getPropertyHeader(group);
            if (!found || !found->isCompound()) continue;
            if (!go(ICompoundProperty(schema, group), "", are_parameters, 0)) return false;
        }
        return true;
    }

private:
    bool go(const ICompoundProperty& parent, const std::string& prefix, bool are_parameters, int depth)
    {
        for (std::size_t i = 0; i < parent.getNumProperties(); ++i) {
            const PropertyHeader& header = parent.getPropertyHeader(i);
            const std::string name = prefix + header.getName();
            const std::size_t cost = name.size() + bytes_beside_name;
            if (cost > name_bytes_left_) return true;
            name_bytes_left_ -= cost;
            const bool go_on =
                header.isSimple()
                    ? !is_wanted(name) || visit_simple(name, parent, header, are_parameters)
                    : !leads_to_wanted(name) || visit_compound(name, parent, header, are_parameters, depth);
            if (!go_on) return false;
        }
        return true;
    }

    bool is_wanted(const std::string& name) const { return !target_ || name == *target_; }
    bool leads_to_wanted(const std::string& name) const
    {
        return !target_ || (target_->compare(0, name.size(), name) == 0 &&
                            (target_->size() == name.size() || (*target_)[name.size()] == '.'));
    }

    bool visit_simple(const std::string& name, const ICompoundProperty& parent, const PropertyHeader& header,
                      bool are_parameters)
    {
        if (header.getDataType().getPod() >= Alembic::Util::kNumPlainOldDataTypes) return true; // nothing known
        const bool is_parameter =
            header.isArray() && (are_parameters || header.getMetaData().get("isGeomParam") == "true");
        return visit_(UserProperty{name, parent, header, ICompoundProperty(), is_parameter});
    }

    bool visit_compound(const std::string& name, const ICompoundProperty& parent, const PropertyHeader& header,
                        bool are_parameters, int depth)
    {
        const ICompoundProperty compound(parent, header.getName());
        // An indexed geometry parameter is stored as a compound of values and indices, and is one property all the
        // same.
        if (is_array(compound.getPropertyHeader(values_name)) && is_array(compound.getPropertyHeader(indices_name)))
            return !is_wanted(name) || visit_(UserProperty{name, parent, header, compound, true});
        if (depth == max_property_depth || compounds_left_ == 0) return true;
        --compounds_left_;
        return go(compound, name + ".", are_parameters, depth + 1);
    }

    const std::function<bool(const UserProperty&)>& visit_;
    const std::string* const target_;
    int compounds_left_ = max_compounds;
    std::size_t name_bytes_left_ = max_name_bytes;
};

void walk(const IObject& object, const std::function<bool(const UserProperty&)>& visit, const std::string* target)
{
    const ICompoundProperty properties = object.getProperties();
    Walk walk(visit, target);
    static_cast<void>(walk.go_group(properties, ".userProperties", false) &&
                      walk.go_group(properties, ".arbGeomParams", true));
}

} // namespace

PropertyHeader UserProperty::value_header() const
{
    if (!is_indexed()) return header;
    const PropertyHeader* const found = elements.getPropertyHeader(values_name);
    return found ? *found : PropertyHeader();
}

IArrayProperty UserProperty::values() const
{
    if (is_indexed()) return IArrayProperty(elements, values_name);
    return header.isArray() ? IArrayProperty(parent, header.getName()) : IArrayProperty();
}

IArrayProperty UserProperty::indices() const
{
    return is_indexed() ? IArrayProperty(elements, indices_name) : IArrayProperty();
}

void walk_user_properties(const IObject& object, const std::function<bool(const UserProperty&)>& visit)
{
    walk(object, visit, nullptr);
}

bool find_user_property(const IObject& object, const std::string& name, UserProperty& found)
{
    bool is_found = false;
    walk(
        object,
        [&](const UserProperty& property) {
            found = property;
            is_found = true;
            return false;
        },
        &name);
    return is_found;
}
