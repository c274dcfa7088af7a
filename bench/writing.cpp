/// Writing whole scenes, against plain `write` calls of the same bytes.
#include "benchmarks.h"
#include "scenes.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

/// What plain calls take for the same bytes: `write` calls of 1 MiB of the scene's own file, held in memory, to a fresh
/// file in the same folder. `from_cache` writes one and the same MiB again and again instead, which stays in the
/// processor's cache: the least that any writing of so many bytes takes, whatever they are and wherever they lie.
void plain_write(benchmark::State& state, const std::string& scene, const std::string& scratch, bool from_cache)
{
    constexpr std::size_t call_size = 1 << 20;
    std::vector<char> content(std::filesystem::file_size(scene));
    if (!std::ifstream(scene, std::ios::binary).read(content.data(), std::streamsize(content.size())))
        state.SkipWithError("the scene cannot be read");
    for (auto _ : state) {
        const int file = ::open(scratch.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        for (std::size_t done = 0; done < content.size();) {
            const std::size_t part = std::min(content.size() - done, call_size);
            if (::write(file, content.data() + (from_cache ? 0 : done), part) != ssize_t(part))
                state.SkipWithError("write failed");
            done += part;
        }
        ::close(file);
    }
    state.counters["bytes"] = double(content.size());
    std::filesystem::remove(scratch);
}

void write_scene(benchmark::State& state, SceneWriter (*make_scene)(), const std::string& scratch)
{
    const SceneWriter writer = make_scene();
    for (auto _ : state)
        writer(scratch);
    state.counters["bytes"] = double(std::filesystem::file_size(scratch));
    std::filesystem::remove(scratch);
}

} // namespace

void register_writing_benchmarks(const std::string& scenes)
{
    const struct
    {
        const char* name;
        SceneWriter (*make_scene)();
    } kinds[] = {{"mesh", make_mesh_scene}, {"points", make_points_scene}, {"curves", make_curves_scene}};
    for (const auto& kind : kinds) {
        const std::string scene = scenes + "/" + kind.name + ".abc", scratch = scenes + "/scratch.tmp";
        const auto add = [&](const char* task, auto... arguments) {
            benchmark::RegisterBenchmark((std::string(task) + kind.name).c_str(), arguments...)
                ->Iterations(1)
                ->Repetitions(5)
                ->Unit(benchmark::kMillisecond);
        };
        add("copy.write_calls.", plain_write, scene, scratch, false);
        add("write_calls.cached.", plain_write, scene, scratch, true);
        add("write.", write_scene, kind.make_scene, scratch);
    }
}
