#pragma once

#include "Sheet.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace sheet {

/// The base of the commands of the catalogue: keeps all cells before a run, and puts them back. Whatever one
/// of them does wrong, it does in what it overrides.
class SheetCommand : public housekeeping::AbstractCommand
{
public:
    SheetCommand(SheetDocument& document, const std::string& name)
        : AbstractCommand(document.id(), name)
        , m_document(document)
    { }

    void rollback() override { undo_command(); }

protected:
    void remember() override { m_old_cells = sheet().cells; }
    void undo_command() override
    {
        if (!m_old_cells.empty()) { // it has run
            sheet().cells = m_old_cells;
        }
    }

    SheetDocument& document() { return m_document; }
    Sheet& sheet() { return m_document.sheet(); }

    /// Reports that @p done of @p total are done.
    void report(int done, int total) const { progress(static_cast<unsigned int>(100 * done / total)); }

    [[noreturn]] static void fail(const std::string& reason)
    {
        throw housekeeping::FailedCommandException(4711, reason, "tests/testkit/SheetCommand", 1);
    }

    std::vector<double> m_old_cells;

private:
    SheetDocument& m_document; // not owned; its history owns this command
};

/// Multiplies the cells of a row by a factor, one after the other, and reports each. Keeps only that row.
class ScaleRow : public SheetCommand
{
public:
    ScaleRow(SheetDocument& document, const std::string& name, int row = 1, double factor = 3)
        : SheetCommand(document, name)
        , m_row(row)
        , m_factor(factor)
    { }

protected:
    void remember() override { m_old_row.assign(begin(), begin() + sheet().columns); }
    void do_command() override
    {
        for (int column = 0; column < sheet().columns; ++column) {
            report(column, sheet().columns);
            sheet().cell(column, m_row) *= m_factor;
        }
        report(1, 1);
    }
    void undo_command() override { std::copy(m_old_row.begin(), m_old_row.end(), begin()); }

    /// The first cell of the row.
    std::vector<double>::iterator begin() { return sheet().cells.begin() + m_row * sheet().columns; }

    const int m_row;
    const double m_factor;
    std::vector<double> m_old_row; // empty before the first run
};

/// How many commands were inserted on a document before, so that those of a series differ.
inline int nth_of(const SheetDocument& document)
{
    return static_cast<int>(document.document_history().undoSize());
}

/// Sets one cell to one more than it held when the command was made.
class SetCell : public SheetCommand
{
public:
    SetCell(SheetDocument& document, const std::string& name, int column, int row)
        : SheetCommand(document, name)
        , m_column(column)
        , m_row(row)
        , m_value(cell() + 1)
    { }

protected:
    void remember() override { m_old_value = cell(); }
    void do_command() override { cell() = m_value; }
    void undo_command() override
    {
        if (m_old_value) { // it has run
            cell() = *m_old_value;
        }
    }

    double& cell() { return sheet().cell(m_column, m_row); }
    bool same_cell(const SetCell& other) const { return m_column == other.m_column && m_row == other.m_row; }

    const int m_column;
    const int m_row;
    double m_value;
    std::optional<double> m_old_value;
};

} // namespace sheet
