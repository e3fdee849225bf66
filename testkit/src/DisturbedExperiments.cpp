#include "Experiment.h"
#include "Experiments.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <algorithm>

namespace tarqa::housekeeping::testkit {

namespace {

const Disturbance::Kind s_all[] = {Disturbance::Cancel, Disturbance::Expected, Disturbance::Runtime,
    Disturbance::Memory, Disturbance::Housekeeping};

/// A disturbed run of one command, and what comes after it.
class DisturbedRun
{
public:
    DisturbedRun(Experiment& experiment, const Record& record, const Experiment::Command& command,
        const Disturbance& disturbance)
        : m_experiment(experiment)
        , m_record(record)
        , m_command(command)
        , m_disturbance(disturbance)
        , m_before(experiment.digest())
    { }

    /// Looks at @p run, which was disturbed, and goes on with the command.
    void judge(const Run& run)
    {
        if (m_disturbance.kind == Disturbance::Cancel) {
            judge_cancelled(run);
        } else {
            judge_failed(run);
        }
    }

    /// Looks at @p run, which came after a request that was too late for the run before: it may be cancelled
    /// by it or, where the command forgets such requests, do the whole.
    void judge_after_late_request(const Run& run)
    {
        if (run.succeeded && !run.fatal) {
            m_experiment.expect_state(m_record.done, Promise::CancelIsHeeded, "redo");
        } else {
            judge_cancelled(run);
        }
    }

    /// Undo, which leaves the document as before, and if the command allows it, all of it anew.
    void go_on(Promise promise_of_undo, Promise promise)
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

private:
    void judge_cancelled(const Run& run)
    {
        if (run.fatal || run.succeeded) {
            m_experiment.breach(Promise::CancelIsHeeded, "",
                run.fatal ? "it became a fatal error: \"" + run.log.back() + '"' : "the run counts as done");
            return;
        }
        if (m_experiment.expect_state(m_before, Promise::CancelRestores, "")) {
            go_on(Promise::CancelLeavesItUsable, Promise::CancelLeavesItUsable);
        }
    }

    void judge_failed(const Run& run)
    {
        const bool expected = m_disturbance.kind == Disturbance::Expected;
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

    Experiment& m_experiment;
    const Record& m_record;
    Experiment::Command m_command;
    Disturbance m_disturbance;
    std::string m_before;
};

void try_in_first_run(const ProofSettings& settings, Findings& findings, const Subject& subject,
    const Record& record, const Disturbance& disturbance)
{
    Experiment experiment(settings, findings, subject.label, title_of(disturbance, record.reports));
    if (const Experiment::Command command = experiment.make(subject)) {
        DisturbedRun disturbed(experiment, record, command, disturbance);
        disturbed.judge(experiment.insert(command, "do", disturbance));
    }
    experiment.finish();
}

void try_in_redo(const ProofSettings& settings, Findings& findings, const Subject& subject,
    const Record& record, const Disturbance& disturbance)
{
    Experiment experiment(
        settings, findings, subject.label, title_of(disturbance, record.reports_of_redo) + " of a redo");
    if (const Experiment::Command command = experiment.make(subject)) {
        experiment.insert(command, "do");
        experiment.undo("undo before it");
        DisturbedRun disturbed(experiment, record, command, disturbance);
        if (experiment.can_redo()) {
            disturbed.judge(experiment.redo(command, "redo", disturbance));
        }
    }
    experiment.finish();
}

/// A request behind the last report waits for the next run, which is a redo, or is forgotten.
void try_late_request(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    Experiment experiment(settings, findings, subject.label, "a request to cancel behind the last report");
    if (const Experiment::Command command = experiment.make(subject)) {
        const Disturbance late = {Disturbance::Cancel, record.reports.size() + 1};
        const Run run = experiment.insert(command, "do", late);
        if (experiment.expect_done(run, Promise::DoSucceeds, "do")
            && experiment.expect_state(record.done, Promise::DoSucceeds, "do") && experiment.can_undo()) {
            experiment.undo("undo");
            const bool restored = experiment.expect_state(experiment.fresh(), Promise::UndoRestores, "undo");
            if (restored && experiment.can_redo() && !record.reports_of_redo.empty()) {
                DisturbedRun disturbed(experiment, record, command, {Disturbance::Cancel, 1});
                disturbed.judge_after_late_request(
                    experiment.redo(command, "redo", {Disturbance::Cancel, 0}));
            }
        }
    }
    experiment.finish();
}

} // namespace

std::vector<std::size_t> places_of(std::size_t count, int most)
{
    std::vector<std::size_t> places;
    const std::size_t taken = most < 0 ? 0 : std::min(count, static_cast<std::size_t>(most));
    for (std::size_t i = 0; i < taken; ++i) {
        places.push_back(taken == 1 ? 1 : 1 + i * (count - 1) / (taken - 1));
    }
    return places;
}

std::string title_of(const Disturbance& disturbance, const std::vector<unsigned int>& reports)
{
    const std::size_t place = disturbance.place;
    const std::string percentage = place >= 1 && place <= reports.size()
        ? " (" + std::to_string(reports[place - 1]) + " %)"
        : std::string();
    return name_of(disturbance.kind) + " at report " + std::to_string(place) + " of "
        + std::to_string(reports.size()) + percentage;
}

void try_disturbed(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    for (const Disturbance::Kind kind : s_all) {
        for (const std::size_t place : places_of(record.reports.size(), settings.places)) {
            try_in_first_run(settings, findings, subject, record, {kind, place});
        }
    }
    if (!record.redoable) {
        return;
    }
    for (const Disturbance::Kind kind : {Disturbance::Cancel, Disturbance::Expected}) {
        for (const std::size_t place : places_of(record.reports_of_redo.size(), settings.places)) {
            try_in_redo(settings, findings, subject, record, {kind, place});
        }
    }
    if (!record.reports.empty() && settings.places > 0) {
        try_late_request(settings, findings, subject, record);
    }
}

} // namespace tarqa::housekeeping::testkit
