/// Visibility up the hierarchy, and face sets below their mesh.
#include "schema_parts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

using namespace schema_parts;

namespace {

/// What an object says, and what follows from its parent.
struct Expected
{
    std::string path;
    int own;
    bool hidden;
};

void write_tree(OObject parent, int depth, bool parent_hidden, std::mt19937& engine, std::vector<Expected>& objects)
{
    for (int i = 0; depth > 0 && i < 3; ++i) {
        OObject object(parent, "o" + std::to_string(i));
        const int own = int(engine() % 4) - 2; // -2: no property
        if (own >= -1) {
            CreateVisibilityProperty(object, 0).set(static_cast<int8_t>(own));
        }
        const bool hidden = own < 0 ? parent_hidden : own == kVisibilityHidden;
        objects.push_back({object.getFullName(), std::max(own, -1), hidden});
        write_tree(object, depth - 1, hidden, engine, objects);
    }
}

IObject at(const IArchive& archive, const std::string& path)
{
    IObject object = archive.getTop();
    for (size_t begin = 1; begin < path.size();) {
        const size_t end = std::min(path.find('/', begin), path.size());
        object = object.getChild(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return object;
}

} // namespace

TEST(Visibility, TheNearestObjectThatSaysSomethingDecides)
{
    ScratchFile file("tree.abc");
    std::vector<Expected> objects;
    {
        std::mt19937 engine(5);
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        write_tree(archive.getTop(), 5, false, engine, objects);
    }
    const IArchive archive = open_archive(file);
    for (const Expected& expected : objects) {
        IObject object = at(archive, expected.path);
        ASSERT_EQ(object.getFullName(), expected.path);
        EXPECT_EQ(int(GetVisibility(object)), expected.own) << expected.path;
        EXPECT_EQ(IsAncestorInvisible(object), expected.hidden) << expected.path;
    }
}

TEST(Visibility, APropertyOfAnotherKindIsAnError)
{
    ScratchFile file("kinds.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OObject number(archive.getTop(), "number"), list(archive.getTop(), "list"), group(archive.getTop(), "group"),
            unset(archive.getTop(), "unset"), odd(archive.getTop(), "odd");
        OInt32Property(number.getProperties(), "visible").set(0);
        OCharArrayProperty(list.getProperties(), "visible").set(CharArraySample(std::vector<int8_t>(1)));
        OCompoundProperty(group.getProperties(), "visible");
        CreateVisibilityProperty(unset, 0);
        CreateVisibilityProperty(odd, 0).set(int8_t(77));
    }
    const IArchive archive = open_archive(file);
    for (const char* name : {"number", "list", "group"}) {
        IObject object = archive.getTop().getChild(name);
        EXPECT_THROW(GetVisibility(object), Alembic::Util::Exception) << name;
        EXPECT_THROW(IsAncestorInvisible(object), Alembic::Util::Exception) << name;
    }
    IObject unset = archive.getTop().getChild("unset"), odd = archive.getTop().getChild("odd");
    EXPECT_EQ(GetVisibility(unset), kVisibilityDeferred);
    EXPECT_EQ(int(GetVisibility(odd)), 77) << "values are not checked";
    EXPECT_FALSE(IsAncestorInvisible(odd));
}

TEST(FaceSets, CopiesOfASchemaAreAskedByManyThreads)
{
    ScratchFile file("face_sets.abc");
    constexpr int count = 20;
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OPolyMesh mesh(archive.getTop(), "mesh");
        const std::vector<V3f> points(3);
        const std::vector<int32_t> indices = {0, 1, 2}, counts = {3};
        mesh.getSchema().set(OPolyMeshSchema::Sample(points, indices, counts));
        for (int i = count; i-- > 0;) {
            const std::vector<int32_t> faces(size_t(i) + 1, 0);
            mesh.getSchema().createFaceSet("set" + std::to_string(i)).getSchema().set(Int32ArraySample(faces));
        }
        OObject(mesh, "no face set");
    }
    const IPolyMesh mesh(open_archive(file).getTop(), "mesh");
    std::vector<std::thread> threads;
    std::vector<int> found(4, 0);
    for (size_t t = 0; t < found.size(); ++t) {
        threads.emplace_back([&found, t, schema = IPolyMeshSchema(mesh.getSchema())]() mutable {
            std::vector<std::string> names;
            schema.getFaceSetNames(names);
            if (!std::is_sorted(names.begin(), names.end()) || names.size() != count) return;
            for (const std::string& name : names) {
                const size_t faces = schema.getFaceSet(name).getSchema().getValue().getFaces()->size();
                found[t] += schema.hasFaceSet(name) && "set" + std::to_string(faces - 1) == name ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, std::vector<int>(4, count));
    IPolyMeshSchema schema = mesh.getSchema();
    EXPECT_FALSE(schema.hasFaceSet("no face set"));
    EXPECT_THROW(schema.getFaceSet("no face set"), Alembic::Util::Exception);
}
