/// The parts of the readers' recipe that know no schema.
#include "reader_scope.h"

#include "abc_input.h"
#include "abc_input_archive_manager.h"
#include "abc_internal.h"

#include <Alembic/Abc/IArchive.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <new>

using Alembic::Abc::IArchive;
using Alembic::Abc::IObject;

ScopedArchive::ScopedArchive(const AbcFileList& files)
{
    if (AbcInputArchiveManager* const manager = AbcInputArchiveManager::get())
        handle_ = manager->open_handle(files, true, false);
    else
        handle_.reset(AbcInput::get_archive(files)); // which says what is missing
}

ScopedArchive::~ScopedArchive()
{
    try {
        AbcInput::release_archive(handle_.get());
    } catch (const std::bad_alloc&) {
        // The archive is closed all the same; what is published of the cache follows with the next change.
    }
}

ScopedLock::ScopedLock(const AbcInputArchiveHandle& handle)
    : ScopedLock(handle.share_lock())
{
}

ScopedLock::ScopedLock(std::shared_ptr<SysThreadLockRecursive> lock)
    : lock_(std::move(lock))
{
    if (lock_) lock_->lock(SysThreadLockBase::DURATION_INFINITE);
}

ScopedLock::~ScopedLock()
{
    if (lock_) lock_->unlock();
}

IObject find_object(const AbcInputArchiveHandle& handle, const CoreString& object_path)
{
    IObject object;
    const auto archive = std::static_pointer_cast<IArchive>(handle.share_archive());
    if (!archive) return object;
    // A copy: an archive handle and its error log belong to one thread.
    const IArchive own_archive = *archive;
    AbcInternal::get_object_by_full_name(own_archive.getTop(), object_path, object);
    return object;
}

std::shared_ptr<IObject> share_alembic_object(const AbcInputArchiveHandle& handle)
{
    return std::static_pointer_cast<IObject>(handle.share_object());
}
