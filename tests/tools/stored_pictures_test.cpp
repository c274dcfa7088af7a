/// vo_abc render: small pictures of one scene against those that are stored in the folder pictures/. Where a picture
/// changes for a good reason, run `VO_ABC_REWRITE_PICTURES=1 tools_tests --gtest_filter='StoredPictures.*'`, which
/// stores the new ones in the source folder, and look at them before they are committed.
#include "render_fixture.h"

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

// Room for what another processor rounds otherwise: a sample that falls on the other side of an edge, or into the
// shadow.
constexpr double max_mean_difference = 0.6;   // of a channel that has 0 to 255
constexpr int much = 32;                      // a channel that differs by more makes its pixel another one
constexpr double max_share_of_others = 0.004; // of the pixels
constexpr double sure = 2.0;                  // times a limit: what must fail does so clearly

/// How far two pictures are from each other.
struct Difference
{
    double mean = 255.0, share_of_others = 1.0; ///< of the channel that differs most; of all pixels

    Difference(const PngFile& a, const PngFile& b)
    {
        if (a.width != b.width || a.height != b.height || a.pixels.empty()) return;
        std::array<double, 4> sums{};
        std::size_t others = 0;
        for (std::size_t i = 0; i < a.pixels.size(); ++i) {
            int largest = 0;
            for (std::size_t channel = 0; channel < 4; ++channel) {
                const int difference = std::abs(a.pixels[i][channel] - b.pixels[i][channel]);
                sums[channel] += difference;
                largest = std::max(largest, difference);
            }
            if (largest > much) ++others;
        }
        const double count = static_cast<double>(a.pixels.size());
        mean = *std::max_element(sums.begin(), sums.end()) / count;
        share_of_others = static_cast<double>(others) / count;
    }

    /// 1 where it is just allowed.
    double get_size() const { return std::max(mean / max_mean_difference, share_of_others / max_share_of_others); }
};

std::ostream& operator<<(std::ostream& out, const Difference& difference)
{
    return out << "mean difference " << difference.mean << " of 255 (limit " << max_mean_difference << "), "
               << 100 * difference.share_of_others << " % of the pixels differ by more than " << much << " (limit "
               << 100 * max_share_of_others << " %)";
}

/// Whether two files show the same. If not, the new one is kept, and the message says where.
testing::AssertionResult shows_the_same(const std::string& stored, const std::string& rendered)
{
    const Difference difference{PngFile(stored), PngFile(rendered)};
    if (difference.get_size() <= 1.0) return testing::AssertionSuccess() << difference;
    const fs::path kept = fs::temp_directory_path() / ("vo_abc_" + fs::path(rendered).filename().string());
    std::error_code error;
    fs::copy_file(rendered, kept, fs::copy_options::overwrite_existing, error);
    return testing::AssertionFailure() << kept.string() << (error ? " (not kept: " + error.message() + ")" : "")
                                       << " is not what " << stored << " shows: " << difference;
}

/// What of the scene can be changed.
struct Scene
{
    std::string hidden; ///< name of an object
    bool has_creases = true;
    double focal_length = 40.0; ///< millimetres
};

const std::vector<std::string> object_names = {"floor", "wheel", "tent", "kite", "reeds", "pearls"};

/// A wheel of quads around the x axis, with smooth normals and UVs.
void add_wheel(AbcG::OObject parent)
{
    constexpr int around = 16, across = 8;
    Points points, normals;
    std::vector<AbcG::V2f> uvs;
    Ints indices;
    const auto angle = [](int step, int count) { return static_cast<float>(2.0 * M_PI * step / count); };
    for (int i = 0; i < around; ++i)
        for (int j = 0; j < across; ++j) {
            const float a = angle(i, around), b = angle(j, across), radius = 1.2f + 0.5f * std::cos(b);
            points.emplace_back(0.5f * std::sin(b), radius * std::sin(a), radius * std::cos(a));
            for (const auto& [di, dj] : {std::pair(0, 0), {1, 0}, {1, 1}, {0, 1}}) {
                indices.push_back((i + di) % around * across + (j + dj) % across);
                const float ca = angle(i + di, around), cb = angle(j + dj, across);
                normals.emplace_back(std::sin(cb), std::cos(cb) * std::sin(ca), std::cos(cb) * std::cos(ca));
                uvs.emplace_back(static_cast<float>(i + di) / around, static_cast<float>(j + dj) / across);
            }
        }
    AbcG::OPolyMesh(parent, "mesh")
        .getSchema()
        .set(AbcG::OPolyMeshSchema::Sample(
            AbcG::P3fArraySample(points), indices, Ints(around * across, 4),
            AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(uvs), AbcG::kFacevaryingScope),
            AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(normals), AbcG::kFacevaryingScope)));
}

