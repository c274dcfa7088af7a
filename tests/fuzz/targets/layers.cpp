/// Layered archives from one input: each layer begins where a container's first letters stand. A single one is put
/// between two sound layers.
#include "input.h"

#include "support/archive_walk.h"
#include "support/scenes.h"

#include <Alembic/AbcCoreLayer/Read.h>
#include <Alembic/AbcCoreOgawa/All.h>

#include <memory>
#include <sstream>
#include <vector>

namespace {

std::vector<std::string> split(const std::string& bytes)
{
    std::vector<std::string> layers;
    std::size_t at = 0;
    while (layers.size() < 3) {
        const std::size_t next = layers.size() == 2 ? std::string::npos : bytes.find("Ogawa", at + 1);
        layers.push_back(bytes.substr(at, next == std::string::npos ? next : next - at));
        if (next == std::string::npos) break;
        at = next;
    }
    if (layers.size() == 1) layers = {vo_fuzz::layer_of_scene(1), layers[0], vo_fuzz::layer_of_scene(2)};
    return layers;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> layers = split(input_bytes(data, size));
    std::vector<std::unique_ptr<std::istringstream>> streams;
    std::vector<Alembic::AbcCoreAbstract::ArchiveReaderPtr> archives;
    for (const std::string& layer : layers)
        try {
            streams.push_back(std::make_unique<std::istringstream>(layer));
            archives.push_back(Alembic::AbcCoreOgawa::ReadArchive({streams.back().get()})("layer"));
        } catch (const std::exception&) {
        }
    if (archives.size() > 1) try {
            const auto archive = Alembic::AbcCoreLayer::ReadArchive()(archives);
            vo_fuzz::walk_core(archive);
            vo_fuzz::walk_typed(archive, Alembic::Abc::ErrorHandler::kQuietNoopPolicy);
        } catch (const std::exception&) {
        }
    require_promises(vo_fuzz::run_readers_on_layers(layers));
    return 0;
}
