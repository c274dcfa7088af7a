/// The host's string.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_basic_string.h"

class VO_HOST_EXPORT CoreString : public CoreBasicString
{
public:
    enum SplitFlag {
        SPLIT_FLAG_KEEP_EMPTY = 0, ///< "/a//b" gives "", "a", "", "b"
        SPLIT_FLAG_SKIP_EMPTY = 1, ///< "/a//b" gives "a", "b"
    };

    using CoreBasicString::CoreBasicString;
    CoreString() = default;
    CoreString(const CoreBasicString& other)
        : CoreBasicString(other)
    {
    }
    CoreString(std::string_view text)
        : CoreBasicString(std::string(text))
    {
    }
    CoreString(const char* bytes, std::size_t count)
        : CoreBasicString(std::string(bytes, count))
    {
    }

    /// Replaces the text; null counts as "". `text` may lie in this string.
    void set_data(const char* text) { text_ = std::string(text ? text : ""); }
    void set_data(const char* bytes, std::size_t count) { text_ = std::string(bytes, count); }
    void clear() { text_.clear(); }

    CoreString& operator+=(const CoreBasicString& other)
    {
        text_ += other.get_view();
        return *this;
    }
    CoreString& operator+=(char character)
    {
        text_ += character;
        return *this;
    }
    friend CoreString operator+(const CoreString& a, const CoreString& b) { return CoreString(a.text_ + b.text_); }

    /// The parts between the separators, in order; a text without separator is one part, an empty text one empty part.
    /// An empty separator splits nothing.
    void split(const CoreBasicString& separator, CoreArray<CoreString>& parts,
               const int& flag = SPLIT_FLAG_KEEP_EMPTY) const;
};
