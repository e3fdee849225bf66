#include "Experiment.h"
#include "Experiments.h"

namespace tarqa::housekeeping::testkit {

namespace {

const Promise s_harmless = Promise::UndoWithoutRunIsHarmless;

/// Undo of the command that did not run, and a redo, which does the whole.
void go_on_without_run(Experiment& experiment, const Record& record, const Experiment::Command& command)
{
    if (!experiment.can_undo()) {
        return;
    }
    experiment.undo("undo");
    if (!experiment.expect_state(experiment.fresh(), s_harmless, "undo") || !record.redoable
        || !experiment.can_redo()) {
        return;
    }
    const Run run = experiment.redo(command, "redo after it");
    if (experiment.expect_done(run, s_harmless, "redo after it")
        && experiment.expect_state(record.done, s_harmless, "redo after it")) {
        experiment.undo("undo of the redo after it");
        experiment.expect_state(experiment.fresh(), s_harmless, "undo of the redo after it");
    }
}

void try_do_without_run(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    Experiment experiment(settings, findings, subject.label, "listed and not run");
    if (const Experiment::Command command = experiment.make(subject)) {
        experiment.insert_without_run(command, "do");
        if (experiment.expect_state(experiment.fresh(), s_harmless, "do")) {
            go_on_without_run(experiment, record, command);
        }
    }
    experiment.finish();
}

void try_redo_without_run(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    Experiment experiment(settings, findings, subject.label, "a redo that is listed and not run");
    if (const Experiment::Command command = experiment.make(subject)) {
        experiment.insert(command, "do");
        experiment.undo("undo before it");
        if (experiment.can_redo()) {
            experiment.redo_without_run("redo");
            go_on_without_run(experiment, record, command);
        }
    }
    experiment.finish();
}

} // namespace

void try_without_run(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    if (record.undoable) { // it is no secret else that undo is broken
        try_do_without_run(settings, findings, subject, record);
    }
    if (record.redoable) {
        try_redo_without_run(settings, findings, subject, record);
    }
}

void try_letting_go(const ProofSettings& settings, Findings& findings, const Subject& subject)
{
    {
        Experiment experiment(settings, findings, subject.label, "made and let go");
        if (Experiment::Command command = experiment.make(subject)) {
            experiment.let_go(command, "");
        }
        experiment.finish();
    }
    Experiment experiment(settings, findings, subject.label, "let go");
    if (Experiment::Command command = experiment.make(subject)) {
        experiment.insert(command, "do");
        const bool kept = experiment.can_undo();
        Experiment::Command next;
        if (kept) {
            experiment.undo("undo");
            next = experiment.make(subject);
        }
        if (next) { // the first one can no longer be redone
            experiment.insert(next, "another one");
        }
        experiment.let_go(command, kept ? "after an undo and another one" : "after the run");
    }
    experiment.finish();
}

void try_in_worker(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    const Promise promise = Promise::ThreadMakesNoDifference;
    Experiment experiment(settings, findings, subject.label, "in a worker thread");
    if (const Experiment::Command command = experiment.make(subject)) {
        experiment.do_in_worker();
        Run run = experiment.insert(command, "do");
        bool alike = experiment.expect_done(run, promise, "do")
            && experiment.expect_state(record.done, promise, "do") && record.undoable;
        for (int round = 1; round <= 2 && alike && experiment.can_undo(); ++round) {
            const std::string number = " " + std::to_string(round);
            experiment.undo("undo" + number);
            alike = experiment.expect_state(experiment.fresh(), promise, "undo" + number) && round < 2
                && record.redoable && experiment.can_redo();
            if (alike) {
                run = experiment.redo(command, "redo" + number);
                alike = experiment.expect_done(run, promise, "redo" + number)
                    && experiment.expect_state(record.done, promise, "redo" + number);
            }
        }
    }
    experiment.finish();
}

} // namespace tarqa::housekeeping::testkit
