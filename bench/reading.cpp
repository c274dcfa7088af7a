/// Reading through the module, against a copy of the bytes that it delivers.
#include "benchmarks.h"

#include <abc_deformation_header.h>
#include <abc_input.h>
#include <abc_input_archive_handle.h>

#include <Alembic/AbcCoreFactory/All.h>
#include <Alembic/AbcGeom/All.h>
#include <benchmark/benchmark.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>

#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Points = CoreArray<GMathVec3<float>>;

struct Mesh
{
    Points positions, velocities;
    CoreArray<unsigned int> face_indices, face_counts, face_groups;
    CoreArray<CoreString> group_names;
    CoreArray<GeometryUvMap> uv_maps;
    CoreArray<GeometryNormalMap> normal_maps;
    CoreVector<CoreString> property_names;

    bool load(const AbcFileList& files)
    {
        return AbcInput::load_mesh(files, "/root/grid", 0.1, positions, velocities, face_indices, face_counts,
                                   face_groups, group_names, uv_maps, normal_maps, property_names, nullptr);
    }

    double bytes() const
    {
        const auto size = [](const auto& array) { return double(array.get_count()) * double(sizeof(array[0])); };
        double sum = size(positions) + size(velocities) + size(face_indices) + size(face_counts);
        for (const auto& map : uv_maps)
            sum += size(map.values) + size(map.indices);
        for (const auto& map : normal_maps)
            sum += size(map.values) + size(map.indices);
        return sum;
    }
};

/// A user of an archive for the whole program, as a host has them.
struct OpenArchive
{
    explicit OpenArchive(const std::string& path)
        : files(CoreString(path))
        , handle(AbcInput::get_archive(files))
    {
    }
    ~OpenArchive() { AbcInput::release_archive(handle.get()); }

    AbcFileList files;
    std::unique_ptr<AbcInputArchiveHandle> handle;
};

void copy_bytes(benchmark::State& state, std::size_t bytes)
{
    const std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 2);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::ClobberMemory();
    }
    state.counters["bytes"] = double(bytes);
}

void load_mesh_reuse(benchmark::State& state, const std::string& path)
{
    const OpenArchive archive(path);
    Mesh mesh;
    mesh.load(archive.files);
    for (auto _ : state)
        if (!mesh.load(archive.files)) state.SkipWithError("cannot load");
    state.counters["bytes"] = mesh.bytes();
}

void load_mesh_open(benchmark::State& state, const std::string& path)
{
    const AbcFileList files{CoreString(path)};
    double bytes = 0.0;
    for (auto _ : state) {
        Mesh mesh;
        if (!mesh.load(files)) state.SkipWithError("cannot load");
        bytes = mesh.bytes();
    }
    state.counters["bytes"] = bytes;
}

using BindObject = bool (*)(AbcInputArchiveHandle&, const CoreString&, AbcDeformationHeader&);
using Evaluate = bool (*)(const AbcInputArchiveHandle&, const double&, Points&, Points&, bool);

/// Evaluates between two samples, on `threads` handles at once.
void deform(benchmark::State& state, const std::string& path, const std::string& object, BindObject bind,
            Evaluate evaluate, double time, int threads)
{
    std::vector<std::unique_ptr<OpenArchive>> archives;
    std::vector<std::pair<Points, Points>> outputs(static_cast<std::size_t>(threads));
    for (int i = 0; i < threads; ++i) {
        archives.push_back(std::make_unique<OpenArchive>(path));
        AbcDeformationHeader header;
        if (!bind(*archives.back()->handle, CoreString(object), header)) state.SkipWithError("cannot bind");
    }
    const auto run = [&](std::size_t i) {
        evaluate(*archives[i]->handle, time, outputs[i].first, outputs[i].second, false);
    };
    for (auto _ : state) {
        std::vector<std::thread> others;
        for (std::size_t i = 1; i < outputs.size(); ++i)
            others.emplace_back(run, i);
        run(0);
        for (std::thread& other : others)
            other.join();
    }
    // One evaluation's bytes, also for several threads: they are to take hardly longer than one.
    state.counters["bytes"] = double(outputs[0].first.get_count()) * 24.0;
}

/// The readings of one mesh of the hierarchy over and over; 10,000 small meshes, one evaluation each.
void deform_small_meshes(benchmark::State& state, const std::string& path)
{
    const OpenArchive archive(path);
    Points positions, velocities;
    AbcDeformationHeader header;
    for (auto _ : state)
        for (int group = 0; group < 40; ++group)
            for (int prop = 0; prop < 250; ++prop) {
                const std::string object = "/group" + std::to_string(group) + "/prop" + std::to_string(prop) + "/shape";
                AbcInput::get_mesh_deformation_header(*archive.handle, CoreString(object), header);
                AbcInput::evaluate_mesh_deformation(*archive.handle, 0.05, positions, velocities, false);
            }
}

std::size_t mesh_bytes(const std::string& path)
{
    Mesh mesh;
    return mesh.load(AbcFileList{CoreString(path)}) ? std::size_t(mesh.bytes()) : 0;
}

template <class Function, class... Arguments>
void add(const char* name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)->Unit(benchmark::kMillisecond)->Repetitions(5);
}

} // namespace

void register_reading_benchmarks(const std::string& scenes)
{
    AbcInput::init(nullptr);
    const std::string mesh = scenes + "/mesh.abc", points = scenes + "/points.abc", curves = scenes + "/curves.abc";
    add("copy.mesh", copy_bytes, mesh_bytes(mesh));
    add("load_mesh.reuse", load_mesh_reuse, mesh);
    add("load_mesh.open", load_mesh_open, mesh);
    add("copy.mesh_deform", copy_bytes, std::size_t(1001 * 1001 * 24));
    add("deform.mesh", deform, mesh, std::string("/root/grid"), AbcInput::get_mesh_deformation_header,
        AbcInput::evaluate_mesh_deformation, 0.1, 1);
    add("deform.mesh.two_threads", deform, mesh, std::string("/root/grid"), AbcInput::get_mesh_deformation_header,
        AbcInput::evaluate_mesh_deformation, 0.1, 2);
    add("copy.points_deform", copy_bytes, std::size_t(2'000'000 * 24));
    add("deform.points", deform, points, std::string("/cloud"), AbcInput::get_point_deformation_header,
        AbcInput::evaluate_point_deformation, 0.06, 1);
    add("copy.curves_deform", copy_bytes, std::size_t(1'600'000 * 24));
    add("deform.curves", deform, curves, std::string("/hair"), AbcInput::get_curve_deformation_header,
        AbcInput::evaluate_curve_deformation, 0.06, 1);
    add("deform.10000_small_meshes", deform_small_meshes, scenes + "/hierarchy.abc");
}
