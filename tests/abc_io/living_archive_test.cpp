/// Archives that other programs rewrite, cut and delete while they are open, in a host with items, questions and
/// threads.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <abc_animation_header.h>
#include <abc_deformation_header.h>
#include <abc_input_archive_manager.h>
#include <abc_output_archive_handle.h>
#include <gmock/gmock.h>
#include <vo_of/of_attr.h>
#include <vo_of/of_context.h>
#include <vo_of/of_file_reference_context_engine.h>

#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

using namespace abc_archives;
using testing::Contains;
using testing::HasSubstr;

namespace {

/// An application whose user wants everything resynced.
class WillingApp : public AppBase
{
public:
    AppDialog show_question_dialog(const CoreString&, const CoreString&, const AppDialog&, const int&,
                                   const CoreBasicArray<CoreString>&) override
    {
        ++question_count;
        return AppDialog::yes();
    }

    std::atomic<int> question_count{0};
};

constexpr int point_count = 20000; // 240 kB of positions: more than any buffer keeps

/// The transform /body, moved by `value`, and below it the mesh /body/shape of points that all are at `value`.
void write_version(const std::string& path, float value)
{
    write_archive(path, [&](AbcG::OObject top) {
        AbcG::OXform body(top, "body");
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(value, 0, 0));
        body.getSchema().set(sample);
        const std::vector<AbcG::V3f> points(point_count, AbcG::V3f(value));
        const std::vector<std::int32_t> indices = {0, 1, 2, 3}, counts = {4};
        AbcG::OPolyMesh(body, "shape")
            .getSchema()
            .set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts));
    });
}

void replace(const std::string& path, float value, const std::string& suffix = ".new")
{
    write_version(path + suffix, value);
    std::filesystem::rename(path + suffix, path);
}

