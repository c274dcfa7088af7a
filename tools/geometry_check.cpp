#include "geometry_check.h"

#include "object_walk.h"
#include "schema_samples.h"

#include <Alembic/AbcGeom/All.h>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace AbcG = Alembic::AbcGeom;

namespace {

/// What the values of a geometry can belong to; none where they are not counted.
constexpr std::uint64_t not_counted = std::numeric_limits<std::uint64_t>::max();
struct ScopeCounts
{
    std::uint64_t uniform = not_counted, varying = not_counted, vertex = not_counted, face_varying = not_counted;

    std::uint64_t of(AbcG::GeometryScope scope) const
    {
        switch (scope) {
        case AbcG::kUniformScope:
            return uniform;
        case AbcG::kVaryingScope:
            return varying;
        case AbcG::kVertexScope:
            return vertex;
        case AbcG::kFacevaryingScope:
            return face_varying;
        default:
            return not_counted;
        }
    }
};

std::uint64_t sum_of(const StoredValues<std::int32_t>& counts)
{
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t(0), [](std::uint64_t sum, std::int32_t count) {
        return sum + static_cast<std::uint64_t>(std::max(count, 0));
    });
}

class GeometryCheck
{
public:
    GeometryCheck(const std::string& object, const char* compound, const std::vector<StoredProperty>& properties,
                  Findings& findings)
        : samples_(object, compound, properties, findings)
    {
    }

    void check_mesh(bool is_subdivision)
    {
        samples_.for_each_sample({"P", ".faceIndices", ".faceCounts"}, [&] {
            const std::uint64_t point_count = samples_.count("P");
            const auto counts = samples_.read<std::int32_t>(".faceCounts");
            const std::uint64_t corner_count = check_counts(".faceCounts", counts, ".faceIndices", "face", 3);
            check_indices(".faceIndices", point_count, "points");
            check_common(point_count);
            if (is_subdivision) check_creases(point_count, counts.count);
            check_parameters({counts.count, point_count, point_count, corner_count});
        });
    }

    void check_curves()
    {
        samples_.for_each_sample({"P", "nVertices"}, [&] {
            const std::uint64_t point_count = samples_.count("P");
            const auto counts = samples_.read<std::int32_t>("nVertices");
            const auto kind = samples_.read<std::uint8_t>("curveBasisAndType");
            const bool is_linear = kind.count > 0 && kind.data[0] == AbcG::kLinear;
            check_counts("nVertices", counts, "P", "curve", kind.count > 0 && kind.data[0] == AbcG::kCubic ? 4 : 2);
            check_common(point_count);
            // How many values vary along a cubic curve depends on its basis and on who wrote it.
            check_parameters({counts.count, is_linear ? point_count : not_counted, point_count, not_counted});
        });
    }

    void check_points()
    {
        samples_.for_each_sample({"P", ".pointIds"}, [&] {
            const std::uint64_t point_count = samples_.count("P");
            expect_count(".pointIds", point_count, "points");
            check_common(point_count);
            check_parameters({not_counted, point_count, point_count, not_counted});
        });
    }

    void check_face_set(const std::vector<StoredProperty>& mesh_properties)
    {
        const auto face_counts =
            std::find_if(mesh_properties.begin(), mesh_properties.end(),
                         [](const StoredProperty& property) { return property.get_path() == ".geom/.faceCounts"; });
        if (face_counts == mesh_properties.end() || face_counts->get_sample_count() == 0) return;
        samples_.for_each_sample({".faces"}, [&] {
            check_indices(".faces", face_counts->get_element_count(face_counts->find_sample(samples_.get_time())),
                          "faces", "the mesh");
        });
    }

private:
    void error(const std::string& name, const std::string& what) { samples_.report(Severity::ERROR, name, what); }
    void warn(const std::string& name, const std::string& what) { samples_.report(Severity::WARNING, name, what); }

    /// Counts of faces or curves against the number of what they count; gives their sum.
    std::uint64_t check_counts(const char* name, const StoredValues<std::int32_t>& counts, const char* counted_name,
                               const char* thing, std::int32_t least)
    {
        const std::uint64_t sum = sum_of(counts), stored = samples_.count(counted_name);
        const auto negative = std::count_if(counts.begin(), counts.end(), [](std::int32_t count) { return count < 0; });
        const auto small =
            std::count_if(counts.begin(), counts.end(), [&](std::int32_t count) { return count < least; });
        if (sum != stored)
            error(name, fmt::format("the {}s have {} points altogether, but {} has {}. Was the export interrupted?",
                                    thing, sum, counted_name, stored));
        if (negative > 0)
            error(name, fmt::format("{} a negative number of points", some(negative, thing)));
        else if (small > 0)
            warn(name, fmt::format("{} fewer than {} points", some(small, thing), least));
        return sum;
    }

    static std::string some(std::ptrdiff_t count, const std::string& thing)
    {
        return counted(static_cast<std::size_t>(count), thing + " has", thing + "s have");
    }

