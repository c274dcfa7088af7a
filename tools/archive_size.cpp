#include "archive_size.h"

#include "stored_view.h"

#include <Alembic/AbcGeom/IGeomParam.h>
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>
#include <unordered_set>

namespace {

constexpr std::uint64_t worth_saying = 4096; // bytes; less is not worth anybody's time

std::uint64_t file_size(const std::string& file)
{
    std::error_code ignored;
    const std::uintmax_t size = std::filesystem::file_size(file, ignored);
    return ignored ? 0 : size;
}

std::uint64_t scalar_bytes(const StoredProperty& property, std::size_t sample)
{
    const AbcA::DataType type = property.get_header().getDataType();
    if (!property.is_string()) return type.getNumBytes();
    const AbcA::ArraySamplePtr values = property.read(sample);
    std::uint64_t bytes = 0;
    with_stored_type(type.getPod(), [&](auto* pointer) {
        using Value = std::remove_cv_t<std::remove_pointer_t<decltype(pointer)>>;
        if constexpr (std::is_class_v<Value> && !std::is_same_v<Value, Alembic::Util::float16_t>)
            for (std::size_t i = 0; i < type.getExtent(); ++i)
                bytes +=
                    (static_cast<const Value*>(values->getData())[i].size() + 1) * sizeof(typename Value::value_type);
    });
    return bytes;
}

class Measuring
{
public:
    Measuring(const ArchiveSession& session, SizeUnit unit)
        : session_(session)
        , unit_(unit)
    {
    }

    ArchiveSize measure(const std::vector<std::string>& files)
    {
        for (const std::string& file : files)
            size_.file_bytes += file_size(file);
        walk_stored_objects(
            session_.get_archive().getTop().getPtr(),
            [&](const AbcA::ObjectReaderPtr& object) {
                structure_bytes_ += 200;
                for (const StoredProperty& property : list_stored_properties(object, fail_))
                    try_to_add(object->getFullName(), property);
            },
            fail_);
        if (size_.unreadable.is_empty()) look_for_copies();
        std::stable_sort(size_.entries.begin(), size_.entries.end(),
                         [](const SizeEntry& a, const SizeEntry& b) { return a.bytes > b.bytes; });
        return std::move(size_);
    }

private:
    void try_to_add(const std::string& object, const StoredProperty& property)
    {
        try {
            add(object, property);
        } catch (const std::exception& exception) {
            fail_(object, property.get_path(), reason_in(exception.what()));
        }
    }

    void add(const std::string& object, const StoredProperty& property)
    {
        if (property.is_compound()) return;
        const std::size_t sample_count = property.get_sample_count();
        structure_bytes_ += 100 + 40 * std::uint64_t(sample_count);
        const bool is_of_last_object =
            unit_ == SizeUnit::OBJECT && !size_.entries.empty() && size_.entries.back().object == object;
        if (unit_ != SizeUnit::SAMPLE && !is_of_last_object) size_.entries.push_back({object, property.get_path()});
        if (unit_ == SizeUnit::OBJECT) size_.entries.back().property.clear();
        std::uint64_t stored_bytes = 0;
        std::size_t repeated_count = 0;
        for (std::size_t sample = 0; sample < sample_count; ++sample) {
            repeated_count += property.repeats(sample) ? 1 : 0;
            const bool is_scalar = property.get_header().isScalar();
            AbcA::ArraySampleKey key;
            if (is_scalar)
                key = property.read(sample)->getKey();
            else
                property.get_key(sample, key);
            const std::uint64_t bytes = is_scalar ? scalar_bytes(property, sample) : key.numBytes;
            const bool is_stored = digests_.insert(key.digest).second;
            if (unit_ == SizeUnit::SAMPLE)
                size_.entries.push_back({object, property.get_path(), static_cast<std::int64_t>(sample)});
            count_sample(bytes, is_stored);
            if (is_stored) stored_bytes += bytes;
        }
        if (sample_count > 1 && !property.is_constant() && repeated_count == sample_count - 1)
            size_.hints.add(Severity::PLAIN, object, property.get_path(),
                            fmt::format("stored as animated, but all {} samples are equal", sample_count));
        look_for_doubles(object, property, stored_bytes);
        look_for_repeated_values(object, property, stored_bytes);
    }

