/// Prints each benchmark's best time as multiples of plain copies of the bytes that it delivers, timed in the same run.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Benchmarks set the counter "bytes" to what they deliver; those whose names start with "copy" are the copies. Of two
/// yardsticks the first is a copy of just as many bytes; the second goes by the largest copy's time for a byte, as that
/// one finds nothing in the cache.
class RatioReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
            const std::string name = run.run_name.function_name;
            if (best_.count(name) == 0) {
                order_.push_back(name);
                best_[name] = {1e300, 0.0};
            }
            Row& row = best_[name];
            row.seconds = std::min(row.seconds, run.real_accumulated_time / double(run.iterations));
            const auto bytes = run.counters.find("bytes");
            if (bytes != run.counters.end()) row.bytes = bytes->second.value;
        }
    }

    void Finalize() override
    {
        std::printf("%-36s %12s %12s %10s %14s\n", "task", "best ms", "MB", "copies", "large copies");
        for (const std::string& name : order_) {
            const Row& row = best_[name];
            std::printf("%-36s %12.3f %12.1f", name.c_str(), row.seconds * 1e3, row.bytes / 1e6);
            if (const double copy = copy_seconds(row.bytes); copy > 0.0) {
                std::printf(" %10.2f", row.seconds / copy);
                if (name.find("write") == std::string::npos)
                    std::printf(" %14.2f", row.seconds / (large_copy_rate() * row.bytes));
            }
            std::printf("\n");
        }
    }

private:
    struct Row
    {
        double seconds = 0.0;
        double bytes = 0.0;
    };

    double copy_seconds(double bytes) const
    {
        for (const auto& [name, row] : best_)
            if (name.rfind("copy", 0) == 0 && row.bytes == bytes) return row.seconds;
        return 0.0;
    }

    /// Seconds for a byte.
    double large_copy_rate() const
    {
        const auto found = best_.find("copy.mesh");
        return found == best_.end() ? std::nan("") : found->second.seconds / found->second.bytes;
    }

    std::map<std::string, Row> best_;
    std::vector<std::string> order_;
};
