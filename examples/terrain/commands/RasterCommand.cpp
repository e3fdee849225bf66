#include "commands/RasterCommand.h"

#include "ErrorCode.h"
#include "commands/RunningCommand.h"
#include "documents/Mesh.h"
#include "documents/TerrainModel.h"
#include "language/NumberText.h"
#include "language/UnitText.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <QtCore/QLocale>

#include <new>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/RasterCommand";

} // namespace

RasterCommand::RasterCommand(housekeeping::DocumentId document_id, const QString& name)
    : AbstractCommand(document_id, name.toStdString())
{ }

void RasterCommand::rollback()
{
    // Nothing to take back for a run that did not come to its end; a composite also rolls back those that
    // did.
    undo_command();
}

std::size_t RasterCommand::undo_bytes() const
{
    if (!m_sp_old_mesh || !*m_sp_old_mesh) {
        return 0;
    }
    const Mesh& mesh = **m_sp_old_mesh;
    return mesh.vertices.capacity() * sizeof(mesh.vertices[0])
        + mesh.triangles.capacity() * sizeof(mesh.triangles[0]);
}

void RasterCommand::report(std::size_t done, std::size_t total) const
{
    progress(total == 0 ? 100 : static_cast<unsigned int>(done * 100 / total));
}

QString RasterCommand::height_text(double height) const
{
    const QString number = number_text(height, 'g', QLocale::FloatingPointShortest);
    const auto sp_source
        = housekeeping::DocumentManager::instance().document_from_id(document_id()).datasource();
    return sp_source ? tr("%1 %2", "height and unit").arg(number, height_unit_text(sp_source)) : number;
}

void RasterCommand::fail(const QString& reason, const char* source, unsigned int line)
{
    throw housekeeping::FailedCommandException(CannotCompute, reason, source, line);
}

void RasterCommand::remember()
{
    // What undo needs is known only when the result is; change() keeps it.
    m_failure.clear();
    setDescription(parameters().toStdString());
}

void RasterCommand::do_command()
{
    const RunningCommand running(*this);
    try {
        report(0, 1);
        TerrainModel& model = TerrainModel::of(document_id());
        m_sp_old_mesh = model.mesh();
        appendDescription(change(model).toStdString());
    } catch (const housekeeping::FailedCommandException& failure) {
        m_failure = failure.what();
        throw;
    } catch (const std::bad_alloc&) {
        const QString reason = tr("There is not enough memory for the result");
        m_failure = reason.toStdString();
        fail(reason, s_source, __LINE__);
    }
}

void RasterCommand::undo_command()
{
    if (!m_sp_old_mesh) { // not run, or taken back already
        return;
    }
    housekeeping::AbstractDocument& document
        = housekeeping::DocumentManager::instance().document_from_id(document_id());
    auto& model = dynamic_cast<TerrainModel&>(document.model());
    take_back(model);
    model.mesh(*m_sp_old_mesh);
    m_sp_old_mesh.reset();
    document.set_modified(true); // it may have been saved meanwhile
}

void RasterCommand::finished(bool)
{
    m_cancelled = false; // a request that came too late must not cancel a redo
}

std::string failure_of(const housekeeping::AbstractCommand& command)
{
    if (const auto* p_command = dynamic_cast<const RasterCommand*>(&command)) {
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
