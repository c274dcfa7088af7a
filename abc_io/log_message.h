/// log_message: one message to the host's main log handler.
#pragma once

#include <vo_core/core_log_handler.h>
#include <vo_core/core_log_stream.h>

/// Levels of the module's messages; a handler writes those up to its own level.
constexpr int log_level_error = 1;
constexpr int log_level_warning = 2;
constexpr int log_level_statistics = 3;

/// Sends what `write(stream)` puts into the stream. The message is built only when the handler's level is at least
/// `level`.
template <class Write>
void log_message(int level, Write&& write)
{
    CoreLogHandler* const handler = CoreLogHandler::s_main_log_handler;
    if (!handler || handler->get_level() < level) return;
    CoreLogStream stream;
    write(stream);
    handler->log(level, stream);
}
