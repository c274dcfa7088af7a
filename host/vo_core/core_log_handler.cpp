/// Where log messages go.
#include "vo_core/core_log_handler.h"

#include <iostream>

// Never destroyed: other libraries may still log while the process ends.
CoreAtomicPointer<CoreLogHandler> CoreLogHandler::s_main_log_handler(new CoreLogHandler);

CoreLogHandler::CoreLogHandler(int level, std::ostream* stream)
    : level_(level)
    , stream_(stream ? *stream : std::cerr)
{
}

CoreLogHandler::~CoreLogHandler() = default;

void CoreLogHandler::log(int level, const CoreLogStream& message)
{
    if (level > get_level()) return;
    const std::lock_guard<std::mutex> lock(stream_mutex_);
    stream_.write(message.get_data(), static_cast<std::streamsize>(message.get_count()));
    stream_.flush();
}
