/// The metadata keys of layering.
#include "core/layer/layer_metadata.h"

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const std::string prune_key = "prune";
const std::string replace_key = "replace";

// An empty value is not stored: it takes an earlier one back.
void set_flag(AbcCoreAbstract::MetaData& metadata, const std::string& key, bool value)
{
    metadata.set(key, value ? "1" : "");
}

} // namespace

bool is_prune(const AbcCoreAbstract::MetaData& metadata)
{
    return metadata.get(prune_key) == "1";
}

bool is_replace(const AbcCoreAbstract::MetaData& metadata)
{
    return metadata.get(replace_key) == "1";
}

void SetPrune(AbcCoreAbstract::MetaData& metaData, bool shouldPrune)
{
    set_flag(metaData, prune_key, shouldPrune);
}

void SetReplace(AbcCoreAbstract::MetaData& metaData, bool shouldReplace)
{
    set_flag(metaData, replace_key, shouldReplace);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
