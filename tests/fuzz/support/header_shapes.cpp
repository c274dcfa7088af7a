/// Damage to headers and tables of the Alembic layer.
#include "shape_maker.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace vo_fuzz {

namespace {

void add_names(ShapeMaker& maker)
{
    const std::pair<const char*, std::string> names[] = {
        {"empty", ""},
        {"a_slash", "/"},
        {"with_a_slash", "a/b"},
        {"with_separators", "a;b=c"},
        {"dots", ".."},
        {"with_zero", std::string("a\0b", 3)},
        {"no_text", "\xff\xfe\x80"},
        {"long", std::string(20000, 'x')},
    };
    for (const auto& [kind, name] : names) {
        maker.add(std::string("object_name_") + kind, [name = name](ArchiveTree& tree) {
            tree.edit_children("/root", [&](std::vector<StoredObject>& objects) { objects.at(0).name = name; });
        });
        maker.add(std::string("property_name_") + kind, [name = name](ArchiveTree& tree) {
            tree.edit_header("/root/mesh", ".geom/.userProperties/word",
                             [&](StoredProperty& property) { property.name = name; });
        });
    }
    maker.add("two_objects_of_one_name", [](ArchiveTree& tree) {
        tree.edit_children("/root",
                           [](std::vector<StoredObject>& objects) { objects.at(1).name = objects.at(0).name; });
    });
    maker.add("two_properties_of_one_name", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/.faceCounts", [](StoredProperty& property) { property.name = "P"; });
        tree.edit_header("/root/mesh", ".geom/.userProperties/word",
                         [](StoredProperty& property) { property.name = "number"; });
    });
    maker.add("more_object_headers_than_objects", [](ArchiveTree& tree) {
        tree.edit_children("/root", [](std::vector<StoredObject>& objects) { objects.resize(2000, objects.at(0)); });
    });
    maker.add("more_property_headers_than_properties", [](ArchiveTree& tree) {
        Block& block = tree.headers_block(tree.property("/root/mesh", ".geom"));
        block.bytes += block.bytes;
    });
}

void add_metadata(ShapeMaker& maker)
{
    maker.add("object_metadata_not_in_the_table", [](ArchiveTree& tree) {
        tree.edit_children("/root", [](std::vector<StoredObject>& objects) { objects.at(0).metadata_index = 254; });
    });
    maker.add("property_metadata_not_in_the_table", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/P", [](StoredProperty& property) { property.set_metadata_index(200); });
    });
    maker.add("metadata_of_separators", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/P", [](StoredProperty& property) {
            property.set_metadata_index(255);
            property.metadata = "=;==;;a=;=b;a=b=c;" + std::string(300, ';');
        });
    });
    maker.add("parameter_metadata_absurd", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/uv", [](StoredProperty& property) {
            property.set_metadata_index(255);
            property.metadata = "isGeomParam=true;podName=float32_t;podExtent=99999999999999999999;arrayExtent=-1;"
                                "geoScope=fvr;interpretation=vector";
        });
    });
    maker.add_refused("metadata_table_cut", [](ArchiveTree& tree) { tree.child(tree.root, 5).bytes.pop_back(); });
    maker.add_refused("metadata_table_too_large",
                      [](ArchiveTree& tree) { tree.child(tree.root, 5).bytes.assign(65537, '\0'); });
    maker.add(
        "metadata_table_empty", [](ArchiveTree& tree) { tree.child(tree.root, 5).bytes.clear(); }, Shape::IS_REFUSED);
}

