/// What tests of vo_abc render share: a camera, meshes, and the picture that the camera sees.
#pragma once

#include "png_file.h"
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace abc_archives;

using Ints = std::vector<std::int32_t>;
using Points = std::vector<AbcG::V3f>;
using Color = std::array<std::uint8_t, 4>;

constexpr double camera_distance = 10.0;
constexpr int side = 64; // pixels; the camera sees 10 units

/// A camera at (0, 0, 10) that looks down -z, by default at the square from -5 to 5.
struct TestCamera
{
    double horizontal_aperture = 3.6, vertical_aperture = 3.6;            // centimetres
    double focal_length = 36.0;                                           // millimetres
    double horizontal_offset = 0.0, vertical_offset = 0.0, squeeze = 1.0; // centimetres; a ratio
    std::string fit = "filmFitHorz";

    void add_to(AbcG::OObject top) const
    {
        AbcG::OXform place(top, "camera");
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(0, 0, camera_distance));
        place.getSchema().set(sample);
        AbcG::CameraSample lens;
        lens.setHorizontalAperture(horizontal_aperture);
        lens.setVerticalAperture(vertical_aperture);
        lens.setFocalLength(focal_length);
        lens.setHorizontalFilmOffset(horizontal_offset);
        lens.setVerticalFilmOffset(vertical_offset);
        lens.setLensSqueezeRatio(squeeze);
        lens.addOp(AbcG::FilmBackXformOp(AbcG::kScaleFilmBackOperation, fit));
        AbcG::OCamera(place, "lens").getSchema().set(lens);
    }
};

/// Where something lies in a picture, in pixels.
struct Extent
{
    double left, right, top, bottom;
};

inline Extent find_extent(const PngFile& png)
{
    Extent extent{1e9, -1e9, 1e9, -1e9};
    for (int y = 0; y < png.height; ++y)
        for (int x = 0; x < png.width; ++x)
            if (png.is_covered(x, y)) {
                extent.left = std::min(extent.left, double(x));
                extent.right = std::max(extent.right, x + 1.0);
                extent.top = std::min(extent.top, double(y));
                extent.bottom = std::max(extent.bottom, y + 1.0);
            }
    return extent;
}

inline int count_covered(const PngFile& png)
{
    return static_cast<int>(
        std::count_if(png.pixels.begin(), png.pixels.end(), [](const Color& c) { return c[3] > 0; }));
}

class Render : public testing::Test
{
protected:
    /// Writes an archive of the camera and what `add(top)` adds.
    template <class Add>
    void write(Add&& add, const TestCamera& camera = {})
    {
        write_archive(archive_.path(), [&](AbcG::OObject top) {
            camera.add_to(top);
            add(top);
        });
    }

    ToolRun run(const std::vector<std::string>& options, const std::string& output)
    {
        std::vector<std::string> arguments = {"render", archive_.path(), "-o", output};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run_tool(arguments);
    }

    /// The picture that the camera sees, transparent where there is nothing, one sample in the middle of each pixel.
    /// `status` is the exit status that is expected beside it.
    PngFile see(std::vector<std::string> options = {}, int status = 0)
    {
        options.insert(options.begin(), {"--camera", "/camera", "--transparent"});
        if (std::find(options.begin(), options.end(), "--size") == options.end())
            options.insert(options.end(), {"--size", "64x64"});
        if (std::find(options.begin(), options.end(), "--samples") == options.end())
            options.insert(options.end(), {"--samples", "1"});
        const ToolRun result = run(options, picture_.path());
        EXPECT_EQ(result.status, status) << result.errors;
        errors_ = result.errors;
        return PngFile(picture_.path());
    }

    ScratchFile archive_{"scene.abc"}, picture_{"picture.png"};
    std::string errors_;
};

inline AbcG::OPolyMesh add_mesh(AbcG::OObject parent, const std::string& name, const Points& points,
                                const Ints& indices, const Ints& counts)
{
    AbcG::OPolyMesh mesh(parent, name);
    mesh.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts));
    return mesh;
}

inline Points rectangle(float left, float right, float bottom, float top, float z = 0)
{
    return {{left, bottom, z}, {right, bottom, z}, {right, top, z}, {left, top, z}};
}
