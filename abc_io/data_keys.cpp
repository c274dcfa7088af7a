/// Data keys, from the digests that an archive stores with its array samples.
#include "data_keys.h"

#include "abc_input_archive_manager.h"

#include <Alembic/Util/Murmur3.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

constexpr const char* key_version = "v1:"; // another one whenever the same geometry would give another key
constexpr int max_compound_depth = 64;     // compounds within compounds; no exporter goes deeper, damaged files may
constexpr int max_properties = 100000;     // of one object; damaged files can show one compound in any number of places

using HeaderList = std::vector<const PropertyHeader*>;

/// Appends `text` with its length, so that no two sequences of texts make the same bytes.
void append(const std::string& text, std::string& bytes)
{
    bytes += std::to_string(text.size());
    bytes += ':';
    bytes += text;
}

/// Bounds follow from the positions, user properties are no geometry.
bool is_counted(const std::string& name)
{
    return name != ".selfBnds" && name != ".childBnds" && name != ".userProperties";
}

/// The properties in the order of names: in which order an exporter wrote them makes no difference to the geometry.
HeaderList sorted_headers(const ICompoundProperty& parent)
{
    HeaderList headers;
    for (std::size_t i = 0; i < parent.getNumProperties(); ++i) {
        const PropertyHeader& header = parent.getPropertyHeader(i);
        if (is_counted(header.getName())) headers.push_back(&header);
    }
    std::sort(headers.begin(), headers.end(),
              [](const PropertyHeader* a, const PropertyHeader* b) { return a->getName() < b->getName(); });
    return headers;
}

/// The metadata that readers of geometry parameters go by; the rest differs between writers.
std::string parameter_metadata(const PropertyHeader& header)
{
    std::string bytes;
    const MetaData& metadata = header.getMetaData();
    append(std::to_string(GetGeometryScope(metadata)), bytes);
    for (const char* const key : {"interpretation", "notUV", "sourceName"})
        append(metadata.get(key), bytes);
    return bytes;
}

std::string wide_bytes(const std::wstring* texts, std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        append(std::string(reinterpret_cast<const char*>(texts[i].data()), texts[i].size() * sizeof(wchar_t)), bytes);
    return bytes;
}

/// The value of a scalar property; of texts every character with its length before them.
std::string scalar_value(const IScalarProperty& property, const ISampleSelector& selector)
{
    const DataType& type = property.getDataType();
    std::string bytes;
    if (type.getPod() == Alembic::Util::kStringPOD) {
        std::vector<std::string> texts(type.getExtent());
        property.get(texts.data(), selector);
        for (const std::string& text : texts)
            append(text, bytes);
    } else if (type.getPod() == Alembic::Util::kWstringPOD) {
        std::vector<std::wstring> texts(type.getExtent());
        property.get(texts.data(), selector);
        bytes = wide_bytes(texts.data(), texts.size());
    } else if (type.getPod() < Alembic::Util::kStringPOD) {
        bytes.resize(type.getNumBytes());
        property.get(bytes.data(), selector);
    }
    return bytes;
}

/// Whether a schema's own scalar has the value that a missing one stands for.
bool is_default(const std::string& name, const std::string& value)
{
    if (name == "curveBasisAndType") return false; // never missing
    if (name == ".scheme") return value == "13:catmull-clark";
    return std::all_of(value.begin(), value.end(), [](char byte) { return byte == 0; });
}

/// Digest and size of the stored sample. Archives keep no digest of some samples, and that of wide strings stands for
/// the first quarter of them only: these are read.
std::string array_digest(const IArrayProperty& property, const ISampleSelector& selector)
{
    ArraySampleKey key;
    const bool is_wide = property.getDataType().getPod() == Alembic::Util::kWstringPOD;
    if (!is_wide && property.getKey(key, selector)) return key.digest.str() + std::to_string(key.numBytes);
    ArraySamplePtr sample;
    property.get(sample, selector);
    if (!sample || !sample->getData()) return std::string();
    if (is_wide) {
        const auto* const texts = static_cast<const std::wstring*>(sample->getData());
        return wide_bytes(texts, sample->size() * property.getDataType().getExtent());
    }
    key = sample->getKey();
    return key.digest.str() + std::to_string(key.numBytes);
}

/// Empty for a sample without elements.
std::string array_bytes(const IArrayProperty& property, const ISampleSelector& selector)
{
    std::string bytes;
    if (property.getNumSamples() == 0) return bytes;
    Dimensions dimensions;
    property.getDimensions(dimensions, selector);
    if (dimensions.numPoints() == 0) return bytes;
    append("array", bytes);
    for (std::size_t i = 0; i < dimensions.rank(); ++i)
        append(std::to_string(dimensions[i]), bytes);
    append(array_digest(property, selector), bytes);
    return bytes;
}

