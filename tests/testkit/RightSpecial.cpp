// Right commands: merging, composites, failures, and those that make fewer promises.

#include "RightCommands.h"
#include "SheetComposite.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

#include <new>

namespace sheet {

namespace {

using housekeeping::CompositeCommand;

/// Typing into one cell is one step.
class MergesItsSteps : public SetCell
{
public:
    explicit MergesItsSteps(SheetDocument& document)
        : MergesItsSteps(document, 1)
    { }
    MergesItsSteps(SheetDocument& document, int column)
        : SetCell(document, "Type", column, 1)
    {
        m_stack_identical = true;
    }
    bool stackWith(CommandPointer sp_newer) override
    {
        const auto* const p_newer = dynamic_cast<const MergesItsSteps*>(sp_newer.get());
        if (!p_newer || !same_cell(*p_newer)) {
            return false;
        }
        m_value = p_newer->m_value;
        return true;
    }
};

/// The same where a step may be cancelled: it is merged when it has run.
class MergesWhatHasRun : public SetCell
{
public:
    explicit MergesWhatHasRun(SheetDocument& document)
        : SetCell(document, "Type", 1, 1)
    {
        m_stack_identical = true;
    }
    bool stackWith(CommandPointer sp_newer) override
    {
        auto* const p_newer = dynamic_cast<MergesWhatHasRun*>(sp_newer.get());
        if (!p_newer || !same_cell(*p_newer)) {
            return false;
        }
        p_newer->m_p_older = this;
        return true;
    }
    void rollback() override { undo_command(); }

protected:
    void do_command() override
    {
        progress(0);
        SetCell::do_command();
        progress(100);
    }
    void finished(bool succeeded) override
    {
        if (succeeded && m_p_older) {
            m_p_older->m_value = m_value;
        }
        m_p_older = nullptr;
    }

private:
    MergesWhatHasRun* m_p_older = nullptr; // in the history while this one runs
};

/// Would merge, but each sets another cell.
class MayNotMerge : public MergesItsSteps
{
public:
    explicit MayNotMerge(SheetDocument& document)
        : MergesItsSteps(document, nth_of(document) % 4)
    { }
};

class CompositeOfNeighbours : public SheetComposite
{
public:
    explicit CompositeOfNeighbours(SheetDocument& document)
        : SheetComposite(document, "Scale two rows")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 0));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 2));
    }
};

/// Children that change the same cells are rolled back newest first.
class CompositeOnTheSameCells : public SheetComposite
{
public:
    explicit CompositeOnTheSameCells(SheetDocument& document)
        : SheetComposite(document, "Scale twice")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1, 2));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1, 5));
    }
    void rollback() override
    {
        for (auto child = commands().rbegin(); child != commands().rend(); ++child) {
            if (child->second) {
                child->first->rollback();
            }
        }
    }
};

class CompositeOfComposites : public SheetComposite
{
public:
    explicit CompositeOfComposites(SheetDocument& document)
        : SheetComposite(document, "Scale all")
    {
        add(boost::make_shared<CompositeOfNeighbours>(document));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1));
    }
};

/// Always fails, with nothing changed.
class Refuses : public SheetCommand
{
public:
    explicit Refuses(SheetDocument& document)
        : SheetCommand(document, "Take root")
    { }

protected:
    void do_command() override { fail("there are cells below nought"); }
};

/// Finds out half way that it cannot be done.
class FailsHalfWay : public ScaleRow
{
public:
    explicit FailsHalfWay(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        ScaleRow::do_command();
        fail("the sum gets too large");
    }
};

/// The first child fails and is passed over; it changed nothing, and its undo does no harm.
class PassesOverAChild : public SheetComposite
{
public:
    explicit PassesOverAChild(SheetDocument& document)
        : SheetComposite(document, "Take root and scale")
    {
        add(boost::make_shared<Refuses>(document));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1));
    }
};

/// What cannot be kept in memory is an expected failure.
class RunsOutOfMemory : public SheetCommand
{
public:
    explicit RunsOutOfMemory(SheetDocument& document)
        : SheetCommand(document, "Copy sheet")
    { }

protected:
    void do_command() override
    {
        try {
            sheet().heading = "half";
            throw std::bad_alloc();
        } catch (const std::bad_alloc&) {
            fail("there is not enough memory");
        }
    }
    void remember() override { m_old_heading = sheet().heading; }
    void undo_command() override
    {
        if (!m_old_heading.empty()) {
            sheet().heading = m_old_heading;
        }
    }

private:
    std::string m_old_heading;
};

