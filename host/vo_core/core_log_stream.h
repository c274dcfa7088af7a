/// Text of one log message, put together with `<<`.
#pragma once

#include <string>
#include <type_traits>

#include "vo_core/core_string.h"

class VO_HOST_EXPORT CoreLogStream
{
public:
    CoreLogStream& operator<<(const char* text);
    CoreLogStream& operator<<(const std::string& text);
    CoreLogStream& operator<<(const CoreBasicString& text);
    CoreLogStream& operator<<(char character);
    CoreLogStream& operator<<(bool value); ///< "true" or "false"
    /// Shortest text that reads back as the same number; independent of the locale.
    CoreLogStream& operator<<(double value);
    CoreLogStream& operator<<(float value);
    template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer>>>
    CoreLogStream& operator<<(Integer value)
    {
        text_ += std::to_string(value);
        return *this;
    }

    const char* get_data() const { return text_.c_str(); } ///< zero-terminated, valid until the next `<<`
    std::size_t get_count() const { return text_.size(); } ///< bytes without the zero
    CoreString get_string() const { return CoreString(text_); }
    bool is_empty() const { return text_.empty(); }
    void clear() { text_.clear(); }

private:
    std::string text_;
};
