/// Damage to the container and its tree.
#include "shape_maker.h"

#include <algorithm>
#include <cstdint>

namespace vo_fuzz {

namespace {

constexpr std::uint64_t data_bit = 0x8000000000000000;

void add_sizes(ShapeMaker& maker)
{
    const std::pair<const char*, std::uint64_t> sizes[] = {
        {"one_more_than_file", maker.small_scene_bytes().size() + 1},
        {"a_terabyte", std::uint64_t(1) << 40},
        {"all_ones", ~std::uint64_t(0)},
        {"wraps_with_offset", ~std::uint64_t(0) - 64},
        {"zero", 0},
    };
    for (const auto& [name, size] : sizes) {
        maker.add(std::string("data_size_") + name,
                  [size = size](ArchiveTree& tree) { tree.array_data("/root/mesh", ".geom/P").stated_size = size; });
        maker.add(std::string("header_size_") + name, [size = size](ArchiveTree& tree) {
            tree.headers_block(tree.property("/root/mesh", ".geom")).stated_size = size;
        });
    }
    const std::pair<const char*, std::uint64_t> counts[] = {
        {"of_file_size", maker.small_scene_bytes().size()},
        {"times_8_is_file_size", maker.small_scene_bytes().size() / 8},
        {"times_8_wraps", (std::uint64_t(1) << 61) + 2},
        {"all_ones", ~std::uint64_t(0)},
        {"zero", 0},
    };
    for (const auto& [name, count] : counts) {
        maker.add(std::string("group_count_") + name, [count = count](ArchiveTree& tree) {
            tree.blocks.at(tree.property("/root/mesh", ".geom")).stated_size = count;
        });
        maker.add_refused(std::string("root_count_") + name,
                          [count = count](ArchiveTree& tree) { tree.blocks.at(tree.root).stated_size = count; });
    }
}

void add_references(ShapeMaker& maker)
{
    const std::pair<const char*, std::uint64_t> entries[] = {{"beyond_the_file", std::uint64_t(1) << 40},
                                                             {"into_the_header", 8},
                                                             {"at_the_last_byte", maker.small_scene_bytes().size() - 1},
                                                             {"all_ones", ~std::uint64_t(0)}};
    for (const auto& [name, entry] : entries) {
        maker.add(std::string("sample_") + name, [entry = entry](ArchiveTree& tree) {
            const BlockId target = tree.add_entry(entry | data_bit);
            tree.blocks.at(tree.property("/root/mesh", ".geom/P")).children.at(0) = target;
        });
        maker.add(std::string("object_") + name, [entry = entry](ArchiveTree& tree) {
            const BlockId target = tree.add_entry(entry & ~data_bit);
            tree.blocks.at(tree.object("/root")).children.at(1) = target;
        });
        maker.add(std::string("compound_") + name, [entry = entry](ArchiveTree& tree) {
            const BlockId target = tree.add_entry(entry & ~data_bit);
            tree.blocks.at(tree.object("/root/mesh")).children.at(0) = target;
        });
    }
    maker.add("object_headers_in_the_file_header", [](ArchiveTree& tree) {
        const BlockId target = tree.add_entry(8 | data_bit);
        tree.blocks.at(tree.object("/root")).children.back() = target;
    });
    maker.add("property_headers_in_the_file_header", [](ArchiveTree& tree) {
        const BlockId target = tree.add_entry(8 | data_bit);
        tree.blocks.at(tree.property("/root/mesh", ".geom")).children.back() = target;
    });
    maker.add("properties_without_groups", [](ArchiveTree& tree) {
        const BlockId data = tree.add_data("data");
        std::vector<BlockId>& geom = tree.blocks.at(tree.property("/root/mesh", ".geom")).children;
        std::fill(geom.begin(), geom.end() - 1, data);
        tree.blocks.at(tree.object("/root/points")).children.at(0) = data;
    });
    maker.add("data_where_a_group_belongs", [](ArchiveTree& tree) {
        const BlockId data = tree.add_data("data");
        tree.blocks.at(tree.object("/root/mesh")).children.at(0) = data;
        tree.blocks.at(tree.property("/root/points", ".geom")).children.at(1) = data;
    });
    maker.add("group_where_data_belong", [](ArchiveTree& tree) {
        const BlockId group = tree.object("/root/mesh");
        tree.blocks.at(tree.property("/root/mesh", ".geom/P")).children.at(0) = group;
        tree.blocks.at(tree.property("/root/points", ".geom/P")).children.at(1) = group;
    });
    maker.add("samples_missing", [](ArchiveTree& tree) {
        tree.blocks.at(tree.property("/root/mesh", ".geom/P")).children.resize(3);
        tree.blocks.at(tree.property("/root/mesh", ".geom/.selfBnds")).children.resize(1);
        tree.blocks.at(tree.property("/root/points", ".geom/P")).children.clear();
    });
}

void add_cycles(ShapeMaker& maker)
{
    maker.add("object_is_its_own_child", [](ArchiveTree& tree) {
        const BlockId root = tree.object("/root");
        tree.blocks.at(root).children.at(1) = root;
    });
    maker.add("object_is_its_own_grandchild", [](ArchiveTree& tree) {
        const BlockId root = tree.object("/root"), mesh = tree.object("/root/mesh");
        tree.blocks.at(mesh).children.at(1) = root;
    });
    maker.add_refused("root_group_is_the_top_object",
                      [](ArchiveTree& tree) { tree.blocks.at(tree.root).children.at(2) = tree.root; });
    maker.add("compound_is_its_own_child", [](ArchiveTree& tree) {
        const BlockId geom = tree.property("/root/mesh", ".geom");
        tree.blocks.at(geom).children.at(4) = geom;
        tree.edit_header("/root/mesh", ".geom/uv", [](StoredProperty& property) { property.set_pod(0); });
    });
    maker.add("user_properties_contain_their_schema", [](ArchiveTree& tree) {
        BlockId geom = tree.property("/root/mesh", ".geom"),
                user = tree.property("/root/mesh", ".geom/.userProperties");
        std::vector<StoredProperty> headers = tree.headers(user);
        headers.at(0) = StoredProperty();
        headers.at(0).name = "loop";
        tree.headers_block(user).bytes = encode_property_headers(headers);
        tree.blocks.at(user).children.at(0) = geom;
    });
}

/// Each level has two children, and both are the next level: 2 to the power of 60 objects, or properties.
void add_unfolding(ShapeMaker& maker)
{
    maker.add("shared_objects_unfold", [](ArchiveTree& tree) {
        const BlockId headers =
            tree.add_data(encode_object_headers({{"a", 0, ""}, {"b", 0, ""}}) + std::string(32, 'h'));
        BlockId level = tree.add_group({});
        const BlockId no_properties = level;
        for (int i = 0; i < 60; ++i)
            level = tree.add_group({no_properties, level, level, headers});
        tree.blocks.at(tree.object("/root")).children.at(3) = level;
    });
    const auto two_compounds = [](ArchiveTree& tree) {
        StoredProperty a, b;
        a.name = "a";
        b.name = "b";
        const BlockId headers = tree.add_data(encode_property_headers({a, b}));
        BlockId level = tree.add_group({});
        for (int i = 0; i < 60; ++i)
            level = tree.add_group({level, level, headers});
        return level;
    };
    maker.add("shared_user_properties_unfold", [&](ArchiveTree& tree) {
        const BlockId unfolding = two_compounds(tree), geom = tree.property("/root/mesh", ".geom");
        for (std::size_t i = 0; i < tree.headers(geom).size(); ++i)
            if (tree.headers(geom)[i].name == ".userProperties") tree.blocks.at(geom).children.at(i) = unfolding;
    });
    maker.add("shared_parameters_unfold", [&](ArchiveTree& tree) {
        const BlockId unfolding = two_compounds(tree), geom = tree.property("/root/mesh", ".geom");
        for (std::size_t i = 0; i < tree.headers(geom).size(); ++i)
            if (tree.headers(geom)[i].name == ".userProperties") tree.blocks.at(geom).children.at(i) = unfolding;
        tree.edit_header("/root/mesh", ".geom/.userProperties",
                         [](StoredProperty& property) { property.name = ".arbGeomParams"; });
    });
    maker.add("one_block_many_samples", [](ArchiveTree& tree) {
        const BlockId positions = tree.property("/root/mesh", ".geom/P");
        std::vector<BlockId>& samples = tree.blocks.at(positions).children;
        while (samples.size() < 2000)
            samples.insert(samples.end(), samples.begin(), samples.begin() + 2);
        tree.edit_header("/root/mesh", ".geom/P", [](StoredProperty& property) { property.set_samples(1000, 1, 999); });
    });
}

/// Headers in the metadata of headers, and so on: each block holds the next one, and is told of as one of its own.
void add_overlapping(ShapeMaker& maker)
{
    maker.add("property_headers_overlap", [](ArchiveTree& tree) {
        constexpr int levels = 60;
        StoredProperty compound;
        compound.set_metadata_index(255);
        compound.name = "c";
        compound.metadata = std::string(100, 'm');
        std::string headers = encode_property_headers({compound});
        for (int i = 1; i < levels; ++i) {
            compound.metadata = bytes_of<std::uint64_t>({headers.size()}) + headers;
            headers = encode_property_headers({compound});
        }
        const BlockId none = tree.add_group({});
        std::vector<BlockId> groups;
        std::vector<StoredProperty> names;
        for (std::uint64_t i = 0; i < levels; ++i) {
            // The blocks follow the file's header of 16 bytes; 13 bytes of headers stand between two of them.
            groups.push_back(tree.add_group({none, tree.add_entry((16 + i * (8 + 13)) | data_bit)}));
            names.emplace_back();
            names.back().name = "compound" + std::to_string(i);
        }
        groups.push_back(tree.add_data(encode_property_headers(names)));
        tree.blocks.at(tree.object("/root/mesh")).children.at(0) = tree.add_group(groups);
        tree.add_data(headers); // added last: written first
    });
}

void add_completeness(ShapeMaker& maker)
{
    maker.add_refused("never_completed", [](ArchiveTree& tree) { tree.header[5] = 0; });
    maker.add_refused("completed_half", [](ArchiveTree& tree) { tree.header[5] = 1; });
    maker.add_refused("container_from_the_future", [](ArchiveTree& tree) { tree.header[7] = 2; });
    maker.add_refused("no_root", [](ArchiveTree& tree) { tree.root = tree.add_entry(0); });
    maker.add_refused("root_is_data", [](ArchiveTree& tree) { tree.root = tree.add_data("data"); });
    const std::string& scene = maker.small_scene_bytes();
    maker.add_bytes("empty", "", Shape::IS_REFUSED);
    maker.add_bytes("other_letters", "Ogamw" + scene.substr(5), Shape::IS_REFUSED);
    maker.add_bytes("cut_in_the_header", scene.substr(0, 11), Shape::IS_REFUSED);
    maker.add_bytes("cut_in_the_middle", scene.substr(0, scene.size() / 2), Shape::IS_REFUSED);
    maker.add_bytes("last_byte_missing", scene.substr(0, scene.size() - 1), Shape::IS_REFUSED);
}

/// Shared headers where all that counts is the depth; headers of its own for each object when its name is to count.
std::string nested(bool objects, int depth, const std::string& own_name = "")
{
    ArchiveTree tree(small_scene());
    StoredProperty property;
    property.name = "c";
    const auto add_headers = [&](const std::string& name) {
        return tree.add_data(objects ? encode_object_headers({{name, 0, ""}}) + std::string(object_hashes_size, 'h')
                                     : encode_property_headers({property}));
    };
    const BlockId none = tree.add_group({}), headers = add_headers("o");
    BlockId level = none;
    for (int i = 0; i < depth; ++i) {
        const BlockId own = own_name.empty() ? headers : add_headers(own_name);
        level = objects ? tree.add_group({none, level, own}) : tree.add_group({level, own});
    }
    tree.blocks.at(objects ? tree.blocks.at(tree.root).children.at(2) : tree.object("/root")).children.at(objects) =
        level;
    return tree.file();
}

} // namespace

std::string a_million_objects_deep()
{
    return nested(true, 1000000);
}

std::string a_million_compounds_deep()
{
    return nested(false, 1000000);
}

std::vector<Shape> container_shapes()
{
    ShapeMaker maker;
    add_sizes(maker);
    add_references(maker);
    add_cycles(maker);
    add_unfolding(maker);
    add_overlapping(maker);
    add_completeness(maker);
    maker.add_bytes("nested_objects", nested(true, 1300), Shape::OPENS);
    maker.add_bytes("nested_compounds", nested(false, 1300), Shape::OPENS);
    maker.add_bytes("nested_objects_of_long_names", nested(true, 1200, std::string(30, 'n')), Shape::OPENS);
    return maker.take();
}

} // namespace vo_fuzz
