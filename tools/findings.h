/// Findings: what a subcommand has to say about an archive, place by place.
#pragma once

#include "text.h"

#include <cstdint>
#include <string>
#include <vector>

enum class Severity {
    PLAIN,   ///< neither good nor bad: a difference
    WARNING, ///< works, but is hardly meant
    ERROR,   ///< readers refuse it, or read something else than was meant
};

struct Finding
{
    Severity severity = Severity::PLAIN;
    std::string object;       ///< full name; empty: the archive
    std::string property;     ///< below its object, as ".geom/P"; empty: the object itself
    std::int64_t sample = -1; ///< -1: not about one sample
    double time = 0.0;        ///< seconds, of the sample
    std::string what;
    Json details = Json::object(); ///< numbers for scripts, beyond the text
};

class Findings
{
public:
    void add(Finding finding);
    void add(Severity severity, const std::string& object, const std::string& property, const std::string& what);
    void add_sample(Severity severity, const std::string& object, const std::string& property, std::size_t sample,
                    double time, const std::string& what);

    bool is_empty() const { return findings_.empty(); }
    std::size_t count(Severity severity) const;
    std::size_t get_count() const { return findings_.size(); }

    /// Object by object in the order of their first finding. Of each property and severity only the first `max_samples`
    /// findings about single samples are printed, and how many more there are.
    void print(std::size_t max_samples) const;
    /// All of them: objects with "object", "property", "sample", "time" where they apply, "what", and the details.
    Json to_json() const;

private:
    std::vector<Finding> findings_;
};
