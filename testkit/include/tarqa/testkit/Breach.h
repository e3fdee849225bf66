#pragma once

#include <tarqa/testkit/Promise.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/// A promise that a command broke; see RoundTripProof. A value.
struct TQ_HK_TESTKIT_EXPORT Breach
{
    Promise promise = Promise::DoSucceeds; ///< which one
    std::string command; ///< what the proof calls the command
    std::string
        where; ///< the experiment and the step of it, "cancelled at report 2 of 5 (40 %), undo" for example
    std::string difference; ///< what is wrong there: the first line of the digest that differs, or a sentence

    /// All of it in one line: "UndoRestores: Rotate, do and undo, undo 2: line 3 is "b", not "a"".
    std::string text() const;
};

/// One line for each breach, and an empty text for none; for the message of a failed test.
TQ_HK_TESTKIT_EXPORT std::string text_of(const std::vector<Breach>& breaches);

/// Where two digests differ: "line 3 is "b", not "a"", lines counted from 1 and long ones cut around the
/// place; empty if they are equal. Bytes that cannot be printed are shown as \\xNN.
TQ_HK_TESTKIT_EXPORT std::string first_difference(const std::string& expected, const std::string& actual);

} // namespace tarqa::housekeeping::testkit
