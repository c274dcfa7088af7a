/// The readers' recipe: what it refuses, what it binds, that it releases; arrays straight from the file.
#include <support/abc_archives.h>

#include <abc_deformation_header.h>
#include <gmock/gmock.h>
#include <read_array.h>
#include <reader_scope.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <stdexcept>
#include <thread>

using namespace abc_archives;

namespace {

class ReaderScope : public StartedLibrary
{
protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        write_archive(file_.path(), [](AbcG::OObject top) {
            AbcG::OXform body(top, "body");
            add_square(body, "shape", {1, 2});
            AbcG::OSubD(body, "empty");
            top.addChildInstance(body, "copy");
            AbcG::MetaData claim; // says that it is a camera, and has nothing of one
            claim.set("schema", "AbcGeom_Camera_v1");
            AbcG::OObject(top, "liar", claim);
        });
    }
    void TearDown() override
    {
        AbcInput::log_statistics();
        EXPECT_EQ(log_.take().size(), 5u) << "an archive is still open";
        StartedLibrary::TearDown();
    }

    const ScratchFile file_{"scene.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(ReaderScope, TheFirstMatchingKindIsBoundAndRead)
{
    const bool done = with_typed_object<AbcG::ISubD, AbcG::IPolyMesh>(
        files_, "/body/shape", [](AbcInputArchiveHandle& handle, auto& mesh) {
            EXPECT_EQ(handle.get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH);
            EXPECT_EQ(handle.get_object_name(), "/body/shape");
            EXPECT_EQ(static_cast<AbcG::IObject*>(handle.get_object())->getFullName(), mesh.getFullName());
            EXPECT_EQ(mesh.getSchema().getNumSamples(), 2u);
            return with_handle_object<AbcG::IPolyMesh>(handle,
                                                       [](const AbcG::IPolyMesh& same) { return same.valid(); });
        });
    EXPECT_TRUE(done);
    EXPECT_FALSE((with_typed_object<AbcG::IPolyMesh>(files_, "/body/shape", [](auto&, auto&) { return false; })));
}

TEST_F(ReaderScope, WhatCannotBeReadIsRefusedWithoutACall)
{
    const auto fail = [](auto&&...) {
        ADD_FAILURE() << "must not be called";
        return true;
    };
    EXPECT_FALSE(with_typed_object<AbcG::IPolyMesh>(AbcFileList(CoreString("absent.abc")), "/body/shape", fail));
    EXPECT_EQ(log_.take().size(), 1u);
    EXPECT_FALSE(with_typed_object<AbcG::IPolyMesh>(files_, "/body/absent", fail));
    EXPECT_FALSE((with_typed_object<AbcG::IPolyMesh, AbcG::ISubD>(files_, "/body", fail)));
    EXPECT_FALSE(with_typed_object<AbcG::IPolyMesh>(files_, "/", fail));
    EXPECT_FALSE(with_typed_object<AbcG::ICamera>(files_, "/liar", fail));
    AbcInputArchiveHandle empty;
    EXPECT_FALSE(with_bound_object<AbcG::IPolyMesh>(empty, "/body/shape", fail));
    EXPECT_FALSE(with_handle_object<AbcG::IPolyMesh>(empty, fail));

    const ScopedArchive archive(files_);
    archive.get_handle().set_object(
        new AbcG::IXform(static_cast<AbcG::IArchive*>(archive.get_handle().get_archive())->getTop(), "body"),
        AbcInputArchiveHandle::OBJECT_TYPE_XFORM);
    EXPECT_FALSE((with_handle_object<AbcG::IPolyMesh, AbcG::ISubD>(archive.get_handle(), fail)));
    EXPECT_FALSE(with_bound_object<AbcG::IPolyMesh>(archive.get_handle(), "/body", fail));
    EXPECT_EQ(archive.get_handle().get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_XFORM); // as it was
}

TEST_F(ReaderScope, AnExceptionPassesAndEverythingIsReleased)
{
    const auto fail = [](auto&, auto&) -> bool { throw std::runtime_error("a sample that cannot be read"); };
    EXPECT_THROW((with_typed_object<AbcG::IPolyMesh>(files_, "/body/shape", fail)), std::runtime_error);
}

TEST_F(ReaderScope, APathThroughAnInstanceStaysThatPath)
{
    EXPECT_TRUE(with_typed_object<AbcG::IPolyMesh>(files_, "/copy/shape", [](auto&, const AbcG::IPolyMesh& mesh) {
        EXPECT_EQ(mesh.getFullName(), "/copy/shape");
        EXPECT_EQ(mesh.getParent().getFullName(), "/copy");
        return mesh.getSchema().getPositionsProperty().valid();
    }));
}

TEST_F(ReaderScope, APlainObjectOnTheHandleIsReadAsItsKind)
{
    const ScopedArchive archive(files_);
    AbcInputArchiveHandle& handle = archive.get_handle();
    handle.set_object(new AbcG::IObject(find_object(handle, "/body/shape")),
                      AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH);
    EXPECT_TRUE(with_handle_object<AbcG::IPolyMesh>(handle, [](const AbcG::IPolyMesh& mesh) { return mesh.valid(); }));
}

TEST_F(ReaderScope, ALockIsHeldWhileReadingAndFreeAfterwards)
{
    const ScopedArchive archive(files_);
    AbcInputArchiveHandle& handle = archive.get_handle();
    SysThreadLockRecursive lock;
    handle.set_lock(&lock);
    const auto is_free = [&] {
        bool acquired = false;
        std::thread([&] {
            acquired = lock.lock(SysThreadLockBase::DURATION_NONE);
            if (acquired) lock.unlock();
        }).join();
        return acquired;
    };
    const auto read = [&](auto&, auto&) -> bool {
        EXPECT_FALSE(is_free());
        handle.set_lock(nullptr); // what was locked is what is unlocked
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(with_bound_object<AbcG::IPolyMesh>(handle, "/body/shape", read), std::runtime_error);
    EXPECT_TRUE(is_free());
    EXPECT_FALSE(handle.is_object_valid()) << "what could not be read is not bound";
}

TEST_F(ReaderScope, AReaderThatThrowsLeavesTheHandleOnTheEarlierObject)
{
    const ScopedArchive archive(files_);
    AbcInputArchiveHandle& handle = archive.get_handle();
    const auto pass = [](auto&, auto&) { return true; };
    ASSERT_TRUE(with_bound_object<AbcG::IXform>(handle, "/body", pass));
    const auto fail = [](auto&, auto&) -> bool { throw std::runtime_error("stop"); };
    EXPECT_THROW(with_bound_object<AbcG::IPolyMesh>(handle, "/body/shape", fail), std::runtime_error);
    EXPECT_EQ(handle.get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_XFORM);
    EXPECT_EQ(handle.get_object_name(), CoreString("/body"));
}

TEST_F(ReaderScope, ArraysAreReadOnlyIntoTheirLikes)
{
    with_typed_object<AbcG::IPolyMesh>(files_, "/body/shape", [](auto&, const AbcG::IPolyMesh& mesh) {
        const AbcG::IArrayProperty positions = mesh.getSchema().getPositionsProperty();
        CoreArray<GMathVec3<float>> points;
        EXPECT_TRUE(read_array(positions, 1, points));
        EXPECT_EQ(points.get_count(), 4u);
        EXPECT_EQ(points[2], (GMathVec3<float>{2, 2, 0}));
        EXPECT_TRUE(read_array(positions, 99, points)); // clamped to the last
        EXPECT_EQ(points[2], (GMathVec3<float>{2, 2, 0}));

        CoreArray<float> floats = {7};
        EXPECT_FALSE(read_array(positions, 0, floats)); // three numbers per element
        CoreArray<GMathVec3<double>> wide;
        EXPECT_FALSE(read_array(positions, 0, wide));
        CoreArray<GMathVec3<int>> whole;
        EXPECT_FALSE(read_array(positions, 0, whole));
        EXPECT_FALSE(read_array(AbcG::IArrayProperty(), 0, floats));
        EXPECT_EQ(floats[0], 7);

        CoreArray<unsigned int> indices;
        EXPECT_TRUE(read_array(mesh.getSchema().getFaceIndicesProperty(), 0, indices));
        EXPECT_EQ(indices, (CoreArray<unsigned int>{0, 1, 2, 3}));
        return true;
    });
    with_typed_object<AbcG::ISubD>(files_, "/body/empty", [](auto&, const AbcG::ISubD& mesh) {
        CoreArray<GMathVec3<float>> points(2);
        EXPECT_FALSE(read_array(mesh.getSchema().getPositionsProperty(), 0, points)); // no samples
        EXPECT_EQ(points.get_count(), 2u);
        return true;
    });
}

TEST_F(ReaderScope, DeformationTypesAreNamed)
{
    using Header = AbcDeformationHeader;
    EXPECT_STREQ(Header::get_deformation_type_name(Header::DEFORMATION_TYPE_HOMOGENEOUS),
                 "DEFORMATION_TYPE_HOMOGENEOUS");
    EXPECT_STREQ(Header::get_deformation_type_name(Header::DEFORMATION_TYPE_COUNT), "DEFORMATION_TYPE_COUNT");
    EXPECT_STREQ(Header::get_deformation_type_name(Header::DeformationType(7)), "DEFORMATION_TYPE_UNKNOWN");
}
