// Commands that are wrong when they are cancelled or fail.

#include "SheetComposite.h"
#include "WrongCommands.h"

#include <tarqa/housekeeping/CancelCommandException.h>

#include <boost/make_shared.hpp>

#include <stdexcept>

namespace sheet {

namespace {

using housekeeping::CancelCommandException;
using housekeeping::CompositeCommand;
using housekeeping::FailedCommandException;

/// Takes nothing back.
class LeavesDebris : public ScaleRow
{
public:
    explicit LeavesDebris(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { }
};

/// Cleans up where it is cancelled, and has not thought of failures.
class LeavesDebrisWhenItFails : public ScaleRow
{
public:
    explicit LeavesDebrisWhenItFails(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const CancelCommandException&) {
            undo_command();
            throw;
        }
    }
};

/// The other way round.
class LeavesDebrisWhenCancelled : public ScaleRow
{
public:
    explicit LeavesDebrisWhenCancelled(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const FailedCommandException&) {
            undo_command();
            throw;
        }
    }
};

/// Counts a cell as done when it was reported, and so does not take back the one that it was at.
class RollsBackOneTooFew : public SheetCommand
{
public:
    explicit RollsBackOneTooFew(SheetDocument& document)
        : SheetCommand(document, "Clear")
    { }
    void rollback() override
    {
        for (std::size_t i = 0; i < m_done; ++i) {
            sheet().cells[i] = m_old_cells[i];
        }
    }

protected:
    void do_command() override
    {
        const std::size_t total = sheet().cells.size();
        for (m_done = 0; m_done < total; ++m_done) {
            sheet().cells[m_done] = 0;
            report(static_cast<int>(m_done + 1), static_cast<int>(total));
        }
    }

private:
    std::size_t m_done = 0;
};

/// A handler for everything around one step takes the request to cancel for a trouble of that step.
class SwallowsTheCancel : public ScaleRow
{
public:
    explicit SwallowsTheCancel(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        for (int column = 0; column < sheet().columns; ++column) {
            sheet().cell(column, m_row) *= m_factor;
            try {
                report(column + 1, sheet().columns);
            } catch (const CancelCommandException&) {
                // "cannot happen here"
            }
        }
    }
};

/// Stops when something fails, and says that it went well.
class SwallowsTheFailure : public ScaleRow
{
public:
    explicit SwallowsTheFailure(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const FailedCommandException&) {
            setDescription("not all of it");
        }
    }
};

/// Shows a request to cancel as an error, and leaves it standing for the next run.
class TurnsACancelIntoAFailure : public ScaleRow
{
public:
    explicit TurnsACancelIntoAFailure(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const CancelCommandException& trouble) {
            fail(trouble.what());
        }
    }
};

/// Passes an expected failure on as one that ends the program.
class TurnsAFailureIntoAFatalOne : public ScaleRow
{
public:
    explicit TurnsAFailureIntoAFatalOne(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const FailedCommandException& failure) {
            undo_command();
            throw std::runtime_error(failure.what());
        }
    }
};

/// Throws what is no FailedCommandException for something that can be expected.
class ThrowsAPlainException : public SetCell
{
public:
    explicit ThrowsAPlainException(SheetDocument& document)
        : SetCell(document, "Take root", 0, 0)
    { }

protected:
    void do_command() override
    {
        if (cell() >= 0) { // the sign is the wrong way round, but that is another matter
            throw std::domain_error("there is no root of " + std::to_string(cell()));
        }
    }
};

/// Rolling back fails where it takes something back for the second time.
class ThrowsInRollback : public ScaleRow
{
public:
    explicit ThrowsInRollback(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override
    {
        undo_command();
        throw std::runtime_error("cannot take back");
    }
};

/// Reports rows of columns: more than there is.
class ReportsMoreThanAll : public ScaleRow
{
public:
    explicit ReportsMoreThanAll(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        ScaleRow::do_command();
        report(sheet().columns, sheet().rows);
    }
};

/// Both halves count from nought.
class ReportsTwice : public ScaleRow
{
public:
    explicit ReportsTwice(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void do_command() override
    {
        ScaleRow::do_command();
        ScaleRow::do_command();
    }
};

/// Begins where the run before was cancelled.
class GoesOnWhereItStopped : public SheetCommand
{
public:
    explicit GoesOnWhereItStopped(SheetDocument& document)
        : SheetCommand(document, "Clear")
    { }

protected:
    void do_command() override
    {
        const std::size_t total = sheet().cells.size();
        for (; m_next < total; ++m_next) {
            report(static_cast<int>(m_next), static_cast<int>(total));
            sheet().cells[m_next] = 0;
        }
        m_next = 0;
        report(1, 1);
    }

private:
    std::size_t m_next = 0;
};

/// Leaves its loop by a request to cancel, which nobody notices where no progress is shown.
class LeavesItsLoopByARequest : public SheetCommand
{
public:
    explicit LeavesItsLoopByARequest(SheetDocument& document)
        : SheetCommand(document, "Approach")
    { }

protected:
    void do_command() override
    {
        try {
            for (int step = 0; step < 10; ++step) {
                report(step, 10);
                approach();
            }
        } catch (const CancelCommandException&) {
            m_cancelled = false; // "near enough"
        }
        report(1, 1);
    }

private:
    void approach()
    {
        for (double& value : sheet().cells) {
            value = (value + 20) / 2;
        }
        if (sheet().cells.front() > 17) {
            request_cancel();
        }
    }
};

/// Fails, and has changed nothing.
class Fails : public SheetCommand
{
public:
    explicit Fails(SheetDocument& document)
        : SheetCommand(document, "Check")
    { }

protected:
    void do_command() override { fail("the sum does not fit"); }
};

/// A composite whose last child fails keeps what the others did.
class KeepsTheChildrenThatAreDone : public CompositeCommand
{
public:
    explicit KeepsTheChildrenThatAreDone(SheetDocument& document)
        : CompositeCommand(document.id(), "Scale and check", false)
    {
        push_back(boost::make_shared<ScaleRow>(document, "Scale row", 0));
        push_back(boost::make_shared<ScaleRow>(document, "Scale row", 2));
        push_back(boost::make_shared<Fails>(document));
    }
    void rollback() override { }
};

/// Children that change the same cells, rolled back in the order in which they were done, as the base does.
class RollsBackItsChildrenInOrder : public SheetComposite
{
public:
    explicit RollsBackItsChildrenInOrder(SheetDocument& document)
        : SheetComposite(document, "Scale twice")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1, 2));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 1, 5));
    }
};

