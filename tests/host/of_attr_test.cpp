/// Attributes, their registry and contexts.
#include "vo_of/of_attr.h"
#include "vo_of/of_context.h"
#include "vo_of/of_file_reference_context_engine.h"

#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

const CoreArray<CoreString> one_path{"walk.abc"};

} // namespace

TEST(OfAttr, OnlyLivingPathAttributesAreRegistered)
{
    const unsigned int before = OfAttr::get_path_attrs().get_count();
    {
        OfAttr path("filename", OfAttr::TYPE_PATH, OfAttr::VisualHint(2), nullptr, one_path);
        OfAttr text("comment", OfAttr::TYPE_STRING, OfAttr::VISUAL_HINT_DEFAULT, nullptr, one_path);
        const CoreSet<OfAttr*> attrs = OfAttr::get_path_attrs();
        EXPECT_EQ(attrs.get_count(), before + 1);
        EXPECT_TRUE(attrs.contains(&path) && !attrs.contains(&text));
    }
    EXPECT_EQ(OfAttr::get_path_attrs().get_count(), before);
}

TEST(OfAttr, TheRegistryServesSeveralThreads)
{
    const unsigned int before = OfAttr::get_path_attrs().get_count();
    std::vector<std::unique_ptr<OfAttr>> kept[4];
    std::vector<std::thread> threads;
    for (auto& mine : kept)
        threads.emplace_back([&mine] {
            for (int i = 0; i < 300; ++i) {
                const OfAttr passing("p", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_SAVE, nullptr, one_path);
                EXPECT_TRUE(OfAttr::get_path_attrs().contains(const_cast<OfAttr*>(&passing)));
                if (i % 100 == 0)
                    mine.push_back(std::make_unique<OfAttr>("k", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN,
                                                            nullptr, one_path));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(OfAttr::get_path_attrs().get_count(), before + 12);
}

TEST(OfAttr, HasCurrentAndDefaultValues)
{
    OfAttr attr("filename", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, nullptr, one_path);
    attr.set_string(2, "~/run.abc");
    EXPECT_EQ(attr.get_string(0, OfAttr::ValuePage(0), true), "walk.abc");
    EXPECT_EQ(attr.get_string(1, OfAttr::VALUE_PAGE_CURRENT, true), "");
    EXPECT_EQ(attr.get_string(2, OfAttr::VALUE_PAGE_CURRENT, false), "~/run.abc");
    EXPECT_EQ(attr.get_string(2, OfAttr::VALUE_PAGE_DEFAULT, true), "");
    const char* const home = std::getenv("HOME");
    EXPECT_EQ(attr.get_string(2, OfAttr::VALUE_PAGE_CURRENT, true), home ? CoreString(home) + "/run.abc" : "~/run.abc");
}

TEST(OfContext, LeadsFromAnAttributeToTheEngineThatReloads)
{
    int reloads = 0;
    OfContext file_context("walk", std::make_unique<OfFileReferenceContextEngine>([&reloads] { ++reloads; }));
    const OfContext plain_context("folder");
    const OfAttr attr("filename", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &file_context, one_path);
    OfContextEngine* const engine = attr.get_context()->get_engine();
    ASSERT_TRUE(engine && engine->is_kindof(OfFileReferenceContextEngine::class_info()));
    static_cast<OfFileReferenceContextEngine*>(engine)->reload();
    EXPECT_EQ(reloads, 1);
    EXPECT_EQ(plain_context.get_engine(), nullptr);
    EXPECT_FALSE(attr.is_kindof(OfContext::class_info()));
}
