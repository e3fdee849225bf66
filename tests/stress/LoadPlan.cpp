#include "LoadPlan.h"

namespace load {

namespace {

struct Entry
{
    Kind kind;
    const char* name;
    unsigned weight;
};

/// How often each kind occurs. Undo and redo keep the histories short, or they would grow for ever.
const Entry s_entries[s_kinds] = {
    {Kind::Plain, "plain", 14},
    {Kind::Merging, "merging", 14},
    {Kind::Composite, "composite", 8},
    {Kind::Cancelled, "cancelled", 4},
    {Kind::Failing, "failing", 3},
    {Kind::Passing, "passing", 3},
    {Kind::ClearsRedo, "clearing redo", 3},
    {Kind::Unmarked, "unmarked", 4},
    {Kind::Marked, "marked", 5},
    {Kind::Undo, "undo", 14},
    {Kind::Redo, "redo", 8},
    {Kind::ForeignMark, "foreign mark", 4},
    {Kind::Dispatch, "dispatch", 8},
    {Kind::Post, "post", 8},
    {Kind::Entry, "log entry", 12},
    {Kind::FatalText, "fatal error as text", 0},
};

Kind kind_of(unsigned long long number)
{
    unsigned all = 0;
    for (const Entry& entry : s_entries) {
        all += entry.weight;
    }
    auto left = static_cast<unsigned>(number % all);
    for (const Entry& entry : s_entries) {
        if (left < entry.weight) {
            return entry.kind;
        }
        left -= entry.weight;
    }
    return Kind::Plain;
}

} // namespace

const char* name_of(Kind kind)
{
    return s_entries[static_cast<unsigned>(kind)].name;
}

std::vector<Kind> children_of(const Step& step)
{
    std::vector<Kind> children(2 + step.value % 3, Kind::Plain);
    switch (step.value / 3 % 4) {
    case 1:
        children.front() = Kind::Cancelled;
        break;
    case 2:
        children.front() = Kind::Failing; // which is passed over
        break;
    case 3:
        children.back() = Kind::Failing; // which takes everything back
        break;
    default:
        break;
    }
    return children;
}

unsigned times_of(const Step& step)
{
    if (step.kind == Kind::Redo) {
        return 1 + step.value % 5;
    }
    return step.value % 50 == 0 ? 400 : 1 + step.value % 7;
}

Plan::Plan(unsigned long long seed, unsigned thread, const Mix& mix)
    : m_mix(mix)
    , m_thread(thread)
    , m_random(seed * 1000 + thread)
{ }

Step Plan::next()
{
    Step step = {kind_of(m_random()), m_number++, static_cast<unsigned>(m_random() % 1000000)};
    const bool undoes = step.kind == Kind::Undo || step.kind == Kind::Redo;
    if ((undoes && !m_mix.undo) || (step.kind == Kind::ForeignMark && !m_mix.foreign_marks)) {
        step.kind = Kind::Entry;
    }
    if (m_thread == 0 && m_mix.fatal_text > 0 && step.number == m_mix.fatal_text) {
        step.kind = Kind::FatalText;
    }
    return step;
}

} // namespace load
