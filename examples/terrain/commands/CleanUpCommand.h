#pragma once

#include <tarqa/housekeeping/CompositeCommand.h>

#include <memory>
#include <utility>
#include <vector>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * Makes raw heights usable in one step: clamps them to what occurs on the Earth (unless they are times),
 * fills the sinks and smooths a little.
 *
 * Cancelling it cancels it as a whole: the children that are done are rolled back too, newest first.
 */
class CleanUpCommand : public housekeeping::CompositeCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::CleanUpCommand)

public:
    /// @throws HousekeepingException (1014) if the document does not exist
    explicit CleanUpCommand(const housekeeping::DocumentId& document_id);
    ~CleanUpCommand() override;

    /// The base rolls back the oldest child first, which would leave a mixture of heights behind where
    /// several children changed the same cell.
    void rollback() override;

protected:
    void do_command() override;
    void finished(bool succeeded) override;

private:
    class ChildProgress;

    void add(boost::shared_ptr<housekeeping::AbstractCommand> command);

    std::vector<std::unique_ptr<ChildProgress>> m_child_progress; // one for each child
};

/// Lowest and highest height on the Earth, rounded outwards, in the unit of the heights of a document (not in
/// time).
std::pair<double, double> possible_heights(const housekeeping::DocumentId& document_id);

} // namespace terrain
