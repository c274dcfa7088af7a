/// Eight threads open, read, check and release archives while these are rewritten; for VO_ABC_STRESS_SECONDS seconds
/// each test, a moment where that is not set.
#include <support/abc_archives.h>

#include <abc_input_archive_manager.h>
#include <reader_scope.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

using namespace abc_archives;

namespace {

/// The size of the square in the archive; 0 when it could not be read.
float read_size(const AbcFileList& files)
{
    float size = 0;
    with_typed_object<AbcG::IPolyMesh>(files, "/body/shape", [&](AbcInputArchiveHandle&, const AbcG::IPolyMesh& mesh) {
        size = (*mesh.getSchema().getValue().getPositions())[2].x;
        return true;
    });
    return size;
}

class ArchiveThreads : public StartedLibrary
{
protected:
    static constexpr int thread_count = 8;
    static constexpr int round_count = 60; ///< at least

    /// Runs `work(thread, round)` in all threads at once.
    template <class Work>
    void run(Work&& work)
    {
        using Clock = std::chrono::steady_clock;
        const char* const seconds = std::getenv("VO_ABC_STRESS_SECONDS");
        const auto end = Clock::now() + std::chrono::seconds(seconds ? std::atoi(seconds) : 0);
        std::vector<std::thread> threads;
        for (int thread = 0; thread < thread_count; ++thread) {
            threads.emplace_back([&, thread] {
                for (int round = 0; round < round_count || Clock::now() < end; ++round)
                    work(thread, round);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
};

} // namespace

TEST_F(ArchiveThreads, OpenReadAndReleaseTheSameArchives)
{
    const ScratchFile one("one.abc"), two("two.abc");
    write_square_archive(one.path(), 1);
    write_square_archive(two.path(), 2);
    std::atomic<int> wrong{0};
    run([&](int thread, int round) {
        const bool first = (thread + round) % 2 == 0;
        const AbcFileList files(CoreString((first ? one : two).path()));
        if (read_size(files) != (first ? 1.0f : 2.0f)) ++wrong;
        if (!AbcInputArchiveManager::get()->get_invalid_cache_archives().is_empty()) ++wrong;
        static_cast<void>(AbcInputArchiveManager::get()->get_memory_size());
    });
    EXPECT_EQ(wrong, 0);
    for (const ScratchFile* file : {&one, &two}) // the cache is empty again
        EXPECT_FALSE(
            AbcInputArchiveManager::get()->is_cached_archive_up_to_date(AbcFileList(CoreString(file->path()))));
}

TEST_F(ArchiveThreads, EvaluateSharedHandlesWhileTheArchiveIsReplaced)
{
    const ScratchFile file("square.abc");
    const AbcFileList files(CoreString(file.path()));
    write_square_archive(file.path(), 1);
    const std::unique_ptr<AbcInputArchiveHandle> shared(AbcInput::get_archive(files));
    std::atomic<int> wrong{0}, evaluated{0};
    run([&](int thread, int round) {
        if (thread == 0) {
            write_square_archive(file.path() + ".new", float(round + 2));
            std::filesystem::rename(file.path() + ".new", file.path());
            if (read_size(files) < 1) ++wrong; // replaces the archive under all the others
        } else if (thread == 1) {
            static_cast<void>(AbcInputArchiveManager::get()->is_cached_archive_up_to_date(files));
            with_bound_object<AbcG::IPolyMesh>(*shared, "/body/shape",
                                               [](AbcInputArchiveHandle&, const AbcG::IPolyMesh&) { return true; });
        } else if (thread < 5) {
            with_handle_object<AbcG::IPolyMesh>(*shared, [&](const AbcG::IPolyMesh& mesh) {
                if (mesh.getSchema().getValue().getPositions()->size() != 4) ++wrong;
                ++evaluated;
                return true;
            });
        } else if (read_size(files) < 1) {
            ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    AbcInput::release_archive(shared.get());
}
