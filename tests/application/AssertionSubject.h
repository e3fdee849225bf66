#pragma once

#include <string>

/// What a failed or passed check did.
struct Checked
{
    bool value = false; ///< of the check itself
    int evaluations = 0; ///< of its condition
    bool went_on = false; ///< to the statement after it
    unsigned int line = 0; ///< in which it stands
};

/// The library's three kinds of checks, in one source file that is compiled twice: as in a release, with
/// NDEBUG, and as for debugging, without.
struct AssertionSubject
{
    bool has_ndebug;
    Checked (*check)(bool holds); ///< "a && b"
    Checked (*check_at)(bool holds); ///< "at( c )", in line 59
    Checked (*check_in)(bool holds); ///< "in", in "void Caller::operation()"
};

extern const AssertionSubject subject_of_release;
extern const AssertionSubject subject_of_debugging;
