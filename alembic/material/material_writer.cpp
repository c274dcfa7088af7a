/// Materials, written.
#include <Alembic/AbcMaterial/InternalUtil.h>
#include <Alembic/AbcMaterial/OMaterial.h>

#include <iostream>
#include <map>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

namespace {

struct Node
{
    Abc::OCompoundProperty compound;
    Abc::OCompoundProperty parameters;
    Dictionary connections; ///< name of the input to NODE.OUTPUT
};

/// The compound, created when it is not there yet.
Abc::OCompoundProperty& made(Abc::OCompoundProperty& compound, const AbcA::CompoundPropertyWriterPtr& parent,
                             const std::string& name)
{
    if (!compound.getPtr()) compound = Abc::OCompoundProperty(parent, name);
    return compound;
}

} // namespace

struct OMaterialSchema::State
{
    explicit State(AbcA::CompoundPropertyWriterPtr compound_writer)
        : compound(std::move(compound_writer))
    {
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    ~State()
    {
        write(compound, ".shaderNames", shaders);
        write(compound, ".terminals", terminals);
        write(compound, ".interface", mappings);
        for (const auto& [name, node] : nodes)
            write(node.compound.getPtr(), ".connections", node.connections);
    }

    /// A destructor cannot throw; the reason goes where the archive's log can no longer take it.
    static void write(const AbcA::CompoundPropertyWriterPtr& parent, const char* name, const Dictionary& dictionary)
    {
        try {
            write_dictionary(parent, name, dictionary);
        } catch (const std::exception& error) {
            std::cerr << "OMaterialSchema: " << name << " was not written: " << error.what() << "\n";
        }
    }

    Node& node(const std::string& name)
    {
        const auto found = nodes.find(name);
        if (found == nodes.end()) ABCA_THROW("The material has no network node '" << name << "': add it first");
        return found->second;
    }

    AbcA::CompoundPropertyWriterPtr compound;
    Dictionary shaders;
    Dictionary terminals;
    Dictionary mappings;
    std::map<std::string, Abc::OCompoundProperty> shader_parameters;
    Abc::OCompoundProperty all_nodes;
    std::map<std::string, Node> nodes;
    Abc::OCompoundProperty interface_parameters;
};

OMaterialSchema::OMaterialSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                                 const Abc::Argument& arg0, const Abc::Argument& arg1, const Abc::Argument& arg2,
                                 const Abc::Argument& arg3)
    : Abc::OSchema<MaterialSchemaInfo>(parent, name, arg0, arg1, arg2, arg3)
{
    init();
}

OMaterialSchema::OMaterialSchema(Abc::OCompoundProperty parent, const std::string& name, const Abc::Argument& arg0,
                                 const Abc::Argument& arg1, const Abc::Argument& arg2)
    : Abc::OSchema<MaterialSchemaInfo>(parent, name, arg0, arg1, arg2)
{
    init();
}

void OMaterialSchema::init()
{
    if (getPtr()) state_ = std::make_shared<State>(getPtr());
}

OMaterialSchema::State& OMaterialSchema::state() const
{
    if (!state_) ABCA_THROW("The material is not valid: nothing can be written to it");
    return *state_;
}

void OMaterialSchema::setShader(const std::string& target, const std::string& shaderType, const std::string& shaderName)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::setShader()");
    require_text(shaderName);
    state().shaders[join_names(target, shaderType)] = shaderName;
    ALEMBIC_ABC_SAFE_CALL_END();
}

Abc::OCompoundProperty OMaterialSchema::getShaderParameters(const std::string& target, const std::string& shaderType)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::getShaderParameters()");
    const std::string name = join_names(target, shaderType) + ".params";
    return made(state().shader_parameters[name], state().compound, name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::OCompoundProperty();
}

void OMaterialSchema::addNetworkNode(const std::string& nodeName, const std::string& target,
                                     const std::string& nodeType)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::addNetworkNode()");
    State& all = state();
    join_names(nodeName, std::string()); // throws for a name that terminals and connections could not refer to
    if (all.nodes.count(nodeName) != 0) ABCA_THROW("The material already has a network node '" << nodeName << "'");
    Node node;
    made(node.compound, made(all.all_nodes, all.compound, ".nodes").getPtr(), nodeName);
    Abc::OStringProperty(node.compound, "target").set(target);
    Abc::OStringProperty(node.compound, "type").set(nodeType);
    all.nodes[nodeName] = node;
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OMaterialSchema::setNetworkNodeConnection(const std::string& nodeName, const std::string& inputName,
                                               const std::string& connectedNodeName,
                                               const std::string& connectedOutputName)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::setNetworkNodeConnection()");
    require_text(inputName);
    state().node(nodeName).connections[inputName] = join_names(connectedNodeName, connectedOutputName);
    ALEMBIC_ABC_SAFE_CALL_END();
}

Abc::OCompoundProperty OMaterialSchema::getNetworkNodeParameters(const std::string& nodeName)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::getNetworkNodeParameters()");
    Node& node = state().node(nodeName);
    return made(node.parameters, node.compound.getPtr(), "params");
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::OCompoundProperty();
}

void OMaterialSchema::setNetworkTerminal(const std::string& target, const std::string& shaderType,
                                         const std::string& nodeName, const std::string& outputName)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::setNetworkTerminal()");
    state().terminals[join_names(target, shaderType)] = join_names(nodeName, outputName);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OMaterialSchema::setNetworkInterfaceParameterMapping(const std::string& interfaceParamName,
                                                          const std::string& mapToNodeName,
                                                          const std::string& mapToParamName)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::setNetworkInterfaceParameterMapping()");
    require_text(interfaceParamName);
    state().mappings[interfaceParamName] = join_names(mapToNodeName, mapToParamName);
    ALEMBIC_ABC_SAFE_CALL_END();
}

Abc::OCompoundProperty OMaterialSchema::getNetworkInterfaceParameters()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OMaterialSchema::getNetworkInterfaceParameters()");
    return made(state().interface_parameters, state().compound, ".interfaceParams");
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::OCompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