/// A request to cancel ends one child; the composite does not look again, and counts as done.
class CancelsOnlyAChild : public SheetComposite
{
public:
    explicit CancelsOnlyAChild(SheetDocument& document)
        : SheetComposite(document, "Scale two rows")
    {
        add(boost::make_shared<ScaleRow>(document, "Scale row", 0));
        add(boost::make_shared<ScaleRow>(document, "Scale row", 2));
    }

protected:
    void do_command() override { CompositeCommand::do_command(); }
};

} // namespace

void add_wrong_endings(std::vector<WrongCommand>& all)
{
    const char* const cancelled = "cancelled at report 2";
    const char* const failed = "FailedCommandException at report 2";
    all.push_back(wrong<LeavesDebris>("LeavesDebris", "its rollback() does nothing", Promise::CancelRestores,
        cancelled, {Promise::FailureRestores}));
    all.push_back(wrong<LeavesDebrisWhenCancelled>("LeavesDebrisWhenCancelled",
        "cleans up where it fails, not where it is cancelled", Promise::CancelRestores, cancelled));
    all.push_back(wrong<LeavesDebrisWhenItFails>("LeavesDebrisWhenItFails",
        "cleans up where it is cancelled, not where it fails", Promise::FailureRestores, failed));
    all.push_back(
        wrong<RollsBackOneTooFew>("RollsBackOneTooFew", "rolls back what it has counted, and counts too late",
            Promise::CancelRestores, "cancelled at report 1", {Promise::FailureRestores}));
    all.push_back(wrong<GoesOnWhereItStopped>("GoesOnWhereItStopped",
        "a redo begins where the cancelled run stopped", Promise::CancelLeavesItUsable, cancelled,
        {Promise::FailureLeavesItUsable, Promise::UnexpectedFailureIsUndone}));
    all.push_back(wrong<RollsBackItsChildrenInOrder>("RollsBackItsChildrenInOrder",
        "a composite of children that change the same cells keeps the base's rollback(), oldest child first",
        Promise::CancelRestores, "cancelled at report 11 of 11", {Promise::FailureRestores}));
    all.push_back(wrong<SwallowsTheCancel>("SwallowsTheCancel", "catches the request to cancel and goes on",
        Promise::CancelIsHeeded, "cancelled at report 1"));
    all.push_back(wrong<CancelsOnlyAChild>("CancelsOnlyAChild",
        "a composite stops one child and counts as done", Promise::CancelIsHeeded, "cancelled at report 1"));
    all.push_back(wrong<TurnsACancelIntoAFailure>("TurnsACancelIntoAFailure",
        "makes an error of a request to cancel, which stands for the next run", Promise::CancelLeavesItUsable,
        "cancelled at report 1", {Promise::LogsNothing}));
    all.push_back(
        wrong<SwallowsTheFailure>("SwallowsTheFailure", "stops where something fails, and reports success",
            Promise::FailureIsReported, "FailedCommandException at report 1"));
    all.push_back(wrong<TurnsAFailureIntoAFatalOne>("TurnsAFailureIntoAFatalOne",
        "passes an expected failure on as one that ends the program", Promise::FailureIsReported,
        "FailedCommandException at report 1"));
    all.push_back(wrong<KeepsTheChildrenThatAreDone>("KeepsTheChildrenThatAreDone",
        "a composite whose last child fails keeps what the others did", Promise::FailureRestores,
        "undisturbed, do", {}, {Promise::DoSucceeds, Promise::DoChanges, Promise::LogsNothing}));
    all.push_back(wrong<ThrowsAPlainException>("ThrowsAPlainException",
        "throws a std::domain_error for what can be expected", Promise::DoSucceeds, "undisturbed, do"));
    all.push_back(wrong<ThrowsInRollback>(
        "ThrowsInRollback", "its rollback() throws", Promise::ThrowsNothing, "cancelled at report 1"));
    all.push_back(wrong<LeavesItsLoopByARequest>("LeavesItsLoopByARequest",
        "leaves its loop by a request to cancel, which nobody notices without a progress sink",
        Promise::SinkMakesNoDifference, "without a progress sink, do", {Promise::CancelIsHeeded}));
    all.push_back(wrong<ReportsMoreThanAll>("ReportsMoreThanAll", "reports 133 per cent",
        Promise::ProgressInOrder, "undisturbed, do", {Promise::LogsNothing}));
    all.push_back(wrong<ReportsTwice>("ReportsTwice", "each of two halves counts from 0 to 100",
        Promise::ProgressInOrder, "undisturbed, do"));
}

} // namespace sheet
