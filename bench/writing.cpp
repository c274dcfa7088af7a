/// Writing whole scenes, against plain `write` calls of the same bytes.
#include "benchmarks.h"
#include "scenes.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

/// Time of `write` calls of 1 MiB for as many bytes as the scene has.
void plain_write(benchmark::State& state, const std::string& scene, const std::string& scratch)
{
    const auto size = std::filesystem::file_size(scene);
    const std::vector<char> chunk(1 << 20, 'x');
    for (auto _ : state) {
        const int file = ::open(scratch.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
        for (std::uintmax_t left = size; left > 0;) {
            const auto part = std::min<std::uintmax_t>(left, chunk.size());
            if (::write(file, chunk.data(), part) != ssize_t(part)) state.SkipWithError("write failed");
            left -= part;
        }
        ::close(file);
    }
    state.counters["bytes"] = double(size);
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
        benchmark::RegisterBenchmark((std::string("copy.write_calls.") + kind.name).c_str(), plain_write, scene,
                                     scratch)
            ->Iterations(1)
            ->Repetitions(3)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((std::string("write.") + kind.name).c_str(), write_scene, kind.make_scene, scratch)
            ->Iterations(1)
            ->Repetitions(3)
            ->Unit(benchmark::kMillisecond);
    }
}
