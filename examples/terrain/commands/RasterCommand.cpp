#include "commands/RasterCommand.h"

#include "ErrorCode.h"
#include "commands/RunningCommand.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/FailedCommandException.h>

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

void RasterCommand::report(std::size_t done, std::size_t total) const
{
    progress(total == 0 ? 100 : static_cast<unsigned int>(done * 100 / total));
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
        appendDescription(change(TerrainModel::of(document_id())).toStdString());
    } catch (const housekeeping::FailedCommandException& failure) {
        m_failure = failure.what();
        throw;
    } catch (const std::bad_alloc&) {
        const QString reason = tr("There is not enough memory for the result");
        m_failure = reason.toStdString();
        fail(reason, s_source, __LINE__);
    }
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