/// Two halves, each a face set, with UVs.
void add_floor(AbcG::OObject parent)
{
    const Points points = {{-6, 0, -3}, {0, 0, -3}, {6, 0, -3}, {6, 0, 3}, {0, 0, 3}, {-6, 0, 3}};
    const std::vector<AbcG::V2f> uvs = {{0, 0}, {0.5f, 0}, {1, 0}, {1, 1}, {0.5f, 1}, {0, 1}};
    const Ints indices = {0, 1, 4, 5, 1, 2, 3, 4}, counts = {4, 4}, left = {0}, right = {1};
    AbcG::OPolyMesh floor(parent, "mesh");
    floor.getSchema().set(
        AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts,
                                      AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(uvs), AbcG::kVertexScope)));
    floor.getSchema().createFaceSet("green_half").getSchema().set(AbcG::OFaceSetSchema::Sample(left));
    floor.getSchema().createFaceSet("beige_half").getSchema().set(AbcG::OFaceSetSchema::Sample(right));
}

/// A subdivision mesh whose bottom and one ridge are creased: elsewhere it is round.
void add_tent(AbcG::OObject parent, bool has_creases)
{
    const Points points = {{-1.5f, 0, -1.5f}, {1.5f, 0, -1.5f}, {1.5f, 0, 1.5f}, {-1.5f, 0, 1.5f}, {0, 3, 0}};
    const Ints indices = {3, 2, 1, 0, 0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4}, counts = {4, 3, 3, 3, 3};
    AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(points), indices, counts);
    const Ints creases = {0, 1, 2, 3, 0, 2, 4}, lengths = {5, 2};
    const std::vector<float> sharpnesses = {10, 10};
    if (has_creases) sample.setCreases(creases, lengths, sharpnesses);
    AbcG::OSubD(parent, "mesh").getSchema().set(sample);
}

/// A mesh that moves by its stored velocities alone.
void add_kite(AbcG::OObject parent)
{
    const Points points = rectangle(-1.2f, 1.2f, -0.8f, 0.8f), velocities(4, AbcG::V3f(0, 4, 0));
    const Ints indices = {0, 1, 2, 3}, counts = {4};
    AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(points), indices, counts);
    sample.setVelocities(AbcG::V3fArraySample(velocities));
    AbcG::OPolyMesh(parent, "mesh").getSchema().set(sample);
}

void add_reeds(AbcG::OObject parent)
{
    Points points;
    for (int reed = 0; reed < 3; ++reed)
        for (int knot = 0; knot < 4; ++knot)
            points.emplace_back(0.7f * reed + 0.12f * knot * knot, static_cast<float>(knot), 0.0f);
    const std::vector<float> widths = {0.35f};
    AbcG::OCurves(parent, "curves")
        .getSchema()
        .set(AbcG::OCurvesSchema::Sample(
            AbcG::P3fArraySample(points), Ints(3, 4), AbcG::kCubic, AbcG::kNonPeriodic,
            AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(widths), AbcG::kConstantScope),
            AbcG::OV2fGeomParam::Sample(), AbcG::ON3fGeomParam::Sample(), AbcG::kBezierBasis));
}

void add_pearls(AbcG::OObject parent)
{
    const Points points = {{0, 0, 0}, {0.9f, 0.2f, 0}, {1.8f, 0, 0}, {2.7f, 0.2f, 0}};
    const Points velocities(points.size(), AbcG::V3f(0, 0, 2));
    const std::vector<std::uint64_t> ids = {0, 1, 2, 3};
    AbcG::OPoints(parent, "points")
        .getSchema()
        .set(AbcG::OPointsSchema::Sample(AbcG::P3fArraySample(points), AbcG::UInt64ArraySample(ids),
                                         AbcG::V3fArraySample(velocities)));
}

void write_scene(const std::string& path, const Scene& scene)
{
    write_archive(path, [&](AbcG::OObject top) {
        const AbcG::TimeSamplingPtr sampling(new AbcG::TimeSampling(1.0, 0.0));
        // A transform that moves from its place by `motion` in the second.
        const auto place = [&](const std::string& name, const AbcG::V3d& translation, double turn,
                               const AbcG::V3d& motion = {0, 0, 0}) {
            AbcG::OXform xform(top, name, sampling);
            if (scene.hidden == name) AbcG::CreateVisibilityProperty(xform, sampling).set(AbcG::kVisibilityHidden);
            for (const double time : {0.0, 1.0}) {
                AbcG::XformSample sample;
                sample.setTranslation(translation + motion * time);
                sample.setYRotation(turn);
                xform.getSchema().set(sample);
            }
            return xform;
        };
        add_floor(place("floor", {0, 0, 0}, 0));
        add_wheel(place("wheel", {-3.6, 1.8, 0.3}, 60, {3, 0, 0}));
        add_tent(place("tent", {0.6, 0, 0.4}, 25, {0, 0, -2}), scene.has_creases);
        add_kite(place("kite", {4.2, 2.6, -1.5}, 0));
        add_reeds(place("reeds", {2.6, 0, 0.6}, 0));
        add_pearls(place("pearls", {-1.4, 0.4, 2.3}, 0));
        TestCamera camera;
        camera.focal_length = scene.focal_length;
        camera.add_to(place("dolly", {1.5, 2.0, -2.0}, 15));
    });
}

