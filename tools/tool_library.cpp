#include "tool_library.h"

#include "text.h"

#include <abc_input.h>

#include <cstdio>

ToolLibrary* ToolLibrary::s_library = nullptr;

void ToolLog::log(int level, const CoreLogStream& message)
{
    if (level > get_level()) return;
    if (collection_)
        collection_->text += message.get_data();
    else
        write(message.get_data());
}

void ToolLog::write(const std::string& text)
{
    std::fflush(stdout);
    for (const std::string& line : split_lines(text))
        print_message(printable(line));
}

ToolLog::Collection::Collection(ToolLog& owner, int level)
    : log(owner)
    , previous_level(owner.get_level())
{
    log.collection_ = this;
    log.set_level(level);
}

ToolLog::Collection::~Collection()
{
    log.collection_ = nullptr;
    log.set_level(previous_level);
}

ToolLibrary::ToolLibrary()
    : application_(VO_ABC_VERSION)
    , previous_log_(CoreLogHandler::s_main_log_handler.exchange(&log_))
{
    s_library = this;
    AbcInput::init(&application_);
}

ToolLibrary::~ToolLibrary()
{
    AbcInput::destroy();
    CoreLogHandler::s_main_log_handler = previous_log_;
    s_library = nullptr;
}

ToolApplication& ToolLibrary::get_application()
{
    return s_library->application_;
}

ToolLog& ToolLibrary::get_log()
{
    return s_library->log_;
}
