/// Data keys, from the digests that an archive stores with its array samples.
#include "data_keys.h"

#include "abc_input_archive_manager.h"
#include "reader_scope.h"

#include <Alembic/Util/Murmur3.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

constexpr std::array<const char*, 3> uncounted_properties = {".selfBnds", ".childBnds", ".userProperties"};

/// Appends `text` with its length, so that no two sequences of texts make the same bytes.
void append(const std::string& text, std::string& bytes)
{
    bytes += std::to_string(text.size());
    bytes += ':';
    bytes += text;
}

void append_array(const IArrayProperty& property, const ISampleSelector& selector, std::string& bytes)
{
    ArraySampleKey key;
    if (property.getNumSamples() == 0 || !property.getKey(key, selector)) return append("", bytes);
    append(key.digest.str() + std::to_string(key.numBytes), bytes);
}

void append_scalar(const IScalarProperty& property, const ISampleSelector& selector, std::string& bytes)
{
    const DataType& type = property.getDataType();
    if (property.getNumSamples() == 0) return append("", bytes);
    if (type.getPod() == Alembic::Util::kStringPOD) {
        std::vector<std::string> texts(type.getExtent());
        property.get(texts.data(), selector);
        for (const std::string& text : texts)
            append(text, bytes);
    } else if (type.getPod() < Alembic::Util::kStringPOD) {
        std::string value(type.getNumBytes(), '\0');
        property.get(value.data(), selector);
        append(value, bytes);
    }
}

/// Appends names, types and samples of all that counts in a compound. In the order of names: in which order an exporter
/// wrote its properties makes no difference to the geometry.
void append_compound(const ICompoundProperty& parent, const ISampleSelector& selector, std::string& bytes)
{
    std::vector<const PropertyHeader*> headers;
    for (std::size_t i = 0; i < parent.getNumProperties(); ++i)
        headers.push_back(&parent.getPropertyHeader(i));
    std::sort(headers.begin(), headers.end(),
              [](const PropertyHeader* a, const PropertyHeader* b) { return a->getName() < b->getName(); });
    for (const PropertyHeader* header : headers) {
        const std::string& name = header->getName();
        if (std::find(uncounted_properties.begin(), uncounted_properties.end(), name) != uncounted_properties.end())
            continue;
        append(name, bytes);
        if (header->isCompound()) {
            bytes += '{';
            append_compound(ICompoundProperty(parent, name), selector, bytes);
            bytes += '}';
            continue;
        }
        const DataType& type = header->getDataType();
        append(std::to_string(type.getPod()) + "x" + std::to_string(type.getExtent()), bytes);
        if (header->isArray())
            append_array(IArrayProperty(parent, name), selector, bytes);
        else
            append_scalar(IScalarProperty(parent, name), selector, bytes);
    }
}

void append_face_sets(const IObject& object, std::string& bytes)
{
    for (std::size_t i = 0; i < object.getNumChildren(); ++i) {
        const IObject child = object.getChild(i);
        if (!IFaceSetSchema::matches(child.getMetaData())) continue;
        append(child.getName(), bytes);
        append_compound(child.getProperties(), ISampleSelector(index_t(0)), bytes);
    }
}

} // namespace

CoreString geometry_data_key(const char* kind, const IObject& object, const ICompoundProperty& schema, double time)
{
    std::string bytes;
    append(kind, bytes);
    append_compound(schema, ISampleSelector(time, ISampleSelector::kNearIndex), bytes);
    append_face_sets(object, bytes);
    Alembic::Util::Digest digest;
    Alembic::Util::MurmurHash3_x64_128(bytes.data(), bytes.size(), sizeof(char), &digest);
    return CoreString(kind + (":" + digest.str()));
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
