/// Materials, written: shaders, networks of nodes, and the parameters that a network exposes.
#pragma once

#include <Alembic/AbcMaterial/SchemaInfoDeclarations.h>

#include <memory>
#include <string>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

/// A `target` is any name of a renderer, a `shaderType` any name such as "surface"; neither holds a dot, and node names
/// neither. Names of shaders, terminals, connections and mappings are stored when the last copy of the schema goes.
class ALEMBIC_EXPORT OMaterialSchema : public Abc::OSchema<MaterialSchemaInfo>
{
public:
    typedef OMaterialSchema this_type;

    OMaterialSchema() = default;
    OMaterialSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                    const Abc::Argument& arg0 = Abc::Argument(), const Abc::Argument& arg1 = Abc::Argument(),
                    const Abc::Argument& arg2 = Abc::Argument(), const Abc::Argument& arg3 = Abc::Argument());
    OMaterialSchema(Abc::OCompoundProperty parent, const std::string& name, const Abc::Argument& arg0 = Abc::Argument(),
                    const Abc::Argument& arg1 = Abc::Argument(), const Abc::Argument& arg2 = Abc::Argument());

    /// The shader that a target uses; set again, it changes.
    void setShader(const std::string& target, const std::string& shaderType, const std::string& shaderName);

    /// Parameters of that shader; created on first call.
    Abc::OCompoundProperty getShaderParameters(const std::string& target, const std::string& shaderType);

    /// Adds a node of a network. A name twice is an error.
    void addNetworkNode(const std::string& nodeName, const std::string& target, const std::string& nodeType);

    /// Connects the input of a node to another node, or to one of its outputs. An unknown `nodeName` is an error.
    void setNetworkNodeConnection(const std::string& nodeName, const std::string& inputName,
                                  const std::string& connectedNodeName, const std::string& connectedOutputName);

    /// Parameters of a node; created on first call. An unknown node is an error.
    Abc::OCompoundProperty getNetworkNodeParameters(const std::string& nodeName);

    /// The node, and its output, that a target starts from.
    void setNetworkTerminal(const std::string& target, const std::string& shaderType, const std::string& nodeName,
                            const std::string& outputName = "");

    /// Exposes a parameter of a node under a name of the material's.
    void setNetworkInterfaceParameterMapping(const std::string& interfaceParamName, const std::string& mapToNodeName,
                                             const std::string& mapToParamName);

    /// Values of the exposed parameters; created on first call.
    Abc::OCompoundProperty getNetworkInterfaceParameters();

    void reset()
    {
        state_.reset();
        Abc::OSchema<MaterialSchemaInfo>::reset();
    }
    bool valid() const { return Abc::OSchema<MaterialSchemaInfo>::valid() && state_ != nullptr; }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(OMaterialSchema::valid());

private:
    struct State;
    State& state() const;
    void init();

    std::shared_ptr<State> state_;
};

typedef Abc::OSchemaObject<OMaterialSchema> OMaterial;
typedef Alembic::Util::shared_ptr<OMaterial> OMaterialPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
