/// Several materials seen as one.
#include <Alembic/AbcMaterial/MaterialFlatten.h>

#include <algorithm>
#include <map>
#include <set>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using Entries = std::map<std::string, MaterialFlatten::ParameterEntry>;

/// Adds the properties of a compound that are not there yet.
void add_weaker(Entries& entries, const Abc::ICompoundProperty& compound)
{
    for (size_t i = 0; i < compound.getNumProperties(); ++i) {
        const AbcA::PropertyHeader& header = compound.getPropertyHeader(i);
        entries.emplace(header.getName(), MaterialFlatten::ParameterEntry(header.getName(), compound, &header));
    }
}

MaterialFlatten::ParameterEntryVector values_of(const Entries& entries)
{
    MaterialFlatten::ParameterEntryVector values;
    for (const auto& entry : entries)
        values.push_back(entry.second);
    return values;
}

/// The names that `list(material, names)` gives for any of the materials; sorted, each once.
template <class LIST>
std::vector<std::string> names_of_all(const std::vector<IMaterialSchema>& materials, LIST list)
{
    std::set<std::string> all;
    for (const IMaterialSchema& material : materials) {
        std::vector<std::string> names;
        list(material, names);
        all.insert(names.begin(), names.end());
    }
    return {all.begin(), all.end()};
}

/// The object of a full name; invalid when there is none.
Abc::IObject find_object(Abc::IArchive archive, const std::string& full_name)
{
    Abc::IObject object = archive.getTop();
    for (size_t begin = 0; object.valid() && begin < full_name.size();) {
        const size_t end = std::min(full_name.find('/', begin), full_name.size());
        if (end > begin) object = object.getChild(full_name.substr(begin, end - begin));
        begin = end + 1;
    }
    return object;
}

} // namespace

bool MaterialFlatten::ParameterEntry::operator==(const ParameterEntry& rhs) const
{
    return name == rhs.name && parent.getPtr() == rhs.parent.getPtr() && header == rhs.header;
}

bool MaterialFlatten::NetworkNode::Connection::operator==(const Connection& rhs) const
{
    return inputName == rhs.inputName && connectedNodeName == rhs.connectedNodeName &&
           connectedOutputName == rhs.connectedOutputName;
}

bool MaterialFlatten::NetworkNode::getTarget(std::string& result) const
{
    return std::any_of(nodes_.begin(), nodes_.end(), [&](const auto& node) { return node.getTarget(result); });
}

bool MaterialFlatten::NetworkNode::getNodeType(std::string& result) const
{
    return std::any_of(nodes_.begin(), nodes_.end(), [&](const auto& node) { return node.getNodeType(result); });
}

void MaterialFlatten::NetworkNode::getParameters(ParameterEntryVector& result) const
{
    Entries entries;
    for (const ParameterEntry& entry : exposed_)
        entries.emplace(entry.name, entry);
    for (const IMaterialSchema::NetworkNode& node : nodes_)
        add_weaker(entries, node.getParameters());
    result = values_of(entries);
}

void MaterialFlatten::NetworkNode::getConnections(ConnectionVector& result) const
{
    std::map<std::string, Connection> connections;
    for (const IMaterialSchema::NetworkNode& node : nodes_)
        for (size_t i = 0; i < node.getNumConnections(); ++i) {
            std::string input, connected_node, connected_output;
            node.getConnection(i, input, connected_node, connected_output);
            connections.emplace(input, Connection(input, connected_node, connected_output));
        }
    result.clear();
    for (const auto& entry : connections)
        result.push_back(entry.second);
}

MaterialFlatten::MaterialFlatten(Abc::IObject object, Abc::IArchive alternateSearchArchive)
{
    IMaterialSchema material;
    if (hasMaterial(object, material)) append(material);
    std::string assigned;
    if (!getMaterialAssignmentPath(object, assigned)) return;
    const Abc::IArchive archive = alternateSearchArchive.valid() ? alternateSearchArchive : object.getArchive();
    if (hasMaterial(find_object(archive, assigned), material)) append(material);
}