struct Picture
{
    std::string name;
    std::vector<std::string> options;
};

const std::vector<Picture> pictures = {
    {"clay", {}},
    {"normal", {"--shade", "normal"}},
    {"uv", {"--shade", "uv"}},
    {"group", {"--shade", "group"}},
    {"velocity", {"--shade", "velocity"}},
    {"camera", {"--shade", "group", "--camera", "/dolly/camera"}},
    {"blur", {"--shutter", "0.4"}},
    {"creases", {"--object", "/tent"}},
};

class StoredPictures : public testing::Test
{
protected:
    static std::string get_stored(const std::string& name)
    {
        return (fs::path(VO_SAMPLES_DIR).parent_path() / "tests/tools/pictures" / (name + ".png")).string();
    }

    /// The path of the new picture.
    std::string render(const Picture& picture, const Scene& scene = {})
    {
        const ScratchFile archive("scene.abc");
        write_scene(archive.path(), scene);
        const std::string path = folder_.folder() + "/" + picture.name + ".png";
        std::vector<std::string> arguments = {"render", archive.path(), "-o",        path, "--size",        "96x54",
                                              "--time", "0.5",          "--samples", "16", "--point-width", "0.8"};
        arguments.insert(arguments.end(), picture.options.begin(), picture.options.end());
        const ToolRun result = run_tool(arguments);
        EXPECT_EQ(result.status, 0) << picture.name << ": " << result.errors;
        return path;
    }

    static void expect_another(const std::string& stored, const std::string& other, const std::string& change)
    {
        const Difference difference{PngFile(stored), PngFile(other)};
        EXPECT_GT(difference.get_size(), sure) << stored << ", " << change << ": " << difference;
    }

    ScratchFile folder_{"unused"};
};

} // namespace

TEST_F(StoredPictures, AreWhatTheToolRenders)
{
    const bool is_rewriting = std::getenv("VO_ABC_REWRITE_PICTURES") != nullptr;
    for (const Picture& picture : pictures) {
        const std::string rendered = render(picture), stored = get_stored(picture.name);
        if (is_rewriting) {
            fs::copy_file(rendered, stored, fs::copy_options::overwrite_existing);
        } else {
            EXPECT_TRUE(shows_the_same(stored, rendered));
        }
    }
    if (is_rewriting) GTEST_SKIP() << "the pictures were stored, not compared: look at them";
}

TEST_F(StoredPictures, AreAllDifferent)
{
    for (const Picture& a : pictures)
        for (const Picture& b : pictures)
            if (&a != &b) expect_another(get_stored(a.name), get_stored(b.name), "against " + b.name);
}

TEST_F(StoredPictures, MissNoObjectThatIsHidden)
{
    for (const Picture& picture : pictures)
        for (const std::string& name : object_names) {
            if (picture.name == "creases" && name != "tent") continue; // alone there
            Scene scene;
            scene.hidden = name;
            expect_another(get_stored(picture.name), render(picture, scene), "without " + name);
        }
}

TEST_F(StoredPictures, MissNoChangeOfCreasesLensOrShutter)
{
    Scene round, closer;
    round.has_creases = false;
    closer.focal_length *= 1.05;
    for (const Picture& picture : pictures) {
        if (picture.name == "creases") expect_another(get_stored(picture.name), render(picture, round), "round");
        if (picture.name == "camera") expect_another(get_stored(picture.name), render(picture, closer), "closer");
    }
    expect_another(get_stored("blur"), render({"blur", {"--shutter", "0.2"}}), "half the shutter");
}

TEST_F(StoredPictures, AFailureNamesBothFilesAndKeepsTheNewOne)
{
    const std::string stored = get_stored("clay"), other = folder_.folder() + "/kept_by_the_test.png";
    fs::copy_file(get_stored("normal"), other);
    const fs::path kept = fs::temp_directory_path() / "vo_abc_kept_by_the_test.png";
    const testing::AssertionResult result = shows_the_same(stored, other);
    EXPECT_FALSE(result);
    for (const std::string& part : {stored, kept.string(), std::string("mean difference ")})
        EXPECT_THAT(result.message(), HasSubstr(part));
    EXPECT_EQ(read_file(kept.string()), read_file(other));
    fs::remove(kept);
}
