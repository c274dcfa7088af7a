#include "ply_writer.h"

#include "finite_numbers.h"
#include "text.h"

#include <algorithm>
#include <cstdint>

namespace {

struct Layout
{
    bool is_ascii, has_velocities, has_objects;
};

void write_header(OutputFile& file, const std::vector<PointsGeometry>& objects, const std::string& comment,
                  const Layout& layout)
{
    std::uint64_t point_count = 0;
    for (const PointsGeometry& points : objects)
        point_count += points.positions.get_count();
    file.print(FMT_COMPILE("ply\nformat {} 1.0\ncomment {}\n"), layout.is_ascii ? "ascii" : "binary_little_endian",
               printable(comment));
    for (std::size_t i = 0; i < objects.size(); ++i)
        file.print(FMT_COMPILE("comment object {} {}\n"), i, printable(objects[i].path));
    file.print(FMT_COMPILE("element vertex {}\nproperty float x\nproperty float y\nproperty float z\n"), point_count);
    if (layout.has_velocities) file.write("property float vx\nproperty float vy\nproperty float vz\n");
    if (layout.has_objects) file.write("property uint object\n");
    file.write("end_header\n");
}

void write_vector(OutputFile& file, const GMathVec3<float>& stored, const Layout& layout, const char* gap,
                  FiniteNumbers& numbers)
{
    const GMathVec3<float> vector(numbers.take(stored.x), numbers.take(stored.y), numbers.take(stored.z));
    if (layout.is_ascii) {
        file.print(FMT_COMPILE("{}{} {} {}"), gap, vector.x, vector.y, vector.z);
        return;
    }
    for (int axis = 0; axis < 3; ++axis)
        file.write_little_endian(vector[axis]);
}

void write_points(OutputFile& file, const PointsGeometry& points, std::uint32_t object, const Layout& layout,
                  FiniteNumbers& numbers)
{
    for (unsigned int i = 0; i < points.positions.get_count(); ++i) {
        write_vector(file, points.positions[i], layout, "", numbers);
        if (layout.has_velocities)
            write_vector(file, points.velocities.is_empty() ? GMathVec3<float>(0, 0, 0) : points.velocities[i], layout,
                         " ", numbers);
        if (layout.has_objects && layout.is_ascii) file.print(FMT_COMPILE(" {}"), object);
        if (layout.has_objects && !layout.is_ascii) file.write_little_endian(object);
        if (layout.is_ascii) file.write("\n");
    }
}

} // namespace

std::uint64_t write_ply(OutputFile& file, const std::vector<PointsGeometry>& objects, const std::string& comment,
                        bool is_ascii)
{
    const bool has_velocities = std::any_of(objects.begin(), objects.end(),
                                            [](const PointsGeometry& points) { return !points.velocities.is_empty(); });
    const Layout layout{is_ascii, has_velocities, objects.size() > 1};
    write_header(file, objects, comment, layout);
    FiniteNumbers numbers;
    for (std::size_t i = 0; i < objects.size(); ++i)
        write_points(file, objects[i], static_cast<std::uint32_t>(i), layout, numbers);
    return numbers.get_bad_count();
}
