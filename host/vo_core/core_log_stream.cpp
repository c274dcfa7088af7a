/// Text of one log message.
#include "vo_core/core_log_stream.h"

#include <charconv>

namespace {

template <class Number>
void append_shortest(std::string& text, Number value)
{
    char buffer[64]; // the longest shortest form of a double has 24 characters
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value);
    text.append(buffer, result.ptr);
}

} // namespace

CoreLogStream& CoreLogStream::operator<<(const char* text)
{
    text_ += text ? text : "(null)";
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(const std::string& text)
{
    text_ += text;
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(const CoreBasicString& text)
{
    text_ += text.get_view();
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(char character)
{
    text_ += character;
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(bool value)
{
    text_ += value ? "true" : "false";
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(double value)
{
    append_shortest(text_, value);
    return *this;
}

CoreLogStream& CoreLogStream::operator<<(float value)
{
    append_shortest(text_, value);
    return *this;
}
