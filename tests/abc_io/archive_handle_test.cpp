/// AbcInputArchiveHandle: sharing without double destruction, moves, invalidation.
#include <abc_input_archive_handle.h>

#include <Alembic/Abc/IObject.h>
#include <gtest/gtest.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <atomic>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using Handle = AbcInputArchiveHandle;

/// An object that counts how many of its kind live.
class CountedObject : public Alembic::Abc::IObject
{
public:
    explicit CountedObject(std::atomic<int>& living)
        : living_(living)
    {
        ++living_;
    }
    ~CountedObject() override { --living_; }

private:
    std::atomic<int>& living_;
};

/// A block that owns something, so that a block destroyed twice shows.
std::function<bool()> counting_block(std::shared_ptr<int> calls, bool result)
{
    return [calls, result] {
        ++*calls;
        return result;
    };
}

} // namespace

TEST(ArchiveHandle, KindsAreNamed)
{
    EXPECT_STREQ(Handle::get_object_type_name(Handle::OBJECT_TYPE_NONE), "OBJECT_TYPE_NONE");
    EXPECT_STREQ(Handle::get_object_type_name(Handle::OBJECT_TYPE_SUBDIV_MESH), "OBJECT_TYPE_SUBDIV_MESH");
    EXPECT_STREQ(Handle::get_object_type_name(Handle::OBJECT_TYPE_COUNT), "OBJECT_TYPE_COUNT");
    EXPECT_STREQ(Handle::get_object_type_name(Handle::ObjectType(8)), "OBJECT_TYPE_UNKNOWN");
    EXPECT_STREQ(Handle::get_object_type_name(Handle::ObjectType(-1)), "OBJECT_TYPE_UNKNOWN");
    static_assert(sizeof(Handle::ObjectType) == 4);
}

TEST(ArchiveHandle, ANewHandleIsEmptyAndItsLockDoesNothing)
{
    Handle handle;
    EXPECT_FALSE(handle.is_archive_valid());
    EXPECT_FALSE(handle.is_object_valid());
    EXPECT_EQ(handle.get_object_type(), Handle::OBJECT_TYPE_NONE);
    handle.lock();
    handle.unlock();
    handle.delete_object();
    EXPECT_FALSE(handle.invalidate());
}

TEST(ArchiveHandle, TheObjectLivesAsLongAsAHandleHoldsIt)
{
    std::atomic<int> living{0};
    for (const bool original_goes_first : {true, false}) {
        auto original = std::make_unique<Handle>();
        original->set_object(new CountedObject(living), Handle::OBJECT_TYPE_CURVES);
        auto copy = std::make_unique<Handle>(*original);
        EXPECT_EQ(copy->get_object(), original->get_object());
        EXPECT_EQ(copy->get_object_type(), Handle::OBJECT_TYPE_CURVES);
        (original_goes_first ? original : copy).reset();
        EXPECT_EQ(living, 1);
        (original_goes_first ? copy : original)->delete_object();
        EXPECT_EQ(living, 0);
    }
}

TEST(ArchiveHandle, DeletingInOneHandleLeavesTheCopyItsObject)
{
    std::atomic<int> living{0};
    Handle original;
    original.set_object(new CountedObject(living), Handle::OBJECT_TYPE_POINTS);
    Handle copy;
    copy = original;
    original.delete_object();
    EXPECT_FALSE(original.is_object_valid());
    EXPECT_EQ(original.get_object_type(), Handle::OBJECT_TYPE_NONE);
    EXPECT_TRUE(copy.is_object_valid());
    copy.set_object(copy.get_object(), Handle::OBJECT_TYPE_CAMERA); // the one it has: no second owner
    EXPECT_EQ(living, 1);
    copy.set_object(new CountedObject(living), Handle::OBJECT_TYPE_POINTS);
    EXPECT_EQ(living, 1);
    const Handle& same = copy;
    copy = same; // assigning a handle to itself changes nothing
    EXPECT_EQ(living, 1);
    EXPECT_TRUE(copy.is_object_valid());
}