class DoesNothing : public SheetCommand
{
public:
    explicit DoesNothing(SheetDocument& document)
        : SheetCommand(document, "Nothing")
    { }

protected:
    void do_command() override { }
};

/// Sets what is there already.
class SetsTheSame : public SetCell
{
public:
    explicit SetsTheSame(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    {
        m_value = cell();
    }
};

/// Runs, and is not kept: there is no undo.
class IsNotKept : public SetCell
{
public:
    explicit IsNotKept(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    {
        m_valid_undo = false;
    }
};

/// Undoing it empties the redo stack: there is no redo.
class IsNotRedone : public SetCell
{
public:
    explicit IsNotRedone(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    {
        m_clear_redo_when_undoing = true;
    }
};

/// Does not make its document busy.
class IsNeverBusy : public ScaleRow
{
public:
    explicit IsNeverBusy(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    {
        m_set_document_busy = false;
    }
};

/// Reads the headings of all open documents, and writes into its own.
class ReadsOtherDocuments : public SheetCommand
{
public:
    explicit ReadsOtherDocuments(SheetDocument& document)
        : SheetCommand(document, "Collect headings")
    { }

protected:
    void remember() override { m_old_heading = sheet().heading; }
    void do_command() override
    {
        std::string all;
        const housekeeping::DocumentManager& manager = housekeeping::DocumentManager::const_instance();
        for (const housekeeping::DocumentId& id : manager.current_documents()) {
            all += dynamic_cast<const SheetDocument&>(manager.document_from_id(id)).sheet().heading + ";";
        }
        sheet().heading = all;
    }
    void undo_command() override
    {
        if (!m_old_heading.empty()) {
            sheet().heading = m_old_heading;
        }
    }

private:
    std::string m_old_heading;
};

/// A request that comes behind the last report is not for the redo.
class ForgetsLateRequests : public ScaleRow
{
public:
    explicit ForgetsLateRequests(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void finished(bool) override { m_cancelled = false; }
};

/// Says what it is doing, in an undo run too.
class TalksALot : public ScaleRow
{
public:
    explicit TalksALot(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        progress_text("scaling");
        ScaleRow::do_command();
    }
    void undo_command() override
    {
        progress_text("going back");
        ScaleRow::undo_command();
    }
};

/// Takes back what it did where it throws, and has nothing left for rollback().
class CleansUpItself : public ScaleRow
{
public:
    explicit CleansUpItself(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (...) {
            undo_command();
            throw;
        }
    }
};

/// Asks nothing of its own, but takes back all where no child was done, whatever the user answered.
class GivesUpWhenAllFail : public SheetComposite
{
public:
    explicit GivesUpWhenAllFail(SheetDocument& document)
        : SheetComposite(document, "Scale two rows")
    {
        add(boost::make_shared<Counts>(document, m_done, 0));
        add(boost::make_shared<Counts>(document, m_done, 2));
    }

protected:
    void do_command() override
    {
        m_done = 0;
        SheetComposite::do_command();
        if (m_done == 0) {
            throw housekeeping::FailedCommandException(
                4711, "nothing could be done", "tests/testkit/RightSpecial", 1);
        }
    }

private:
    class Counts : public ScaleRow
    {
    public:
        Counts(SheetDocument& document, int& done, int row)
            : ScaleRow(document, "Scale row", row)
            , m_done(done)
        { }

    protected:
        void finished(bool) override { ++m_done; }

    private:
        int& m_done; // the composite's
    };