/// Empty without samples, and for a value that a missing property stands for as well.
std::string scalar_bytes(const IScalarProperty& property, const ISampleSelector& selector, bool has_default)
{
    std::string bytes;
    if (property.getNumSamples() == 0) return bytes;
    std::string value = scalar_value(property, selector);
    // The fourth byte repeats the basis in some archives, and no reader looks at it.
    if (property.getName() == "curveBasisAndType" && value.size() == 4) value[3] = 0;
    if (has_default && is_default(property.getName(), value)) return bytes;
    append("scalar", bytes);
    append(value, bytes);
    return bytes;
}

/// What a compound is in its schema.
enum class Place {
    SCHEMA,          ///< the schema itself
    PARAMETERS,      ///< arbitrary geometry parameters
    PARAMETER_PARTS, ///< values and indices of one indexed parameter
};

Place place_of(const ICompoundProperty& compound, Place parent)
{
    if (parent == Place::SCHEMA && compound.getName() == ".arbGeomParams") return Place::PARAMETERS;
    return parent == Place::PARAMETERS && !compound.getPropertyHeader(".vals") ? Place::PARAMETERS
                                                                               : Place::PARAMETER_PARTS;
}

/// What counts of a compound's samples: names, types and values, sorted. Empty when nothing does. `properties_left`
/// goes down by one for each property.
std::string compound_bytes(const ICompoundProperty& parent, const ISampleSelector& selector, int& properties_left,
                           Place place = Place::SCHEMA, int depth = 0)
{
    if (depth > max_compound_depth) throw std::runtime_error("properties are nested too deep: the archive is damaged");
    std::string bytes;
    for (const PropertyHeader* const header : sorted_headers(parent)) {
        if (--properties_left < 0) throw std::runtime_error("there are too many properties: the archive is damaged");
        const std::string& name = header->getName();
        std::string content;
        if (header->isCompound()) {
            const ICompoundProperty compound(parent, name);
            content = compound_bytes(compound, selector, properties_left, place_of(compound, place), depth + 1);
        } else if (header->isArray()) {
            content = array_bytes(IArrayProperty(parent, name), selector);
        } else {
            content = scalar_bytes(IScalarProperty(parent, name), selector, place == Place::SCHEMA);
        }
        if (content.empty()) continue;
        append(name, bytes);
        if (place == Place::PARAMETERS ||
            (place == Place::SCHEMA && header->getMetaData().get("isGeomParam") == "true"))
            append(parameter_metadata(*header), bytes);
        if (header->isSimple()) {
            const DataType& type = header->getDataType();
            append(std::to_string(type.getPod()) + "x" + std::to_string(type.getExtent()), bytes);
        }
        append(content, bytes);
    }
    return bytes;
}

/// The face sets in the order of names, which is that of their groups: a later one takes faces from an earlier one.
std::string face_set_bytes(const IObject& object, int& properties_left)
{
    std::map<std::string, std::string> face_sets;
    const char* const schema_name = IFaceSetSchema::getDefaultSchemaName();
    for (std::size_t i = 0; i < object.getNumChildren(); ++i) {
        if (!IFaceSet::matches(object.getChildHeader(i))) continue;
        const IObject child = object.getChild(i);
        const ICompoundProperty properties = child.getProperties();
        const PropertyHeader* const schema = properties.getPropertyHeader(schema_name);
        std::string& content = face_sets[child.getName()];
        if (!schema || !schema->isCompound()) continue;
        content =
            compound_bytes(ICompoundProperty(properties, schema_name), ISampleSelector(index_t(0)), properties_left);
    }
    std::string bytes;
    for (const auto& [name, content] : face_sets) {
        append(name, bytes);
        append(content, bytes);
    }
    return bytes;
}

} // namespace

CoreString geometry_data_key(const char* kind, const IObject& object, const ICompoundProperty& schema, double time)
{
    std::string bytes;
    append(kind, bytes);
    int properties_left = max_properties;
    append(compound_bytes(schema, ISampleSelector(time, ISampleSelector::kNearIndex), properties_left), bytes);
    append(face_set_bytes(object, properties_left), bytes);
    Alembic::Util::Digest digest;
    Alembic::Util::MurmurHash3_x64_128(bytes.data(), bytes.size(), sizeof(char), &digest);
    return CoreString(std::string(key_version) + kind + ":" + digest.str());
}

CoreString AbcInputArchiveManager::get_curve_data_hash_key(const ICurves& curves, const double& time)
{
    return geometry_data_key("curves", curves, curves.getSchema(), time);
}

CoreString AbcInputArchiveManager::get_mesh_data_hash_key(const IPolyMesh& mesh, const double& time)
{
    return geometry_data_key("mesh", mesh, mesh.getSchema(), time);
}

CoreString AbcInputArchiveManager::get_subd_mesh_data_hash_key(const ISubD& mesh, const double& time)
{
    return geometry_data_key("subd", mesh, mesh.getSchema(), time);
}

CoreString AbcInputArchiveManager::get_point_data_hash_key(const IPoints& points, const double& time)
{
    return geometry_data_key("points", points, points.getSchema(), time);
}
