#include "DisturbedRun.h"

#include <tarqa/housekeeping/CompositeCommand.h>

#include <algorithm>

namespace tarqa::housekeeping::testkit {

DisturbedRun::DisturbedRun(Experiment& experiment, const Record& record, const Experiment::Command& command)
    : m_experiment(experiment)
    , m_record(record)
    , m_command(command)
    , m_before(experiment.digest())
{ }

void DisturbedRun::judge(const Run& run, const Disturbance& disturbance)
{
    if (disturbance.kind == Disturbance::Cancel) {
        judge_cancelled(run);
    } else {
        judge_failed(run, disturbance.kind == Disturbance::Expected);
    }
}

void DisturbedRun::judge_answered(const Run& run, bool with_cancel)
{
    if (!with_cancel) {
        judge_failed(run, true);
    } else if (run.succeeded && !run.fatal && has_cancelled_batch()) {
        go_on(Promise::CancelRestores, Promise::CancelLeavesItUsable);
    } else {
        judge_cancelled(run);
    }
}

void DisturbedRun::judge_after_late_request(const Run& run)
{
    if (run.succeeded && !run.fatal) {
        m_experiment.expect_state(m_record.done, Promise::CancelIsHeeded, "redo");
    } else {
        judge_cancelled(run);
    }
}

void DisturbedRun::judge_cancelled(const Run& run)
{
    if (run.fatal || run.succeeded) {
        m_experiment.breach(Promise::CancelIsHeeded, "",
            run.fatal ? "it became a fatal error: \"" + run.log.back() + '"' : "the run counts as done");
    } else if (m_experiment.expect_state(m_before, Promise::CancelRestores, "")) {
        go_on(Promise::CancelLeavesItUsable, Promise::CancelLeavesItUsable);
    }
}

void DisturbedRun::judge_failed(const Run& run, bool expected)
{
    if (run.log.empty()) {
        m_experiment.breach(Promise::FailureIsReported, "",
            run.succeeded ? "the run counts as done, and the error log has nothing"
                          : "the run counts as failed, and the error log has nothing");
    } else if (run.fatal && expected) {
        m_experiment.breach(
            Promise::FailureIsReported, "", "it became a fatal error: \"" + run.log.back() + '"');
    } else if (run.fatal) {
        go_on(Promise::UnexpectedFailureIsUndone, Promise::UnexpectedFailureIsUndone);
    } else if (run.succeeded) { // a composite went on behind a child that failed
        go_on(Promise::FailureRestores, Promise::FailureLeavesItUsable);
    } else if (m_experiment.expect_state(m_before, Promise::FailureRestores, "")) {
        go_on(Promise::FailureLeavesItUsable, Promise::FailureLeavesItUsable);
    }
}

/// Undo, which leaves the document as before, and if the command allows it, all of it anew.
void DisturbedRun::go_on(Promise promise_of_undo, Promise promise)
{
    if (!m_record.undoable || !m_experiment.can_undo()) { // it is no secret then that undo is broken
        return;
    }
    m_experiment.undo("undo");
    if (!m_experiment.expect_state(m_before, promise_of_undo, "undo") || !m_record.redoable
        || !m_experiment.can_redo()) {
        return;
    }
    const Run run = m_experiment.redo(m_command, "redo after it");
    if (m_experiment.expect_done(run, promise, "redo after it")
        && m_experiment.expect_state(m_record.done, promise, "redo after it")) {
        m_experiment.undo("undo of the redo after it");
        m_experiment.expect_state(m_before, promise, "undo of the redo after it");
    }
}

/// Whether the question was that of a composite inside of the command: to that one, a child was cancelled,
/// and it went on.
bool DisturbedRun::has_cancelled_batch() const
{
    const auto* const p_composite = dynamic_cast<const CompositeCommand*>(m_command.get());
    return p_composite
        && std::any_of(p_composite->commands().begin(), p_composite->commands().end(),
            [](const CompositeCommand::Commands::value_type& child) {
                return !child.second && dynamic_cast<const CompositeCommand*>(child.first.get());
            });
}

} // namespace tarqa::housekeeping::testkit
