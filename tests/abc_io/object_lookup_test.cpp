/// Objects by full name, tables of objects, property names and data keys.
#include <support/abc_archives.h>
#include <support/captured_log.h>

#include <abc_input_archive_manager.h>
#include <abc_internal.h>
#include <gmock/gmock.h>
#include <vo_app_base/app_progress_bar.h>

using namespace abc_archives;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

class ObjectLookup : public StartedLibrary
{
protected:
    CoreArray<CoreString> make_keys(const std::vector<const char*>& names, AppProgressBar* progress = nullptr)
    {
        CoreArray<CoreString> object_names(names.size()), keys(names.size());
        for (unsigned int i = 0; i < names.size(); ++i)
            object_names[i] = names[i];
        keys.fill("untouched");
        AbcInput::make_object_key(files_, keys, object_names, progress);
        return keys;
    }

    AbcG::IObject open_top() const
    {
        return AbcG::IArchive(Alembic::AbcCoreOgawa::ReadArchive(), file_.path()).getTop();
    }

    const ScratchFile file_{"objects.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(ObjectLookup, AFullNameIsWalkedComponentByComponent)
{
    write_square_archive(file_.path());
    const AbcG::IObject top = open_top();
    for (const char* name : {"/body/shape", "body/shape", "//body///shape/"}) {
        AbcG::IObject object;
        ASSERT_TRUE(AbcInternal::get_object_by_full_name(top, name, object)) << name;
        EXPECT_EQ(object.getFullName(), "/body/shape");
    }
    for (const char* name : {"", "/"}) {
        AbcG::IObject object;
        ASSERT_TRUE(AbcInternal::get_object_by_full_name(top, name, object));
        EXPECT_EQ(object.getFullName(), top.getFullName());
    }
    AbcG::IObject object = top;
    EXPECT_FALSE(AbcInternal::get_object_by_full_name(top, "/body/nobody/shape", object));
    EXPECT_FALSE(AbcInternal::get_object_by_full_name(top, "/Body", object));
    EXPECT_EQ(object.getFullName(), top.getFullName()); // untouched
}

TEST_F(ObjectLookup, TheTableHoldsSupportedObjectsAtAnyDepth)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        AbcG::OObject group(top, "group"); // a plain object is no kind of its own
        AbcG::OXform xform(group, "xform");
        AbcG::OPolyMesh mesh = add_square(xform, "mesh");
        mesh.getSchema().createFaceSet("faces");
        AbcG::OCamera camera(xform, "camera");
        AbcG::OCurves curves(mesh, "curves");
    });
    CoreHashTable<CoreString, AbcG::IObject> objects;
    AbcInputArchiveManager::get()->build_file_object_list(open_top(), objects, nullptr);
    std::vector<std::string> names;
    for (const auto& entry : objects) {
        names.push_back(entry.get_key().get_data());
        EXPECT_EQ(entry.get_value().getFullName(), names.back());
    }
    EXPECT_THAT(names, UnorderedElementsAre("/group/xform", "/group/xform/mesh", "/group/xform/camera",
                                            "/group/xform/mesh/curves"));
}

TEST_F(ObjectLookup, AnObjectThatCannotBeOpenedIsNotFoundAndNotListed)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        AbcG::MetaData instance;
        instance.set("isInstance", "1");
        AbcG::OObject broken(top, "broken", instance);
        AbcG::OStringProperty(broken.getProperties(), ".instanceSource").set("/gone");
        add_square(top, "square");
    });
    const std::unique_ptr<AbcInputArchiveHandle> handle(AbcInput::get_archive(files_));
    ASSERT_TRUE(handle->is_archive_valid());
    const AbcG::IObject top = static_cast<AbcG::IArchive*>(handle->get_archive())->getTop();
    const AbcG::IObject quiet_top =
        AbcG::IArchive(Alembic::AbcCoreOgawa::ReadArchive(), file_.path(), Alembic::Abc::ErrorHandler::kQuietNoopPolicy)
            .getTop();
    // Below the one Alembic throws, below the other it yields invalid objects.
    for (const AbcG::IObject& root : {top, quiet_top}) {
        ASSERT_NE(root.getChildHeader("broken"), nullptr);
        AbcG::IObject object = root;
        EXPECT_FALSE(AbcInternal::get_object_by_full_name(root, "/broken", object));
        EXPECT_EQ(object.getFullName(), root.getFullName()); // untouched
        CoreHashTable<CoreString, AbcG::IObject> objects;
        AbcInputArchiveManager::get()->build_file_object_list(root, objects, nullptr);
        EXPECT_EQ(objects.get_count(), 1u);
        EXPECT_TRUE(objects.contains(CoreString("/square")));
    }
    EXPECT_NE(make_keys({"/square"})[0], "untouched");
    AbcInput::release_archive(handle.get());
}

