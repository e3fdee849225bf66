#pragma once

#include "commands/CellPatch.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <QtCore/QCoreApplication>

#include <functional>
#include <string>
#include <vector>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

struct Raster;

/**
 * A command that gives the cells of a terrain document new heights.
 *
 * It computes the new cells beside the old ones and puts them in place at the end, so a run that fails or is
 * cancelled has changed nothing. It keeps the old heights of the changed cells until it is undone. A redo
 * computes the new cells again, from the same cells as before and therefore with the same result.
 *
 * Derived commands give the new cells and a text of their parameters.
 */
class TerrainCommand : public housekeeping::AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::TerrainCommand)

public:
    void rollback() override;

    /// Why the last run failed, for the user; empty if it did not.
    const std::string& failure() const { return m_failure; }

    /// The memory held for undo, in bytes.
    std::size_t undo_bytes() const { return m_old_cells.bytes(); }

protected:
    TerrainCommand(housekeeping::DocumentId document_id, const QString& name);

    /// The cells after the command: finite where they were finite before, without data elsewhere. Calls
    /// report() every now and then, which is where the command may be cancelled.
    /// @throws FailedCommandException if there is no way to compute them
    virtual std::vector<double> new_cells(const Raster& raster) const = 0;

    /// The parameters as the description shows them, for example "radius 2"; empty for none.
    virtual QString parameters() const = 0;

    /// Reports that @p done of @p total are done. @throws CancelCommandException if cancellation was
    /// requested
    void report(std::size_t done, std::size_t total) const;

    /// The cells with @p change applied to every height, row by row; for new_cells().
    std::vector<double> transformed(const Raster& raster, const std::function<double(double)>& change) const;

    /// @throws FailedCommandException, always
    [[noreturn]] static void fail(const QString& reason, const char* source, unsigned int line);

private:
    void remember() override;
    void do_command() override;
    void undo_command() override;
    void finished(bool succeeded) override;

    void change_cells();
    static void check_numbers(const Raster& before, const std::vector<double>& cells);

    CellPatch m_old_cells; // of the cells that the command changed
    std::string m_failure;
};

/// Why the last run of a command failed, or, for a composite, of the first of its children that did; empty if
/// none did.
std::string failure_of(const housekeeping::AbstractCommand& command);

} // namespace terrain
