#pragma once

#include "support/Fakes.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <gtest/gtest.h>

#include <string>

namespace support {

/// Sees what a fatal error does without an application: journals "exit_main_loop" and captures the standard
/// error stream.
class FatalErrorProbe
{
public:
    FatalErrorProbe()
    {
        housekeeping::ErrorHandler::exit_main_loop_with([] { journal().add("exit_main_loop"); });
        testing::internal::CaptureStderr();
    }
    ~FatalErrorProbe()
    {
        housekeeping::ErrorHandler::exit_main_loop_with(nullptr);
        standard_error();
    }
    FatalErrorProbe(const FatalErrorProbe&) = delete;
    FatalErrorProbe& operator=(const FatalErrorProbe&) = delete;

    /// Ends the capture, the first time.
    const std::string& standard_error()
    {
        if (m_capturing) {
            m_capturing = false;
            m_text = testing::internal::GetCapturedStderr();
        }
        return m_text;
    }

    static int exits() { return journal().count("exit_main_loop"); }

private:
    bool m_capturing = true;
    std::string m_text;
};

} // namespace support
