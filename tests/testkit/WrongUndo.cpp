// Commands whose undo or redo is wrong.

#include "SheetCommand.h"
#include "WrongCommands.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <random>
#include <stdexcept>

namespace sheet {

namespace {

/// Puts back all cells of the row but the last one: a loop that ends too early.
class ForgetsACell : public ScaleRow
{
public:
    explicit ForgetsACell(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void undo_command() override
    {
        for (std::size_t i = 0; i + 1 < m_old_row.size(); ++i) {
            sheet().cell(static_cast<int>(i), m_row) = m_old_row[i];
        }
    }
};

/// Undo clears what it set, as if it had been clear before.
class UndoesToAConstant : public SetCell
{
public:
    explicit UndoesToAConstant(SheetDocument& document)
        : SetCell(document, "Set cell", 2, 1)
    { }

protected:
    void undo_command() override { cell() = 0; }
};

/// The sum goes on where the last run left it.
class AccumulatesOnRedo : public SetCell
{
public:
    explicit AccumulatesOnRedo(SheetDocument& document)
        : SetCell(document, "Sum up", 0, 0)
    { }

protected:
    void do_command() override
    {
        for (const double value : sheet().cells) {
            m_value += value;
        }
        cell() = m_value;
    }
};

/// Each run draws other numbers.
class RedoDrawsNewNoise : public SheetCommand
{
public:
    explicit RedoDrawsNewNoise(SheetDocument& document)
        : SheetCommand(document, "Add noise")
        , m_engine(static_cast<unsigned int>(nth_of(document)))
    { }

protected:
    void do_command() override
    {
        for (double& value : sheet().cells) {
            value += static_cast<double>(m_engine() % 1000) / 1000;
        }
    }

private:
    std::mt19937 m_engine;
};

/// Gives away what it kept when it is undone for the first time.
class UndoWorksOnce : public SheetCommand
{
public:
    explicit UndoWorksOnce(SheetDocument& document)
        : SheetCommand(document, "Reverse")
    { }

protected:
    void remember() override
    {
        if (!m_remembered) { // "the old cells are the same each time"
            m_old_cells = sheet().cells;
            m_remembered = true;
        }
    }
    void do_command() override { std::reverse(sheet().cells.begin(), sheet().cells.end()); }
    void undo_command() override { sheet().cells = std::move(m_old_cells); }

private:
    bool m_remembered = false;
};

/// Gives away its result when it is redone for the first time.
class SecondRedoIsStale : public SheetCommand
{
public:
    explicit SecondRedoIsStale(SheetDocument& document)
        : SheetCommand(document, "Sort")
    { }

protected:
    void do_command() override
    {
        if (!m_computed) {
            m_new_cells = sheet().cells;
            std::sort(m_new_cells.rbegin(), m_new_cells.rend());
            m_computed = true;
            sheet().cells = m_new_cells;
        } else {
            sheet().cells = std::move(m_new_cells);
        }
    }

private:
    std::vector<double> m_new_cells;
    bool m_computed = false;
};

/// Divides by what it multiplied with, which is not exact.
class DriftsByInverse : public ScaleRow
{
public:
    explicit DriftsByInverse(SheetDocument& document)
        : ScaleRow(document, "Scale row", 1, 1.3)
    { }

protected:
    void undo_command() override
    {
        for (int column = 0; column < sheet().columns && !m_old_row.empty(); ++column) {
            sheet().cell(column, m_row) /= m_factor;
        }
    }
    void rollback() override { ScaleRow::undo_command(); }
};

/// Keeps doubles as floats, "which is enough for soundings".
class KeepsTooLittle : public ScaleRow
{
public:
    explicit KeepsTooLittle(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void remember() override { m_old.assign(begin(), begin() + sheet().columns); }
    void undo_command() override { std::copy(m_old.begin(), m_old.end(), begin()); }

private:
    std::vector<float> m_old;
};

/// Takes the cells of the new row away again, and leaves the number of rows.
class ForgetsTheSize : public SheetCommand
{
public:
    explicit ForgetsTheSize(SheetDocument& document)
        : SheetCommand(document, "Append row")
    { }

protected:
    void do_command() override
    {
        sheet().cells.resize(sheet().cells.size() + static_cast<std::size_t>(sheet().columns), 1.5);
        ++sheet().rows;
    }
};

/// A mark that comes back gets a new number: whoever pointed at it points at nothing.
class LosesTheNumber : public SheetCommand
{
public:
    explicit LosesTheNumber(SheetDocument& document)
        : SheetCommand(document, "Remove mark")
    { }

protected:
    void remember() override { m_old = sheet().marks.back(); }
    void do_command() override { sheet().marks.pop_back(); }
    void undo_command() override { sheet().add_mark(m_old.text, m_old.row); }

private:
    Mark m_old;
};

/// A mark that comes back stands behind the others.
class LosesTheOrder : public SheetCommand
{
public:
    explicit LosesTheOrder(SheetDocument& document)
        : SheetCommand(document, "Remove mark")
    { }

protected:
    void remember() override { m_old = sheet().marks.front(); }
    void do_command() override { sheet().marks.erase(sheet().marks.begin()); }
    void undo_command() override { sheet().marks.push_back(m_old); }

private:
    Mark m_old;
};

/// Each redo makes another mark.
class RedoMakesANewNumber : public SheetCommand
{
public:
    explicit RedoMakesANewNumber(SheetDocument& document)
        : SheetCommand(document, "Add mark")
        , m_before(sheet().marks.size())
    { }

protected:
    void remember() override { m_before = sheet().marks.size(); }
    void do_command() override { sheet().add_mark("rock", 2); }
    void undo_command() override { sheet().marks.resize(m_before); }

private:
    std::size_t m_before;
};

/// Undo removes all marks of that text, also those that were there before.
class UndoTakesTooMuch : public SheetCommand
{
public:
    explicit UndoTakesTooMuch(SheetDocument& document)
        : SheetCommand(document, "Add mark")
    { }

protected:
    void remember() override
    {
        if (m_mark.number == 0) {
            m_mark = {sheet().fresh_number(), "wreck", 2};
        }
    }
    void do_command() override { sheet().marks.push_back(m_mark); }
    void undo_command() override
    {
        std::vector<Mark>& marks = sheet().marks;
        const auto is_ours = [this](const Mark& mark) { return mark.text == m_mark.text; };
        marks.erase(std::remove_if(marks.begin(), marks.end(), is_ours), marks.end());
    }

private:
    Mark m_mark;
};

/// Two steps that touch the same cells, taken back in the order in which they were done.
class UndoesItsStepsInOrder : public SheetCommand
{
public:
    explicit UndoesItsStepsInOrder(SheetDocument& document)
        : SheetCommand(document, "Shift and scale")
    { }

protected:
    void remember() override { m_steps.clear(); }
    void do_command() override
    {
        step([](double value) { return value + 100; });
        step([](double value) { return value * 2; });
    }
    void undo_command() override
    {
        for (const std::vector<double>& before : m_steps) {
            sheet().cells = before;
        }
    }

private:
    void step(double (*change)(double))
    {
        m_steps.push_back(sheet().cells);
        std::transform(sheet().cells.begin(), sheet().cells.end(), sheet().cells.begin(), change);
    }

