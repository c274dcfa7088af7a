/// Strings: searching, splitting, printing.
#include "vo_core/core_string.h"

#include <ostream>
#include <vector>

bool CoreBasicString::start_with(const CoreBasicString& prefix) const
{
    return get_view().substr(0, prefix.text_.size()) == prefix.text_;
}

bool CoreBasicString::end_with(const CoreBasicString& suffix) const
{
    const std::string_view view = get_view();
    return view.size() >= suffix.text_.size() && view.substr(view.size() - suffix.text_.size()) == suffix.text_;
}

bool CoreBasicString::contains(const CoreBasicString& part) const
{
    return text_.find(part.text_) != std::string::npos;
}

std::ostream& operator<<(std::ostream& stream, const CoreBasicString& string)
{
    return stream << string.text_;
}

void CoreString::split(const CoreBasicString& separator, CoreArray<CoreString>& parts, const int& flag) const
{
    const std::string_view text = get_view();
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = separator.is_empty() ? text.npos : text.find(separator.get_view(), begin);
        const std::string_view part = text.substr(begin, end == text.npos ? text.npos : end - begin);
        if (!part.empty() || flag != SPLIT_FLAG_SKIP_EMPTY) found.push_back(part);
        if (end == text.npos) break;
        begin = end + separator.get_count();
    }
    CoreArray<CoreString> result(found.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        result[i] = CoreString(found[i]);
    parts = std::move(result);
}
