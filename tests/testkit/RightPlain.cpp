// Right commands: the ways to keep what undo needs.

#include "RightCommands.h"
#include "SheetCommand.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <random>
#include <utility>

namespace sheet {

namespace {

class SetsACell : public SetCell
{
public:
    explicit SetsACell(SheetDocument& document)
        : SetCell(document, "Set cell", 1, 1)
    { }
};

/// Keeps all cells, whatever it changes of them.
class KeepsASnapshot : public SheetCommand
{
public:
    explicit KeepsASnapshot(SheetDocument& document)
        : SheetCommand(document, "Smooth")
    { }

protected:
    void do_command() override
    {
        const std::size_t total = sheet().cells.size();
        for (std::size_t i = 1; i < total; ++i) {
            report(static_cast<int>(i), static_cast<int>(total));
            sheet().cells[i] = (sheet().cells[i] + sheet().cells[i - 1]) / 3;
        }
        report(1, 1);
    }
};

/// Keeps only the cells that it changed, in the order of changing.
class KeepsWhatItChanged : public SheetCommand
{
public:
    explicit KeepsWhatItChanged(SheetDocument& document)
        : SheetCommand(document, "Clear odd cells")
    { }

protected:
    void remember() override { m_changes.clear(); }
    void do_command() override
    {
        const std::size_t total = sheet().cells.size();
        for (std::size_t i = 1; i < total; i += 2) {
            report(static_cast<int>(i), static_cast<int>(total));
            m_changes.emplace_back(i, std::exchange(sheet().cells[i], 0));
        }
        report(1, 1);
    }
    void undo_command() override
    {
        for (; !m_changes.empty(); m_changes.pop_back()) {
            sheet().cells[m_changes.back().first] = m_changes.back().second;
        }
    }

private:
    std::vector<std::pair<std::size_t, double>> m_changes;
};

/// Computes the new cells beside the old ones and exchanges the two at the end.
class ExchangesAll : public SheetCommand
{
public:
    explicit ExchangesAll(SheetDocument& document)
        : SheetCommand(document, "Square")
    { }

protected:
    void remember() override { m_in_place = false; }
    void do_command() override
    {
        std::vector<double> squares;
        const std::vector<double>& cells = sheet().cells;
        for (const double value : cells) {
            report(static_cast<int>(squares.size()), static_cast<int>(cells.size()));
            squares.push_back(value * value);
        }
        report(1, 1);
        m_other = std::move(squares);
        m_other.swap(sheet().cells);
        m_in_place = true;
    }
    void undo_command() override
    {
        if (m_in_place) {
            m_other.swap(sheet().cells);
            m_in_place = false;
        }
    }

private:
    std::vector<double> m_other; // the old cells while the new ones are in place
    bool m_in_place = false;
};

/// Computes once; redo puts the same result in place again.
class KeepsItsResult : public SheetCommand
{
public:
    explicit KeepsItsResult(SheetDocument& document)
        : SheetCommand(document, "Add noise")
    { }

protected:
    void do_command() override
    {
        if (m_new_cells.empty()) {
            std::vector<double> cells = sheet().cells;
            for (double& value : cells) {
                value += static_cast<double>(m_engine() % 1000) / 1000;
            }
            m_new_cells = std::move(cells);
        }
        sheet().cells = m_new_cells;
    }

private:
    std::mt19937 m_engine;
    std::vector<double> m_new_cells;
};

/// Draws the same numbers each time.
class KeepsItsSeed : public SheetCommand
{
public:
    explicit KeepsItsSeed(SheetDocument& document)
        : SheetCommand(document, "Shuffle")
        , m_seed(static_cast<unsigned int>(nth_of(document)) + 7)
    { }

protected:
    void do_command() override
    {
        std::mt19937 engine(m_seed);
        std::shuffle(sheet().cells.begin(), sheet().cells.end(), engine);
    }

private:
    unsigned int m_seed;
};

/// Saves each row right before it changes it.
class RemembersLazily : public SheetCommand
{
public:
    explicit RemembersLazily(SheetDocument& document)
        : SheetCommand(document, "Negate")
    { }

protected:
    void remember() override { m_rows.clear(); }
    void do_command() override
    {
        for (int row = 0; row < sheet().rows; ++row) {
            report(row, sheet().rows);
            m_rows.emplace_back(begin_of(row), begin_of(row + 1));
            std::transform(begin_of(row), begin_of(row + 1), begin_of(row), [](double old) { return -old; });
        }
        report(1, 1);
    }
    void undo_command() override
    {
        for (std::size_t row = 0; row < m_rows.size(); ++row) {
            std::copy(m_rows[row].begin(), m_rows[row].end(), begin_of(static_cast<int>(row)));
        }
        m_rows.clear();
    }

private:
    std::vector<double>::iterator begin_of(int row) { return sheet().cells.begin() + row * sheet().columns; }

