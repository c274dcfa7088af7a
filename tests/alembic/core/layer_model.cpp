/// The model is deliberately plain: lists, searched from the start, copied at each step.
#include "layer_model.h"

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <algorithm>
#include <functional>

namespace layer_model {

namespace {

std::size_t up_to(std::mt19937& random, std::size_t most)
{
    return random() % (most + 1);
}

Fields random_metadata(std::mt19937& random)
{
    Fields fields;
    for (const char* key : {"a", "b", "c"})
        if (random() % 3 == 0) fields[key] = std::to_string(random() % 10);
    if (random() % 8 == 0) fields["replace"] = "1";
    if (random() % 10 == 0) fields["prune"] = random() % 4 ? "1" : "0";
    return fields;
}

// Different names from a small pool, in random order.
std::vector<std::string> random_names(std::mt19937& random, std::size_t most)
{
    std::vector<std::string> names = {"p", "q", "r", "s", "t", "u"};
    std::shuffle(names.begin(), names.end(), random);
    names.resize(up_to(random, std::min(most, names.size())));
    return names;
}

std::vector<Property> random_properties(std::mt19937& random, int depth)
{
    std::vector<Property> properties;
    for (const std::string& name : random_names(random, depth > 0 ? 4 : 5)) {
        Property property{name,
                          random_metadata(random),
                          static_cast<AbcA::PropertyType>(random() % 3),
                          static_cast<std::int32_t>(random() % 1000),
                          {}};
        if (property.type == AbcA::kCompoundProperty && depth < 3)
            property.children = random_properties(random, depth + 1);
        properties.push_back(property);
    }
    return properties;
}

std::vector<Object> random_objects(std::mt19937& random, int depth)
{
    std::vector<Object> objects;
    if (depth > 3) return objects;
    for (const std::string& name : random_names(random, 4))
        objects.push_back(
            {name, random_metadata(random), random_properties(random, 0), random_objects(random, depth + 1)});
    return objects;
}

AbcA::MetaData to_metadata(const Fields& fields)
{
    AbcA::MetaData metadata;
    for (const auto& [key, value] : fields)
        metadata.set(key, value);
    return metadata;
}

void write_properties(const AbcA::CompoundPropertyWriterPtr& into, const std::vector<Property>& properties)
{
    const AbcA::DataType type(AbcA::kInt32POD, 1);
    for (const Property& p : properties) {
        if (p.type == AbcA::kCompoundProperty)
            write_properties(into->createCompoundProperty(p.name, to_metadata(p.metadata)), p.children);
        else if (p.type == AbcA::kScalarProperty)
            into->createScalarProperty(p.name, to_metadata(p.metadata), type, 0)->setSample(&p.value);
        else
            into->createArrayProperty(p.name, to_metadata(p.metadata), type, 0)
                ->setSample(AbcA::ArraySample(&p.value, type, AbcA::Dimensions(1)));
    }
}

void write_object(const AbcA::ObjectWriterPtr& into, const Object& object)
{
    write_properties(into->getProperties(), object.properties);
    for (const Object& child : object.children)
        write_object(into->createChild(AbcA::ObjectHeader(child.name, to_metadata(child.metadata))), child);
}

bool is_set(const Fields& fields, const char* key)
{
    const auto found = fields.find(key);
    return found != fields.end() && found->second == "1";
}

template <class T>
auto named(std::vector<T>& list, const std::string& name)
{
    return std::find_if(list.begin(), list.end(), [&](const T& item) { return item.name == name; });
}

std::vector<Property> merge_properties(const std::vector<std::vector<Property>>& versions)
{
    std::vector<Property> merged;
    std::map<std::string, std::vector<std::vector<Property>>> contents; // of compounds, by name
    for (const std::vector<Property>& version : versions) {
        for (const Property& p : version) {
            auto there = named(merged, p.name);
            if (is_set(p.metadata, "prune")) {
                if (there != merged.end()) merged.erase(there);
                continue;
            }
            if (there == merged.end()) {
                merged.push_back(p);
                contents[p.name] = {p.children};
            } else if (p.type == AbcA::kCompoundProperty && there->type == AbcA::kCompoundProperty) {
                if (is_set(p.metadata, "replace")) contents[p.name].clear();
                contents[p.name].push_back(p.children);
                if (!p.metadata.empty()) there->metadata = p.metadata;
            } else {
                *there = p;
                contents[p.name] = {p.children};
            }
        }
    }
    for (Property& p : merged)
        if (p.type == AbcA::kCompoundProperty) p.children = merge_properties(contents[p.name]);
    return merged;
}

Object merge_objects(const std::vector<Object>& versions)
{
    Object merged{versions.front().name, {}, {}, {}};
    std::map<std::string, std::vector<Object>> contents;
    std::vector<std::vector<Property>> properties;
    for (const Object& version : versions) {
        properties.push_back(version.properties);
        for (const Object& child : version.children) {
            auto there = named(merged.children, child.name);
            if (is_set(child.metadata, "prune")) {
                if (there != merged.children.end()) merged.children.erase(there);
                continue;
            }
            if (there == merged.children.end()) {
                merged.children.push_back(child);
                contents[child.name] = {child};
                continue;
            }
            if (is_set(child.metadata, "replace")) {
                contents[child.name].clear();
                there->metadata.clear();
            }
            contents[child.name].push_back(child);
            there->metadata.insert(child.metadata.begin(), child.metadata.end()); // what is there stays
        }
    }
    merged.properties = merge_properties(properties);
    for (Object& child : merged.children) {
        const Fields metadata = child.metadata;
        child = merge_objects(contents[child.name]);
        child.metadata = metadata;
    }
    return merged;
}

void describe(const std::vector<Property>& properties, const std::string& indent, std::string& text)
{
    for (const Property& p : properties) {
        text += indent + "." + p.name + " " + std::to_string(p.type) + " {" + to_metadata(p.metadata).serialize() + "}";
        text += p.type == AbcA::kCompoundProperty ? "\n" : " " + std::to_string(p.value) + "\n";
        describe(p.children, indent + " ", text);
    }
}

void describe(const Object& object, const std::string& full_name, std::string& text)
{
    text += full_name + " {" + to_metadata(object.metadata).serialize() + "}\n";
    describe(object.properties, " ", text);
    for (const Object& child : object.children)
        describe(child, full_name + "/" + child.name, text);
}

std::int32_t value_of(const AbcA::BasePropertyReaderPtr& property)
{
    if (const AbcA::ScalarPropertyReaderPtr scalar = property->asScalarPtr()) {
        std::int32_t value = -1;
        scalar->getSample(0, &value);
        return value;
    }
    AbcA::ArraySamplePtr sample;
    property->asArrayPtr()->getSample(0, sample);
    return *static_cast<const std::int32_t*>(sample->getData());
}

void describe(const AbcA::CompoundPropertyReaderPtr& compound, const std::string& indent, std::string& text)
{
    for (std::size_t i = 0; i < compound->getNumProperties(); ++i) {
        const AbcA::PropertyHeader& header = compound->getPropertyHeader(i);
        if (compound->getPropertyHeader(header.getName()) != &header) text += "ERROR: another header by name\n";
        const AbcA::BasePropertyReaderPtr property = compound->getProperty(header.getName());
        text += indent + "." + header.getName() + " " + std::to_string(property->getPropertyType()) + " {" +
                property->getMetaData().serialize() + "}";
        if (const AbcA::CompoundPropertyReaderPtr inner = property->asCompoundPtr()) {
            if (inner->getParent() != compound) text += "ERROR: another parent";
            text += "\n";
            describe(inner, indent + " ", text);
        } else {
            text += " " + std::to_string(value_of(property)) + "\n";
        }
    }
}

void describe(const AbcA::ObjectReaderPtr& object, std::string& text)
{
    text += object->getFullName() + " {" + (object->getParent() ? object->getMetaData().serialize() : "") + "}\n";
    describe(object->getProperties(), " ", text);
    for (std::size_t i = 0; i < object->getNumChildren(); ++i) {
        const AbcA::ObjectHeader& header = object->getChildHeader(i);
        if (object->getChildHeader(header.getName()) != &header) text += "ERROR: another header by name\n";
        const AbcA::ObjectReaderPtr child = object->getChild(i);
        if (object->getChild(header.getName()) != child) text += "ERROR: another object by name\n";
        if (child->getParent() != object) text += "ERROR: another parent\n";
        describe(child, text);
    }
}

} // namespace

Object random_scene(std::mt19937& random)
{
    Object top{"", {}, random_properties(random, 0), random_objects(random, 0)};
    top.metadata["k"] = std::to_string(random() % 10);
    return top;
}

void write_scene(const std::string& path, const Object& top)
{
    const AbcA::ArchiveWriterPtr archive = Alembic::AbcCoreOgawa::WriteArchive()(path, to_metadata(top.metadata));
    write_object(archive->getTop(), top);
}

std::string describe_merged(const std::vector<Object>& layers)
{
    std::string text;
    describe(merge_objects(layers), "", text);
    return text;
}

std::string describe(const AbcA::ObjectReaderPtr& top)
{
    std::string text;
    describe(top, text);
    return text;
}

} // namespace layer_model
