/// @file
/// What a walk over a hostile archive may spend, and how it meets errors.
#pragma once

#include "archive_walk.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace vo_fuzz {

/// A file may hold any number of references to one block: a walk ends after so many steps and bytes.
class WalkBudget
{
public:
    static constexpr int most_depth = 60; // frames are large in programs with sanitizers

    explicit WalkBudget(WalkReport& report)
        : report_(report)
    {
    }

    bool left() const { return steps_ < 5000 && bytes_ < (std::uint64_t(8) << 20); }
    bool spend()
    {
        ++steps_;
        return left();
    }
    bool spend_sample(std::uint64_t bytes)
    {
        ++report_.samples;
        bytes_ += bytes;
        return spend();
    }

    /// Does something that may throw a std::exception. Anything else that it throws ends the program.
    template <class Act>
    void attempt(const Act& act)
    {
        if (!left()) return;
        try {
            act();
        } catch (const std::exception& error) {
            note(error.what());
        }
    }

    void note(const std::string& text)
    {
        const std::string trimmed = text.substr(0, text.find_last_not_of('\n') + 1);
        if (report_.errors.size() < 100) report_.errors.insert(trimmed.substr(trimmed.rfind('\n') + 1));
    }

    /// A broken promise of the library: what no input may bring about.
    [[noreturn]] static void fail(const char* what)
    {
        std::fprintf(stderr, "broken promise: %s\n", what);
        std::abort();
    }

    /// The first two samples, one in the middle, and the last.
    static std::vector<Alembic::AbcCoreAbstract::index_t> sample_indices(std::size_t count)
    {
        const auto end = static_cast<Alembic::AbcCoreAbstract::index_t>(count);
        std::vector<Alembic::AbcCoreAbstract::index_t> indices = {0, 1, end / 2, end - 1};
        std::sort(indices.begin(), indices.end());
        indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
        indices.erase(std::lower_bound(indices.begin(), indices.end(), end), indices.end());
        indices.erase(indices.begin(), std::lower_bound(indices.begin(), indices.end(), 0));
        return indices;
    }

protected:
    WalkReport& report_;

private:
    std::size_t steps_ = 0;
    std::uint64_t bytes_ = 0;
};

} // namespace vo_fuzz
