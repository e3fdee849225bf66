#pragma once

#include "LoadPlan.h"

#include <string>
#include <vector>

namespace load {

/// The lines of an undo or redo list, most recent first: name and description.
typedef std::vector<std::string> HistoryLines;

/**
 * What a thread's document and its entries in the error log must become: the rules of commands and histories
 * once more, without the framework, one step after the other.
 */
class ShadowDocument
{
public:
    explicit ShadowDocument(unsigned thread);

    /// Does a step. @return the entries that it leaves in the log, each whole
    std::vector<std::string> run(const Step& step);

    HistoryLines undo_lines() const { return lines_of(m_undo); }
    HistoryLines redo_lines() const { return lines_of(m_redo); }
    const std::vector<unsigned>& numbers() const { return m_numbers; }
    unsigned long long sum() const { return m_sum; }

    // How many messages its runs and changes send.
    unsigned long long done = 0;
    unsigned long long undone = 0;
    unsigned long long failed = 0;
    unsigned long long history_changes = 0;
    unsigned long long times_busy = 0; ///< if no other thread marks the document

private:
    struct Command
    {
        Kind kind = Kind::Plain;
        std::string name;
        std::string description;
        std::vector<unsigned> values;
        std::size_t added = 0;
        bool cancels = false; ///< when it is done next
        bool outcome = false; ///< as a child
        std::vector<Command> children;
    };
    typedef std::vector<Command> Stack; // the back is the most recent one
    typedef std::vector<std::string> Entries;

    static HistoryLines lines_of(const Stack& stack);
    static std::string protocol(const char* prefix, const Command& command, bool succeeded);
    static Command make(Kind kind, const std::string& name, unsigned value);

    void insert(const Step& step, Entries& entries);
    bool merge(const Command& newer);
    void undo(Entries& entries);
    void redo(Entries& entries);
    void do_run(Command& command, Entries& entries);
    bool execute(Command& command, Entries& entries);
    bool execute_children(Command& command, Entries& entries);
    void add(Command& command);
    void take_back(Command& command);

    unsigned m_thread;
    Stack m_undo;
    Stack m_redo;
    std::vector<unsigned> m_numbers;
    unsigned long long m_sum = 0;
};

} // namespace load
