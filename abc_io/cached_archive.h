/// What the archive manager keeps of each open archive.
#pragma once

#include "abc_input_archive_manager.h"
#include "handle_roster.h"
#include "reader_scope.h"

#include <Alembic/Abc/IArchive.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// One open archive. What is const may be read without the manager's lock.
struct AbcInputArchiveManager::AbcCachedInputArchive
{
    AbcCachedInputArchive(const AbcFileList& files, CoreArray<CoreLong> times,
                          std::shared_ptr<Alembic::Abc::IArchive> opened, bool needs_lock)
        : archive(std::move(opened))
        , lock(needs_lock ? std::make_shared<SysThreadLockRecursive>() : nullptr)
        , filenames(files)
        , modification_times(std::move(times))
    {
    }

    std::shared_ptr<Alembic::Abc::IArchive> archive;    ///< guarded by the manager's lock
    const std::shared_ptr<SysThreadLockRecursive> lock; ///< null unless the archive is read by one thread at a time
    std::atomic<std::uint32_t> user_count{0};           ///< changed under the manager's lock, read without
    const AbcFileList filenames;
    const CoreArray<CoreLong> modification_times; ///< stamps of the files just before they were opened
    const std::shared_ptr<AbcHandleRoster> handles = std::make_shared<AbcHandleRoster>();

    /// False when a file is not what it was when it was opened.
    bool is_up_to_date() const { return filenames.modification_times_equal_to(modification_times); }

    /// Adds `change` by compare-and-swap, not going below 0; returns the new count.
    std::uint32_t change_user_count(int change)
    {
        std::uint32_t count = user_count.load();
        for (;;) {
            const std::uint32_t changed = change < 0 && count == 0 ? 0 : count + static_cast<std::uint32_t>(change);
            if (user_count.compare_exchange_weak(count, changed)) return changed;
        }
    }

    unsigned long long get_memory_size() const
    {
        return sizeof(*this) + sizeof(Alembic::Abc::IArchive) + (lock ? sizeof(SysThreadLockRecursive) : 0) +
               filenames.get_memory_size() + modification_times.get_memory_size() + handles->get_memory_size();
    }
};

/// The cache as it was at one moment, for those who must not wait for the manager's lock.
struct AbcInputArchiveManager::CacheSnapshot
{
    std::vector<CachedArchivePtr> archives; ///< in the table's order
    unsigned long long table_size = 0;      ///< bytes of the table's own storage
};

/// What was taken out of handles and out of the cache. It goes when this scope ends, under the archive's lock: declare
/// it before the manager's lock is taken, so that closing a file keeps nobody waiting for the manager.
class AbcInputArchiveManager::ClosedArchive
{
public:
    ClosedArchive() = default;
    ClosedArchive(const ClosedArchive&) = delete;
    ClosedArchive& operator=(const ClosedArchive&) = delete;
    ~ClosedArchive()
    {
        const ScopedLock scope(lock);
        object.reset();
        archive.reset();
        shares.clear();
        cached.reset();
    }

    std::shared_ptr<SysThreadLockRecursive> lock;
    std::shared_ptr<void> object, archive;     ///< of a handle that was released: that must work without memory, too
    std::shared_ptr<void> cached;              ///< of the cache
    std::vector<std::shared_ptr<void>> shares; ///< of handles that were invalidated
};
