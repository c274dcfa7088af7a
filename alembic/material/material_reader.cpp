/// Materials, read.
#include <Alembic/AbcMaterial/IMaterial.h>

#include <iterator>
#include <tuple>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// What a dictionary holds under a key, split at its dot. False, outputs untouched, without the key.
bool split_value(const Dictionary& dictionary, const std::string& key, std::string& first, std::string& second)
{
    const auto found = dictionary.find(key);
    if (found == dictionary.end()) return false;
    std::tie(first, second) = split_names(found->second);
    return true;
}

/// The same for the entry of a number, with its key.
bool split_entry(const Dictionary& dictionary, size_t index, std::string& key, std::string& first, std::string& second)
{
    if (index >= dictionary.size()) return false;
    const auto entry = std::next(dictionary.begin(), static_cast<std::ptrdiff_t>(index));
    key = entry->first;
    std::tie(first, second) = split_names(entry->second);
    return true;
}

/// Key of a target and shader type that a question may ask about; no entry has a name that cannot be joined.
std::string key_of(const std::string& target, const std::string& shader_type)
{
    return shader_type.empty() ? target : target + "." + shader_type;
}

} // namespace

IMaterialSchema::NetworkNode::NetworkNode(Abc::ICompoundProperty compound)
    : compound_(compound)
{
    connections_ = read_dictionary(compound_, ".connections");
}

IMaterialSchema::NetworkNode::NetworkNode(Abc::ICompoundProperty parent, const std::string& nodeName)
    : NetworkNode(compound_if_any(parent, nodeName))
{
}

bool IMaterialSchema::NetworkNode::getTarget(std::string& result) const
{
    return read_text(compound_, "target", result);
}

bool IMaterialSchema::NetworkNode::getNodeType(std::string& result) const
{
    return read_text(compound_, "type", result);
}

Abc::ICompoundProperty IMaterialSchema::NetworkNode::getParameters() const
{
    return compound_if_any(compound_, "params");
}

bool IMaterialSchema::NetworkNode::getConnection(size_t index, std::string& inputName, std::string& connectedNodeName,
                                                 std::string& connectedOutputName) const
{
    return split_entry(connections_, index, inputName, connectedNodeName, connectedOutputName);
}

bool IMaterialSchema::NetworkNode::getConnection(const std::string& inputName, std::string& connectedNodeName,
                                                 std::string& connectedOutputName) const
{
    return split_value(connections_, inputName, connectedNodeName, connectedOutputName);
}

void IMaterialSchema::init()
{
    if (!getPtr()) return;
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IMaterialSchema::init()");
    shaders_ = read_dictionary(*this, ".shaderNames");
    terminals_ = read_dictionary(*this, ".terminals");
    mappings_ = read_dictionary(*this, ".interface");
    nodes_ = compound_if_any(*this, ".nodes");
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void IMaterialSchema::reset()
{
    shaders_.clear();
    terminals_.clear();
    mappings_.clear();
    nodes_.reset();
    Abc::ISchema<MaterialSchemaInfo>::reset();
}

void IMaterialSchema::getTargetNames(std::vector<std::string>& targetNames) const
{
    targetNames = first_names(shaders_);
}

void IMaterialSchema::getShaderTypesForTarget(const std::string& targetName,
                                              std::vector<std::string>& shaderTypeNames) const
{
    shaderTypeNames = second_names(shaders_, targetName);
}

bool IMaterialSchema::getShader(const std::string& target, const std::string& shaderType, std::string& result) const
{
    const auto found = shaders_.find(key_of(target, shaderType));
    if (found == shaders_.end()) return false;
    result = found->second;
    return true;
}

Abc::ICompoundProperty IMaterialSchema::getShaderParameters(const std::string& target,
                                                            const std::string& shaderType) const
{
    return compound_if_any(*this, key_of(target, shaderType) + ".params");
}

void IMaterialSchema::getNetworkNodeNames(std::vector<std::string>& names) const
{
    names.clear();
    for (size_t i = 0; i < getNumNetworkNodes(); ++i)
        names.push_back(nodes_.getPropertyHeader(i).getName());
}

IMaterialSchema::NetworkNode IMaterialSchema::getNetworkNode(size_t index) const
{
    if (index >= getNumNetworkNodes()) return NetworkNode();
    return NetworkNode(nodes_, nodes_.getPropertyHeader(index).getName());
}

IMaterialSchema::NetworkNode IMaterialSchema::getNetworkNode(const std::string& nodeName) const
{
    return NetworkNode(nodes_, nodeName);
}

void IMaterialSchema::getNetworkTerminalTargetNames(std::vector<std::string>& targetNames) const
{
    targetNames = first_names(terminals_);
}

void IMaterialSchema::getNetworkTerminalShaderTypesForTarget(const std::string& targetName,
                                                             std::vector<std::string>& shaderTypeNames) const
{
    shaderTypeNames = second_names(terminals_, targetName);
}

bool IMaterialSchema::getNetworkTerminal(const std::string& target, const std::string& shaderType,
                                         std::string& nodeName, std::string& outputName) const
{
    return split_value(terminals_, key_of(target, shaderType), nodeName, outputName);
}

void IMaterialSchema::getNetworkInterfaceParameterMappingNames(std::vector<std::string>& names) const
{
    names.clear();
    for (const auto& entry : mappings_)
        names.push_back(entry.first);
}

bool IMaterialSchema::getNetworkInterfaceParameterMapping(size_t index, std::string& interfaceParamName,
                                                          std::string& mapToNodeName, std::string& mapToParamName) const
{
    return split_entry(mappings_, index, interfaceParamName, mapToNodeName, mapToParamName);
}

bool IMaterialSchema::getNetworkInterfaceParameterMapping(const std::string& interfaceParamName,
                                                          std::string& mapToNodeName, std::string& mapToParamName) const
{
    return split_value(mappings_, interfaceParamName, mapToNodeName, mapToParamName);
}

Abc::ICompoundProperty IMaterialSchema::getNetworkInterfaceParameters() const
{
    return compound_if_any(*this, ".interfaceParams");
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
