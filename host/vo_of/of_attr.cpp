/// Attributes and the registry of those that hold paths.
#include "vo_of/of_attr.h"

#include <cstdlib>
#include <mutex>

namespace {

struct PathAttrRegistry
{
    std::mutex mutex;
    CoreSet<OfAttr*> attrs;
};

PathAttrRegistry& get_registry()
{
    // Never destroyed: attributes with static storage may outlive it otherwise.
    static PathAttrRegistry& registry = *new PathAttrRegistry;
    return registry;
}

} // namespace

OfAttr::OfAttr(const CoreString& name, Type type, VisualHint hint, OfContext* context,
               const CoreBasicArray<CoreString>& values)
    : name_(name)
    , type_(type)
    , hint_(hint)
    , context_(context)
    , values_(values)
    , default_values_(values)
{
    if (type_ != TYPE_PATH) return;
    PathAttrRegistry& registry = get_registry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    registry.attrs.insert(this);
}

OfAttr::~OfAttr()
{
    if (type_ != TYPE_PATH) return;
    PathAttrRegistry& registry = get_registry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    registry.attrs.remove(this);
}

const CoreClassInfo& OfAttr::class_info()
{
    static const CoreClassInfo info("OfAttr", &CoreBaseObject::class_info());
    return info;
}

CoreSet<OfAttr*> OfAttr::get_path_attrs()
{
    PathAttrRegistry& registry = get_registry();
    const std::lock_guard<std::mutex> lock(registry.mutex);
    return registry.attrs;
}

CoreString OfAttr::get_string(const unsigned int& index, const ValuePage& page, const bool& expand_home) const
{
    const CoreArray<CoreString>& values = page == VALUE_PAGE_DEFAULT ? default_values_ : values_;
    if (index >= values.get_count()) return CoreString();
    const char* const home = expand_home && type_ == TYPE_PATH ? std::getenv("HOME") : nullptr;
    if (!home || !values[index].start_with("~/")) return values[index];
    return CoreString(home) + values[index].get_view().substr(1);
}

void OfAttr::set_string(const unsigned int& index, const CoreString& value)
{
    const CoreString copy = value; // it may be one of ours, which the resize moves
    if (index >= values_.get_count()) values_.resize(std::size_t(index) + 1);
    values_[index] = copy;
}
