/// AbcInputArchiveHandle: shares in an archive, in an object and in their lock, safe against other threads.
#include "abc_input_archive_handle.h"

#include "handle_roster.h"
#include "reader_scope.h"

#include <Alembic/Abc/IObject.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <array>
#include <utility>

namespace {

constexpr std::array<AbcInputArchiveHandle::ObjectType, AbcInputArchiveHandle::OBJECT_TYPE_COUNT + 1> object_types = {
    AbcInputArchiveHandle::OBJECT_TYPE_NONE,     AbcInputArchiveHandle::OBJECT_TYPE_XFORM,
    AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH, AbcInputArchiveHandle::OBJECT_TYPE_SUBDIV_MESH,
    AbcInputArchiveHandle::OBJECT_TYPE_CURVES,   AbcInputArchiveHandle::OBJECT_TYPE_POINTS,
    AbcInputArchiveHandle::OBJECT_TYPE_CAMERA,   AbcInputArchiveHandle::OBJECT_TYPE_COUNT,
};

bool is_known(AbcInputArchiveHandle::ObjectType type)
{
    return type >= AbcInputArchiveHandle::OBJECT_TYPE_NONE && type <= AbcInputArchiveHandle::OBJECT_TYPE_COUNT;
}

/// Drops a share; if it is the last one, the object goes while no other thread reads the archive.
void drop(std::shared_ptr<void> share, const std::shared_ptr<SysThreadLockRecursive>& lock)
{
    if (!share) return;
    const ScopedLock scope(lock);
    share.reset();
}

} // namespace

const char* AbcInputArchiveHandle::get_object_type_name(const ObjectType& type)
{
    switch (type) {
    case OBJECT_TYPE_NONE:
        return "OBJECT_TYPE_NONE";
    case OBJECT_TYPE_XFORM:
        return "OBJECT_TYPE_XFORM";
    case OBJECT_TYPE_POLYMESH:
        return "OBJECT_TYPE_POLYMESH";
    case OBJECT_TYPE_SUBDIV_MESH:
        return "OBJECT_TYPE_SUBDIV_MESH";
    case OBJECT_TYPE_CURVES:
        return "OBJECT_TYPE_CURVES";
    case OBJECT_TYPE_POINTS:
        return "OBJECT_TYPE_POINTS";
    case OBJECT_TYPE_CAMERA:
        return "OBJECT_TYPE_CAMERA";
    case OBJECT_TYPE_COUNT:
        return "OBJECT_TYPE_COUNT";
    }
    return "OBJECT_TYPE_UNKNOWN";
}

AbcInputArchiveHandle::AbcInputArchiveHandle() = default;

AbcInputArchiveHandle::AbcInputArchiveHandle(const AbcInputArchiveHandle& other)
    : state_(other.copy_state())
    , filenames_(other.filenames_)
    , object_name_(other.object_name_)
{
}

AbcInputArchiveHandle& AbcInputArchiveHandle::operator=(const AbcInputArchiveHandle& other)
{
    AbcInputArchiveHandle copy(other);
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        std::swap(state_, copy.state_);
    }
    filenames_ = copy.filenames_;
    object_name_ = copy.object_name_;
    return *this; // what this handle held goes with the copy
}

AbcInputArchiveHandle::AbcInputArchiveHandle(AbcInputArchiveHandle&& other) noexcept
    : state_(other.take_state())
    , filenames_(std::move(other.filenames_))
    , object_name_(std::move(other.object_name_))
    , roster_(std::move(other.roster_))
{
    if (roster_) roster_->replace(&other, this);
}

AbcInputArchiveHandle& AbcInputArchiveHandle::operator=(AbcInputArchiveHandle&& other) noexcept
{
    if (this == &other) return *this;
    AbcInputArchiveHandle taken(std::move(other));
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        std::swap(state_, taken.state_);
        std::swap(state_.block, taken.state_.block); // each keeps its own invalidation block
    }
    filenames_ = std::move(taken.filenames_);
    object_name_ = std::move(taken.object_name_);
    if (roster_) roster_->remove(this);
    roster_ = std::move(taken.roster_);
    if (roster_) roster_->replace(&taken, this);
    return *this;
}

AbcInputArchiveHandle::~AbcInputArchiveHandle()
{
    if (roster_) roster_->remove(this);
    drop(std::move(state_.object), state_.lock);
    drop(std::move(state_.archive), state_.lock);
}

void* AbcInputArchiveHandle::get_archive() const
{
    return share_archive().get();
}

void AbcInputArchiveHandle::set_archive(void* archive)
{
    const std::shared_ptr<void> unowned(archive, [](void*) {});
    share_in(archive ? unowned : nullptr, share_lock());
}

bool AbcInputArchiveHandle::is_archive_valid() const
{
    return get_archive() != nullptr;
}

void* AbcInputArchiveHandle::get_object() const
{
    return share_object().get();
}

void AbcInputArchiveHandle::set_object(void* object, const ObjectType& type)
{
    // Setting the object it has already must not make a second owner of it.
    if (std::shared_ptr<void> current = share_object(); current.get() == object)
        return set_shared_object(std::move(current), type);
    using Alembic::Abc::IObject;
    set_shared_object(std::shared_ptr<IObject>(static_cast<IObject*>(object)), type); // its destructor is virtual
}

