#pragma once

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <boost/current_function.hpp>

/**
 * Soft assertions: a failed one is written to the error log, and execution goes on. They have a value, true
 * if the condition holds, so that the code after them can step around what failed:
 *
 *     if (!HK_ASSERT(m_model, "!utilities::null_pointer(m_model)")) {
 *         return false;
 *     }
 *
 * The text is part of the log's format and passed separately, since it does not always read like the
 * condition. A source file that uses them defines the constant `s_source`, its own name as the log shows it,
 * in an anonymous namespace. Not to be used inside lambdas and templates, whose signatures cannot be read.
 */
#define HK_ASSERT_FULL(condition, text, function, line)                                                      \
    ((condition)                                                                                             \
            ? true                                                                                           \
            : (::tarqa::housekeeping::ErrorProtocol::instance().log_assert(text, function, s_source, line),  \
                false))

#define HK_ASSERT(condition, text) HK_ASSERT_FULL(condition, text, BOOST_CURRENT_FUNCTION, __LINE__)

/// With a line that is part of the log's format.
#define HK_ASSERT_AT(condition, text, line) HK_ASSERT_FULL(condition, text, BOOST_CURRENT_FUNCTION, line)

/// In a helper, on behalf of the operation that was called: its signature is what readers of the log look
/// for.
#define HK_ASSERT_IN(condition, text, function) HK_ASSERT_FULL(condition, text, function, __LINE__)
