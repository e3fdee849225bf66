#include "AssertionSubject.h"

#include "Assertion.h"

namespace {

const char* const s_source = "tests/AssertionSubject";

bool evaluate(bool holds, Checked& checked)
{
    ++checked.evaluations;
    return holds;
}

Checked plain_check(bool holds)
{
    Checked checked;
    checked.line = __LINE__ + 1;
    checked.value = HK_ASSERT(evaluate(holds, checked), "a && b");
    checked.went_on = true;
    return checked;
}

Checked check_with_a_line(bool holds)
{
    Checked checked;
    checked.line = 59;
    checked.value = HK_ASSERT_AT(evaluate(holds, checked), "at( c )", 59);
    checked.went_on = true;
    return checked;
}

Checked check_for_the_caller(bool holds)
{
    Checked checked;
    checked.line = __LINE__ + 1;
    checked.value = HK_ASSERT_IN(evaluate(holds, checked), "in", "void Caller::operation()");
    checked.went_on = true;
    return checked;
}

} // namespace

#ifdef NDEBUG
const AssertionSubject subject_of_release = {true, &plain_check, &check_with_a_line, &check_for_the_caller};
#else
const AssertionSubject subject_of_debugging
    = {false, &plain_check, &check_with_a_line, &check_for_the_caller};
#endif
