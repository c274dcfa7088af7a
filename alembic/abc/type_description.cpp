/// Types of properties, compared with their headers.
#include <Alembic/Abc/TypeDescription.h>
#include <Alembic/Abc/TypedArraySample.h>

#include <abc/metadata_lookup.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const char* kind_name(AbcA::PropertyType type)
{
    switch (type) {
    case AbcA::kCompoundProperty:
        return "a compound";
    case AbcA::kScalarProperty:
        return "a scalar";
    case AbcA::kArrayProperty:
        return "an array";
    }
    return "unknown";
}

} // namespace

bool TypeDescription::same_interpretation(const AbcA::MetaData& meta_data) const
{
    return value_is(meta_data, "interpretation", interpretation);
}

bool TypeDescription::matches_scalar(const AbcA::PropertyHeader& header, SchemaInterpMatching matching) const
{
    return header.isScalar() && header.getDataType() == data_type &&
           (matching != kStrictMatching || same_interpretation(header.getMetaData()));
}

bool TypeDescription::matches_array(const AbcA::PropertyHeader& header, SchemaInterpMatching matching) const
{
    return header.isArray() && header.getDataType().getPod() == data_type.getPod() &&
           (*interpretation == '\0' || header.getDataType().getExtent() == data_type.getExtent()) &&
           (matching != kStrictMatching || same_interpretation(header.getMetaData()));
}

void TypeDescription::throw_mismatch(const AbcA::PropertyHeader& header, AbcA::PropertyType wanted) const
{
    std::ostringstream text;
    text << "Incorrect match of header datatype: " << header.getDataType() << " to expected: " << data_type
         << ",\n...or incorrect match of interpretation: " << header.getMetaData().get("interpretation")
         << " to expected: " << interpretation;
    if (header.getPropertyType() != wanted) {
        text << "\n...'" << header.getName() << "' is " << kind_name(header.getPropertyType()) << " property, "
             << kind_name(wanted) << " property was expected";
    }
    throw Exception(text.str());
}

void check_sample_type(const AbcA::ArraySample& sample, const AbcA::DataType& expected)
{
    if (sample.getDataType() == expected) return;
    ABCA_THROW("Invalid DataType in TypedArraySample. Expected: " << expected << ", but got: " << sample.getDataType());
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