/// A property's type or extent other than its schema expects.
void add_types(ShapeMaker& maker)
{
    const std::pair<const char*, const char*> properties[] = {
        {"/root/mesh", ".geom/P"},
        {"/root/mesh", ".geom/.faceIndices"},
        {"/root/mesh", ".geom/.faceCounts"},
        {"/root/mesh", ".geom/.selfBnds"},
        {"/root/curves", ".geom/nVertices"},
        {"/root/curves", ".geom/curveBasisAndType"},
        {"/root/points", ".geom/.pointIds"},
        {"/root", ".xform/.vals"},
        {"/root", ".xform/.ops"},
        {"/root", ".xform/.inherits"},
    };
    const auto file_name = [](const char* object, const char* path) {
        std::string name = std::string(object) + "_" + path;
        for (char& character : name)
            if (character == '/' || character == '.') character = '_';
        return name;
    };
    for (const auto& [object, path] : properties) {
        const std::pair<const char*, void (*)(StoredProperty&)> edits[] = {
            {"as_text", [](StoredProperty& p) { p.set_pod(12); }},
            {"as_wide_text", [](StoredProperty& p) { p.set_pod(13); }},
            {"as_bytes_of_extent_255",
             [](StoredProperty& p) {
                 p.set_pod(1);
                 p.set_extent(255);
             }},
            {"as_doubles", [](StoredProperty& p) { p.set_pod(11); }},
            {"of_the_other_kind", [](StoredProperty& p) { p.info ^= 3; }},
            {"as_a_compound", [](StoredProperty& p) { p.info &= ~3u; }},
        };
        for (const auto& [kind, edit] : edits)
            maker.add("type" + file_name(object, path) + "_" + kind,
                      [object = object, path = path, edit = edit](ArchiveTree& tree) {
                          tree.edit_header(object, path, edit);
                      });
    }
    maker.add("pod_unknown",
              [](ArchiveTree& tree) { tree.edit_header("/root/mesh", ".geom/P", [](auto& p) { p.set_pod(15); }); });
    maker.add("extent_0",
              [](ArchiveTree& tree) { tree.edit_header("/root/mesh", ".geom/P", [](auto& p) { p.set_extent(0); }); });
}

void add_sample_counts(ShapeMaker& maker)
{
    struct Range
    {
        const char* name;
        std::uint32_t count, first, last;
    };
    const std::uint32_t most = 0xffffffff;
    for (const Range& range :
         {Range{"four_thousand_million", most, 1, most - 1}, Range{"many_of_few", most, 1, 2},
          Range{"backwards", 3, 2, 1}, Range{"last_beyond", 3, 1, 3}, Range{"all_ones", most, most, most},
          Range{"none", 0, 1, 2}, Range{"constant_many", most, 0, 0}}) {
        for (const char* path : {".geom/P", ".geom/.selfBnds"})
            maker.add(std::string("samples_") + range.name + (path[6] == 'P' ? "" : "_of_bounds"),
                      [&](ArchiveTree& tree) {
                          tree.edit_header("/root/mesh", path,
                                           [&](auto& p) { p.set_samples(range.count, range.first, range.last); });
                      });
        maker.add(std::string("transform_samples_") + range.name, [&](ArchiveTree& tree) {
            for (const char* path : {".xform/.inherits", ".xform/.vals", ".xform/.ops"})
                tree.edit_header("/root", path, [&](auto& p) { p.set_samples(range.count, range.first, range.last); });
        });
    }
    maker.add("time_sampling_not_there", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/P", [](auto& p) {
            p.info |= has_time_bit;
            p.time_sampling = 77;
        });
    });
}

std::string time_record(std::uint32_t most, double period, const std::vector<double>& times)
{
    std::string record = bytes_of({most}) + bytes_of({period}) + bytes_of({static_cast<std::uint32_t>(times.size())});
    return record.append(reinterpret_cast<const char*>(times.data()), times.size() * sizeof(double));
}

void add_time_samplings(ShapeMaker& maker)
{
    const double nan = std::nan(""), infinite = std::numeric_limits<double>::infinity();
    const double acyclic = std::numeric_limits<double>::max() / 32.0;
    const std::string identity = time_record(1, 1.0, {0.0});
    const auto add = [&](const std::string& name, const std::string& record, Shape::Opening opening) {
        maker.add(
            "times_" + name, [&](ArchiveTree& tree) { tree.child(tree.root, 4).bytes = identity + record; }, opening);
    };
    add("period_0", time_record(9, 0.0, {0.0}), Shape::IS_REFUSED);
    add("period_negative", time_record(9, -1.0, {0.0}), Shape::IS_REFUSED);
    add("period_nan", time_record(9, nan, {0.0}), Shape::IS_REFUSED);
    add("period_infinite", time_record(9, infinite, {0.0}), Shape::IS_REFUSED);
    add("period_tiny", time_record(9, 5e-324, {0.0}), Shape::OPENS);
    add("period_huge", time_record(0xffffffff, 1e300, {1e300}), Shape::OPENS);
    add("start_nan", time_record(9, 1.0, {nan}), Shape::OPENS);
    add("start_infinite", time_record(9, 1.0, {-infinite}), Shape::OPENS);
    add("falling", time_record(9, acyclic, {1.0, 0.0}), Shape::IS_REFUSED);
    add("cycle_of_nan", time_record(9, 1.0, {0.0, nan}), Shape::IS_REFUSED);
    add("acyclic_fewer_than_samples", time_record(9, acyclic, {0.5}), Shape::OPENS);
    add("none", time_record(9, 1.0, {}), Shape::IS_REFUSED);
    add("cut", identity.substr(0, 20), Shape::IS_REFUSED);
    add("cut_in_its_numbers", identity.substr(0, 7), Shape::IS_REFUSED);
    add("count_all_ones", bytes_of({1u}) + bytes_of({1.0}) + bytes_of({0xffffffffu}) + bytes_of({0.0}),
        Shape::IS_REFUSED);
    maker.add("times_missing", [](ArchiveTree& tree) { tree.child(tree.root, 4).bytes.clear(); });
}

