/// Read interface of the host's strings.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "vo_core/export.h"

/// UTF-8 text, stored with a terminating zero. Comparison is by bytes, which orders UTF-8 by code point.
class VO_HOST_EXPORT CoreBasicString
{
public:
    CoreBasicString() = default;
    CoreBasicString(const char* text)
        : text_(text ? text : "")
    {
    } ///< zero-terminated; null counts as ""
    CoreBasicString(std::string text)
        : text_(std::move(text))
    {
    }

    /// Zero-terminated; valid until the string changes.
    const char* get_data() const { return text_.c_str(); }
    /// Bytes without the terminating zero; never characters.
    unsigned int get_count() const { return static_cast<unsigned int>(text_.size()); }
    unsigned int get_size() const { return get_count(); } ///< same as `get_count`
    bool is_empty() const { return text_.empty(); }
    std::string_view get_view() const { return text_; }
    char operator[](std::size_t index) const { return text_[index]; }

    bool start_with(const CoreBasicString& prefix) const;
    bool end_with(const CoreBasicString& suffix) const;
    bool contains(const CoreBasicString& part) const;

    friend bool operator==(const CoreBasicString& a, const CoreBasicString& b) { return a.text_ == b.text_; }
    friend bool operator!=(const CoreBasicString& a, const CoreBasicString& b) { return a.text_ != b.text_; }
    friend bool operator<(const CoreBasicString& a, const CoreBasicString& b) { return a.text_ < b.text_; }
    friend bool operator>(const CoreBasicString& a, const CoreBasicString& b) { return b < a; }
    friend bool operator<=(const CoreBasicString& a, const CoreBasicString& b) { return !(b < a); }
    friend bool operator>=(const CoreBasicString& a, const CoreBasicString& b) { return !(a < b); }
    friend VO_HOST_EXPORT std::ostream& operator<<(std::ostream& stream, const CoreBasicString& string);

protected:
    std::string text_;
};
