/// @file
/// Expects that nothing is printed to standard error while the object lives.
#pragma once

#include <gtest/gtest.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include <sanitizer/common_interface_defs.h>

#include <cstdint>
#include <unistd.h>
#endif

class QuietErrors
{
public:
    QuietErrors()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        // What a sanitizer finds ends the program: its report must not end in the capture.
        static const int reports = dup(STDERR_FILENO);
        __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(reports)));
#endif
        testing::internal::CaptureStderr();
    }
    ~QuietErrors()
    {
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;
};
