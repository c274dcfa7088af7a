/// Archives that tests write for themselves, and a library that is started for the length of a test.
#pragma once

#include "captured_log.h"
#include "scratch_file.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>
#include <abc_input.h>
#include <gtest/gtest.h>
#include <vo_app_base/app_base.h>

#include <cstdint>
#include <string>
#include <vector>

namespace abc_archives {

namespace AbcG = Alembic::AbcGeom;

/// Writes an Ogawa archive: `write(top)` puts objects into it.
template <class Write>
void write_archive(const std::string& path, Write&& write)
{
    AbcG::OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), path);
    AbcG::OObject top = archive.getTop();
    write(top);
}

/// Corners of a square of that size in the plane z = 0.
inline std::vector<AbcG::V3f> square(float size)
{
    return {{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}};
}

/// Adds a mesh of one square face, a sample for each size.
inline AbcG::OPolyMesh add_square(AbcG::OObject parent, const std::string& name, const std::vector<float>& sizes = {1},
                                  AbcG::TimeSamplingPtr sampling = {})
{
    const std::vector<std::int32_t> indices = {0, 1, 2, 3}, counts = {4};
    AbcG::OPolyMesh mesh(parent, name, sampling);
    for (const float size : sizes) {
        const std::vector<AbcG::V3f> corners = square(size);
        mesh.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(corners), indices, counts));
    }
    return mesh;
}

/// An archive with the mesh /body/shape, whose square is of that size.
inline void write_square_archive(const std::string& path, float size = 1)
{
    write_archive(path, [&](AbcG::OObject top) { add_square(AbcG::OXform(top, "body"), "shape", {size}); });
}

/// The texts of a host container, for matchers and messages.
inline std::vector<std::string> to_strings(const CoreBasicArray<CoreString>& texts)
{
    std::vector<std::string> strings;
    for (const CoreString& text : texts)
        strings.emplace_back(text.get_data());
    return strings;
}

} // namespace abc_archives

/// The library, started before a test and shut down after it, with all its messages captured. A test takes those it
/// expects out of log_.
class StartedLibrary : public testing::Test
{
protected:
    void SetUp() override { AbcInput::init(get_application()); }
    void TearDown() override
    {
        AbcInput::destroy();
        EXPECT_EQ(log_.take(), std::vector<std::string>()) << "messages that the test did not expect";
    }

    /// The application that the library is started with.
    virtual AppBase* get_application() { return nullptr; }

    CapturedLog log_;
};
