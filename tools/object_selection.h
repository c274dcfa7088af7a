/// ObjectSelection: the objects that a copy keeps.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <set>
#include <string>
#include <vector>

class ArchiveSession;

/// Some objects, all that is below them, and their ancestors. Sources of instances among them are kept likewise: an
/// instance without its source would be lost.
class ObjectSelection
{
public:
    /// Full names; none keeps everything. Throws ToolError for those that are not in the archive.
    ObjectSelection(const ArchiveSession& session, const std::vector<std::string>& paths);

    bool keeps_all() const { return keeps_all_; }
    bool is_kept(const std::string& path) const;

private:
    void add(const ArchiveSession& session, const std::string& path, std::vector<std::string>& instance_sources);

    bool keeps_all_;
    std::set<std::string> whole_;     ///< kept with all that is below
    std::set<std::string> ancestors_; ///< of those
};

/// The stored object of a path below `top`, an instance itself rather than its source; null when there is none.
Alembic::AbcCoreAbstract::ObjectReaderPtr find_stored_object(Alembic::AbcCoreAbstract::ObjectReaderPtr top,
                                                             const std::string& path);

/// Full name of the object that an instance stands for; empty for objects that are no instances.
std::string get_instance_source(Alembic::AbcCoreAbstract::ObjectReader& object);
