/// Metadata of references and source names.
#include <Alembic/Abc/Reference.h>
#include <Alembic/Abc/SourceName.h>

#include <abc/metadata_lookup.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

void SetReference(AbcA::MetaData& metaData)
{
    metaData.set("reference", "1");
}

bool isReference(const AbcA::PropertyHeader& header)
{
    return value_is(header.getMetaData(), "reference", "1");
}

std::string GetSourceName(const AbcA::MetaData& metaData)
{
    return metaData.get("sourceName");
}

void SetSourceName(AbcA::MetaData& metaData, const std::string& name)
{
    metaData.set("sourceName", name);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
