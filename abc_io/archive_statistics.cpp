/// What the archive cache holds: its memory, and the report in the log.
#include "abc_input_archive_manager.h"
#include "cached_archive.h"
#include "log_message.h"

#include <Alembic/Abc/ArchiveInfo.h>
#include <vo_sys/sys_statistic.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

template <class... Parts>
void log_line(const Parts&... parts)
{
    log_message(log_level_statistics, [&](CoreLogStream& stream) { ((stream << parts), ...) << "\n"; });
}

} // namespace

unsigned long long AbcInputArchiveManager::get_memory_size() const
{
    const auto snapshot = get_snapshot();
    unsigned long long size = snapshot->table_size + sizeof(*this);
    for (const CachedArchivePtr& cached : snapshot->archives)
        size += cached->get_memory_size();
    return size;
}

void AbcInputArchiveManager::log_statistics() const
{
    // The archives' own locks are taken below without the manager's: a reader takes the two the other way round.
    std::vector<std::pair<CachedArchivePtr, std::shared_ptr<Alembic::Abc::IArchive>>> open;
    {
        const ScopedLock guard(share_lock());
        for (const auto& entry : cache_)
            open.emplace_back(entry.get_value(), entry.get_value()->archive);
    }
    log_line("*******************************************");
    log_line("*    AbcInputArchiveManager Statistics    *");
    log_line("*******************************************");
    log_line("AbcInputArchiveManager memory size: ", SysStatistic::get_readable_size(get_memory_size()));
    log_line("Open file(s): ", open.size());
    unsigned int number = 0;
    for (auto& [cached, archive] : open)
        log_archive_statistics(++number, *cached, std::move(archive));
}

void AbcInputArchiveManager::log_archive_statistics(unsigned int number, const AbcCachedInputArchive& cached,
                                                    std::shared_ptr<Alembic::Abc::IArchive> share)
{
    std::string application, version, date, description;
    std::uint32_t api_version = 0;
    {
        const ScopedLock guard(cached.lock);
        Alembic::Abc::IArchive archive = *share;
        Alembic::Abc::GetArchiveInfo(archive, application, version, api_version, date, description);
        share.reset(); // under the lock: it may be the last one
    }
    const AbcFileList& files = cached.filenames;
    log_line(number, ". \"", files.join(), "\" (has layers: ", files.get_count() < 2 ? "no" : "yes", ")");
    log_line("  - User count: ", cached.user_count.load());
    log_line("  - Archive handle memory size: ", SysStatistic::get_readable_size(cached.get_memory_size()));
    log_line("  - Version(s): ", version, ", API version ", api_version);
    log_line("  - App. writter(s): ", application);
    log_line("  - Date(s) written: ", date);
    log_line("  - User description(s): \"", description, "\"");
}
