/// The type of a property as its header tells it: data type and interpretation; how headers are compared with it.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

struct ALEMBIC_EXPORT TypeDescription
{
    AbcA::DataType data_type;   ///< of one element
    const char* interpretation; ///< metadata `interpretation`; "" for plain types, which then must not have any

    /// That of a traits struct.
    template <class TRAITS>
    static TypeDescription of()
    {
        return TypeDescription{TRAITS::dataType(), TRAITS::interpretation()};
    }

    /// The metadata's interpretation is this one.
    bool same_interpretation(const AbcA::MetaData& meta_data) const;

    /// The header is that of a scalar property of this type; the interpretation counts with kStrictMatching only.
    bool matches_scalar(const AbcA::PropertyHeader& header, SchemaInterpMatching matching) const;

    /// The same for array properties. A type without interpretation takes arrays of any extent.
    bool matches_array(const AbcA::PropertyHeader& header, SchemaInterpMatching matching) const;

    /// Throws the error for a header that does not match; `wanted` is the kind of property that was looked for.
    [[noreturn]] void throw_mismatch(const AbcA::PropertyHeader& header, AbcA::PropertyType wanted) const;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
