/// What the archive cache holds: its memory, and the report in the log.
#include "abc_input_archive_manager.h"
#include "cached_archive.h"
#include "log_message.h"

#include <Alembic/Abc/ArchiveInfo.h>
#include <vo_sys/sys_statistic.h>

#include <cstdint>
#include <string>

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
    const ScopedLock guard(share_lock());
    log_line("*******************************************");
    log_line("*    AbcInputArchiveManager Statistics    *");
    log_line("*******************************************");
    log_line("AbcInputArchiveManager memory size: ", SysStatistic::get_readable_size(get_memory_size()));
    log_line("Open file(s): ", cache_.get_count());
    unsigned int number = 0;
    for (const auto& entry : cache_)
        log_archive_statistics(++number, *entry.get_value());
}

void AbcInputArchiveManager::log_archive_statistics(unsigned int number, AbcCachedInputArchive& cached)
{
    std::string application, version, date, description;
    std::uint32_t api_version = 0;
    {
        const ScopedLock guard(cached.lock);
        Alembic::Abc::IArchive archive = *cached.archive;
        Alembic::Abc::GetArchiveInfo(archive, application, version, api_version, date, description);
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