    std::vector<std::vector<double>> m_steps; // the cells before each
};

/// All instances keep the old value in one place.
class SharesWhatItKeeps : public SetCell
{
public:
    explicit SharesWhatItKeeps(SheetDocument& document)
        : SetCell(document, "Set cell", nth_of(document) % 4, 2)
    { }

protected:
    void remember() override { s_old_value = cell(); }
    void undo_command() override { cell() = s_old_value; }

private:
    static double s_old_value;
};

double SharesWhatItKeeps::s_old_value = 0;

/// Undo looks whether the run came to its end, and leaves the half of one that did not.
class UndoesWholeRunsOnly : public ScaleRow
{
public:
    explicit UndoesWholeRunsOnly(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { ScaleRow::undo_command(); }

protected:
    void do_command() override
    {
        m_done = false;
        ScaleRow::do_command();
        m_done = true;
    }
    void undo_command() override
    {
        if (m_done) {
            ScaleRow::undo_command();
        }
        m_done = false;
    }

private:
    bool m_done = false;
};

/// Undo takes the last mark away, also after a run that was rolled back and stays in the history.
class UndoesWhatWasRolledBack : public SheetCommand
{
public:
    explicit UndoesWhatWasRolledBack(SheetDocument& document)
        : SheetCommand(document, "Add mark")
        , m_mark({sheet().fresh_number(), "rock", 2})
    { }
    void rollback() override { sheet().marks.resize(m_before); }

protected:
    void remember() override { m_before = sheet().marks.size(); }
    void do_command() override
    {
        report(0, 2);
        sheet().marks.push_back(m_mark);
        report(1, 1);
    }
    void undo_command() override { sheet().marks.pop_back(); }

private:
    Mark m_mark;
    std::size_t m_before = 0;
};

/// Undo insists that there is something to undo, which there is not after a run that was rolled back.
class ThrowsWhenThereIsNothingToUndo : public SheetCommand
{
public:
    explicit ThrowsWhenThereIsNothingToUndo(SheetDocument& document)
        : SheetCommand(document, "Rename")
    { }
    void rollback() override
    {
        if (m_done) {
            undo_command();
        }
    }

protected:
    void remember() override { m_old_heading = sheet().heading; }
    void do_command() override
    {
        report(0, 2);
        sheet().heading = "Depths";
        m_done = true;
        report(1, 1);
    }
    void undo_command() override
    {
        if (!m_done) {
            throw std::logic_error("there is nothing to undo");
        }
        sheet().heading = m_old_heading;
        m_done = false;
    }

private:
    std::string m_old_heading;
    bool m_done = false;
};

/// Undo reports how far it is, and so can be cancelled, which is fatal.
class UndoCanBeCancelled : public ScaleRow
{
public:
    explicit UndoCanBeCancelled(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }
    void rollback() override { ScaleRow::undo_command(); }

protected:
    void undo_command() override
    {
        report(0, 1);
        ScaleRow::undo_command();
        report(1, 1);
    }
};

/// Undo takes the last mark away, also where none was added: the command reports nothing, so it is never
/// rolled back, but it may be listed and kept from running.
class UndoesWhatItNeverDid : public SheetCommand
{
public:
    explicit UndoesWhatItNeverDid(SheetDocument& document)
        : SheetCommand(document, "Add mark")
        , m_mark({sheet().fresh_number(), "rock", 2})
    { }

protected:
    void remember() override { }
    void do_command() override { sheet().marks.push_back(m_mark); }
    void undo_command() override { sheet().marks.pop_back(); }

private:
    Mark m_mark;
};

/// Undo exchanges the old cells with the new ones, also where the old ones are in place already.
class ExchangesOnceTooOften : public SheetCommand
{
public:
    explicit ExchangesOnceTooOften(SheetDocument& document)
        : SheetCommand(document, "Square")
    { }

protected:
    void remember() override { m_other.clear(); }
    void do_command() override
    {
        for (const double value : sheet().cells) {
            m_other.push_back(value * value);
        }
        m_other.swap(sheet().cells);
    }
    void undo_command() override
    {
        if (!m_other.empty()) { // it has run
            m_other.swap(sheet().cells);
        }
    }

private:
    std::vector<double> m_other; // the old cells while the new ones are in place
};

} // namespace

void add_wrong_undo(std::vector<WrongCommand>& all)
{
    const char* const undo = "undo 1";
    const char* const redo = "redo 1";
    all.push_back(wrong<ForgetsACell>("ForgetsACell", "undo puts back all cells of a row but the last",
        Promise::UndoRestores, undo, {Promise::CancelRestores, Promise::FailureRestores}));
    all.push_back(wrong<UndoesToAConstant>("UndoesToAConstant",
        "undo sets the cell to nought, not to what it held", Promise::UndoRestores, undo));
    all.push_back(wrong<DriftsByInverse>("DriftsByInverse",
        "undo divides by what was multiplied with, which is not exact", Promise::UndoRestores, undo));
    all.push_back(wrong<KeepsTooLittle>("KeepsTooLittle", "keeps the old doubles as floats",
        Promise::UndoRestores, undo, {Promise::CancelRestores, Promise::FailureRestores}));
    all.push_back(wrong<ForgetsTheSize>("ForgetsTheSize",
        "undo takes the new row's cells away and leaves the number of rows", Promise::UndoRestores, undo));
    all.push_back(wrong<LosesTheNumber>(
        "LosesTheNumber", "an object that undo brings back gets a new number", Promise::UndoRestores, undo));
    all.push_back(wrong<LosesTheOrder>("LosesTheOrder",
        "an object that undo brings back stands behind the others", Promise::UndoRestores, undo));
    all.push_back(wrong<UndoTakesTooMuch>(
        "UndoTakesTooMuch", "undo removes whatever looks like what was added", Promise::UndoRestores, undo));
    all.push_back(wrong<UndoesItsStepsInOrder>(
        "UndoesItsStepsInOrder", "takes its two steps back oldest first", Promise::UndoRestores, undo));
    all.push_back(wrong<UndoWorksOnce>("UndoWorksOnce",
        "moves what it kept into the document, and has nothing for the next undo", Promise::UndoRestores,
        "undo 2", {Promise::UndoWithoutRunIsHarmless}));
    all.push_back(wrong<SharesWhatItKeeps>("SharesWhatItKeeps",
        "keeps the old value in a static member, one for all instances", Promise::MultiUndoRestores,
        "several, at first, undo 2 of 3"));
    all.push_back(wrong<AccumulatesOnRedo>("AccumulatesOnRedo", "a redo adds to what the first run computed",
        Promise::RedoRepeats, redo, {Promise::MultiRedoRepeats}));
    all.push_back(wrong<RedoDrawsNewNoise>("RedoDrawsNewNoise", "a redo draws other numbers",
        Promise::RedoRepeats, redo, {Promise::MultiRedoRepeats}));
    all.push_back(wrong<RedoMakesANewNumber>("RedoMakesANewNumber",
        "a redo makes another object instead of bringing the first one back", Promise::RedoRepeats, redo,
        {Promise::MultiRedoRepeats}));
    all.push_back(wrong<SecondRedoIsStale>("SecondRedoIsStale",
        "moves its result into the document, and has none for the second redo", Promise::RedoRepeats,
        "redo 2", {Promise::MultiRedoRepeats}));
    all.push_back(wrong<UndoesWhatWasRolledBack>("UndoesWhatWasRolledBack",
        "undo takes the last mark away, also after a run that was rolled back", Promise::CancelLeavesItUsable,
        "cancelled at report 1",
        {Promise::FailureLeavesItUsable, Promise::UnexpectedFailureIsUndone,
            Promise::UndoWithoutRunIsHarmless}));
    all.push_back(wrong<ThrowsWhenThereIsNothingToUndo>("ThrowsWhenThereIsNothingToUndo",
        "undo throws after a run that was rolled back", Promise::UndoNeverFails, "cancelled at report 1"));
    all.push_back(wrong<UndoesWholeRunsOnly>("UndoesWholeRunsOnly",
        "undo does nothing after a run that did not come to its end", Promise::UnexpectedFailureIsUndone,
        "std::runtime_error at report 2"));
    all.push_back(wrong<UndoCanBeCancelled>("UndoCanBeCancelled", "undo reports its progress",
        Promise::UndoReportsNothing, undo, {Promise::UndoNeverFails, Promise::UndoRestores}));
    all.push_back(wrong<UndoesWhatItNeverDid>("UndoesWhatItNeverDid",
        "undo takes the last mark away, also before the command ran", Promise::UndoWithoutRunIsHarmless,
        "listed and not run, undo"));
    all.push_back(wrong<ExchangesOnceTooOften>("ExchangesOnceTooOften",
        "undo exchanges old and new, also where the old is in place already",
        Promise::UndoWithoutRunIsHarmless, "a redo that is listed and not run, undo"));
}

} // namespace sheet
