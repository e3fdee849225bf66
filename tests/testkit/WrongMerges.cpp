// Commands that merge with the one before, and lose something.

#include "SheetCommand.h"
#include "WrongCommands.h"

#include <tarqa/housekeeping/CompositeCommand.h>

#include <boost/make_shared.hpp>

#include <stdexcept>

namespace sheet {

namespace {

/// Sets a cell, and merges with the next one that does.
class Typing : public SetCell
{
public:
    Typing(SheetDocument& document, int column)
        : SetCell(document, "Type", column, 1)
    {
        m_stack_identical = true;
    }

protected:
    const Typing* typing(const CommandPointer& sp_newer) const
    {
        return dynamic_cast<const Typing*>(sp_newer.get());
    }
};

/// Takes the newer one in without its value: a redo brings back the first of the two only.
class MergeLosesAStep : public Typing
{
public:
    explicit MergeLosesAStep(SheetDocument& document)
        : Typing(document, 1)
    { }
    bool stackWith(CommandPointer sp_newer) override { return typing(sp_newer) != nullptr; }
};

/// Takes what the cell holds at the merge for what it held before both: undo goes half the way.
class MergeKeepsTheWrongEnd : public Typing
{
public:
    explicit MergeKeepsTheWrongEnd(SheetDocument& document)
        : Typing(document, 1)
    { }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergeKeepsTheWrongEnd*>(sp_newer.get());
        if (!p_newer) {
            return false;
        }
        m_old_value = cell();
        m_value = p_newer->m_value;
        return true;
    }
};

/// Merges with one that sets another cell.
class MergesWithStrangers : public Typing
{
public:
    explicit MergesWithStrangers(SheetDocument& document)
        : Typing(document, nth_of(document) % 4)
    { }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergesWithStrangers*>(sp_newer.get());
        if (!p_newer) {
            return false;
        }
        m_value = p_newer->m_value;
        return true;
    }
};

/// Adds the newer one's text at the merge; then the newer one runs, and adds it once more.
class MergeDoesTheStepItself : public SheetCommand
{
public:
    explicit MergeDoesTheStepItself(SheetDocument& document)
        : SheetCommand(document, "Type")
        , m_text(1, static_cast<char>('a' + nth_of(document)))
    {
        m_stack_identical = true;
    }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergeDoesTheStepItself*>(sp_newer.get());
        if (!p_newer) {
            return false;
        }
        m_text += p_newer->m_text;
        sheet().heading += p_newer->m_text;
        return true;
    }

protected:
    void remember() override { m_old_heading = sheet().heading; }
    void do_command() override { sheet().heading += m_text; }
    void undo_command() override
    {
        if (!m_old_heading.empty()) { // it has run
            sheet().heading = m_old_heading;
        }
    }

private:
    std::string m_text;
    std::string m_old_heading;
};

/// Takes the newer one's value in before that has run: a redo does what was cancelled.
class MergeDoesNotWait : public Typing
{
public:
    explicit MergeDoesNotWait(SheetDocument& document)
        : Typing(document, 1)
    { }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergeDoesNotWait*>(sp_newer.get());
        if (!p_newer) {
            return false;
        }
        m_value = p_newer->m_value;
        return true;
    }
    void rollback() override { undo_command(); }

protected:
    void do_command() override
    {
        progress(0);
        Typing::do_command();
        progress(100);
    }
};

/// Says that it cannot be merged, and has merged all the same.
class MergeRefusesTooLate : public Typing
{
public:
    explicit MergeRefusesTooLate(SheetDocument& document)
        : Typing(document, 1)
    { }
    bool stackWith(CommandPointer sp_newer) override
    {
        if (const auto* const p_newer = dynamic_cast<const MergeRefusesTooLate*>(sp_newer.get())) {
            m_value = p_newer->m_value;
        }
        return false;
    }
};

/// A child that merges if the newer one sets the same cell.
class TypingChild : public Typing
{
public:
    TypingChild(SheetDocument& document, int column)
        : Typing(document, column)
    { }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const TypingChild*>(sp_newer.get());
        if (!p_newer || !same_cell(*p_newer)) {
            return false;
        }
        m_value = p_newer->m_value;
        return true;
    }
};

