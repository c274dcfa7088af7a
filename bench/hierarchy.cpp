/// One task over a tree of objects a run, for counting instructions:
///   valgrind --tool=callgrind hierarchy hierarchy_small.abc open|walk|walkx|find
#include <Alembic/AbcCoreFactory/All.h>
#include <Alembic/AbcGeom/All.h>

#include <cstdio>
#include <string>

using namespace Alembic::AbcGeom;

namespace {

size_t walk(const IObject& object)
{
    size_t count = 1;
    for (size_t i = 0; i < object.getNumChildren(); ++i)
        count += walk(object.getChild(i));
    return count;
}

/// Every transform's world matrix at a time between two samples, every mesh opened.
size_t walk_opening(const IObject& object, double time, M44d world_from_local)
{
    size_t sum = 1;
    if (IXform::matches(object.getHeader())) {
        const IXform transform(object, kWrapExisting);
        world_from_local = transform.getSchema().getValue(ISampleSelector(time)).getMatrix() * world_from_local;
        sum += size_t(world_from_local[3][0]);
    }
    if (IPolyMesh::matches(object.getHeader())) {
        const IPolyMesh mesh(object, kWrapExisting);
        sum += mesh.getSchema().getNumSamples();
    }
    for (size_t i = 0; i < object.getNumChildren(); ++i)
        sum += walk_opening(object.getChild(i), time, world_from_local);
    return sum;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: hierarchy ARCHIVE open|walk|walkx|find\n");
        return 2;
    }
    const IArchive archive = Alembic::AbcCoreFactory::IFactory().getArchive(argv[1]);
    const std::string task = argv[2];
    size_t sum = 0;
    if (task == "open") sum = archive.getTop().getNumChildren();
    if (task == "walk") sum = walk(archive.getTop());
    if (task == "walkx") sum = walk_opening(archive.getTop(), 0.05, M44d());
    if (task == "find")
        for (int i = 0; i < 10; ++i)
            sum += archive.getTop().getChild("group3").getChild("prop200").getChild("shape").valid();
    std::printf("%zu\n", sum);
    return 0;
}
