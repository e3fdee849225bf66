#include "DisturbedRun.h"
#include "Experiment.h"
#include "Experiments.h"

#include <algorithm>

namespace tarqa::housekeeping::testkit {

namespace {

const Disturbance::Kind s_all[] = {Disturbance::Cancel, Disturbance::Expected, Disturbance::Runtime,
    Disturbance::Memory, Disturbance::Housekeeping};

void try_in_first_run(const ProofSettings& settings, Findings& findings, const Subject& subject,
    const Record& record, const Disturbance& disturbance)
{
    Experiment experiment(settings, findings, subject.label, title_of(disturbance, record.reports));
    if (const Experiment::Command command = experiment.make(subject)) {
        DisturbedRun disturbed(experiment, record, command);
        disturbed.judge(experiment.insert(command, "do", disturbance), disturbance);
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
        DisturbedRun disturbed(experiment, record, command);
        if (experiment.can_redo()) {
            disturbed.judge(experiment.redo(command, "redo", disturbance), disturbance);
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
                DisturbedRun disturbed(experiment, record, command);
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
    return name_of(disturbance.kind) + (disturbance.goes_on ? " from report " : " at report ")
        + std::to_string(place) + " of " + std::to_string(reports.size()) + percentage
        + (disturbance.goes_on ? " on" : "");
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
