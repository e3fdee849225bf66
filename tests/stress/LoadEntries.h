#pragma once

#include "Faults.h"
#include "LoadPlan.h"
#include "ShadowDocument.h"

#include <deque>
#include <string>
#include <vector>

namespace load {

// Entries in the error log: written in all the ways there are, and looked up again afterwards.

/// Writes the entry of a step of kind Entry or FatalText.
void write_entry(unsigned thread, const Step& step);
/// What it must look like.
std::string entry_text(unsigned thread, const Step& step);

/// The entries that the first steps of a thread leave in the log, in order; and, when all have been read,
/// what its document must be.
class ExpectedEntries
{
public:
    ExpectedEntries(const Plan& plan, unsigned thread, unsigned long long steps);

    /// The next entry; null at the end.
    const std::string* peek();
    void pop() { m_pending.pop_front(); }
    /// Goes to the end. @return how many entries were left
    unsigned long long skip_rest();

    /// How many there were so far.
    unsigned long long count() const { return m_count; }
    const ShadowDocument& document() const { return m_document; }

private:
    Plan m_plan;
    unsigned long long m_left; // steps
    ShadowDocument m_document;
    std::deque<std::string> m_pending;
    unsigned long long m_count = 0;
};

/**
 * Looks for every expected entry in the log, whole and in its thread's order, and for nothing else.
 * @param text the log from the first entry on
 * @param emptied whether a fatal error was logged as text meanwhile: then that entry stands first, and of
 * each thread only the last entries follow
 * @return how many entries there are
 */
unsigned long long check_log(
    const std::string& text, bool emptied, std::vector<ExpectedEntries>& expected, Faults& faults);

} // namespace load
