/// AbcInputArchiveManager: opens, shares and closes input archives.
#include "abc_input_archive_manager.h"

#include "cached_archive.h"
#include "log_message.h"

#include <vo_app_base/app_base.h>

#include <exception>
#include <new>
#include <string>

using Alembic::Abc::IArchive;
using Alembic::AbcCoreFactory::IFactory;

namespace {

/// Opens without throwing: an invalid archive, and why in `error_log`, when the files are no archive.
IArchive open_quietly(IFactory& factory, const AbcFileList& filenames, IFactory::CoreType& type, std::string& error_log)
{
    try {
        IArchive archive = factory.getArchive(filenames.get_as_reversed_vector(), type);
        error_log = archive.getErrorHandler().getErrorLog();
        return archive;
    } catch (const std::exception& exception) {
        error_log = exception.what();
        error_log += "\n";
        return IArchive();
    }
}

void log_unopened(const AbcFileList& filenames, const std::string& error_log)
{
    log_message(log_level_error, [&](CoreLogStream& stream) {
        stream << "Failed to load Alembic file(s) '" << filenames.join() << "': one or more files are invalid.\n";
    });
    if (error_log.empty()) return;
    log_message(log_level_error, [&](CoreLogStream& stream) { stream << "Alembic error log:\n" << error_log; });
}

/// The block's answer; a block that fails answers false.
bool call_block(const std::function<bool()>& block, const AbcFileList& filenames)
{
    const auto fail = [&](const char* reason) {
        log_message(log_level_error, [&](CoreLogStream& stream) {
            stream << "An invalidation block of the Alembic file(s) '" << filenames.join() << "' failed: " << reason
                   << "\n";
        });
        return false;
    };
    try {
        return block();
    } catch (const std::exception& exception) {
        return fail(exception.what());
    } catch (...) { // the other handles must be invalidated all the same
        return fail("it threw what is no std::exception");
    }
}

} // namespace

AbcInputArchiveManager* AbcInputArchiveManager::s_abc_manager = nullptr;

void AbcInputArchiveManager::create(AppBase* application)
{
    if (s_abc_manager && s_abc_manager->is_open_) {
        log_message(log_level_warning, [](CoreLogStream& stream) {
            stream << "Alembic initialization failed: cannot create a new AbcInputArchiveManager instance. The "
                      "application is probably crashing or crashed already.\n";
        });
        return;
    }
    if (!s_abc_manager) s_abc_manager = new AbcInputArchiveManager;
    s_abc_manager->open(application);
}

void AbcInputArchiveManager::destroy()
{
    if (!s_abc_manager || !s_abc_manager->is_open_) {
        log_message(log_level_error, [](CoreLogStream& stream) {
            stream << "Cannot destroy AbcInputArchiveManager instance: there is none.\n";
        });
        return;
    }
    // The pointer stays as it is, and so does the instance behind it: a late call finds it closed, not gone.
    s_abc_manager->close();
}

AbcInputArchiveManager* AbcInputArchiveManager::get()
{
    return s_abc_manager;
}

AbcInputArchiveManager::AbcInputArchiveManager()
{
    factory_.setPolicy(Alembic::Abc::ErrorHandler::kQuietNoopPolicy);
    publish_snapshot();
}

AbcInputArchiveManager::~AbcInputArchiveManager() = default;

void AbcInputArchiveManager::open(AppBase* application)
{
    is_open_ = true;
    if (!application) return;
    application_ = application;
    application->register_verification_callback_for_state(AppBase::VERIFIABLE_STATE_RESOURCES,
                                                          check_archive_cache_state);
}

void AbcInputArchiveManager::close()
{
    if (AppBase* const application = application_.exchange(nullptr))
        application->register_verification_callback_for_state(AppBase::VERIFIABLE_STATE_RESOURCES, nullptr);
    const ScopedLock guard(share_lock());
    is_open_ = false;
    cache_.remove_all(); // handles that are still out keep their archives open
    publish_snapshot();
}

AppBase* AbcInputArchiveManager::get_application()
{
    return application_;
}

AbcInputArchiveHandle* AbcInputArchiveManager::get_archive(const AbcFileList& filenames, bool check_up_to_date)
{
    return open_handle(filenames, check_up_to_date, true).release();
}

std::unique_ptr<AbcInputArchiveHandle> AbcInputArchiveManager::open_handle(const AbcFileList& filenames,
                                                                           bool check_up_to_date, bool listed)
{
    auto handle = std::make_unique<AbcInputArchiveHandle>();
    if (!filenames.is_valid()) {
        log_message(log_level_warning, [&](CoreLogStream& stream) {
            stream << "Invalid Alembic file list: [" << filenames.join() << "].\n"
                   << filenames.get_errors('\n') << "\n";
        });
        return handle;
    }
    handle->set_filenames(filenames);

    ClosedArchive closed;
    const ScopedLock guard(share_lock());
    CachedArchivePtr cached = find(filenames);
    CachedArchivePtr stale;
    if (check_up_to_date && cached && !cached->is_up_to_date()) {
        stale = cached;
        remove(stale, closed);
        cached = nullptr;
    }
    if (!cached) {
        cached = open_archive(filenames);
        if (cached) insert(cached);
    }
    try {
        if (cached) add_user(*cached, *handle, listed);
    } catch (const std::bad_alloc&) {
        if (cached->user_count == 0) remove(cached, closed); // nobody else would
        throw;
    }
    if (stale) invalidate_handles(*stale, closed);
    return handle;
}