TEST(ArchiveHandle, AMoveEmptiesTheSourceAndLeavesEachItsBlock)
{
    std::atomic<int> living{0};
    int archive = 0;
    SysThreadLockRecursive lock;
    const auto calls = std::make_shared<int>(0);
    Handle source;
    source.set_archive(&archive);
    source.set_lock(&lock);
    source.set_filenames(AbcFileList(CoreString("a.abc")));
    source.set_object_name("/a");
    source.set_object(new CountedObject(living), Handle::OBJECT_TYPE_XFORM);
    source.set_archive_invalidation_block(counting_block(calls, true));

    Handle constructed(std::move(source));
    EXPECT_FALSE(source.is_archive_valid());
    EXPECT_FALSE(source.is_object_valid());
    EXPECT_EQ(source.get_object_type(), Handle::OBJECT_TYPE_NONE);
    EXPECT_EQ(constructed.get_archive(), &archive);
    EXPECT_EQ(constructed.get_object_name(), "/a");
    EXPECT_EQ(constructed.get_filenames(), AbcFileList(CoreString("a.abc")));
    EXPECT_EQ(constructed.get_object_type(), Handle::OBJECT_TYPE_XFORM);

    Handle assigned;
    assigned.set_archive_invalidation_block(counting_block(calls, true));
    assigned.set_object(new CountedObject(living), Handle::OBJECT_TYPE_POINTS);
    assigned = std::move(constructed);
    EXPECT_EQ(living, 1); // its own object went, the moved one came
    EXPECT_TRUE(assigned.invalidate());
    EXPECT_TRUE(source.invalidate());
    EXPECT_FALSE(constructed.invalidate());
    EXPECT_EQ(*calls, 2);
    EXPECT_EQ(living, 0);
}

TEST(ArchiveHandle, InvalidationEmptiesTheHandleAndAsksTheBlock)
{
    std::atomic<int> living{0};
    int archive = 0;
    const auto calls = std::make_shared<int>(0);
    Handle handle;
    handle.set_archive(&archive);
    handle.set_object(new CountedObject(living), Handle::OBJECT_TYPE_XFORM);
    handle.set_archive_invalidation_block(counting_block(calls, true));
    {
        Handle copy(handle); // shares the block, which is not destroyed twice
        copy.set_archive_invalidation_block(counting_block(calls, false));
        EXPECT_FALSE(copy.invalidate());
    }
    EXPECT_TRUE(handle.is_archive_valid());
    EXPECT_TRUE(handle.invalidate());
    EXPECT_FALSE(handle.is_archive_valid());
    EXPECT_FALSE(handle.is_object_valid());
    EXPECT_EQ(handle.get_object_type(), Handle::OBJECT_TYPE_NONE);
    EXPECT_EQ(*calls, 2);
    handle.clear_archive_invalidation_block();
    EXPECT_FALSE(handle.invalidate());
    EXPECT_EQ(calls.use_count(), 1);
    handle.set_archive_invalidation_block(std::function<bool()>());
    EXPECT_THROW(handle.invalidate(), std::bad_function_call);
}

TEST(ArchiveHandle, MemoryCountsNamesBlockAndLock)
{
    Handle handle;
    const auto empty = handle.get_memory_size();
    handle.set_object_name("/root/shape");
    EXPECT_EQ(handle.get_memory_size(), empty + 11);
    handle.set_archive_invalidation_block([] { return true; });
    EXPECT_EQ(handle.get_memory_size(), empty + 11 + sizeof(std::function<bool()>));
    SysThreadLockRecursive lock;
    handle.set_lock(&lock);
    EXPECT_EQ(handle.get_memory_size(), empty + 11 + sizeof(std::function<bool()>) + sizeof(lock));
}

TEST(ArchiveHandle, AnEvaluationKeepsTheObjectThatAnotherThreadReplaces)
{
    std::atomic<int> living{0};
    {
        Handle handle;
        std::atomic<bool> stop{false};
        std::vector<std::thread> readers;
        for (int i = 0; i < 3; ++i) {
            readers.emplace_back([&] {
                while (!stop) {
                    const auto object = std::static_pointer_cast<Alembic::Abc::IObject>(handle.share_object());
                    if (object && object->valid()) ADD_FAILURE(); // a look into it: freed memory would be seen
                    static_cast<void>(handle.get_object_type() == Handle::OBJECT_TYPE_NONE);
                }
            });
        }
        for (int i = 0; i < 2000; ++i) {
            handle.set_object(new CountedObject(living), Handle::OBJECT_TYPE_XFORM);
            if (i % 3 == 0) handle.delete_object();
            if (i % 3 == 1) handle.invalidate();
        }
        stop = true;
        for (std::thread& reader : readers)
            reader.join();
    }
    EXPECT_EQ(living, 0);
}