void AbcInputArchiveHandle::set_shared_object(std::shared_ptr<void> object, const ObjectType& type)
{
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        std::swap(state_.object, object);
        state_.type = type;
    }
    drop(std::move(object), share_lock());
}

void AbcInputArchiveHandle::delete_object()
{
    drop(take_object(), share_lock());
}

bool AbcInputArchiveHandle::is_object_valid() const
{
    return get_object() != nullptr;
}

const AbcInputArchiveHandle::ObjectType& AbcInputArchiveHandle::get_object_type() const
{
    // A reference into the table, not to the field that another thread may be changing.
    const ObjectType type = copy_state().type;
    return object_types[is_known(type) ? type : OBJECT_TYPE_COUNT];
}

const AbcFileList& AbcInputArchiveHandle::get_filenames() const
{
    return filenames_;
}

void AbcInputArchiveHandle::set_filenames(const AbcFileList& filenames)
{
    filenames_ = filenames;
}

void AbcInputArchiveHandle::set_filenames(AbcFileList&& filenames)
{
    filenames_ = std::move(filenames);
}

const CoreString& AbcInputArchiveHandle::get_object_name() const
{
    return object_name_;
}

void AbcInputArchiveHandle::set_object_name(const CoreString& name)
{
    object_name_ = name;
}

void AbcInputArchiveHandle::set_lock(SysThreadLockRecursive* lock)
{
    const std::shared_ptr<SysThreadLockRecursive> unowned(lock, [](SysThreadLockRecursive*) {});
    share_in(share_archive(), lock ? unowned : nullptr);
}

void AbcInputArchiveHandle::lock() const
{
    if (const auto lock = share_lock()) lock->lock(SysThreadLockBase::DURATION_INFINITE);
}

void AbcInputArchiveHandle::unlock() const
{
    if (const auto lock = share_lock()) lock->unlock();
}

void AbcInputArchiveHandle::set_archive_invalidation_block(std::function<bool()>&& block)
{
    auto fresh = std::make_shared<std::function<bool()>>(std::move(block));
    const std::lock_guard<std::mutex> guard(mutex_);
    std::swap(state_.block, fresh);
}

void AbcInputArchiveHandle::clear_archive_invalidation_block()
{
    std::shared_ptr<std::function<bool()>> dropped;
    const std::lock_guard<std::mutex> guard(mutex_);
    std::swap(state_.block, dropped);
}

bool AbcInputArchiveHandle::invalidate()
{
    std::shared_ptr<void> archive, object;
    const std::shared_ptr<SysThreadLockRecursive> lock = share_lock();
    const auto block = empty_into(archive, object);
    drop(std::move(object), lock);
    drop(std::move(archive), lock);
    return block && (*block)();
}

unsigned long long AbcInputArchiveHandle::get_memory_size() const
{
    const State state = copy_state();
    return sizeof(*this) + (state.block ? sizeof(*state.block) : 0) + filenames_.get_memory_size() +
           sizeof(CoreString) + (state.lock ? sizeof(SysThreadLockRecursive) : 0) + object_name_.get_size();
}

std::shared_ptr<void> AbcInputArchiveHandle::share_archive() const
{
    const std::lock_guard<std::mutex> guard(mutex_);
    return state_.archive;
}

std::shared_ptr<void> AbcInputArchiveHandle::share_object() const
{
    const std::lock_guard<std::mutex> guard(mutex_);
    return state_.object;
}

std::shared_ptr<SysThreadLockRecursive> AbcInputArchiveHandle::share_lock() const
{
    const std::lock_guard<std::mutex> guard(mutex_);
    return state_.lock;
}

AbcInputArchiveHandle::State AbcInputArchiveHandle::copy_state() const
{
    const std::lock_guard<std::mutex> guard(mutex_);
    return state_;
}

AbcInputArchiveHandle::State AbcInputArchiveHandle::take_state() noexcept
{
    const std::lock_guard<std::mutex> guard(mutex_);
    State taken;
    std::swap(taken, state_);
    std::swap(taken.block, state_.block); // the block is not carried over
    return taken;
}

void AbcInputArchiveHandle::share_in(std::shared_ptr<void> archive, std::shared_ptr<SysThreadLockRecursive> lock)
{
    const std::lock_guard<std::mutex> guard(mutex_);
    std::swap(state_.archive, archive);
    std::swap(state_.lock, lock);
}

std::shared_ptr<void> AbcInputArchiveHandle::take_object()
{
    const std::lock_guard<std::mutex> guard(mutex_);
    std::shared_ptr<void> taken;
    std::swap(state_.object, taken);
    state_.type = OBJECT_TYPE_NONE;
    return taken;
}

std::shared_ptr<std::function<bool()>> AbcInputArchiveHandle::empty_into(std::shared_ptr<void>& archive,
                                                                         std::shared_ptr<void>& object)
{
    const std::lock_guard<std::mutex> guard(mutex_);
    std::swap(state_.archive, archive);
    std::swap(state_.object, object);
    state_.type = OBJECT_TYPE_NONE;
    return state_.block;
}
