/// Logging: thresholds, replacement, threads, one handler per process.
#include "vo_core/core_base_object.h"
#include "vo_core/core_log_handler.h"
#include "vo_of/of_file_reference_context_engine.h"

#include <atomic>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

class CountingHandler : public CoreLogHandler
{
public:
    CountingHandler()
        : CoreLogHandler(LEVEL_INFO)
    {
    }
    void log(int, const CoreLogStream&) override { ++count; }
    std::atomic<int> count{0};
};

// What a library that finds the symbol on its own gets to see.
void* find_symbol(const char* mangled_name)
{
    return dlsym(RTLD_DEFAULT, mangled_name);
}

} // namespace

TEST(CoreLogHandler, WritesMessagesUpToItsLevel)
{
    std::ostringstream stream;
    CoreLogHandler handler(CoreLogHandler::LEVEL_WARNING, &stream);
    handler.log(1, CoreLogStream() << "error " << 3u << "\n");
    handler.log(3, CoreLogStream() << "statistics\n");
    handler.set_level(CoreLogHandler::LEVEL_INFO);
    handler.log(3, CoreLogStream() << CoreString("size ") << 0.1 << ' ' << -7 << ' ' << true << "\n");
    EXPECT_EQ(stream.str(), "error 3\nsize 0.1 -7 true\n");
}

TEST(CoreLogHandler, MessagesOfSeveralThreadsStayInOnePiece)
{
    std::ostringstream stream;
    CoreLogHandler handler(CoreLogHandler::LEVEL_INFO, &stream);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&handler, thread] {
            for (int i = 0; i < 250; ++i)
                handler.log(1, CoreLogStream() << "thread " << thread << " line " << i << "\n");
        });
    for (std::thread& thread : threads)
        thread.join();
    std::istringstream lines(stream.str());
    std::set<std::string> seen;
    for (std::string line; std::getline(lines, line);)
        seen.insert(line);
    EXPECT_EQ(seen.size(), 1000u);
    EXPECT_TRUE(seen.count("thread 3 line 249"));
}

TEST(CoreLogHandler, CanBeReplacedWhileOthersLog)
{
    CountingHandler first, second;
    CoreLogHandler* const original = CoreLogHandler::s_main_log_handler.exchange(&first);
    ASSERT_NE(original, nullptr);
    std::thread logger([] {
        for (int i = 0; i < 2000; ++i)
            CoreLogHandler::s_main_log_handler->log(1, CoreLogStream() << i);
    });
    for (int i = 0; i < 1000; ++i)
        CoreLogHandler::s_main_log_handler = i % 2 == 0 ? &second : &first;
    logger.join();
    CoreLogHandler::s_main_log_handler = original;
    EXPECT_EQ(first.count + second.count, 2000);
}

TEST(CoreLogHandler, ThereIsOneMainHandlerForAllLibraries)
{
    void* const seen = find_symbol("_ZN14CoreLogHandler18s_main_log_handlerE");
    EXPECT_EQ(seen, static_cast<void*>(&CoreLogHandler::s_main_log_handler));
}

TEST(CoreBaseObject, ClassesAreOneObjectForAllLibraries)
{
    using ClassInfo = const CoreClassInfo& (*)();
    const OfFileReferenceContextEngine engine; // its base classes live in two libraries
    const ClassInfo base_info = reinterpret_cast<ClassInfo>(find_symbol("_ZN14CoreBaseObject10class_infoEv"));
    ASSERT_NE(base_info, nullptr);
    EXPECT_TRUE(engine.is_kindof(base_info()));
    EXPECT_TRUE(engine.is_kindof(OfContextEngine::class_info()));
    EXPECT_STREQ(engine.get_class_info().get_name(), "OfFileReferenceContextEngine");
    EXPECT_FALSE(OfContextEngine::class_info().is_kindof(OfFileReferenceContextEngine::class_info()));
}
