#include "archive_difference.h"

#include "stored_view.h"
#include "tool_error.h"
#include "value_difference.h"

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <sstream>

namespace {

constexpr double same_time = 1e-9; // seconds: what reckoning with frame rates loses, and no more

using Objects = std::vector<AbcA::ObjectReaderPtr>;

template <class T>
std::string to_text(const T& value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

const char* get_property_kind(const AbcA::PropertyHeader& header)
{
    return header.isCompound() ? "a compound" : header.isScalar() ? "a scalar" : "an array";
}

/// Index of each name.
template <class Item, class Name>
std::map<std::string, const Item*> index_by(const std::vector<Item>& items, Name&& name)
{
    std::map<std::string, const Item*> index;
    for (const Item& item : items)
        index.emplace(name(item), &item);
    return index;
}

/// Calls `both(a, b)` for items of one name in both lists, and `one(item, is_first)` for all others: first in the order
/// of the first list, then in that of the second.
template <class Item, class Name, class Both, class One>
void match(const std::vector<Item>& first, const std::vector<Item>& second, Name&& name, Both&& both, One&& one)
{
    const auto first_index = index_by(first, name), second_index = index_by(second, name);
    for (const Item& item : first) {
        const auto partner = second_index.find(name(item));
        if (partner == second_index.end())
            one(item, true);
        else
            both(item, *partner->second);
    }
    for (const Item& item : second)
        if (first_index.count(name(item)) == 0) one(item, false);
}

std::string parent_of(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

} // namespace

/// One property in both archives.
class ArchiveDifference::PropertyPair
{
public:
    PropertyPair(const std::string& object, const StoredProperty& first, const StoredProperty& second, double tolerance,
                 Findings& findings)
        : object_(object)
        , first_(first)
        , second_(second)
        , tolerance_(tolerance)
        , findings_(findings)
    {
    }

    void compare()
    {
        const AbcA::PropertyHeader &a = first_.get_header(), &b = second_.get_header();
        if (a.getPropertyType() != b.getPropertyType())
            return add(fmt::format("{}, and {}", get_property_kind(a), get_property_kind(b)));
        if (a.isCompound()) return;
        if (a.getDataType() != b.getDataType())
            add(fmt::format("of type {}, and of type {}", to_text(a.getDataType()), to_text(b.getDataType())));
        compare_samplings();
        if (!are_comparable(a.getDataType(), b.getDataType())) return;
        const std::size_t count = std::min(first_.get_sample_count(), second_.get_sample_count());
        for (std::size_t i = 0; i < count; ++i)
            compare_sample(i);
    }

private:
    void add(const std::string& what) { findings_.add(Severity::PLAIN, object_, first_.get_path(), what); }

    void compare_samplings()
    {
        const std::size_t a = first_.get_sample_count(), b = second_.get_sample_count();
        if (a != b) add(fmt::format("{} and {}", counted(a, "sample", "samples"), counted(b, "sample", "samples")));
        if (a < 2 && b < 2) return; // a single sample is there at all times
        for (std::size_t i = 0; i < std::min(a, b); ++i) {
            const double first_time = first_.get_time(i), second_time = second_.get_time(i);
            if (std::fabs(first_time - second_time) <= same_time) continue;
            return add(
                fmt::format("other times: sample {} is at {:.9g} s and at {:.9g} s", i, first_time, second_time));
        }
    }

    void compare_sample(std::size_t sample)
    {
        const AbcA::ArraySamplePtr a = read(first_, sample, "first"), b = read(second_, sample, "second");
        if (!a || !b) return;
        if (a->size() != b->size())
            return add_sample(sample, fmt::format("{} and {}", counted(a->size(), "element", "elements"),
                                                  counted(b->size(), "element", "elements")));
        const ValueDifference difference = find_difference(*a, *b, tolerance_);
        if (difference.differing_count > 0) add_difference(sample, difference);
    }

    AbcA::ArraySamplePtr read(const StoredProperty& property, std::size_t sample, const char* archive)
    {
        try {
            return property.read(sample);
        } catch (const std::exception& exception) {
            add_sample(sample,
                       fmt::format("cannot be read in the {} archive: {}", archive, reason_in(exception.what())));
            return nullptr;
        }
    }

    void add_difference(std::size_t sample, const ValueDifference& difference)
    {
        std::string what;
        if (difference.element_count > 1)
            what = fmt::format("{} of {} elements differ; element {}: ", difference.differing_count,
                               difference.element_count, difference.element);
        what += difference.first + " and " + difference.second;
        Json details{{"differing", difference.differing_count}, {"elements", difference.element_count}};
        if (difference.is_numeric) {
            what += fmt::format(", {:.6g} apart", difference.greatest);
            details["greatest_difference"] = difference.greatest;
        }
        details["element"] = difference.element;
        findings_.add({Severity::PLAIN, object_, first_.get_path(), static_cast<std::int64_t>(sample),
                       first_.get_time(sample), what, details});
    }

    void add_sample(std::size_t sample, const std::string& what)
    {
        findings_.add_sample(Severity::PLAIN, object_, first_.get_path(), sample, first_.get_time(sample), what);
    }

    const std::string& object_;
    const StoredProperty &first_, &second_;
    const double tolerance_;
    Findings& findings_;
};

Findings ArchiveDifference::compare(const AbcA::ObjectReaderPtr& first, const AbcA::ObjectReaderPtr& second)
{
    const auto collect = [&](const AbcA::ObjectReaderPtr& top, const std::string& archive) {
        Objects objects;
        walk_stored_objects(
            top, [&](const AbcA::ObjectReaderPtr& object) { objects.push_back(object); },
            [&](const std::string& object, const std::string& property, const std::string& reason) {
                findings_.add(Severity::PLAIN, object, property, archive + ": cannot be read: " + reason);
            });
        return objects;
    };
    const Objects first_objects = collect(first, first_name_), second_objects = collect(second, second_name_);
    std::string skipped[2]; // what is below an object in one archive only is not worth a line of its own
    match(
        first_objects, second_objects, [](const AbcA::ObjectReaderPtr& object) { return object->getFullName(); },
        [&](const AbcA::ObjectReaderPtr& a, const AbcA::ObjectReaderPtr& b) {
            if (a->getFullName() != "/") compare_metadata(a->getFullName(), "", a->getMetaData(), b->getMetaData());
            compare_properties(a, b);
        },
        [&](const AbcA::ObjectReaderPtr& object, bool is_first) {
            const std::string path = object->getFullName();
            std::string& above = skipped[is_first ? 0 : 1];
            if (!above.empty() && parent_of(path).compare(0, above.size(), above) == 0 &&
                (parent_of(path).size() == above.size() || parent_of(path)[above.size()] == '/'))
                return;
            above = path;
            findings_.add(Severity::PLAIN, path, "", only_in(is_first));
        });
    return std::move(findings_);
}

void ArchiveDifference::compare_properties(const AbcA::ObjectReaderPtr& first, const AbcA::ObjectReaderPtr& second)
{
    const std::string object = first->getFullName();
    const auto list = [&](const AbcA::ObjectReaderPtr& reader, const std::string& archive) {
        return list_stored_properties(
            reader, [&](const std::string&, const std::string& property, const std::string& reason) {
                findings_.add(Severity::PLAIN, object, property, archive + ": cannot be read: " + reason);
            });
    };
    const std::vector<StoredProperty> first_list = list(first, first_name_), second_list = list(second, second_name_);
    match(
        first_list, second_list, [](const StoredProperty& property) { return property.get_path(); },
        [&](const StoredProperty& a, const StoredProperty& b) {
            compare_metadata(object, a.get_path(), a.get_header().getMetaData(), b.get_header().getMetaData());
            try {
                PropertyPair(object, a, b, tolerance_, findings_).compare();
            } catch (const std::exception& exception) {
                findings_.add(Severity::PLAIN, object, a.get_path(), "cannot be read: " + reason_in(exception.what()));
            }
        },
        [&](const StoredProperty& property, bool is_first) {
            findings_.add(Severity::PLAIN, object, property.get_path(), only_in(is_first));
        });
}

void ArchiveDifference::compare_metadata(const std::string& object, const std::string& property,
                                         const AbcA::MetaData& first, const AbcA::MetaData& second)
{
    std::map<std::string, std::pair<std::string, std::string>> values;
    for (const auto& [key, value] : first)
        values[key].first = value;
    for (const auto& [key, value] : second)
        values[key].second = value;
    for (const auto& [key, pair] : values)
        if (pair.first != pair.second)
            findings_.add(Severity::PLAIN, object, property,
                          fmt::format("metadata {}: \"{}\" and \"{}\"", key, pair.first, pair.second));
}

std::string ArchiveDifference::only_in(bool is_first) const
{
    return "only in " + (is_first ? first_name_ : second_name_);
}