    void count_sample(std::uint64_t bytes, bool is_stored)
    {
        SizeEntry& entry = size_.entries.back();
        ++entry.samples;
        entry.stored += is_stored ? 1 : 0;
        (is_stored ? entry.bytes : entry.shared) += bytes;
        (is_stored ? size_.sample_bytes : size_.shared_bytes) += bytes;
    }

    void hint(const std::string& object, const std::string& property, std::uint64_t saved, const std::string& what)
    {
        if (saved < worth_saying) return;
        Finding finding;
        finding.object = object;
        finding.property = property;
        finding.what = fmt::format("{}; about {} bytes less", what, saved);
        finding.details["saved_bytes"] = saved;
        size_.hints.add(std::move(finding));
    }

    void look_for_doubles(const std::string& object, const StoredProperty& property, std::uint64_t stored_bytes)
    {
        if (property.get_header().isArray() &&
            property.get_header().getDataType().getPod() == Alembic::Util::kFloat64POD)
            hint(object, property.get_path(), stored_bytes / 2, "doubles, where floats may do");
    }

    /// Values of corners that are the same at many corners are stored once when they are indexed.
    void look_for_repeated_values(const std::string& object, const StoredProperty& property, std::uint64_t stored_bytes)
    {
        const AbcA::PropertyHeader& header = property.get_header();
        if (!header.isArray() || !Alembic::AbcGeom::IsGeomParam(header) || property.is_string() ||
            stored_bytes < worth_saying || header.getMetaData().get("geoScope") != "fvr" ||
            header.getName() == ".vals") // of a parameter that is indexed
            return;
        const AbcA::ArraySamplePtr sample = property.read(0);
        const std::size_t element_size = sample->getDataType().getNumBytes();
        if (sample->size() == 0) return;
        std::unordered_set<std::string_view> values;
        for (std::size_t i = 0; i < sample->size(); ++i)
            values.emplace(static_cast<const char*>(sample->getData()) + i * element_size, element_size);
        const std::uint64_t plain = sample->size() * element_size;
        const std::uint64_t indexed = values.size() * element_size + sample->size() * sizeof(std::uint32_t);
        if (indexed < plain)
            hint(object, property.get_path(), stored_bytes / plain * (plain - indexed),
                 fmt::format("only {} of {} values are different: store them indexed", values.size(), sample->size()));
    }

    /// What the samples and an estimate of the structure leave over are equal samples that the writer stored again.
    void look_for_copies()
    {
        const std::uint64_t expected = size_.sample_bytes + structure_bytes_;
        if (size_.file_bytes <= expected) return;
        const std::uint64_t rest = size_.file_bytes - expected;
        if (rest > size_.shared_bytes / 2)
            hint("", "", std::min(rest, size_.shared_bytes), "equal samples are stored more than once: write it anew");
    }

    const ArchiveSession& session_;
    const SizeUnit unit_;
    ArchiveSize size_;
    const StoredFailure fail_ = [this](const std::string& object, const std::string& property,
                                       const std::string& reason) {
        size_.unreadable.add(Severity::ERROR, object, property, reason);
    };
    std::uint64_t structure_bytes_ = 0;       ///< names, headers, groups: an estimate, on the high side
    std::set<Alembic::Util::Digest> digests_; ///< of stored bytes: what is equal is shared whatever its type
};

} // namespace

ArchiveSize measure_archive(const ArchiveSession& session, const std::vector<std::string>& files, SizeUnit unit)
{
    return Measuring(session, unit).measure(files);
}
