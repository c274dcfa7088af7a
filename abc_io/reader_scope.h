/// The recipe of every reader: archive, lock, object, typed object, bind, read, unlock, release. It stands once, here.
///
///     return with_typed_object<IPolyMesh, ISubD>(
///         files, object_name, [&](AbcInputArchiveHandle& handle, const auto& mesh) {
///             return read_topology(mesh.getSchema(), time, face_counts);
///         });
#pragma once

#include "abc_input_archive_handle.h"
#include "static_positions.h"

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_string.h>

#include <exception>
#include <memory>
#include <type_traits>
#include <utility>

/// A counted user of the archive of some files; released, and its handle deleted, when this scope ends, however it
/// ends. Its handle keeps archive and object also when another thread opens the files afresh meanwhile.
class ScopedArchive
{
public:
    explicit ScopedArchive(const AbcFileList& files);
    ~ScopedArchive();
    ScopedArchive(const ScopedArchive&) = delete;
    ScopedArchive& operator=(const ScopedArchive&) = delete;

    /// False when the files could not be opened; the log tells why.
    explicit operator bool() const { return handle_->is_archive_valid(); }
    AbcInputArchiveHandle& get_handle() const { return *handle_; }

private:
    std::unique_ptr<AbcInputArchiveHandle> handle_;
};

/// Holds a handle's lock, if it has one, until this scope ends. What was locked is what is unlocked, even if the handle
/// loses its lock meanwhile. May be nested on one thread.
class ScopedLock
{
public:
    explicit ScopedLock(const AbcInputArchiveHandle& handle);
    explicit ScopedLock(std::shared_ptr<SysThreadLockRecursive> lock);
    ~ScopedLock();
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    std::shared_ptr<SysThreadLockRecursive> lock_;
};

/// The object of a full name in the handle's archive; an invalid object when the handle has no archive or the archive
/// no such object. The caller holds the handle's lock.
Alembic::Abc::IObject find_object(const AbcInputArchiveHandle& handle, const CoreString& object_path);

/// A share in the object that the handle is set on, null when there is none: whatever happens to the handle, the object
/// stays until the share goes.
std::shared_ptr<Alembic::Abc::IObject> share_alembic_object(const AbcInputArchiveHandle& handle);

/// Sampling and samples of a geometry's positions: the property's own sampling if the property is valid, otherwise the
/// archive's number 0.
template <class Schema>
Alembic::AbcGeom::TimeSamplingPtr positions_sampling(const Schema& schema, const Alembic::Abc::IObject& object)
{
    const auto positions = schema.getPositionsProperty();
    return positions.valid() ? positions.getTimeSampling() : object.getArchive().getTimeSampling(0);
}

/// The kind under which a handle holds a typed object.
template <class Kind>
struct ObjectTypeOf;
template <>
struct ObjectTypeOf<Alembic::AbcGeom::IXform>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_XFORM;
};
template <>
struct ObjectTypeOf<Alembic::AbcGeom::IPolyMesh>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH;
};
template <>
struct ObjectTypeOf<Alembic::AbcGeom::ISubD>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_SUBDIV_MESH;
};
template <>
struct ObjectTypeOf<Alembic::AbcGeom::ICurves>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_CURVES;
};
template <>
struct ObjectTypeOf<Alembic::AbcGeom::IPoints>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_POINTS;
};
template <>
struct ObjectTypeOf<Alembic::AbcGeom::ICamera>
{
    static constexpr auto value = AbcInputArchiveHandle::OBJECT_TYPE_CAMERA;
};

/// True when the object's schema is that of Kind (strictly, by the metadata in its header).
template <class Kind>
bool is_kind(const Alembic::Abc::IObject& object)
{
    using Schema = std::decay_t<decltype(std::declval<const Kind&>().getSchema())>;
    return Schema::matches(object.getMetaData());
}

/// A typed object as handles hold it: with a place for what evaluations keep of it.
template <class Kind>
struct BoundObject : Kind, StaticPositions
{
    explicit BoundObject(const Alembic::Abc::IObject& object)
        : Kind(object, Alembic::Abc::kWrapExisting)
    {
    }
};

