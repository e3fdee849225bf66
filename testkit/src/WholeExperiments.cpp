#include "Experiment.h"
#include "Experiments.h"

#include <tarqa/housekeeping/CompositeCommand.h>

#include <algorithm>

namespace tarqa::housekeeping::testkit {

namespace {

void look_at_progress(
    Experiment& experiment, const std::vector<unsigned int>& reports, const std::string& step)
{
    const auto fall = std::adjacent_find(reports.begin(), reports.end(),
        [](unsigned int before, unsigned int after) { return before > after; });
    const auto beyond = std::find_if(
        reports.begin(), reports.end(), [](unsigned int percentage) { return percentage > 100; });
    if (fall != reports.end()) {
        experiment.breach(Promise::ProgressInOrder, step,
            "it fell from " + std::to_string(*fall) + " % to " + std::to_string(fall[1]) + " %");
    }
    if (beyond != reports.end()) {
        experiment.breach(Promise::ProgressInOrder, step, "it reported " + std::to_string(*beyond) + " %");
    } else if (!reports.empty() && reports.back() != 100) {
        experiment.breach(
            Promise::ProgressInOrder, step, "it ended at " + std::to_string(reports.back()) + " %");
    }
}

/// A redo, which does what the first run did.
bool redo_repeats(Experiment& experiment, const Experiment::Command& command, const std::string& description,
    const std::string& step, Record& record)
{
    const Run run = experiment.redo(command, step);
    record.reports_of_redo = run.reports;
    look_at_progress(experiment, run.reports, step);
    if (!experiment.expect_done(run, Promise::RedoRepeats, step)
        || !experiment.expect_state(record.done, Promise::RedoRepeats, step)) {
        return false;
    }
    if (command->details().description() != description) {
        experiment.breach(Promise::DescriptionStays, step,
            "it is \"" + command->details().description() + "\", not \"" + description + '"');
    }
    return true;
}

/// Undoes and redoes what was done, and undoes it at last.
void go_to_and_fro(
    const ProofSettings& settings, Experiment& experiment, const Experiment::Command& command, Record& record)
{
    const std::string description = command->details().description();
    for (int round = 1; round <= settings.rounds + 1 && experiment.can_undo(); ++round) {
        const std::string number = " " + std::to_string(round);
        experiment.undo("undo" + number);
        record.undoable = experiment.expect_state(experiment.fresh(), Promise::UndoRestores, "undo" + number);
        if (!record.undoable || round > settings.rounds || !experiment.can_redo()) {
            return; // a command may say that it cannot be redone
        }
        record.redoable = redo_repeats(experiment, command, description, "redo" + number, record);
        if (!record.redoable) {
            return;
        }
    }
}

/// A command that fails on its own account leaves nothing behind, either.
void look_at_failed(Experiment& experiment)
{
    if (experiment.expect_state(experiment.fresh(), Promise::FailureRestores, "do")
        && experiment.can_undo()) {
        experiment.undo("undo");
        experiment.expect_state(experiment.fresh(), Promise::FailureLeavesItUsable, "undo");
    }
}

void try_without_sink(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    Experiment experiment(settings, findings, subject.label, "without a progress sink");
    if (const Experiment::Command command = experiment.make(subject)) {
        command->setProgress(nullptr);
        const Run run = experiment.insert(command, "do");
        if (experiment.expect_done(run, Promise::SinkMakesNoDifference, "do")
            && experiment.expect_state(record.done, Promise::SinkMakesNoDifference, "do")
            && experiment.can_undo() && record.undoable) {
            experiment.undo("undo");
            experiment.expect_state(experiment.fresh(), Promise::SinkMakesNoDifference, "undo");
        }
    }
    experiment.finish();
}

} // namespace

void try_documents(const ProofSettings& settings, Findings& findings)
{
    Experiment experiment(settings, findings, "", "fresh documents");
    experiment.compare_documents();
    experiment.finish();
}

Record try_whole(const ProofSettings& settings, Findings& findings, const Subject& subject)
{
    Record record;
    {
        Experiment experiment(settings, findings, subject.label, "undisturbed");
        if (const Experiment::Command command = experiment.make(subject)) {
            record.composite = dynamic_cast<const CompositeCommand*>(command.get()) != nullptr;
            const Run run = experiment.insert(command, "do");
            record.reports = run.reports;
            findings.reports += static_cast<int>(run.reports.size());
            record.usable = experiment.expect_done(run, Promise::DoSucceeds, "do");
            record.done = experiment.digest();
            look_at_progress(experiment, run.reports, "do");
            if (record.usable && record.done == experiment.fresh()) {
                experiment.breach(Promise::DoChanges, "do", "the digest is as before");
            }
            if (record.usable) {
                go_to_and_fro(settings, experiment, command, record);
            } else if (!run.fatal) {
                look_at_failed(experiment);
            }
        }
        experiment.finish();
    }
    if (record.usable) {
        try_without_sink(settings, findings, subject, record);
    }
    return record;
}

} // namespace tarqa::housekeeping::testkit
