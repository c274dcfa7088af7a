/// Several materials seen as one: what a stronger one does not say comes from a weaker one.
#pragma once

#include <Alembic/AbcMaterial/IMaterial.h>
#include <Alembic/AbcMaterial/MaterialAssignment.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

/// The first material appended is the strongest. Lists are sorted, and replace what the vector held; members that
/// return bool return false, with their outputs untouched, when no material has the thing.
class ALEMBIC_EXPORT MaterialFlatten
{
public:
    typedef MaterialFlatten this_type;

    /// A parameter, and the compound that its value is read from.
    struct ALEMBIC_EXPORT ParameterEntry
    {
        ParameterEntry() = default;
        ParameterEntry(const std::string& entry_name, Abc::ICompoundProperty entry_parent,
                       const AbcA::PropertyHeader* entry_header)
            : name(entry_name)
            , parent(entry_parent)
            , header(entry_header)
        {
        }
        bool operator==(const ParameterEntry& rhs) const;

        std::string name;
        Abc::ICompoundProperty parent;
        const AbcA::PropertyHeader* header = nullptr; ///< owned by `parent`; its name may differ from `name`
    };
    typedef std::vector<ParameterEntry> ParameterEntryVector;

    /// A node as all materials together describe it.
    class ALEMBIC_EXPORT NetworkNode
    {
    public:
        typedef NetworkNode this_type;

        struct ALEMBIC_EXPORT Connection
        {
            Connection(const std::string& input_name, const std::string& connected_node_name,
                       const std::string& connected_output_name)
                : inputName(input_name)
                , connectedNodeName(connected_node_name)
                , connectedOutputName(connected_output_name)
            {
            }
            bool operator==(const Connection& rhs) const;

            std::string inputName;
            std::string connectedNodeName;
            std::string connectedOutputName;
        };
        typedef std::vector<Connection> ConnectionVector;

        NetworkNode() = default;

        bool valid() const { return !nodes_.empty(); }
        ALEMBIC_OPERATOR_BOOL(valid());

        std::string getName() const { return name_; }
        bool getTarget(std::string& result) const;
        bool getNodeType(std::string& result) const;

        /// Values of parameters that a material exposes come before the node's own.
        void getParameters(ParameterEntryVector& result) const;
        void getConnections(ConnectionVector& result) const;

    private:
        friend class MaterialFlatten;

        std::string name_;
        std::vector<IMaterialSchema::NetworkNode> nodes_; ///< strongest first
        std::vector<ParameterEntry> exposed_;             ///< strongest first
    };

    MaterialFlatten() = default;
    MaterialFlatten(IMaterialSchema materialSchema) { append(materialSchema); } // NOLINT: implicit
    MaterialFlatten(IMaterial materialObject) { append(materialObject); }       // NOLINT: implicit

    /// The object's own material, then the one assigned to it. The assigned name is looked up in
    /// `alternateSearchArchive` when that is given, else in the object's archive; an absent one is left out.
    MaterialFlatten(Abc::IObject object, // NOLINT: implicit
                    Abc::IArchive alternateSearchArchive = Abc::IArchive());

    /// Adds a material below those that are there. An invalid one is left out.
    void append(IMaterialSchema materialSchema);
    void append(IMaterial materialObject) { append(materialObject.getSchema()); }

    bool empty() const { return materials_.empty(); }

    void getTargetNames(std::vector<std::string>& targetNames) const;
    void getShaderTypesForTarget(const std::string& targetName, std::vector<std::string>& shaderTypeNames) const;
    bool getShader(const std::string& target, const std::string& shaderType, std::string& result) const;
    void getShaderParameters(const std::string& target, const std::string& shaderType,
                             ParameterEntryVector& result) const;

    void getNetworkTerminalTargetNames(std::vector<std::string>& targetNames) const;
    void getNetworkTerminalShaderTypesForTarget(const std::string& targetName,
                                                std::vector<std::string>& shaderTypeNames) const;
    bool getNetworkTerminal(const std::string& target, const std::string& shaderType, std::string& nodeName,
                            std::string& outputName) const;

    /// Nodes sorted by name; an index or name that is not there gives an invalid node.
    size_t getNumNetworkNodes() const { return node_names_.size(); }
    NetworkNode getNetworkNode(size_t index) const;
    NetworkNode getNetworkNode(const std::string& nodeName) const;

private:
    std::vector<IMaterialSchema> materials_; ///< strongest first
    std::vector<std::string> node_names_;    ///< of all materials, sorted, each once
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