/// The typed object of a found object; null when its properties are not what its schema needs. It is made from the
/// object itself, not from its parent and name, so that a path through an instance keeps its own names and ancestors.
template <class Kind>
std::shared_ptr<Kind> make_typed_object(const Alembic::Abc::IObject& object)
{
    try {
        auto typed = std::make_shared<BoundObject<Kind>>(object);
        return typed->valid() ? typed : nullptr;
    } catch (const std::exception&) {
        return nullptr; // opening never throws: the reader reports an object that cannot be had
    }
}

namespace reader_scope_detail {

/// True when the object is of this kind; `result` is then the reader's.
template <class Kind, class Read>
bool bind_if_kind(AbcInputArchiveHandle& handle, const CoreString& object_path, const Alembic::Abc::IObject& found,
                  Read& read, bool& result)
{
    if (!is_kind<Kind>(found)) return false;
    const std::shared_ptr<Kind> typed =
        make_typed_object<Kind>(found); // kept to the end, whatever others do to the handle
    if (!typed) return true;
    const std::shared_ptr<Alembic::Abc::IObject> object = typed;
    const std::shared_ptr<void> earlier = handle.share_object();
    const AbcInputArchiveHandle::ObjectType earlier_type = handle.get_object_type();
    const CoreString earlier_name = handle.get_object_name();
    handle.set_shared_object(object, ObjectTypeOf<Kind>::value);
    handle.set_object_name(object_path);
    try {
        result = read(handle, *typed);
    } catch (...) {
        // An object that could not be read is not to be taken for one that could.
        if (handle.share_object() == object) {
            handle.set_shared_object(earlier, earlier_type);
            handle.set_object_name(earlier_name);
        }
        throw;
    }
    return true;
}

/// True when the handle's object is of this kind; `result` is then the reader's.
template <class Kind, class Read>
bool read_if_kind(const Alembic::Abc::IObject& object, Read& read, bool& result)
{
    if (!is_kind<Kind>(object)) return false;
    if (const Kind* typed = dynamic_cast<const Kind*>(&object)) {
        result = read(*typed);
    } else if (const std::shared_ptr<Kind> made = make_typed_object<Kind>(object)) {
        result = read(std::as_const(*made)); // the host set a plain object
    }
    return true;
}

} // namespace reader_scope_detail

/// Finds `object_path` in the handle's archive, sets it on the handle as the first of `Kinds` that it is, and returns
/// what `read(handle, typed_object)` returns. All under the handle's lock. False, handle as it was, when there is no
/// archive, no such object, or when it is of no such kind or damaged; the handle is as it was also when `read` throws.
/// Readers that must leave the handle empty on a failure call delete_object first, under a ScopedLock of their own.
template <class... Kinds, class Read>
bool with_bound_object(AbcInputArchiveHandle& handle, const CoreString& object_path, Read&& read)
{
    const ScopedLock lock(handle);
    const Alembic::Abc::IObject found = find_object(handle, object_path);
    if (!found.valid()) return false;
    bool result = false;
    static_cast<void>((reader_scope_detail::bind_if_kind<Kinds>(handle, object_path, found, read, result) || ...));
    return result;
}

/// The whole recipe: opens the archive of `files`, does with_bound_object on it and releases everything. False also
/// when the archive cannot be opened.
template <class... Kinds, class Read>
bool with_typed_object(const AbcFileList& files, const CoreString& object_path, Read&& read)
{
    const ScopedArchive archive(files);
    return archive && with_bound_object<Kinds...>(archive.get_handle(), object_path, read);
}

/// Returns what `read(typed_object)` returns for the object that the handle holds, under the handle's lock. False when
/// the handle holds none, or one of another kind. The object lives until `read` returns, even if another thread
/// invalidates the handle meanwhile.
template <class... Kinds, class Read>
bool with_handle_object(const AbcInputArchiveHandle& handle, Read&& read)
{
    const ScopedLock lock(handle);
    const std::shared_ptr<Alembic::Abc::IObject> object = share_alembic_object(handle);
    if (!object) return false;
    bool result = false;
    static_cast<void>((reader_scope_detail::read_if_kind<Kinds>(*object, read, result) || ...));
    return result;
}
