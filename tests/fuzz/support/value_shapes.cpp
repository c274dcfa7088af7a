/// Sound storage with values that contradict each other.
#include "shape_maker.h"

#include <cstdint>
#include <limits>

namespace vo_fuzz {

namespace {

constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min(),
                       most = std::numeric_limits<std::int32_t>::max();

template <class Edit>
void add_for_arrays(ShapeMaker& maker, const std::string& name, const Edit& edit)
{
    maker.add(name, [&](ArchiveTree& tree) {
        for (const char* path : {".geom/P", ".geom/.faceIndices", ".geom/uv/.vals"})
            edit(tree, path);
    });
}

void add_dimensions(ShapeMaker& maker)
{
    const std::pair<const char*, std::string> dimensions[] = {
        {"smaller_than_data", bytes_of<std::uint64_t>({2})},
        {"larger_than_data", bytes_of<std::uint64_t>({1000000})},
        {"that_wrap", bytes_of<std::uint64_t>({std::uint64_t(1) << 32, std::uint64_t(1) << 32})},
        {"that_wrap_to_size", bytes_of<std::uint64_t>({(std::uint64_t(1) << 63) + 5, 2})},
        {"all_ones", bytes_of<std::uint64_t>({~std::uint64_t(0)})},
        {"with_zero", bytes_of<std::uint64_t>({0, ~std::uint64_t(0)})},
        {"of_three_bytes", "abc"},
        {"of_rank_500", std::string(4000, '\1')},
    };
    for (const auto& [name, bytes] : dimensions) {
        add_for_arrays(maker, std::string("dimensions_") + name, [bytes = bytes](ArchiveTree& tree, const char* path) {
            tree.array_dimensions("/root/mesh", path).bytes = bytes;
        });
        maker.add_full(std::string("dimensions_of_texts_") + name, [bytes = bytes](ArchiveTree& tree) {
            tree.array_dimensions("/root", ".xform/.userProperties/words").bytes = bytes;
            tree.array_dimensions("/root", ".xform/.userProperties/wides").bytes = bytes;
        });
    }
    add_for_arrays(maker, "samples_of_odd_size",
                   [](ArchiveTree& tree, const char* path) { tree.array_data("/root/mesh", path).bytes.pop_back(); });
    add_for_arrays(maker, "samples_shorter_than_a_digest",
                   [](ArchiveTree& tree, const char* path) { tree.array_data("/root/mesh", path).bytes.resize(9); });
    add_for_arrays(maker, "samples_of_a_digest_only",
                   [](ArchiveTree& tree, const char* path) { tree.array_data("/root/mesh", path).bytes.resize(16); });
    maker.add("scalars_of_wrong_size", [](ArchiveTree& tree) {
        tree.scalar_data("/root/mesh", ".geom/.selfBnds").bytes.resize(30);
        tree.scalar_data("/root", ".xform/.vals").bytes.resize(20);
        tree.scalar_data("/root/curves", ".geom/curveBasisAndType").bytes += "more";
    });
}

void add_texts(ShapeMaker& maker)
{
    const auto set_texts = [&](const std::string& name, const std::string& narrow, const std::string& wide) {
        maker.add_full("texts_" + name, [&](ArchiveTree& tree) {
            const std::string user = ".xform/.userProperties/";
            tree.scalar_data("/root", user + "wide").bytes = sample_of(wide);
            tree.array_data("/root", user + "words").bytes = sample_of(narrow);
            tree.array_data("/root", user + "wides").bytes = sample_of(wide);
            tree.scalar_data("/root/mesh", ".geom/.userProperties/word").bytes = sample_of(narrow);
            tree.scalar_data("/root/subd", ".geom/.scheme").bytes = sample_of(narrow);
        });
    };
    set_texts("without_terminators", "onetwo", bytes_of({111u, 110u, 101u}));
    set_texts("with_too_many_terminators", std::string(500, '\0'), std::string(500, '\0'));
    set_texts("of_odd_size", std::string("a\0b\0c", 5), bytes_of({111u, 0u, 0u, 0u}) + "abc");
    set_texts("of_no_character_set", "\xff\xfe\x80" + std::string(3, '\0'),
              bytes_of({0xffffffffu, 0u, 0xd800u, 0u, 0x110000u, 0u}));
    set_texts("empty", "", "");
}

void add_meshes(ShapeMaker& maker)
{
    const auto set = [&](const std::string& name, std::initializer_list<std::int32_t> counts,
                         std::initializer_list<std::int32_t> indices) {
        maker.add("mesh_" + name, [&](ArchiveTree& tree) {
            tree.array_data("/root/mesh", ".geom/.faceCounts").bytes = sample_of(counts);
            tree.array_data("/root/mesh", ".geom/.faceIndices").bytes = sample_of(indices);
        });
        maker.add_full("subdivision_" + name, [&](ArchiveTree& tree) {
            tree.array_data("/root/subd", ".geom/.faceCounts").bytes = sample_of(counts);
            tree.array_data("/root/subd", ".geom/.faceIndices").bytes = sample_of(indices);
        });
    };
    set("counts_negative", {-4, 3}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_negative_but_right_in_sum", {-1, 8}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_wrap_to_the_sum", {most, most, 9}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_of_least", {least, least, 7}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_too_large", {4, 4}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_too_small", {2, 2}, {0, 1, 2, 3, 0, 1, 4});
    set("counts_of_zero", {0, 0, 7}, {0, 1, 2, 3, 0, 1, 4});
    set("index_of_point_count", {4, 3}, {0, 1, 2, 3, 0, 1, 5});
    set("index_above_point_count", {4, 3}, {0, 1, 2, 3, 0, 1, 6});
    set("indices_far_out", {4, 3}, {most, least, -1, 1 << 30, 0, 1, 4});
    set("without_faces", {}, {});
    set("indices_without_faces", {}, {0, 1, 2});
    maker.add("mesh_without_points", [](ArchiveTree& tree) {
        for (std::size_t i = 0; i < 3; ++i)
            tree.array_data("/root/mesh", ".geom/P", i).bytes.clear();
    });
    maker.add("mesh_points_of_samples_differ", [](ArchiveTree& tree) {
        tree.array_data("/root/mesh", ".geom/P", 1).bytes.resize(16 + 12);
        tree.array_data("/root/mesh", ".geom/P", 2).bytes.append(1200, '\1');
    });
    maker.add("mesh_face_set_out_of_range", [](ArchiveTree& tree) {
        tree.array_data("/root/mesh/half", ".faceset/.faces").bytes = sample_of({-1, 2, most, least, 0, 0, 1});
    });
    maker.add_full("subdivision_creases_absurd", [](ArchiveTree& tree) {
        tree.array_data("/root/subd", ".geom/.creaseIndices").bytes = sample_of({-1, most, least});
        tree.array_data("/root/subd", ".geom/.creaseLengths").bytes = sample_of({most, most, -7});
        tree.array_data("/root/subd", ".geom/.cornerIndices").bytes = sample_of({-1});
        tree.array_data("/root/subd", ".geom/.holes").bytes = sample_of({most});
    });
    const auto set_parameter = [&](const std::string& name, const std::string& values, const std::string& indices) {
        maker.add("parameter_" + name, [&](ArchiveTree& tree) {
            tree.array_data("/root/mesh", ".geom/uv/.vals").bytes = values;
            tree.array_data("/root/mesh", ".geom/uv/.indices").bytes = indices;
        });
        maker.add_full("colour_" + name, [&](ArchiveTree& tree) {
            tree.array_data("/root", ".xform/.arbGeomParams/colour/.vals").bytes = values;
            tree.array_data("/root", ".xform/.arbGeomParams/colour/.indices").bytes = indices;
        });
    };
    const std::string two = sample_of({0.f, 0.f, 1.f, 1.f, 0.f, 1.f}), seven = sample_of({0u, 1u, 0u, 1u, 0u, 1u, 0u});
    set_parameter("indices_beyond_values", two, sample_of({0u, 1u, 2u, 3u, 4u, 5u, 0xffffffffu}));
    set_parameter("without_values", "", seven);
    set_parameter("without_indices", two, "");
    set_parameter("of_fewer_indices", two, sample_of({0u, 1u}));
}

void add_curves_and_points(ShapeMaker& maker)
{
    const auto set_counts = [&](const std::string& name, std::initializer_list<std::int32_t> counts) {
        maker.add_full("curves_" + name, [&](ArchiveTree& tree) {
            tree.array_data("/root/curves", ".geom/nVertices").bytes = sample_of(counts);
        });
    };
    set_counts("of_negative_counts", {-2, 7});
    set_counts("of_counts_that_wrap", {most, most, 7});
    set_counts("of_too_many_points", {2, 4});
    set_counts("of_no_points", {0, 0, 0});
    maker.add_full("curves_of_unknown_kind", [](ArchiveTree& tree) {
        tree.scalar_data("/root/curves", ".geom/curveBasisAndType").bytes = sample_of("\xff\x80\x7f\xfe");
        tree.array_data("/root/curves", ".geom/.orders").bytes = sample_of("\xff");
        tree.array_data("/root/curves", ".geom/.knots").bytes.resize(20);
        tree.array_data("/root/curves", ".geom/w").bytes.resize(20);
        tree.array_data("/root/curves", ".geom/width").bytes.resize(20);
        tree.array_data("/root/curves", ".geom/.velocities").bytes.resize(28);
        tree.array_data("/root/curves", ".geom/N").bytes.resize(28);
        tree.array_data("/root/curves", ".geom/uv/.indices").bytes = sample_of({7u, 0u, 1u, 2u, 0xffffffffu});
    });
    maker.add("points_of_uneven_arrays", [](ArchiveTree& tree) {
        tree.array_data("/root/points", ".geom/.pointIds").bytes.resize(24);
        tree.array_data("/root/points", ".geom/.velocities").bytes.resize(28);
        tree.array_data("/root/points", ".geom/P", 1).bytes.append(12, '\0');
    });
    maker.add("points_not_numbers", [](ArchiveTree& tree) {
        tree.array_data("/root/points", ".geom/P").bytes = sample_of(std::string(60, '\xff'));
        tree.scalar_data("/root/points", ".geom/.selfBnds").bytes = sample_of(std::string(48, '\xff'));
    });
}

/// The single sample of `.ops`, with as many bytes as operations.
void set_operations(ArchiveTree& tree, const std::string& operations)
{
    tree.scalar_data("/root", ".xform/.ops").bytes = sample_of(operations);
    tree.edit_header("/root", ".xform/.ops",
                     [&](auto& p) { p.set_extent(static_cast<std::uint32_t>(operations.size())); });
}

void add_transforms_and_cameras(ShapeMaker& maker)
{
    maker.add("transform_of_more_operations_than_channels",
              [](ArchiveTree& tree) { set_operations(tree, std::string(255, '\x30')); });
    maker.add("transform_of_fewer_operations_than_channels", [](ArchiveTree& tree) { set_operations(tree, "\x50"); });
    maker.add("transform_of_unknown_operations",
              [](ArchiveTree& tree) { set_operations(tree, "\xff\x70\x1f\x3e\x9a"); });
    maker.add("transform_not_of_numbers", [](ArchiveTree& tree) {
        tree.scalar_data("/root", ".xform/.vals").bytes = sample_of(std::string(56, '\xff'));
    });
    maker.add("transform_moving_channels_out_of_range", [](ArchiveTree& tree) {
        tree.array_data("/root", ".xform/.animChans").bytes = sample_of({0xffffffffu, 7u, 1000000u});
    });
    maker.add_full("camera_operations_without_channels", [](ArchiveTree& tree) {
        tree.scalar_data("/root/camera", ".geom/.filmBackOps").bytes = sample_of(std::string("m\0", 2));
        tree.scalar_data("/root/camera", ".geom/.filmBackChannels").bytes = sample_of(std::string(32, '\xff'));
    });
    maker.add_full("camera_not_of_numbers", [](ArchiveTree& tree) {
        tree.scalar_data("/root/camera", ".geom/.core").bytes = sample_of(std::string(128, '\xff'));
    });
    maker.add_full("visibility_of_no_value",
                   [](ArchiveTree& tree) { tree.scalar_data("/root", "visible").bytes = sample_of("\x77"); });
}

void add_instances(ShapeMaker& maker)
{
    const auto point_copy_to = [&](const std::string& name, const std::string& source) {
        maker.add_full("instance_of_" + name, [&](ArchiveTree& tree) {
            tree.scalar_data("/root/copy", ".instanceSource").bytes = sample_of(source + '\0');
        });
    };
    point_copy_to("itself", "/root/copy");
    point_copy_to("what_is_below_itself", "/root/copy/mesh");
    point_copy_to("its_parent", "/root");
    point_copy_to("the_top", "/");
    point_copy_to("nothing", "/no/such/object");
    point_copy_to("an_empty_name", "");
    maker.add_bytes("instances_of_instances", scene_of_nested_instances(1), Shape::OPENS);
    maker.add_bytes("instances_of_instances_of_long_names", scene_of_nested_instances(400), Shape::OPENS);
}

} // namespace

std::vector<Shape> value_shapes()
{
    ShapeMaker maker;
    add_dimensions(maker);
    add_texts(maker);
    add_meshes(maker);
    add_curves_and_points(maker);
    add_transforms_and_cameras(maker);
    add_instances(maker);
    return maker.take();
}

std::vector<Shape> all_shapes()
{
    std::vector<Shape> all = container_shapes();
    for (const auto& more : {header_shapes(), value_shapes()})
        all.insert(all.end(), more.begin(), more.end());
    return all;
}

} // namespace vo_fuzz
