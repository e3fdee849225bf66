#include "commands/TerrainCommand.h"

#include "ErrorCode.h"
#include "commands/RunningCommand.h"
#include "documents/Raster.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <new>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/TerrainCommand";

} // namespace

TerrainCommand::TerrainCommand(housekeeping::DocumentId document_id, const QString& name)
    : AbstractCommand(document_id, name.toStdString())
{ }

void TerrainCommand::rollback()
{
    // Nothing to take back for a run that did not come to its end; a composite also rolls back those that
    // did.
    undo_command();
}

void TerrainCommand::report(std::size_t done, std::size_t total) const
{
    progress(total == 0 ? 100 : static_cast<unsigned int>(done * 100 / total));
}

std::vector<double> TerrainCommand::transformed(
    const Raster& raster, const std::function<double(double)>& change) const
{
    std::vector<double> cells(raster.cells.size(), no_data);
    for (int row = 0; row < raster.rows; ++row) {
        for (std::size_t i = raster.index(0, row); i < raster.index(0, row + 1); ++i) {
            cells[i] = is_no_data(raster.cells[i]) ? no_data : change(raster.cells[i]);
        }
        report(raster.index(0, row + 1), raster.cells.size());
    }
    return cells;
}

void TerrainCommand::fail(const QString& reason, const char* source, unsigned int line)
{
    throw housekeeping::FailedCommandException(CannotCompute, reason, source, line);
}

void TerrainCommand::remember()
{
    m_failure.clear();
    setDescription(parameters().toStdString());
}

void TerrainCommand::do_command()
{
    const RunningCommand running(*this);
    try {
        change_cells();
    } catch (const housekeeping::FailedCommandException& failure) {
        m_failure = failure.what();
        throw;
    } catch (const std::bad_alloc&) {
        const QString reason = tr("There is not enough memory for the result");
        m_failure = reason.toStdString();
        fail(reason, s_source, __LINE__);
    }
    const std::size_t changed = m_old_cells.changed();
    const QString text = changed == 1 ? tr("1 cell changed") : tr("%1 cells changed").arg(changed);
    appendDescription(text.toStdString());
}

void TerrainCommand::undo_command()
{
    m_old_cells.restore(TerrainModel::of(document_id()).cells());
    m_old_cells = CellPatch();
}

void TerrainCommand::finished(bool)
{
    m_cancelled = false; // a request that came too late must not cancel a redo
}

void TerrainCommand::change_cells()
{
    TerrainModel& model = TerrainModel::of(document_id());
    report(0, 1);
    std::vector<double> cells = new_cells(model.raster());
    check_numbers(model.raster(), cells);
    report(1, 1);
    m_old_cells = CellPatch(model.cells(), cells);
    model.cells().swap(cells); // nothing fails or is cancelled from here on
}

/// Heights may have got too large for a number, or cancelled each other out on the way there.
void TerrainCommand::check_numbers(const Raster& before, const std::vector<double>& cells)
{
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (std::isinf(cells[i]) || is_no_data(cells[i]) != is_no_data(before.cells[i])) {
            const auto columns = static_cast<std::size_t>(before.columns);
            fail(tr("The result in column %1 and row %2 is too large for a number")
                     .arg(QString::number(i % columns), QString::number(i / columns)),
                s_source, __LINE__);
        }
    }
}

std::string failure_of(const housekeeping::AbstractCommand& command)
{
    if (const auto* p_command = dynamic_cast<const TerrainCommand*>(&command)) {
        return p_command->failure();
    }
    if (const auto* p_composite = dynamic_cast<const housekeeping::CompositeCommand*>(&command)) {
        for (const auto& child : p_composite->commands()) {
            const std::string failure = child.first ? failure_of(*child.first) : std::string();
            if (!failure.empty()) {
                return failure;
            }
        }
    }
    return {};
}

} // namespace terrain
