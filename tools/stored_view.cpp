#include "stored_view.h"

#include "tool_error.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace {

constexpr int max_object_depth = 1000;  // the readers list no deeper objects either
constexpr int max_property_depth = 100; // compounds in compounds; nobody nests them

class PropertyList
{
public:
    PropertyList(const std::string& object_path, const StoredFailure& fail)
        : object_path_(object_path)
        , fail_(fail)
    {
    }

    void add(const AbcA::CompoundPropertyReaderPtr& parent, const std::string& parent_path, int depth)
    {
        const std::size_t count = parent->getNumProperties();
        for (std::size_t i = 0; i < count; ++i) {
            std::string path = parent_path;
            try {
                const AbcA::PropertyHeader& header = parent->getPropertyHeader(i);
                path += header.getName();
                properties.emplace_back(parent, header, path);
                const AbcA::CompoundPropertyReaderPtr compound = properties.back().get_compound();
                if (!compound) continue;
                if (depth < max_property_depth)
                    add(compound, path + "/", depth + 1);
                else
                    fail_(object_path_, path,
                          "compounds are nested more than 100 deep; what is in this one is left out");
            } catch (const std::exception& exception) {
                fail_(object_path_, path, reason_in(exception.what()));
            }
        }
    }

    std::vector<StoredProperty> properties;

private:
    const std::string& object_path_;
    const StoredFailure& fail_;
};

/// The full name of a child; where it is lost that of the parent, and the number of the child.
std::string find_child_path(AbcA::ObjectReader& parent, std::size_t i)
{
    try {
        return parent.getChildHeader(i).getFullName();
    } catch (const std::exception&) {
        return parent.getFullName() + " child " + std::to_string(i);
    }
}

void walk(const AbcA::ObjectReaderPtr& object, const std::function<void(const AbcA::ObjectReaderPtr&)>& visit,
          const StoredFailure& fail, int depth)
{
    visit(object);
    std::size_t count = 0;
    try {
        count = object->getNumChildren();
    } catch (const std::exception& exception) {
        fail(object->getFullName(), "", reason_in(exception.what()));
    }
    if (count > 0 && depth == max_object_depth) {
        fail(object->getFullName(), "", "objects are nested more than 1000 deep; those below are left out");
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        AbcA::ObjectReaderPtr child;
        try {
            child = object->getChild(i);
        } catch (const std::exception& exception) {
            fail(find_child_path(*object, i), "", reason_in(exception.what()));
        }
        if (child) walk(child, visit, fail, depth + 1);
    }
}

/// A scalar's sample, read into an array of one element.
AbcA::ArraySamplePtr read_scalar(AbcA::ScalarPropertyReader& property, std::size_t sample)
{
    const AbcA::DataType type = property.getHeader().getDataType();
    AbcA::ArraySamplePtr array = AbcA::AllocateArraySample(type, Alembic::Util::Dimensions(1));
    if (array) property.getSample(static_cast<AbcA::index_t>(sample), const_cast<void*>(array->getData()));
    return array;
}

bool same_bytes(const AbcA::ArraySample& a, const AbcA::ArraySample& b)
{
    if (a.size() == 0) return true;
    bool is_same = false;
    with_stored_type(a.getDataType().getPod(), [&](auto* type) {
        using Value = std::remove_cv_t<std::remove_pointer_t<decltype(type)>>;
        const auto* const first = static_cast<const Value*>(a.getData());
        const auto* const second = static_cast<const Value*>(b.getData());
        const std::size_t count = a.size() * a.getDataType().getExtent();
        if constexpr (std::is_class_v<Value> && !std::is_same_v<Value, Alembic::Util::float16_t>)
            is_same = std::equal(first, first + count, second);
        else
            is_same = std::memcmp(first, second, count * sizeof(Value)) == 0;
    });
    return is_same;
}

} // namespace

StoredProperty::StoredProperty(const AbcA::CompoundPropertyReaderPtr& parent, const AbcA::PropertyHeader& header,
                               std::string path)
    : path_(std::move(path))
    , header_(header)
{
    const std::string& name = header.getName();
    if (header.isCompound()) compound_ = parent->getCompoundProperty(name);
    if (header.isScalar()) scalar_ = parent->getScalarProperty(name);
    if (header.isArray()) array_ = parent->getArrayProperty(name);
    if (!compound_ && !scalar_ && !array_) throw ToolError("the property cannot be opened");
}

bool StoredProperty::is_string() const
{
    const AbcA::PlainOldDataType type = header_.getDataType().getPod();
    return type == Alembic::Util::kStringPOD || type == Alembic::Util::kWstringPOD;
}

std::size_t StoredProperty::get_sample_count() const
{
    return array_ ? array_->getNumSamples() : scalar_ ? scalar_->getNumSamples() : 0;
}

bool StoredProperty::is_constant() const
{
    return array_ ? array_->isConstant() : scalar_ ? scalar_->isConstant() : true;
}

double StoredProperty::get_time(std::size_t sample) const
{
    const AbcA::TimeSamplingPtr sampling = header_.getTimeSampling();
    return sampling ? sampling->getSampleTime(static_cast<AbcA::index_t>(sample)) : 0.0;
}

std::size_t StoredProperty::find_sample(double time) const
{
    return static_cast<std::size_t>((array_ ? array_->getNearIndex(time) : scalar_->getNearIndex(time)).first);
}

std::uint64_t StoredProperty::get_element_count(std::size_t sample) const
{
    if (!array_) return 1;
    Alembic::Util::Dimensions dimensions;
    array_->getDimensions(static_cast<AbcA::index_t>(sample), dimensions);
    return dimensions.numPoints();
}

AbcA::ArraySamplePtr StoredProperty::read(std::size_t sample) const
{
    AbcA::ArraySamplePtr values;
    if (scalar_) values = read_scalar(*scalar_, sample);
    if (array_) array_->getSample(static_cast<AbcA::index_t>(sample), values);
    if (!values) throw ToolError("nothing is stored for the sample");
    return values;
}

bool StoredProperty::get_key(std::size_t sample, AbcA::ArraySampleKey& key) const
{
    return array_ && array_->getKey(static_cast<AbcA::index_t>(sample), key);
}

bool StoredProperty::repeats(std::size_t sample) const
{
    if (sample == 0) return false;
    if (is_constant()) return true;
    if (scalar_) return same_bytes(*read(sample - 1), *read(sample));
    AbcA::ArraySampleKey before, now;
    return get_key(sample - 1, before) && get_key(sample, now) && before == now &&
           get_element_count(sample - 1) == get_element_count(sample);
}

std::vector<StoredProperty> list_stored_properties(const AbcA::ObjectReaderPtr& object, const StoredFailure& fail)
{
    const std::string path = object->getFullName();
    PropertyList list(path, fail);
    try {
        list.add(object->getProperties(), "", 0);
    } catch (const std::exception& exception) {
        fail(path, "", reason_in(exception.what()));
    }
    return std::move(list.properties);
}

void walk_stored_objects(const AbcA::ObjectReaderPtr& top,
                         const std::function<void(const AbcA::ObjectReaderPtr&)>& visit, const StoredFailure& fail)
{
    walk(top, visit, fail, 0);
}
