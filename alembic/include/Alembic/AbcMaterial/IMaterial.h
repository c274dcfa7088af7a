/// Materials, read: shaders, networks of nodes, and the parameters that a network exposes.
#pragma once

#include <Alembic/AbcMaterial/InternalUtil.h>
#include <Alembic/AbcMaterial/SchemaInfoDeclarations.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

/// Lists of names replace what the vector held, and are sorted. Members that return bool return false, with their
/// outputs untouched, when there is no such thing; those that return a compound return an invalid one.
class ALEMBIC_EXPORT IMaterialSchema : public Abc::ISchema<MaterialSchemaInfo>
{
public:
    typedef IMaterialSchema this_type;

    /// One node of a network.
    class ALEMBIC_EXPORT NetworkNode
    {
    public:
        typedef NetworkNode this_type;

        NetworkNode() = default;
        /// The node's compound itself, or the one of a name.
        NetworkNode(Abc::ICompoundProperty compound); // NOLINT: implicit
        NetworkNode(Abc::ICompoundProperty parent, const std::string& nodeName);

        bool valid() const { return compound_.valid(); }
        ALEMBIC_OPERATOR_BOOL(valid());

        std::string getName() const { return compound_.getName(); } ///< "" when invalid
        bool getTarget(std::string& result) const;
        bool getNodeType(std::string& result) const;
        Abc::ICompoundProperty getParameters() const;

        /// Connections are sorted by the names of the inputs. The output's name is "" when none was given.
        size_t getNumConnections() const { return connections_.size(); }
        bool getConnection(size_t index, std::string& inputName, std::string& connectedNodeName,
                           std::string& connectedOutputName) const;
        bool getConnection(const std::string& inputName, std::string& connectedNodeName,
                           std::string& connectedOutputName) const;

    private:
        Abc::ICompoundProperty compound_;
        Dictionary connections_;
    };

    IMaterialSchema() = default;
    IMaterialSchema(const Abc::ICompoundProperty& parent, const std::string& name,
                    const Abc::Argument& arg0 = Abc::Argument(), const Abc::Argument& arg1 = Abc::Argument())
        : Abc::ISchema<MaterialSchemaInfo>(parent, name, arg0, arg1)
    {
        init();
    }
    IMaterialSchema(const Abc::ICompoundProperty& property, const Abc::Argument& arg0 = Abc::Argument(),
                    const Abc::Argument& arg1 = Abc::Argument())
        : Abc::ISchema<MaterialSchemaInfo>(property, arg0, arg1)
    {
        init();
    }

    void getTargetNames(std::vector<std::string>& targetNames) const;
    void getShaderTypesForTarget(const std::string& targetName, std::vector<std::string>& shaderTypeNames) const;
    bool getShader(const std::string& target, const std::string& shaderType, std::string& result) const;
    Abc::ICompoundProperty getShaderParameters(const std::string& target, const std::string& shaderType) const;

    /// Nodes are in the order of creation; an index or name that is not there gives an invalid node.
    size_t getNumNetworkNodes() const { return nodes_.getNumProperties(); }
    void getNetworkNodeNames(std::vector<std::string>& names) const;
    NetworkNode getNetworkNode(size_t index) const;
    NetworkNode getNetworkNode(const std::string& nodeName) const;

    void getNetworkTerminalTargetNames(std::vector<std::string>& targetNames) const;
    void getNetworkTerminalShaderTypesForTarget(const std::string& targetName,
                                                std::vector<std::string>& shaderTypeNames) const;
    bool getNetworkTerminal(const std::string& target, const std::string& shaderType, std::string& nodeName,
                            std::string& outputName) const;

    size_t getNumNetworkInterfaceParameterMappings() const { return mappings_.size(); }
    void getNetworkInterfaceParameterMappingNames(std::vector<std::string>& names) const;
    bool getNetworkInterfaceParameterMapping(size_t index, std::string& interfaceParamName, std::string& mapToNodeName,
                                             std::string& mapToParamName) const;
    bool getNetworkInterfaceParameterMapping(const std::string& interfaceParamName, std::string& mapToNodeName,
                                             std::string& mapToParamName) const;
    Abc::ICompoundProperty getNetworkInterfaceParameters() const;

    void reset();
    bool valid() const { return Abc::ISchema<MaterialSchemaInfo>::valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IMaterialSchema::valid());

private:
    void init();

    Dictionary shaders_;   ///< TARGET.TYPE to the shader's name
    Dictionary terminals_; ///< TARGET.TYPE to NODE.OUTPUT
    Dictionary mappings_;  ///< exposed name to NODE.PARAMETER
    Abc::ICompoundProperty nodes_;
};

typedef Abc::ISchemaObject<IMaterialSchema> IMaterial;
typedef Alembic::Util::shared_ptr<IMaterial> IMaterialPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