/// The value of the mesh that a handle holds. Nothing when it holds none or the file fails.
std::optional<float> evaluate(const AbcInputArchiveHandle& handle)
{
    CoreArray<GMathVec3<float>> positions, velocities;
    try {
        if (!AbcInput::evaluate_mesh_deformation(handle, 0.0, positions, velocities, false)) return std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
    if (positions.get_count() != point_count) return -1.0f;
    for (const GMathVec3<float>& position : positions)
        if (position.x != positions[0].x) return -1.0f; // parts of two versions
    return positions[0].x;
}

bool set_mesh(AbcInputArchiveHandle& handle)
{
    AbcDeformationHeader header;
    return AbcInput::get_mesh_deformation_header(handle, "/body/shape", header);
}

/// An item of the scene that shows the mesh: it refers to the file by an attribute, and holds a handle.
class Item
{
public:
    explicit Item(const CoreString& path)
        : context_("item", std::make_unique<OfFileReferenceContextEngine>([this] { load(); }))
        , attr_("file", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &context_, CoreArray<CoreString>{path})
    {
        load();
    }
    ~Item() { AbcInput::release_archive(handle_.get()); }

    std::optional<float> value() const { return evaluate(*handle_); }
    int invalidation_count() const { return invalidation_count_; }

private:
    void load()
    {
        std::unique_ptr<AbcInputArchiveHandle> fresh(
            AbcInput::get_archive(AbcFileList(attr_.get_string(0, OfAttr::VALUE_PAGE_CURRENT, true))));
        set_mesh(*fresh);
        fresh->set_archive_invalidation_block([this] {
            ++invalidation_count_;
            return false;
        });
        AbcInput::release_archive(handle_.get());
        handle_ = std::move(fresh);
    }

    int invalidation_count_ = 0;
    OfContext context_;
    OfAttr attr_;
    std::unique_ptr<AbcInputArchiveHandle> handle_;
};

class LivingArchive : public StartedLibrary
{
protected:
    AppBase* get_application() override { return &app_; }

    void SetUp() override
    {
        StartedLibrary::SetUp();
        write_version(file_.path(), 1);
    }
    void TearDown() override
    {
        EXPECT_EQ(open_archive_count(), 0);
        StartedLibrary::TearDown();
    }

    bool verify(bool interactive) { return app_.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, interactive); }
    bool is_up_to_date() const { return AbcInputArchiveManager::get()->is_cached_archive_up_to_date(files_); }

    int open_archive_count()
    {
        std::vector<std::string> messages = log_.take();
        AbcInput::log_statistics();
        const std::vector<std::string> lines = log_.take();
        for (const std::string& message : messages)
            ADD_FAILURE() << "not expected: " << message;
        return std::stoi(lines.at(4).substr(lines[4].find(": ") + 2));
    }

    WillingApp app_;
    const ScratchFile file_{"living.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(LivingArchive, EveryWayOfRewritingIsNoticed)
{
    const auto rewrite_in_place = [&](float value) { write_version(file_.path(), value); };
    const auto rename_over = [&](float value) { replace(file_.path(), value); };
    const auto delete_and_restore = [&](float value) {
        std::filesystem::remove(file_.path());
        EXPECT_FALSE(is_up_to_date());
        EXPECT_FALSE(verify(false));
        write_version(file_.path(), value);
    };
    const std::function<void(float)> ways[] = {rewrite_in_place, rename_over, delete_and_restore};
    float value = 1;
    for (const auto& way : ways) {
        const OpenHandle old(files_);
        ASSERT_TRUE(set_mesh(*old));
        const AbcInputArchiveHandle copy = *old;
        EXPECT_EQ(evaluate(*old), value);
        way(++value); // within the same second, to the same size
        EXPECT_FALSE(is_up_to_date());
        EXPECT_FALSE(verify(false));
        const OpenHandle fresh(files_);
        EXPECT_FALSE(old->is_archive_valid());
        EXPECT_FALSE(old->is_object_valid());
        EXPECT_EQ(evaluate(*old), std::nullopt);
        EXPECT_NE(evaluate(copy), -1.0f); // its archive and object live on, whole or unreadable
        ASSERT_TRUE(set_mesh(*fresh));
        EXPECT_EQ(evaluate(*fresh), value);
        EXPECT_TRUE(verify(false));
    }
}

TEST_F(LivingArchive, AFileCutWhileItIsOpenFailsCleanly)
{
    const auto size = std::filesystem::file_size(file_.path());
    for (const auto part : {size - 1, size / 2, std::uintmax_t(100), std::uintmax_t(0)}) {
        write_version(file_.path(), 1);
        const OpenHandle old(files_);
        ASSERT_TRUE(set_mesh(*old));
        std::filesystem::resize_file(file_.path(), part);
        const std::optional<float> value = evaluate(*old);
        EXPECT_TRUE(!value || *value == 1) << *value << " from " << part << " bytes";
        EXPECT_FALSE(is_up_to_date());
        {
            const OpenHandle fresh(files_);
            EXPECT_FALSE(old->is_archive_valid());
            EXPECT_FALSE(old->is_object_valid());
            set_mesh(*fresh);
            const std::optional<float> fresh_value = evaluate(*fresh);
            EXPECT_TRUE(!fresh_value || *fresh_value == 1) << *fresh_value << " from " << part << " bytes";
        }
        log_.take(); // what is missing depends on where it was cut
    }
}

TEST_F(LivingArchive, ItemsOfTheSceneFollowTheFile)
{
    Item item(file_.path().c_str());
    const ScratchFile other("other.abc");
    write_version(other.path(), 9);
    Item unchanged(other.path().c_str());
    EXPECT_EQ(item.value(), 1);
    for (const float value : {2.0f, 3.0f}) {
        replace(file_.path(), value);
        EXPECT_EQ(item.value(), value - 1) << "until the host asks";
        EXPECT_TRUE(verify(true));
        EXPECT_EQ(item.value(), value);
        EXPECT_EQ(item.invalidation_count(), int(value) - 1);
        EXPECT_TRUE(verify(true));
        EXPECT_EQ(app_.question_count, int(value) - 1);
    }
    EXPECT_EQ(unchanged.value(), 9);
    EXPECT_EQ(unchanged.invalidation_count(), 0);
}

TEST_F(LivingArchive, EightThreadsEvaluateWhileTwoReplaceAndVerify)
{
    const ScratchFile second("second.abc");
    write_version(second.path(), 1);
    const ScratchFile* const archives[] = {&file_, &second};
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    std::atomic<int> wrong{0}, evaluated{0}, reloaded{0};
    OfContext context("context", std::make_unique<OfFileReferenceContextEngine>([&] { ++reloaded; }));
    const OfAttr attr("file", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &context,
                      CoreArray<CoreString>{CoreString(file_.path())});

    const auto evaluate_all = [&](int thread) {
        for (int round = 0; std::chrono::steady_clock::now() < end; ++round) {
            const std::string& path = archives[(thread + round) % 2]->path();
            const OpenHandle mesh{AbcFileList(CoreString(path))}, xform{AbcFileList(CoreString(path))};
            AbcAnimationHeader header;
            GMathMatrix4x4<double> matrix;
            const bool has_mesh = set_mesh(*mesh);
            const bool has_xform = AbcInput::get_animation_header(*xform, "/body", header);
            for (int i = 0; i < 3; ++i) {
                // Another thread may have taken the objects away meanwhile; what is read must be of one version.
                const std::optional<float> value = has_mesh ? evaluate(*mesh) : std::nullopt;
                if (value && *value < 1) ++wrong;
                if (value) ++evaluated;
                if (has_xform && AbcInput::evaluate_pivot_matrix(*xform, 0.0, matrix) && !(matrix[0][3] >= 1)) ++wrong;
            }
        }
    };
    const auto replace_and_verify = [&](int thread) {
        for (float value = 2; std::chrono::steady_clock::now() < end; ++value) {
            replace(archives[thread]->path(), value, ".new" + std::to_string(thread));
            verify(true);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread)
        threads.emplace_back(evaluate_all, thread);
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back(replace_and_verify, thread);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(evaluated, 0);
    EXPECT_GT(app_.question_count, 0);
    EXPECT_GT(reloaded, 0);
}

namespace {

/// No file of this process grows beyond `bytes` while this lives: a disk that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : previous_handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit limit{bytes, previous_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, previous_handler_);
    }

private:
    rlimit previous_{};
    void (*previous_handler_)(int);
};

} // namespace

TEST_F(LivingArchive, AFullDiskLeavesNoArchiveThatLooksWhole)
{
    for (const rlim_t limit : {rlim_t(0), rlim_t(10), rlim_t(100), rlim_t(100000)}) {
        const ScratchFile out("out.abc");
        {
            const FileSizeLimit full(limit);
            AbcOutputArchiveHandle handle(CoreString(out.path()), 1.0 / 24, 0.0, app_);
            if (handle.is_valid()) {
                try {
                    const std::vector<AbcG::V3f> points(point_count, AbcG::V3f(1));
                    const std::vector<std::int32_t> indices = {0, 1, 2, 3}, counts = {4};
                    AbcG::OPolyMesh(handle.getTop(), "shape")
                        .getSchema()
                        .set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts));
                } catch (const std::exception&) {
                    // writing samples may throw, as Alembic does; closing must not
                }
            }
            handle.reset();
            EXPECT_FALSE(handle.is_valid());
        }
        log_.take();
        EXPECT_FALSE(AbcInput::is_archive_valid(AbcFileList(CoreString(out.path())))) << limit << " bytes";
        log_.take();
    }
}
