#pragma once

#include <random>
#include <string>
#include <vector>

namespace load {

/// What a thread does in one step.
enum class Kind : unsigned
{
    // A command of this kind is inserted.
    Plain,
    Merging, ///< absorbed by the last command if that is one too
    Composite,
    Cancelled, ///< cancelled when it is done, but not when it is redone
    Failing,
    Passing, ///< not kept in the history
    ClearsRedo,
    Unmarked, ///< does not make its document busy
    Marked, ///< a plain one, inserted while the thread itself marks the document busy
    Undo, ///< several times
    Redo, ///< several times
    ForeignMark, ///< another thread's document is marked busy for a while
    Dispatch, ///< a message of some family is sent at once
    Post, ///< a message of some family is posted
    Entry, ///< an entry is written to the error log
    FatalText ///< a fatal error is logged as text, which empties the log
};
constexpr unsigned s_kinds = 16;

const char* name_of(Kind kind);

struct Step
{
    Kind kind;
    unsigned long long number; ///< 0, 1, 2, ... in its thread
    unsigned value; ///< what the kind leaves open
};

/// The children of a step's composite command: plain ones, among which one may be cancelled or fail.
std::vector<Kind> children_of(const Step& step);
/// How often a step undoes or redoes.
unsigned times_of(const Step& step);

/// What may occur in a plan.
struct Mix
{
    bool foreign_marks = true;
    bool undo = true; ///< undo and redo; without them no entry of the log occurs twice
    /// The step in which the first thread logs a fatal error as text; 0 for none.
    unsigned long long fatal_text = 0;
};

/// The steps of one thread, one after the other, without end; the same ones for the same arguments.
class Plan
{
public:
    Plan(unsigned long long seed, unsigned thread, const Mix& mix);

    Step next();

private:
    Mix m_mix;
    unsigned m_thread;
    std::mt19937_64 m_random;
    unsigned long long m_number = 0;
};

} // namespace load
