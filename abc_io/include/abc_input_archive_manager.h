/// AbcInputArchiveManager: the process-wide cache of open input archives.
#pragma once

#include "abc_file_list.h"
#include "abc_input_archive_handle.h"
#include "vo_abc_io_export.h"

#include <Alembic/AbcCoreFactory/IFactory.h>
#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_core/core_hash_table.h>
#include <vo_core/core_string.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <atomic>
#include <cstdint>
#include <memory>

class AppBase;
class AppProgressBar;

/// Opens input archives, shares them among all readers that name the same files in the same order, and closes each with
/// its last user. One instance, made by AbcInput::init and taken down by AbcInput::destroy. Any thread may call it.
class VO_ABC_IO_EXPORT AbcInputArchiveManager
{
public:
    /// Makes the manager and, when `application` is not null, registers with it the check whether cached archives have
    /// changed on disk. Logs a warning and keeps the first manager when there is one already.
    static void create(AppBase* application);

    /// Takes the manager down: unregisters the check and drops the cache. Archives that handles still hold stay open
    /// until these go. The instance itself stays, closed: a later call on it opens nothing, logs an error and does no
    /// harm, and a later create opens it again.
    static void destroy();

    /// The instance; null before the first create.
    static AbcInputArchiveManager* get();

    AbcInputArchiveManager(const AbcInputArchiveManager&) = delete;
    AbcInputArchiveManager& operator=(const AbcInputArchiveManager&) = delete;
    ~AbcInputArchiveManager();

    /// A new handle on the archive of `filenames`, opened on first use; never null. Without an archive in it when the
    /// files cannot be opened: the log tells why. With `check_up_to_date`, an archive whose files changed since it was
    /// opened is opened afresh and all older handles on it are invalidated; those whose invalidation block returns true
    /// are deleted. The caller gives the handle back with release_archive, then deletes it.
    AbcInputArchiveHandle* get_archive(const AbcFileList& filenames, bool check_up_to_date);

    /// Gives a handle back: it loses archive, lock, object and block, and one user of the archive is gone; the last one
    /// closes it. The handle itself is not deleted. Does nothing for null and for a handle without archive.
    void release_archive(AbcInputArchiveHandle* handle);

    /// True when the files are open already or can be opened as an archive.
    bool is_archive_valid(const AbcFileList& filenames) const;

    /// True when the archive of `filenames` is in the cache and its files have not changed since it was opened.
    /// Never waits for the manager's lock.
    bool is_cached_archive_up_to_date(const AbcFileList& filenames) const;

    /// The files of every cached archive that is out of date. Never waits for the manager's lock.
    CoreArray<AbcFileList> get_invalid_cache_archives();

    /// Adds every transform, mesh, subdivision mesh, curves, points and camera below `parent`, at any depth, to
    /// `objects` under its full name; one that cannot be opened is left out. `progress` may be null; when given it
    /// cycles from 0.1 to 1.0 to show activity.
    void build_file_object_list(Alembic::Abc::IObject parent, CoreHashTable<CoreString, Alembic::Abc::IObject>& objects,
                                AppProgressBar* progress);

    /// A text that is equal for two objects whose geometry at `time` (seconds) is equal, and differs otherwise. The
    /// caller holds the archive's lock.
    static CoreString get_curve_data_hash_key(const Alembic::AbcGeom::ICurves& curves, const double& time);
    static CoreString get_mesh_data_hash_key(const Alembic::AbcGeom::IPolyMesh& mesh, const double& time);
    static CoreString get_subd_mesh_data_hash_key(const Alembic::AbcGeom::ISubD& mesh, const double& time);
    static CoreString get_point_data_hash_key(const Alembic::AbcGeom::IPoints& points, const double& time);

    /// Bytes held by the manager and its cache; the handles are not counted. Never waits for the manager's lock.
    unsigned long long get_memory_size() const;

    /// Writes a report on every archive that is open at the moment of the call to the log, at level 3.
    void log_statistics() const;

protected:
    /// The application given to create; null when there was none.
    AppBase* get_application();

private:
    friend class ScopedArchive;

    struct AbcCachedInputArchive;
    struct CacheSnapshot;
    class ClosedArchive;
    using CachedArchivePtr = std::shared_ptr<AbcCachedInputArchive>;

    AbcInputArchiveManager();

    void open(AppBase* application);
    void close();

    /// As get_archive. A handle that is not listed counts as a user, but is not invalidated when the archive is opened
    /// afresh: a read that is under way finishes on the archive it started with.
    std::unique_ptr<AbcInputArchiveHandle> open_handle(const AbcFileList& filenames, bool check_up_to_date,
                                                       bool listed);

    static bool check_archive_cache_state(bool interactive);
    void reload_resources(CoreArray<AbcFileList>& filenames);

    // The caller of these holds lock_.
    CachedArchivePtr find(const AbcFileList& filenames) const;
    CachedArchivePtr open_archive(const AbcFileList& filenames);
    void insert(const CachedArchivePtr& cached);
    void remove(const CachedArchivePtr& cached, ClosedArchive& closed);
    static void add_user(AbcCachedInputArchive& cached, AbcInputArchiveHandle& handle, bool listed);
    static void invalidate_handles(AbcCachedInputArchive& stale, ClosedArchive& closed);
    void publish_snapshot();

    /// lock_ as ScopedLock takes it.
    std::shared_ptr<SysThreadLockRecursive> share_lock() const;
    std::shared_ptr<const CacheSnapshot> get_snapshot() const;
    static void log_archive_statistics(unsigned int number, const AbcCachedInputArchive& cached,
                                       std::shared_ptr<Alembic::Abc::IArchive> share);

    static AbcInputArchiveManager* s_abc_manager;

    mutable SysThreadLockRecursive lock_; ///< guards cache_ and factory_
    CoreHashTable<AbcFileList, CachedArchivePtr> cache_;
    mutable Alembic::AbcCoreFactory::IFactory factory_;
    std::atomic<AppBase*> application_{nullptr};
    std::atomic<bool> is_open_{false};
    std::shared_ptr<const CacheSnapshot> snapshot_; ///< replaced as a whole, read without lock_
};
