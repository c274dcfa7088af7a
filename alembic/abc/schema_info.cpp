/// Names of schemas in metadata.
#include <Alembic/Abc/SchemaInfo.h>

#include <abc/metadata_lookup.h>

#include <cstring>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// The value is `TITLE:NAME`, compared in pieces.
bool is_object_title(const std::string* value, const char* title, const char* name)
{
    if (!value) return false;
    const size_t title_size = std::strlen(title);
    return value->size() == title_size + 1 + std::strlen(name) && value->compare(0, title_size, title) == 0 &&
           (*value)[title_size] == ':' && value->compare(title_size + 1, std::string::npos, name) == 0;
}

} // namespace

std::string SchemaDescription::object_title() const
{
    return std::string(title) + ":" + default_name;
}

bool SchemaDescription::matches_compound(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const
{
    return *title == '\0' || matching == kNoMatching || value_is(meta_data, "schema", title);
}

bool SchemaDescription::matches_object(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const
{
    if (*title == '\0' || matching == kNoMatching) return true;
    if (matching == kSchemaTitleMatching) return value_is(meta_data, "schema", title);
    return is_object_title(find_value(meta_data, "schemaObjTitle"), title, default_name) ||
           is_object_title(find_value(meta_data, "schema"), title, default_name);
}

bool SchemaDescription::matches_written_object(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const
{
    if (*title == '\0' || matching == kNoMatching) return true;
    if (matching == kSchemaTitleMatching) return value_is(meta_data, "schema", title);
    return is_object_title(find_value(meta_data, "schemaObjTitle"), title, default_name);
}

void SchemaDescription::throw_mismatch(const AbcA::MetaData& meta_data) const
{
    ABCA_THROW("Incorrect match of schema: " << meta_data.get("schema") << " to expected: " << title);
}

AbcA::MetaData SchemaDescription::compound_metadata(AbcA::MetaData meta_data, bool sparse) const
{
    if (sparse) {
        if (replace_on_sparse) meta_data.set("replace", "1");
        return meta_data;
    }
    meta_data.set("schema", title);
    if (*base_type != '\0') meta_data.set("schemaBaseType", base_type);
    return meta_data;
}

AbcA::MetaData SchemaDescription::object_metadata(AbcA::MetaData meta_data, bool sparse) const
{
    if (sparse) return meta_data;
    meta_data.set("schema", title);
    meta_data.set("schemaObjTitle", object_title());
    if (*base_type != '\0') meta_data.set("schemaBaseType", base_type);
    return meta_data;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
