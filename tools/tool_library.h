/// ToolLibrary: the module, started for the tool, and its log.
#pragma once

#include "tool_application.h"

#include <vo_core/core_log_handler.h>

#include <string>

/// The module's messages go to standard error as the tool's own. While `collect` runs, they are kept instead.
class ToolLog : public CoreLogHandler
{
public:
    ToolLog() = default;

    void log(int level, const CoreLogStream& message) override;

    /// What is logged up to `level` while `work()` runs, exceptions included.
    template <class Work>
    std::string collect(int level, Work&& work)
    {
        const Collection collection(*this, level);
        work();
        return collection.text;
    }

    /// Writes collected messages after all.
    static void write(const std::string& text);

private:
    struct Collection
    {
        Collection(ToolLog& owner, int level);
        ~Collection();

        ToolLog& log;
        int previous_level;
        std::string text;
    };

    Collection* collection_ = nullptr;
};

/// The module lives as long as this object: one at a time.
class ToolLibrary
{
public:
    ToolLibrary();
    ~ToolLibrary();
    ToolLibrary(const ToolLibrary&) = delete;
    ToolLibrary& operator=(const ToolLibrary&) = delete;

    /// The application that archives are written by.
    static ToolApplication& get_application();
    static ToolLog& get_log();

private:
    static ToolLibrary* s_library;

    ToolApplication application_;
    ToolLog log_;
    CoreLogHandler* previous_log_;
};