    void check_indices(const char* name, std::uint64_t limit, const char* things, const char* owner = "the object")
    {
        const auto indices = samples_.read<std::int32_t>(name);
        const auto is_bad = [&](std::int32_t index) { return index < 0 || static_cast<std::uint64_t>(index) >= limit; };
        const auto count = static_cast<std::size_t>(std::count_if(indices.begin(), indices.end(), is_bad));
        if (count == 0) return;
        const std::int32_t* const first = std::find_if(indices.begin(), indices.end(), is_bad);
        error(name,
              fmt::format("{} out of range: element {} is {}, {} has {} {}", counted(count, "index is", "indices are"),
                          first - indices.begin(), *first, owner, limit, things));
    }

    void expect_count(const std::string& name, std::uint64_t expected, const char* things)
    {
        const std::uint64_t count = samples_.count(name);
        if (samples_.find(name) && count != expected)
            error(name, fmt::format("{} for {} {}", counted(count, "value", "values"), expected, things));
    }

    /// Velocities and bounds.
    void check_common(std::uint64_t point_count)
    {
        if (samples_.count(".velocities") > 0) expect_count(".velocities", point_count, "points");
        const auto bounds = samples_.read<double>(".selfBnds");
        if (point_count == 0) return;
        if (bounds.count != 6 || bounds.data[0] > bounds.data[3])
            return warn(".selfBnds", "there are points, but no bounds");
        const auto points = samples_.read<float>("P");
        if (points.count != 3 * point_count) return;
        std::uint64_t outside = 0;
        for (std::uint64_t i = 0; i < point_count; ++i)
            outside += is_outside(points.data + 3 * i, bounds.data) ? 1 : 0;
        if (outside > 0)
            warn(".selfBnds", fmt::format("{} of {} points lie outside of the bounds", outside, point_count));
    }

    /// A little beyond is rounding.
    static bool is_outside(const float* point, const double* bounds)
    {
        for (int axis = 0; axis < 3; ++axis) {
            const double low = bounds[axis], high = bounds[axis + 3];
            const double margin = 1e-5 * std::max({1.0, std::fabs(low), std::fabs(high)});
            if (point[axis] < low - margin || point[axis] > high + margin) return true;
        }
        return false;
    }

    void check_creases(std::uint64_t point_count, std::uint64_t face_count)
    {
        check_indices(".creaseIndices", point_count, "points");
        check_indices(".cornerIndices", point_count, "points");
        check_indices(".holes", face_count, "faces");
        const auto lengths = samples_.read<std::int32_t>(".creaseLengths");
        if (lengths) check_counts(".creaseLengths", lengths, ".creaseIndices", "crease", 2);
        expect_count(".creaseSharpnesses", samples_.count(".creaseLengths"), "creases");
        expect_count(".cornerSharpnesses", samples_.count(".cornerIndices"), "corners");
    }

    void check_parameters(const ScopeCounts& counts)
    {
        for (const auto& [name, property] : samples_.get_properties()) {
            const AbcA::PropertyHeader& header = property->get_header();
            if (!AbcG::IsGeomParam(header) || is_part(name)) continue;
            const bool is_indexed = header.isCompound();
            if (is_indexed) check_parameter_indices(name);
            check_parameter_count(is_indexed ? name + "/.indices" : name, header.getMetaData(), counts);
        }
    }

    /// Whether the property is one of the two that make an indexed parameter, or one that the schema counts itself.
    static bool is_part(const std::string& name)
    {
        const std::string last = name.substr(name.rfind('/') + 1);
        return last == ".vals" || last == ".indices" || last == ".pointIds";
    }

    void check_parameter_count(const std::string& name, const AbcA::MetaData& metadata, const ScopeCounts& counts)
    {
        const std::string extent_text = metadata.get("arrayExtent");
        const std::uint64_t extent = std::max(1, std::atoi(extent_text.c_str()));
        const std::uint64_t expected = counts.of(AbcG::GetGeometryScope(metadata)), count = samples_.count(name);
        if (expected == not_counted || !samples_.find(name) || count == 0 || count == expected * extent) return;
        error(name, fmt::format("{}, its scope \"{}\" has {}", counted(count, "value", "values"),
                                metadata.get("geoScope"), expected * extent));
    }

    void check_parameter_indices(const std::string& name)
    {
        const auto indices = samples_.read<std::uint32_t>(name + "/.indices");
        const std::uint64_t value_count = samples_.count(name + "/.vals");
        const auto* const highest = std::max_element(indices.begin(), indices.end());
        if (indices.count > 0 && *highest >= value_count)
            error(name + "/.indices", fmt::format("an index is {}, there are {} values", *highest, value_count));
    }

    SchemaSamples samples_;
};

} // namespace

void check_geometry(const AbcA::ObjectReaderPtr& object, const std::vector<StoredProperty>& properties,
                    Findings& findings)
{
    const ObjectKind kind = get_object_kind(AbcG::IObject(object));
    const char* const compound = kind == ObjectKind::FACE_SET ? ".faceset" : ".geom";
    GeometryCheck check(object->getFullName(), compound, properties, findings);
    if (is_mesh(kind)) check.check_mesh(kind == ObjectKind::SUBDIVISION_MESH);
    if (kind == ObjectKind::CURVES) check.check_curves();
    if (kind == ObjectKind::POINTS) check.check_points();
    if (kind == ObjectKind::FACE_SET) {
        const AbcA::ObjectReaderPtr mesh = object->getParent();
        const auto ignore = [](const std::string&, const std::string&, const std::string&) {};
        check.check_face_set(list_stored_properties(mesh, ignore));
    }
}