void AbcInputArchiveManager::release_archive(AbcInputArchiveHandle* handle)
{
    if (!handle || handle->get_filenames().is_empty()) return;

    // The lock comes before the look at the archive: whoever is invalidating this handle must be done with it, since
    // its owner may delete it as soon as this returns.
    ClosedArchive closed;
    const ScopedLock guard(share_lock());
    if (!handle->is_archive_valid()) return;
    const CachedArchivePtr cached = find(handle->get_filenames());
    if (!cached) return;

    // A copy of a handle that was invalidated holds an older archive of these files, and is no user of the new one.
    const bool is_user = cached->archive == handle->share_archive();
    handle->empty_into(closed.archive, closed.object);
    closed.lock = handle->share_lock();
    handle->share_in(nullptr, nullptr);
    handle->clear_archive_invalidation_block();
    if (!is_user) return;

    cached->handles->remove(handle);
    handle->roster_.reset();
    if (cached->change_user_count(-1) == 0) remove(cached, closed);
}

bool AbcInputArchiveManager::is_archive_valid(const AbcFileList& filenames) const
{
    if (!filenames.is_valid()) return false;
    const ScopedLock guard(share_lock());
    if (find(filenames)) return true;
    IFactory::CoreType type = IFactory::kUnknown;
    std::string error_log;
    return open_quietly(factory_, filenames, type, error_log).valid();
}

AbcInputArchiveManager::CachedArchivePtr AbcInputArchiveManager::find(const AbcFileList& filenames) const
{
    const CachedArchivePtr* found = cache_.find(filenames);
    return found ? *found : nullptr;
}

AbcInputArchiveManager::CachedArchivePtr AbcInputArchiveManager::open_archive(const AbcFileList& filenames)
{
    if (!is_open_) {
        log_message(log_level_error, [&](CoreLogStream& stream) {
            stream << "Cannot open the Alembic file(s) '" << filenames.join()
                   << "': AbcInput::destroy was called. Call AbcInput::init first.\n";
        });
        return nullptr;
    }
    // Taken before the files are opened, so that a change while they are being opened makes the archive stale.
    CoreArray<CoreLong> times = filenames.get_modification_times();
    IFactory::CoreType type = IFactory::kUnknown;
    std::string error_log;
    const auto archive = std::make_shared<IArchive>(open_quietly(factory_, filenames, type, error_log));
    if (!archive->valid()) {
        log_unopened(filenames, error_log);
        return nullptr;
    }
    const bool is_hdf5 = type == IFactory::kHDF5;
    if (is_hdf5) {
        log_message(log_level_warning, [&](CoreLogStream& stream) {
            stream << "The Alembic HDF5 format is deprecated. For improved performance, please convert the file(s) \""
                   << filenames.join() << "\" to the Alembic Ogawa format using \"abcconvert\".\n";
        });
    }
    return std::make_shared<AbcCachedInputArchive>(filenames, std::move(times), archive, is_hdf5);
}

void AbcInputArchiveManager::insert(const CachedArchivePtr& cached)
{
    cache_.insert(cached->filenames, cached);
    publish_snapshot();
}

void AbcInputArchiveManager::remove(const CachedArchivePtr& cached, ClosedArchive& closed)
{
    cache_.remove(cached->filenames);
    closed.lock = cached->lock;
    closed.cached = std::move(cached->archive);
    publish_snapshot();
}

void AbcInputArchiveManager::add_user(AbcCachedInputArchive& cached, AbcInputArchiveHandle& handle, bool listed)
{
    if (listed) {
        cached.handles->add(&handle); // may be out of memory: the handle is no user then
        handle.roster_ = cached.handles;
    }
    cached.change_user_count(1);
    handle.share_in(cached.archive, cached.lock);
}

void AbcInputArchiveManager::invalidate_handles(AbcCachedInputArchive& stale, ClosedArchive& closed)
{
    while (AbcInputArchiveHandle* const handle = stale.handles->take_first()) {
        handle->roster_.reset();
        std::shared_ptr<void> archive, object;
        const auto block = handle->empty_into(archive, object);
        closed.shares.push_back(std::move(object));
        closed.shares.push_back(std::move(archive));
        if (block && call_block(*block, stale.filenames)) delete handle;
    }
    stale.user_count = 0;
}

void AbcInputArchiveManager::publish_snapshot()
{
    std::shared_ptr<CacheSnapshot> snapshot;
    try {
        snapshot = std::make_shared<CacheSnapshot>();
        snapshot->archives.reserve(cache_.get_count());
        for (const auto& entry : cache_)
            snapshot->archives.push_back(entry.get_value());
        snapshot->table_size = cache_.get_memory_size();
    } catch (const std::bad_alloc&) {
        snapshot.reset(); // none until the next one: the old one would keep closed archives open
    }
    std::atomic_store(&snapshot_, std::shared_ptr<const CacheSnapshot>(std::move(snapshot)));
}

std::shared_ptr<const AbcInputArchiveManager::CacheSnapshot> AbcInputArchiveManager::get_snapshot() const
{
    static const CacheSnapshot none;
    auto snapshot = std::atomic_load(&snapshot_);
    return snapshot ? std::move(snapshot) : std::shared_ptr<const CacheSnapshot>(std::shared_ptr<void>(), &none);
}

std::shared_ptr<SysThreadLockRecursive> AbcInputArchiveManager::share_lock() const
{
    return {std::shared_ptr<void>(), &lock_}; // owns nothing
}