    int m_done = 0;
};

/// Has a mark for being done, and looks at it before each way.
class KnowsWhereItIs : public SheetCommand
{
public:
    explicit KnowsWhereItIs(SheetDocument& document)
        : SheetCommand(document, "Mark heading")
    { }

protected:
    void remember() override { }
    void do_command() override
    {
        if (!m_in_place) {
            m_old_heading = sheet().heading;
            sheet().heading += "+";
        }
        m_in_place = true;
    }
    void undo_command() override
    {
        if (m_in_place) {
            sheet().heading = m_old_heading;
        }
        m_in_place = false;
    }

private:
    std::string m_old_heading;
    bool m_in_place = false;
};

/// Counts itself out when it goes; of its sheet it holds nothing then.
class CleansUpWhenItGoes : public ScaleRow
{
public:
    explicit CleansUpWhenItGoes(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    {
        ++s_alive;
    }
    ~CleansUpWhenItGoes() override { --s_alive; }

private:
    static int s_alive;
};

int CleansUpWhenItGoes::s_alive = 0;

/// Marks its document as busy once more while it does the one half, and takes that mark away again.
class NestsItsBusyMark : public ScaleRow
{
public:
    explicit NestsItsBusyMark(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        housekeeping::DocumentManager& manager = housekeeping::DocumentManager::instance();
        manager.document_busy(document_id(), true);
        try {
            ScaleRow::do_command();
        } catch (...) {
            manager.document_busy(document_id(), false);
            throw;
        }
        manager.document_busy(document_id(), false);
    }
};

} // namespace

void add_right_special(std::vector<RightCommand>& all)
{
    const std::vector<Promise> never_succeeds{Promise::DoSucceeds, Promise::DoChanges, Promise::LogsNothing};
    const std::vector<Promise> changes_nothing{Promise::DoChanges};
    all.push_back(right<MergesItsSteps>("MergesItsSteps", "typing into one cell is one step"));
    all.push_back(
        right<MergesWhatHasRun>("MergesWhatHasRun", "the same, where a step may be cancelled", true));
    all.push_back(right<MayNotMerge>("MayNotMerge", "would merge, but sets other cells"));
    all.push_back(right<CompositeOfNeighbours>(
        "CompositeOfNeighbours", "a composite of children that have no cell in common", true));
    all.push_back(right<CompositeOnTheSameCells>(
        "CompositeOnTheSameCells", "a composite that rolls back newest child first", true));
    all.push_back(right<CompositeOfComposites>("CompositeOfComposites", "a composite in a composite", true));
    all.push_back(right<PassesOverAChild>("PassesOverAChild",
        "a composite one of whose children always fails, and is passed over", true, {Promise::LogsNothing}));
    all.push_back(right<Refuses>("Refuses", "always fails, with nothing changed", false, never_succeeds));
    all.push_back(
        right<FailsHalfWay>("FailsHalfWay", "fails after it has changed all", true, never_succeeds));
    all.push_back(right<RunsOutOfMemory>(
        "RunsOutOfMemory", "makes an expected failure of a std::bad_alloc", false, never_succeeds));
    all.push_back(right<CleansUpItself>("CleansUpItself", "takes back what it did before it throws", true));
    all.push_back(right<DoesNothing>("DoesNothing", "changes nothing", false, changes_nothing));
    all.push_back(right<SetsTheSame>("SetsTheSame", "sets what is there already", false, changes_nothing));
    all.push_back(right<IsNotKept>("IsNotKept", "runs, and cannot be undone"));
    all.push_back(right<IsNotRedone>("IsNotRedone", "can be undone, and then not redone"));
    all.push_back(right<IsNeverBusy>("IsNeverBusy", "does not make its document busy", true));
    all.push_back(right<ReadsOtherDocuments>("ReadsOtherDocuments", "reads all documents, changes its own"));
    all.push_back(right<ForgetsLateRequests>(
        "ForgetsLateRequests", "forgets a request to cancel that came too late", true));
    all.push_back(right<TalksALot>("TalksALot", "says what it does, in an undo run too", true));
    all.push_back(right<GivesUpWhenAllFail>(
        "GivesUpWhenAllFail", "a composite that fails where none of its children is done", true));
    all.push_back(right<KnowsWhereItIs>("KnowsWhereItIs", "knows whether it is done, and does no way twice"));
    all.push_back(right<CleansUpWhenItGoes>("CleansUpWhenItGoes", "counts itself out when it goes", true));
    all.push_back(right<NestsItsBusyMark>(
        "NestsItsBusyMark", "sets a busy mark of its own, and takes it away on every way out", true));
}

} // namespace sheet
