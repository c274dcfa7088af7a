/// How reading schemas find their properties: by one look-up each, under the throw policy, so that the schema's own
/// handler reports what goes wrong.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <algorithm>
#include <string>
#include <type_traits>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// The typed property `name` of `schema`; invalid when absent. Throws when its kind or data type is another.
template <class PROPERTY>
PROPERTY optional_property(const ICompoundProperty& schema, const std::string& name, SchemaInterpMatching matching)
{
    const AbcA::CompoundPropertyReaderPtr compound = schema.getPtr();
    if constexpr (std::is_base_of_v<IArrayProperty, PROPERTY>) {
        AbcA::ArrayPropertyReaderPtr reader = compound->getArrayProperty(name);
        return reader ? PROPERTY(std::move(reader), ErrorHandler::kThrowPolicy, matching) : PROPERTY();
    } else {
        AbcA::ScalarPropertyReaderPtr reader = compound->getScalarProperty(name);
        return reader ? PROPERTY(std::move(reader), ErrorHandler::kThrowPolicy, matching) : PROPERTY();
    }
}

/// The same; throws also when it is absent.
template <class PROPERTY>
PROPERTY required_property(const ICompoundProperty& schema, const std::string& name, SchemaInterpMatching matching)
{
    PROPERTY property = optional_property<PROPERTY>(schema, name, matching);
    if (!property.getPtr()) {
        return PROPERTY(schema, name, ErrorHandler::kThrowPolicy, matching); // says that it is absent
    }
    return property;
}

/// The geometry parameter `name` of `schema`, with its policy; invalid when absent or of another type.
template <class PARAM>
PARAM optional_param(const ICompoundProperty& schema, const std::string& name, SchemaInterpMatching matching)
{
    const AbcA::CompoundPropertyReaderPtr compound = schema.getPtr();
    const AbcA::PropertyHeader* header = compound ? compound->getPropertyHeader(name) : nullptr;
    if (!header || !PARAM::matches(*header, matching)) {
        return PARAM();
    }
    return PARAM(ICompoundProperty(schema), name, matching);
}

/// Reads a part that a sample may lack: `value` stays as it is when the property is absent or was never set.
template <class PROPERTY, class VALUE>
void get_if_set(const PROPERTY& property, VALUE& value, const ISampleSelector& selector)
{
    if (property.getNumSamples() > 0) {
        property.get(value, selector);
    }
}

/// Constant positions matter only where the connections are constant.
inline MeshTopologyVariance topology_variance(bool connections_constant, bool positions_constant)
{
    if (!connections_constant) {
        return kHeterogeneousTopology;
    }
    return positions_constant ? kConstantTopology : kHomogeneousTopology;
}

/// The greatest number of samples of the scalar and array properties directly in `schema`; 0 for an invalid one.
size_t greatest_sample_count(const ICompoundProperty& schema);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