    std::vector<std::vector<double>> m_rows; // as they were
};

class AppendsARow : public SheetCommand
{
public:
    explicit AppendsARow(SheetDocument& document)
        : SheetCommand(document, "Append row")
    { }

protected:
    void remember() override
    {
        SheetCommand::remember();
        m_old_rows = sheet().rows;
    }
    void do_command() override
    {
        sheet().cells.resize(sheet().cells.size() + static_cast<std::size_t>(sheet().columns), 1.5);
        ++sheet().rows;
    }
    void undo_command() override
    {
        SheetCommand::undo_command();
        if (!m_old_cells.empty()) {
            sheet().rows = m_old_rows;
        }
    }

private:
    int m_old_rows = 0;
};

/// Brings the mark back with its number, into its place.
class RemovesAMark : public SheetCommand
{
public:
    explicit RemovesAMark(SheetDocument& document)
        : SheetCommand(document, "Remove mark")
    { }

protected:
    void remember() override { m_removed = {}; }
    void do_command() override
    {
        if (!sheet().marks.empty()) {
            m_removed = sheet().marks.front();
            sheet().marks.erase(sheet().marks.begin());
        }
    }
    void undo_command() override
    {
        if (m_removed.number != 0) {
            sheet().marks.insert(sheet().marks.begin(), m_removed);
        }
        m_removed = {};
    }

private:
    Mark m_removed;
};

/// Draws the number of its mark once.
class AddsAMark : public SheetCommand
{
public:
    explicit AddsAMark(SheetDocument& document)
        : SheetCommand(document, "Add mark")
    { }

protected:
    void remember() override
    {
        m_added = false;
        if (m_mark.number == 0) {
            m_mark = {sheet().fresh_number(), "rock", 1};
        }
    }
    void do_command() override
    {
        sheet().marks.push_back(m_mark);
        m_added = true;
    }
    void undo_command() override
    {
        if (m_added) {
            sheet().marks.pop_back();
        }
        m_added = false;
    }

private:
    Mark m_mark;
    bool m_added = false;
};

/// Says what came out, anew each time.
class SaysWhatCameOut : public ScaleRow
{
public:
    explicit SaysWhatCameOut(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    { }

protected:
    void remember() override
    {
        ScaleRow::remember();
        setDescription("row 1");
    }
    void do_command() override
    {
        ScaleRow::do_command();
        appendDescription(std::to_string(sheet().columns) + " cells");
    }
};

class HasAnOddName : public SetCell
{
public:
    explicit HasAnOddName(SheetDocument& document)
        : SetCell(document,
            "Gr\xc3\xb6\xc3\x9f"
            "e \xe2\x86\x92 \xe6\xb5\xb7\xe5\x9b\xb3, \xf0\x9f\x90\x9f\t\"",
            0, 0)
    {
        setDescription("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d");
    }
};

/// A run on many cells that reports at each.
class WorksOnALot : public SheetCommand
{
public:
    explicit WorksOnALot(SheetDocument& document)
        : SheetCommand(document, "Raise")
    { }

protected:
    void do_command() override
    {
        const std::size_t total = sheet().cells.size();
        for (std::size_t i = 0; i < total; ++i) {
            report(static_cast<int>(i), static_cast<int>(total));
            sheet().cells[i] += 1;
        }
        report(1, 1);
    }
};

} // namespace

void add_right_plain(std::vector<RightCommand>& all)
{
    all.push_back(right<SetsACell>("SetsACell", "one cell, one old value"));
    all.push_back(right<KeepsASnapshot>("KeepsASnapshot", "a copy of all cells", true));
    all.push_back(right<KeepsWhatItChanged>("KeepsWhatItChanged", "a list of the changed cells", true));
    all.push_back(right<ExchangesAll>("ExchangesAll", "new beside old, exchanged at the end", true));
    all.push_back(right<KeepsItsResult>("KeepsItsResult", "computes once, redo takes the same result"));
    all.push_back(right<KeepsItsSeed>("KeepsItsSeed", "draws the same random numbers each time"));
    all.push_back(right<RemembersLazily>("RemembersLazily", "saves each row right before it changes", true));
    all.push_back(right<AppendsARow>("AppendsARow", "changes the size"));
    all.push_back(right<RemovesAMark>("RemovesAMark", "brings back number and place"));
    all.push_back(right<AddsAMark>("AddsAMark", "draws a number once"));
    all.push_back(right<SaysWhatCameOut>("SaysWhatCameOut", "describes each run from the beginning", true));
    all.push_back(right<HasAnOddName>("HasAnOddName", "a name in many scripts, with a tab"));
    all.push_back(right<WorksOnALot>("WorksOnALot", "1,600 cells, 1,601 reports", true));
    all.back().document = []() -> SheetDocument& { return new_sheet(40, 40); };
}

} // namespace sheet
