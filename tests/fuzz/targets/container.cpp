/// The container alone: groups and data, each read from the start to the end.
#include "input.h"

#include "ogawa/container_reader.h"
#include "ogawa/data_reader.h"

#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

using namespace Alembic::Ogawa;

void walk(const BlockBuffer& file, const GroupReader& group, int depth, int& steps)
{
    for (std::uint64_t i = 0; i < group.count() && --steps > 0; ++i) {
        try {
            const DataReader data(file, group, i);
            std::vector<char> bytes(static_cast<std::size_t>(data.size()));
            if (data) data.read(0, bytes.data(), bytes.size());
            if (depth < 200) walk(file, group.child(i), depth + 1, steps);
        } catch (const std::runtime_error&) {
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::istringstream stream(input_bytes(data, size));
    try {
        const ContainerReader container = open_container(std::vector<std::istream*>{&stream});
        int steps = 20000;
        walk(container.file(), container.root(), 0, steps);
    } catch (const std::runtime_error&) {
    }
    return 0;
}
