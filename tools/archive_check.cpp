#include "archive_check.h"

#include "geometry_check.h"
#include "stored_view.h"

#include <fmt/format.h>

#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace {

/// Numbers of one sample that are not finite.
struct BadNumbers
{
    std::uint64_t count = 0, first_element = 0;
};

template <class T>
BadNumbers find_bad_numbers(const T* values, std::size_t element_count, std::size_t extent)
{
    BadNumbers bad;
    for (std::size_t i = 0; i < element_count * extent; ++i) {
        if (std::isfinite(static_cast<double>(values[i]))) continue;
        if (bad.count++ == 0) bad.first_element = i / extent;
    }
    return bad;
}

BadNumbers find_bad_numbers(const AbcA::ArraySample& sample)
{
    const std::size_t extent = sample.getDataType().getExtent();
    switch (sample.getDataType().getPod()) {
    case Alembic::Util::kFloat16POD:
        return find_bad_numbers(static_cast<const Alembic::Util::float16_t*>(sample.getData()), sample.size(), extent);
    case Alembic::Util::kFloat32POD:
        return find_bad_numbers(static_cast<const float*>(sample.getData()), sample.size(), extent);
    case Alembic::Util::kFloat64POD:
        return find_bad_numbers(static_cast<const double*>(sample.getData()), sample.size(), extent);
    default:
        return {};
    }
}

class ArchiveCheck
{
public:
    explicit ArchiveCheck(const ArchiveSession& session)
        : session_(session)
    {
    }

    Findings check()
    {
        walk_stored_objects(
            session_.get_archive().getTop().getPtr(), [&](const AbcA::ObjectReaderPtr& object) { visit(object); },
            fail_);
        check_instances();
        check_sample_counts();
        return std::move(findings);
    }

    Findings findings;

private:
    /// The number of samples of a property on a sampling.
    struct SampleCount
    {
        std::string object, property;
        std::size_t count = 0;
    };

    void visit(const AbcA::ObjectReaderPtr& object)
    {
        const std::string path = object->getFullName();
        paths_.insert(path);
        const std::vector<StoredProperty> properties = list_stored_properties(object, fail_);
        bool is_readable = true;
        for (const StoredProperty& property : properties) {
            try {
                is_readable = check_property(path, property) && is_readable;
            } catch (const std::exception& exception) {
                fail_(path, property.get_path(), reason_in(exception.what()));
                is_readable = false;
            }
        }
        if (is_readable) check_schema(object, properties);
    }

    void check_schema(const AbcA::ObjectReaderPtr& object, const std::vector<StoredProperty>& properties)
    {
        if (object->getMetaData().get("isInstance") == "1") return; // its metadata may be those of what it stands for
        try {
            check_geometry(object, properties, findings);
            check_transform_or_camera(object, findings);
        } catch (const std::exception& exception) {
            fail_(object->getFullName(), "", reason_in(exception.what()));
        }
    }

    /// False when a sample cannot be read.
    bool check_property(const std::string& object, const StoredProperty& property)
    {
        const std::size_t sample_count = property.get_sample_count();
        remember_count(object, property, sample_count);
        if (property.get_path() == ".instanceSource" && sample_count > 0)
            instances_.emplace_back(object, *static_cast<const std::string*>(property.read(0)->getData()));
        bool is_readable = true;
        for (std::size_t sample = 0; sample < sample_count; ++sample) {
            try {
                if (property.repeats(sample)) continue;
                check_numbers(object, property, sample, *property.read(sample));
            } catch (const std::exception& exception) {
                findings.add_sample(Severity::ERROR, object, property.get_path(), sample, property.get_time(sample),
                                    "cannot be read: " + reason_in(exception.what()));
                is_readable = false;
            }
        }
        return is_readable;
    }

    void check_numbers(const std::string& object, const StoredProperty& property, std::size_t sample,
                       const AbcA::ArraySample& values)
    {
        const BadNumbers bad = find_bad_numbers(values);
        if (bad.count == 0) return;
        findings.add_sample(Severity::ERROR, object, property.get_path(), sample, property.get_time(sample),
                            fmt::format("{} not finite, the first in element {}",
                                        counted(bad.count, "number is", "numbers are"), bad.first_element));
    }

    void remember_count(const std::string& object, const StoredProperty& property, std::size_t count)
    {
        const AbcA::TimeSamplingPtr sampling = property.get_header().getTimeSampling();
        if (!sampling || count < 2) return; // one sample holds at all times
        if (sampling->getTimeSamplingType().isAcyclic() && count > sampling->getNumStoredTimes())
            findings.add(Severity::ERROR, object, property.get_path(),
                         fmt::format("{} samples, but its sampling has {}. Was the export interrupted?", count,
                                     counted(sampling->getNumStoredTimes(), "time", "times")));
        if (property.is_constant() || is_default(*sampling)) return;
        const auto [rank, is_new] = sampling_ranks_.emplace(sampling.get(), sample_counts_.size());
        if (is_new) sample_counts_.emplace_back();
        sample_counts_[rank->second].push_back({object, property.get_path(), count});
    }

    /// The sampling that every archive has: what shares it need have nothing else in common.
    static bool is_default(const AbcA::TimeSampling& sampling)
    {
        return sampling.getTimeSamplingType().isUniform() && sampling.getTimeSamplingType().getTimePerCycle() == 1.0 &&
               sampling.getStoredTimes().at(0) == 0.0;
    }

    /// Properties that share a sampling and move have as many samples each, unless writing them was broken off.
    void check_sample_counts()
    {
        for (const std::vector<SampleCount>& properties : sample_counts_) {
            std::size_t most = 0;
            for (const SampleCount& property : properties)
                most = std::max(most, property.count);
            for (const SampleCount& property : properties)
                if (property.count < most)
                    findings.add(Severity::WARNING, property.object, property.property,
                                 fmt::format("{} of {} samples {} missing at the end: others on the same sampling have "
                                             "them",
                                             most - property.count, most, most - property.count == 1 ? "is" : "are"));
        }
    }

    void check_instances()
    {
        for (const auto& [path, source] : instances_)
            if (paths_.count(source) == 0)
                findings.add(Severity::ERROR, path, "", "an instance of " + source + ", which is not there");
    }

    const ArchiveSession& session_;
    const StoredFailure fail_ = [this](const std::string& object, const std::string& property,
                                       const std::string& reason) {
        findings.add(Severity::ERROR, object, property, "cannot be read: " + reason);
    };
    std::unordered_set<std::string> paths_;
    std::vector<std::pair<std::string, std::string>> instances_; ///< object and source
    std::vector<std::vector<SampleCount>> sample_counts_;        ///< of each sampling
    std::unordered_map<const AbcA::TimeSampling*, std::size_t> sampling_ranks_;
};

} // namespace

Findings check_archive(const ArchiveSession& session, const std::vector<std::string>& files)
{
    ArchiveCheck check(session);
    for (const std::string& file : files)
        if (find_storage(file) == "HDF5")
            check.findings.add(
                Severity::WARNING, "", "",
                file + ": stored as HDF5, which is read by one thread at a time. 'vo_abc convert' makes it Ogawa.");
    return check.check();
}