/// Two composites merge, of whose children only the first ones have something in common.
class MergedCompositeLosesAChild : public housekeeping::CompositeCommand
{
public:
    explicit MergedCompositeLosesAChild(SheetDocument& document)
        : CompositeCommand(document.id(), "Type twice", true)
    {
        push_back(boost::make_shared<TypingChild>(document, 0));
        push_back(boost::make_shared<TypingChild>(document, 1 + nth_of(document) % 3));
    }
};

/// Takes it for a mistake that it is asked.
class ThrowsInStackWith : public Typing
{
public:
    explicit ThrowsInStackWith(SheetDocument& document)
        : Typing(document, 1)
    { }
    bool stackWith(CommandPointer) override { throw std::logic_error("cannot be merged"); }
};

/// Appends a letter to the heading, and takes in how many the newer ones append: undo takes that many away,
/// whether they ran or not.
class MergeCountsWhatDidNotRun : public SheetCommand
{
public:
    explicit MergeCountsWhatDidNotRun(SheetDocument& document)
        : SheetCommand(document, "Type")
    {
        m_stack_identical = true;
    }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergeCountsWhatDidNotRun*>(sp_newer.get());
        m_letters += p_newer ? p_newer->m_letters : 0;
        return p_newer != nullptr;
    }

protected:
    void remember() override { m_done = true; }
    void do_command() override { sheet().heading.append(m_letters, 'a'); }
    void undo_command() override
    {
        if (m_done) {
            sheet().heading.resize(sheet().heading.size() - m_letters);
        }
        m_done = false;
    }

private:
    std::size_t m_letters = 1;
    bool m_done = false;
};

} // namespace

void add_wrong_merges(std::vector<WrongCommand>& all)
{
    all.push_back(wrong<MergeLosesAStep>("MergeLosesAStep",
        "absorbs the newer command without its value, so redo brings back half", Promise::MergeKeepsSteps,
        "merged, redo 1", {Promise::MultiRedoRepeats}));
    all.push_back(wrong<MergeKeepsTheWrongEnd>("MergeKeepsTheWrongEnd",
        "takes what is there at the merge for what was there first, so undo goes half the way",
        Promise::MergeKeepsSteps, "merged, undo 1", {Promise::MultiUndoRestores}));
    all.push_back(
        wrong<MergesWithStrangers>("MergesWithStrangers", "absorbs a command that changes something else",
            Promise::MergeKeepsSteps, "merged, undo 1", {Promise::MultiUndoRestores}));
    all.push_back(wrong<MergeDoesTheStepItself>("MergeDoesTheStepItself",
        "does the newer command's step in stackWith(), though that runs by itself", Promise::MergeKeepsSteps,
        "merged, redo 1", {Promise::MultiRedoRepeats}));
    all.push_back(wrong<MergeDoesNotWait>("MergeDoesNotWait",
        "absorbs the newer command before that has run, so redo does what was cancelled",
        Promise::MergeWaitsForTheRun, "merged, the second cancelled at report 1"));
    all.push_back(
        wrong<MergeRefusesTooLate>("MergeRefusesTooLate", "absorbs the newer command and returns false",
            Promise::MultiRedoRepeats, "several, at first, redo 1"));
    all.push_back(wrong<MergedCompositeLosesAChild>("MergedCompositeLosesAChild",
        "composites merge that have only some of their children in common", Promise::MergeKeepsSteps,
        "merged, undo 1", {Promise::MultiUndoRestores}));
    all.push_back(wrong<ThrowsInStackWith>(
        "ThrowsInStackWith", "its stackWith() throws", Promise::ThrowsNothing, "merged, the second"));
    all.push_back(wrong<MergeCountsWhatDidNotRun>("MergeCountsWhatDidNotRun",
        "takes in what the newer command is going to do, and undoes it where that did not run",
        Promise::MergeKeepsSteps, "merged, the second listed and not run, undo"));
}

} // namespace sheet
