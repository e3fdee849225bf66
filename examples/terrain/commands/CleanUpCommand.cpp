#include "commands/CleanUpCommand.h"

#include "commands/ClampCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/RunningCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/HeightUnit.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <pkBase/AbstractProgress.h>

#include <boost/make_shared.hpp>

namespace terrain {

namespace {

const double s_lowest_metres = -11000; ///< below the Challenger Deep
const double s_highest_metres = 9000; ///< above Mount Everest

} // namespace

/// The progress of one child as a part of the whole, which is also how a request to cancel the whole reaches
/// the child.
class CleanUpCommand::ChildProgress : public pkBase::AbstractProgress
{
public:
    ChildProgress(const CleanUpCommand& command, unsigned int position)
        : m_command(command)
        , m_position(position)
    { }
    void open_run(unsigned int) override { }
    void set_percentage(unsigned int percentage) override
    {
        const auto children = static_cast<unsigned int>(m_command.size());
        m_command.progress((100 * m_position + percentage) / children);
    }
    void set_text(const QString& text) override { m_command.progress_text(text.toStdString()); }
    void close_run() override { }

private:
    const CleanUpCommand& m_command;
    unsigned int m_position;
};

CleanUpCommand::CleanUpCommand(const housekeeping::DocumentId& document_id)
    : CompositeCommand(document_id, tr("Clean up").toStdString(), false)
{
    setIcon(icon("clean-up"));
    if (!housekeeping::DocumentManager::instance().document_from_id(document_id).inTime()) {
        const std::pair<double, double> heights = possible_heights(document_id);
        add(boost::make_shared<ClampCommand>(document_id, heights.first, heights.second));
    }
    add(boost::make_shared<FillSinksCommand>(document_id));
    add(boost::make_shared<SmoothCommand>(document_id, 1));
}

CleanUpCommand::~CleanUpCommand() = default;

void CleanUpCommand::rollback()
{
    for (auto child = commands().rbegin(); child != commands().rend(); ++child) {
        if (child->second) {
            child->first->rollback();
        }
    }
}

void CleanUpCommand::do_command()
{
    const RunningCommand running(*this);
    CompositeCommand::do_command();
    // The base goes on with the next child when one is cancelled; here a request to cancel ends the whole.
    progress(100);
}

void CleanUpCommand::finished(bool)
{
    m_cancelled = false; // a request that came too late must not cancel a redo
}

void CleanUpCommand::add(boost::shared_ptr<housekeeping::AbstractCommand> command)
{
    const auto position = static_cast<unsigned int>(size());
    m_child_progress.push_back(std::make_unique<ChildProgress>(*this, position));
    command->setProgress(m_child_progress.back().get());
    push_back(command);
}

std::pair<double, double> possible_heights(const housekeeping::DocumentId& document_id)
{
    const auto source = housekeeping::DocumentManager::instance().document_from_id(document_id).datasource();
    const double unit = source ? metres_per(source->z_units()) : 1;
    return {s_lowest_metres / unit, s_highest_metres / unit};
}

} // namespace terrain
