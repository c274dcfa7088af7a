/// Objects that are instances of others: how they are found, named and kept from containing themselves.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <memory>
#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Where an object is seen, when that is inside an instance: its names and what is above it.
struct InstancePath
{
    std::string name;
    std::string full_name;                     ///< through the instance
    AbcCoreAbstract::ObjectReaderPtr parent;   ///< reader of the object above, instances followed
    std::shared_ptr<const InstancePath> above; ///< of that object; null when it lies outside of all instances
    AbcCoreAbstract::ObjectReaderPtr stored;   ///< of an instance itself: the object that names the source; else null
    std::string source;                        ///< of an instance itself: full name of the source, as stored
    std::string source_full_name;              ///< of an instance itself: full name where the search ended
};

/// Limits what one hostile source name can cost, in time and on the stack: each instance that is followed on the way
/// counts. Scenes have a handful.
constexpr int max_followed_instances = 100;

/// The metadata are those of a stored instance.
bool is_instance(const AbcCoreAbstract::MetaData& meta_data);

/// Full name of a child.
std::string child_full_name(const std::string& parent, const std::string& child);

/// `ancestor` is the full name of the object itself or of one above it.
bool is_same_or_above(const std::string& ancestor, const std::string& object);

/// The object a stored instance stands for, through other instances if need be, with the name that was stored in
/// `source`. Throws when that name is missing, leads nowhere or in a circle.
AbcCoreAbstract::ObjectReaderPtr follow_instance(AbcCoreAbstract::ObjectReader& stored, std::string& source);

/// Throws when the object called `source` contains the place where it would be instanced: below `parent`, seen through
/// `path`. Without this, walking down the tree would never end.
void refuse_loop(const std::string& source, const std::string& instance, AbcCoreAbstract::ObjectReader* parent,
                 const InstancePath* path);

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