void MaterialFlatten::append(IMaterialSchema materialSchema)
{
    if (!materialSchema.valid()) return;
    materials_.push_back(materialSchema);
    node_names_ = names_of_all(materials_, [](const IMaterialSchema& material, std::vector<std::string>& names) {
        material.getNetworkNodeNames(names);
    });
}

void MaterialFlatten::getTargetNames(std::vector<std::string>& targetNames) const
{
    targetNames = names_of_all(materials_, [](const IMaterialSchema& material, std::vector<std::string>& names) {
        material.getTargetNames(names);
    });
}

void MaterialFlatten::getShaderTypesForTarget(const std::string& targetName,
                                              std::vector<std::string>& shaderTypeNames) const
{
    shaderTypeNames = names_of_all(materials_, [&](const IMaterialSchema& material, std::vector<std::string>& names) {
        material.getShaderTypesForTarget(targetName, names);
    });
}

bool MaterialFlatten::getShader(const std::string& target, const std::string& shaderType, std::string& result) const
{
    return std::any_of(materials_.begin(), materials_.end(),
                       [&](const auto& material) { return material.getShader(target, shaderType, result); });
}

void MaterialFlatten::getShaderParameters(const std::string& target, const std::string& shaderType,
                                          ParameterEntryVector& result) const
{
    Entries entries;
    for (const IMaterialSchema& material : materials_)
        add_weaker(entries, material.getShaderParameters(target, shaderType));
    result = values_of(entries);
}

void MaterialFlatten::getNetworkTerminalTargetNames(std::vector<std::string>& targetNames) const
{
    targetNames = names_of_all(materials_, [](const IMaterialSchema& material, std::vector<std::string>& names) {
        material.getNetworkTerminalTargetNames(names);
    });
}

void MaterialFlatten::getNetworkTerminalShaderTypesForTarget(const std::string& targetName,
                                                             std::vector<std::string>& shaderTypeNames) const
{
    shaderTypeNames = names_of_all(materials_, [&](const IMaterialSchema& material, std::vector<std::string>& names) {
        material.getNetworkTerminalShaderTypesForTarget(targetName, names);
    });
}

bool MaterialFlatten::getNetworkTerminal(const std::string& target, const std::string& shaderType,
                                         std::string& nodeName, std::string& outputName) const
{
    return std::any_of(materials_.begin(), materials_.end(), [&](const auto& material) {
        return material.getNetworkTerminal(target, shaderType, nodeName, outputName);
    });
}

MaterialFlatten::NetworkNode MaterialFlatten::getNetworkNode(size_t index) const
{
    return index < node_names_.size() ? getNetworkNode(node_names_[index]) : NetworkNode();
}

MaterialFlatten::NetworkNode MaterialFlatten::getNetworkNode(const std::string& nodeName) const
{
    NetworkNode result;
    Dictionary mapped; // exposed name to the node's parameter, from whichever material says so first
    for (const IMaterialSchema& material : materials_) {
        const IMaterialSchema::NetworkNode node = material.getNetworkNode(nodeName);
        if (node.valid()) result.nodes_.push_back(node);
        for (size_t i = 0; i < material.getNumNetworkInterfaceParameterMappings(); ++i) {
            std::string exposed, mapped_node, parameter;
            material.getNetworkInterfaceParameterMapping(i, exposed, mapped_node, parameter);
            if (mapped_node == nodeName) mapped.emplace(exposed, parameter);
        }
    }
    if (!result.valid()) return result;
    result.name_ = nodeName;
    for (const IMaterialSchema& material : materials_) {
        const Abc::ICompoundProperty values = material.getNetworkInterfaceParameters();
        for (const auto& [exposed, parameter] : mapped)
            if (const AbcA::PropertyHeader* header = values.getPropertyHeader(exposed))
                result.exposed_.emplace_back(parameter, values, header);
    }
    return result;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
