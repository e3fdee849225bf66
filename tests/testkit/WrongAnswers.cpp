// Composites that are wrong when their question is answered.

#include "SheetComposite.h"
#include "WrongCommands.h"

#include <tarqa/housekeeping/CancelCommandException.h>

#include <boost/make_shared.hpp>

namespace sheet {

namespace {

using housekeeping::CancelCommandException;
using housekeeping::CompositeCommand;

/// Takes the answer Cancel for a child that was cancelled, and goes on.
class SwallowsTheAnswer : public SheetComposite
{
public:
    explicit SwallowsTheAnswer(SheetDocument& document)
        : SheetComposite(document, "Scale two rows")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 0));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 2));
    }

protected:
    void do_command() override
    {
        try {
            CompositeCommand::do_command();
        } catch (const CancelCommandException&) {
            // "the children that are done are done"
        }
        progress(100); // a request to cancel is noticed here
    }
};

/// Cleans up by itself where it is cancelled, and rolls back whole runs: one that failed half way stays.
class RollsBackWholeRunsOnly : public ScaleRow
{
public:
    RollsBackWholeRunsOnly(SheetDocument& document, int row)
        : ScaleRow(document, "Scale row", row)
    { }
    void rollback() override
    {
        if (m_done) {
            undo_command();
        }
    }

protected:
    void do_command() override
    {
        m_done = false;
        try {
            ScaleRow::do_command();
        } catch (const CancelCommandException&) {
            undo_command();
            throw;
        }
        m_done = true;
    }

private:
    bool m_done = false;
};

/// A composite with such a child in front: only where it is cancelled after that one failed, it shows.
class LeavesTheDebrisOfAChild : public SheetComposite
{
public:
    explicit LeavesTheDebrisOfAChild(SheetDocument& document)
        : SheetComposite(document, "Scale two rows")
    {
        add(boost::make_shared<RollsBackWholeRunsOnly>(document, 0));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 2));
    }
};

/// Adds a mark; undo takes the last one away, whether the run came so far or not.
class AddsAMarkAtLast : public SheetCommand
{
public:
    explicit AddsAMarkAtLast(SheetDocument& document)
        : SheetCommand(document, "Add mark")
        , m_mark({sheet().fresh_number(), "rock", 2})
    { }
    void rollback() override { sheet().marks.resize(m_before); }

protected:
    void remember() override { m_before = sheet().marks.size(); }
    void do_command() override
    {
        report(0, 1);
        sheet().marks.push_back(m_mark);
        report(1, 1);
    }
    void undo_command() override { sheet().marks.pop_back(); }

private:
    Mark m_mark;
    std::size_t m_before = 0;
};

/// A composite with such a child at its end, which keeps undo away from all that was rolled back. Not from a
/// last child that failed and was passed over.
class UndoesAChildThatWasPassedOver : public SheetComposite
{
public:
    explicit UndoesAChildThatWasPassedOver(SheetDocument& document)
        : SheetComposite(document, "Scale and mark")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 0));
        add(boost::make_shared<AddsAMarkAtLast>(document));
    }
    void rollback() override
    {
        SheetComposite::rollback();
        m_done = false;
    }

protected:
    void remember() override
    {
        SheetComposite::remember();
        m_done = true;
    }
    void undo_command() override
    {
        if (m_done) {
            SheetComposite::undo_command();
        }
        m_done = false;
    }

private:
    bool m_done = false;
};

} // namespace

void add_wrong_answers(std::vector<WrongCommand>& all)
{
    all.push_back(wrong<SwallowsTheAnswer>("SwallowsTheAnswer",
        "a composite takes the answer Cancel for a cancelled child, and counts as done",
        Promise::CancelIsHeeded, "the question answered with Cancel"));
    all.push_back(wrong<LeavesTheDebrisOfAChild>("LeavesTheDebrisOfAChild",
        "a composite has a child that does not roll back the half of a failed run", Promise::CancelRestores,
        "at report 2 of 11 (12 %), the question answered with Cancel"));
    all.push_back(wrong<UndoesAChildThatWasPassedOver>("UndoesAChildThatWasPassedOver",
        "a composite undoes its last child, which failed before it did anything", Promise::FailureRestores,
        "the question answered with Yes to All", {Promise::UnexpectedFailureIsUndone}));
}

} // namespace sheet