void add_versions_and_cuts(ShapeMaker& maker)
{
    const auto set_version = [](std::size_t child, std::int32_t number) {
        return [=](ArchiveTree& tree) { tree.own_child(tree.root, child).bytes = bytes_of({number}); };
    };
    maker.add_refused("file_version_from_the_future", set_version(0, 1));
    maker.add_refused("file_version_negative", set_version(0, -1));
    maker.add_refused("library_version_too_old", set_version(1, 9998));
    maker.add("library_version_from_the_future", set_version(1, 0x7fffffff));
    maker.add_refused("root_of_five_children",
                      [](ArchiveTree& tree) { tree.blocks.at(tree.root).children.pop_back(); });
    maker.add_refused("top_headers_cut",
                      [](ArchiveTree& tree) { tree.headers_block(tree.object("/")).bytes.erase(2, 3); });
    for (const std::size_t bytes : {1u, 5u, 17u}) {
        maker.add("object_headers_cut_by_" + std::to_string(bytes), [&](ArchiveTree& tree) {
            std::string& blob = tree.headers_block(tree.object("/root")).bytes;
            blob.erase(blob.size() - object_hashes_size - bytes, bytes);
        });
        maker.add("property_headers_cut_by_" + std::to_string(bytes), [&](ArchiveTree& tree) {
            std::string& blob = tree.headers_block(tree.property("/root/mesh", ".geom")).bytes;
            blob.resize(blob.size() - bytes);
        });
    }
    const auto set_blob_end = [&](const std::string& name, const std::string& end) {
        maker.add("object_headers_" + name, [&](ArchiveTree& tree) {
            std::string& blob = tree.headers_block(tree.object("/root")).bytes;
            blob.resize(blob.size() - object_hashes_size);
            blob.resize(blob.rfind("points") - 4);
            blob += end + std::string(object_hashes_size, 'h');
        });
    };
    maker.add("object_headers_in_few_bytes", [](ArchiveTree& tree) {
        tree.headers_block(tree.object("/root")).bytes = "few" + std::string(object_hashes_size, 'h');
    });
    set_blob_end("end_in_metadata_size", bytes_of({1u}) + "a\xff" + "123");
    set_blob_end("end_in_metadata", bytes_of({1u}) + "a\xff" + bytes_of({9u}) + "k=v");
    maker.add("property_headers_in_few_bytes",
              [](ArchiveTree& tree) { tree.headers_block(tree.property("/root/mesh", ".geom")).bytes = "few"; });
    maker.add("property_headers_of_no_width",
              [](ArchiveTree& tree) { tree.headers_block(tree.property("/root/mesh", ".geom")).bytes[0] |= 0xc; });
    maker.add("property_headers_end_in_metadata", [](ArchiveTree& tree) {
        tree.edit_header("/root/mesh", ".geom/.userProperties/word", [](StoredProperty& property) {
            property.set_metadata_index(255);
            property.metadata = "key=value";
        });
        tree.headers_block(tree.property("/root/mesh", ".geom/.userProperties")).bytes.pop_back();
    });
    maker.add("hashes_cut", [](ArchiveTree& tree) { tree.headers_block(tree.object("/root/mesh")).bytes.resize(31); });
}

} // namespace

std::vector<Shape> header_shapes()
{
    ShapeMaker maker;
    add_names(maker);
    add_metadata(maker);
    add_types(maker);
    add_sample_counts(maker);
    add_time_samplings(maker);
    add_versions_and_cuts(maker);
    return maker.take();
}

} // namespace vo_fuzz
