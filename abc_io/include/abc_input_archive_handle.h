/// AbcInputArchiveHandle: one reader's view of one open archive and of one object in it.
#pragma once

#include "abc_file_list.h"
#include "vo_abc_io_export.h"

#include <vo_core/core_string.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

class AbcHandleRoster;
class SysThreadLockRecursive;

/// What a reader holds while it works on one object of one open archive. AbcInput::get_archive makes one,
/// AbcInput::release_archive gives it back; whoever called the former deletes the handle after the latter.
///
/// Archive, object, lock and invalidation block are held by shared ownership: a copied handle shares them with the
/// original, nothing is destroyed twice, and what a handle lets go of lives on for as long as somebody still uses it.
/// Setting, deleting or invalidating the object on one thread while others evaluate through the same handle is safe: an
/// evaluation takes its share first (share_object) and ends on the object it started with. File list and object name
/// are not guarded: set them before the handle is shared.
class VO_ABC_IO_EXPORT AbcInputArchiveHandle
{
public:
    /// The kind of object a handle is set on.
    enum ObjectType : std::int32_t {
        OBJECT_TYPE_NONE = 0,        ///< no object set
        OBJECT_TYPE_XFORM = 1,       ///< transform
        OBJECT_TYPE_POLYMESH = 2,    ///< polygon mesh
        OBJECT_TYPE_SUBDIV_MESH = 3, ///< subdivision mesh
        OBJECT_TYPE_CURVES = 4,      ///< curves
        OBJECT_TYPE_POINTS = 5,      ///< points
        OBJECT_TYPE_CAMERA = 6,      ///< camera
        OBJECT_TYPE_COUNT = 7,       ///< number of kinds, not a kind
    };

    /// The enumerator's own name; "OBJECT_TYPE_UNKNOWN" for any other value.
    static const char* get_object_type_name(const ObjectType& type);

    /// No archive, no object, no lock, no block; empty file list and name.
    AbcInputArchiveHandle();
    /// Shares archive, object, lock and block with `other`. The copy is not a user of the archive of its own.
    AbcInputArchiveHandle(const AbcInputArchiveHandle& other);
    AbcInputArchiveHandle& operator=(const AbcInputArchiveHandle& other);
    /// Takes archive, object, file list, name, type and lock; `other` keeps its invalidation block, and this handle has
    /// none (after an assignment: keeps its own). What the assigned handle held before is let go of.
    AbcInputArchiveHandle(AbcInputArchiveHandle&& other) noexcept;
    AbcInputArchiveHandle& operator=(AbcInputArchiveHandle&& other) noexcept;
    virtual ~AbcInputArchiveHandle();

    /// The open Alembic::Abc::IArchive; null when there is none.
    void* get_archive() const;
    /// Sets an archive that the handle does not own.
    void set_archive(void* archive);
    /// True when the handle has an open archive.
    bool is_archive_valid() const;

    /// The Alembic object the handle is set on, an Alembic::Abc::IObject or a class derived from it; null when there is
    /// none. The pointer may go when another thread changes the handle: evaluations use share_object.
    void* get_object() const;
    /// Sets the object and its kind; the handle owns the object from now on, and lets go of the one it had. `object`
    /// points at an Alembic::Abc::IObject made with new (or a class derived from it), or is null.
    void set_object(void* object, const ObjectType& type);
    /// The same for an object (an Alembic::Abc::IObject, or null) that others share.
    void set_shared_object(std::shared_ptr<void> object, const ObjectType& type);
    /// Lets go of the object, if there is one; the kind becomes OBJECT_TYPE_NONE.
    void delete_object();
    /// True when the handle has an object.
    bool is_object_valid() const;
    /// The kind of the object; OBJECT_TYPE_NONE when there is none.
    const ObjectType& get_object_type() const;

    /// The files of the archive.
    const AbcFileList& get_filenames() const;
    void set_filenames(const AbcFileList& filenames);
    void set_filenames(AbcFileList&& filenames);

    /// Full name of the object, as "/root/body/bodyShape"; empty when none was set.
    const CoreString& get_object_name() const;
    void set_object_name(const CoreString& name);

    /// Sets a lock that the handle does not own; null for none.
    void set_lock(SysThreadLockRecursive* lock);
    /// Waits for the archive's lock and takes it. Does nothing for an archive that needs none.
    void lock() const;
    /// Gives the lock back; nothing for an archive that needs none.
    void unlock() const;

    /// Sets what the manager calls when the archive is reopened because its files changed. The block returns true when
    /// the manager may delete this handle.
    void set_archive_invalidation_block(std::function<bool()>&& block);
    void clear_archive_invalidation_block();
    /// Lets go of archive and object, then calls the block. Returns its result, false without a block. A block without
    /// target throws std::bad_function_call.
    bool invalidate();

    /// Bytes of the handle, its names, its block and its lock; archive and object are not counted.
    unsigned long long get_memory_size() const;

    /// A share in the archive (an Alembic::Abc::IArchive), in the object (an Alembic::Abc::IObject) or in the lock,
    /// each null when there is none. Whoever holds it may go on using it whatever happens to the handle.
    std::shared_ptr<void> share_archive() const;
    std::shared_ptr<void> share_object() const;
    std::shared_ptr<SysThreadLockRecursive> share_lock() const;

private:
    friend class AbcInputArchiveManager;

    /// What several threads may touch; guarded by mutex_, which is held for the copy of pointers only.
    struct State
    {
        std::shared_ptr<void> archive;
        std::shared_ptr<void> object;
        std::shared_ptr<SysThreadLockRecursive> lock;
        std::shared_ptr<std::function<bool()>> block;
        ObjectType type = OBJECT_TYPE_NONE;
    };

    State copy_state() const;
    State take_state() noexcept;
    /// Sets archive and lock to those of an open archive.
    void share_in(std::shared_ptr<void> archive, std::shared_ptr<SysThreadLockRecursive> lock);
    /// Takes the object out of the handle; the caller destroys it, under the archive's lock.
    std::shared_ptr<void> take_object();
    /// Takes archive and object out of the handle, for the caller to destroy, and returns the block to call.
    std::shared_ptr<std::function<bool()>> empty_into(std::shared_ptr<void>& archive, std::shared_ptr<void>& object);

    mutable std::mutex mutex_;
    State state_;
    AbcFileList filenames_;
    CoreString object_name_;
    std::shared_ptr<AbcHandleRoster> roster_; ///< where the manager has this handle on its list; null when it has not
};