TEST_F(ObjectLookup, InstancesOfInstancesAreListedInPartAndFoundAllTheSame)
{
    constexpr int levels = 25;
    std::string deepest = "/l0";
    write_archive(file_.path(), [&](AbcG::OObject top) {
        std::vector<AbcG::OObject> objects;
        for (int i = 0; i < levels; ++i)
            objects.push_back(AbcG::OXform(top, "l" + std::to_string(i)));
        for (int i = 0; i + 1 < levels; ++i) {
            for (const char* name : {"a", "b"})
                objects[i].addChildInstance(objects[i + 1], name);
            deepest += "/b";
        }
        add_square(objects.back(), "square");
        add_square(top, "last");
    });
    CapturedLog log;
    CoreHashTable<CoreString, AbcG::IObject> objects;
    AbcInputArchiveManager::get()->build_file_object_list(open_top(), objects, nullptr);
    EXPECT_GT(objects.get_count(), 25000u);
    EXPECT_LT(objects.get_count(), 100000u);
    EXPECT_TRUE(objects.contains(CoreString("/l24/square")) && objects.contains(CoreString("/last")))
        << "all that is stored";
    const std::vector<std::string> messages = log.take();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0],
                testing::ContainsRegex("The objects of .*multiply through instances: after [0-9]+ no more"));

    deepest += "/square";
    EXPECT_FALSE(objects.contains(CoreString(deepest)));
    const CoreArray<CoreString> keys = make_keys({deepest.c_str(), "/l24/square", "/last", "/l0/c"});
    EXPECT_EQ(keys[0], keys[1]);
    EXPECT_EQ(keys[2], keys[1]);
    EXPECT_EQ(keys[3], "untouched");
}

TEST_F(ObjectLookup, EqualGeometryHasEqualKeys)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_square(top, "one");
        add_square(AbcG::OXform(top, "moved"), "same"); // elsewhere, of another name
        add_square(top, "animated", {1, 2});            // the same at 0.0 s
        add_square(top, "larger", {2});
        AbcG::OPolyMesh grouped = add_square(top, "grouped");
        const std::vector<std::int32_t> faces = {0};
        grouped.getSchema().createFaceSet("faces").getSchema().set(AbcG::OFaceSetSchema::Sample(faces));
    });
    AppProgressBar progress("", nullptr);
    const CoreArray<CoreString> keys =
        make_keys({"/one", "/moved/same", "/animated", "/larger", "/grouped", "/moved", "/absent", "one"}, &progress);
    EXPECT_EQ(progress.get_value(), 1.0f);
    EXPECT_EQ(keys[0].get_count(), 3u + 5u + 32u); // "v1:mesh:" and a hash
    EXPECT_EQ(keys[1], keys[0]);
    EXPECT_EQ(keys[2], keys[0]);
    EXPECT_NE(keys[3], keys[0]);
    EXPECT_NE(keys[4], keys[0]);
    for (const unsigned int other : {5u, 6u, 7u}) // a transform; not there; not the full name
        EXPECT_EQ(keys[other], "untouched");

    const std::unique_ptr<AbcInputArchiveHandle> handle(AbcInput::get_archive(files_));
    EXPECT_TRUE(AbcInput::get_object_data_hash_key(*handle, 0.0).is_empty());
    AbcG::IObject top = static_cast<AbcG::IArchive*>(handle->get_archive())->getTop();
    handle->set_object(new AbcG::IPolyMesh(top, "animated"), AbcInputArchiveHandle::OBJECT_TYPE_POLYMESH);
    EXPECT_EQ(AbcInput::get_object_data_hash_key(*handle, 0.0), keys[0]);
    EXPECT_EQ(AbcInput::get_object_data_hash_key(*handle, 1.0), keys[3]);
    AbcInput::release_archive(handle.get());
}

TEST_F(ObjectLookup, FilesThatCannotBeOpenedLeaveKeysAlone)
{
    AppProgressBar progress("", nullptr);
    EXPECT_EQ(make_keys({"/one"}, &progress)[0], "untouched");
    EXPECT_EQ(progress.get_value(), 1.0f);
    EXPECT_EQ(log_.take().size(), 1u);
}

TEST_F(ObjectLookup, PropertyNamesAreUserPropertiesThenGeometryParameters)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        AbcG::OPolyMesh mesh = add_square(top, "mesh");
        AbcG::OCompoundProperty params = mesh.getSchema().getArbGeomParams();
        AbcG::OV2fGeomParam(params, "map2", true, AbcG::kFacevaryingScope, 1);
        AbcG::OFloatGeomParam(params, "weight", false, AbcG::kVertexScope, 1);
        AbcG::OCompoundProperty user = mesh.getSchema().getUserProperties();
        AbcG::OInt32Property(user, "weight").set(1); // a name that both have is listed once
        AbcG::OCompoundProperty nested(user, "render");
        AbcG::OStringProperty(nested, "pass").set("beauty");
        AbcG::OBoolProperty(user, "visible").set(true);
        add_square(top, "plain");
    });
    const std::unique_ptr<AbcInputArchiveHandle> handle(AbcInput::get_archive(files_));
    CoreVector<CoreString> names = {"old"};
    EXPECT_FALSE(AbcInput::get_property_names(*handle, "/absent", names));
    EXPECT_THAT(to_strings(names), ElementsAre("old"));
    EXPECT_TRUE(AbcInput::get_property_names(*handle, "/mesh", names));
    EXPECT_THAT(to_strings(names), ElementsAre("weight", "render.pass", "visible", "map2"));
    EXPECT_TRUE(AbcInput::get_property_names(*handle, "/plain", names));
    EXPECT_TRUE(names.is_empty());
    AbcInput::release_archive(handle.get());
}
