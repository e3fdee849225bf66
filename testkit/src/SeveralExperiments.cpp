#include "Experiment.h"
#include "Experiments.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <algorithm>

namespace tarqa::housekeeping::testkit {

namespace {

/// A first command, and a second one that was inserted behind it.
class Pair
{
public:
    Pair(Experiment& experiment, const Subject& first, const Subject& second)
        : m_experiment(experiment)
        , m_second(second)
        , m_p_first(experiment.make(first))
    { }

    /// Runs the first one, back and forth too if so wished. @return false if they cannot be merged
    bool begin(bool to_and_fro)
    {
        if (!m_p_first || !m_p_first->stackIndenticalCommand()) {
            return false;
        }
        m_experiment.insert(m_p_first, "the first");
        if (to_and_fro && m_experiment.can_undo()) {
            m_experiment.undo("undo of the first");
            if (m_experiment.can_redo()) {
                m_experiment.redo(m_p_first, "redo of the first");
            }
        }
        return m_experiment.can_undo();
    }

    /// Runs another second one. @return whether it was merged; the run is @p run then
    bool merge(Run& run, const std::string& step, const Disturbance& disturbance = {})
    {
        return merge(step, [&](const Experiment::Command& command) {
            run = m_experiment.insert(command, step, disturbance);
        });
    }

    /// Lists another second one, and keeps it from running.
    bool merge_without_run(const std::string& step)
    {
        return merge(step,
            [&](const Experiment::Command& command) { m_experiment.insert_without_run(command, step); });
    }

    /// Undo and redo of the two as one.
    void go_to_and_fro(const ProofSettings& settings)
    {
        const std::string done = m_experiment.digest();
        for (int round = 1; round <= settings.rounds && m_experiment.can_undo(); ++round) {
            const std::string number = " " + std::to_string(round);
            m_experiment.undo("undo" + number);
            if (!m_experiment.expect_state(m_experiment.fresh(), Promise::MergeKeepsSteps, "undo" + number)
                || !m_experiment.can_redo()) {
                return;
            }
            const Run run = m_experiment.redo(m_p_first, "redo" + number);
            if (!m_experiment.expect_done(run, Promise::MergeKeepsSteps, "redo" + number)
                || !m_experiment.expect_state(done, Promise::MergeKeepsSteps, "redo" + number)) {
                return;
            }
        }
        if (m_experiment.can_undo()) {
            m_experiment.undo("the last undo");
            m_experiment.expect_state(m_experiment.fresh(), Promise::MergeKeepsSteps, "the last undo");
        }
    }

    /// After the second one's run was broken off, undo and redo of what is left.
    void go_on_without_second()
    {
        const std::string before = m_experiment.digest();
        if (undo_without_second("undo") && m_experiment.can_redo()) {
            const Run run = m_experiment.redo(m_p_first, "redo");
            if (m_experiment.expect_done(run, Promise::MergeWaitsForTheRun, "redo")
                && m_experiment.expect_state(before, Promise::MergeWaitsForTheRun, "redo")) {
                undo_without_second("undo of the redo");
            }
        }
    }

    /// The same after it was listed and did not run at all, of which no command is told: whether a redo does
    /// its share is not said.
    void go_on_without_run()
    {
        if (undo_without_second("undo") && m_experiment.can_redo()) {
            m_experiment.redo(m_p_first, "redo");
            undo_without_second("undo of the redo");
        }
    }

private:
    bool undo_without_second(const std::string& step)
    {
        m_experiment.undo(step);
        return m_experiment.expect_state(m_experiment.fresh(), Promise::MergeKeepsSteps, step);
    }

    template <class Action>
    bool merge(const std::string& step, const Action& action)
    {
        Experiment::Command command = m_experiment.make(m_second);
        if (!command || !command->validUndo() || m_experiment.is_over()) {
            return false;
        }
        const unsigned long long size = m_experiment.undo_size();
        action(command);
        const bool merged = !m_experiment.is_over() && m_experiment.undo_size() == size;
        if (merged) { // nobody keeps it
            m_experiment.let_go(command, step + ", let go");
        }
        return merged;
    }

    Experiment& m_experiment;
    const Subject& m_second;
    Experiment::Command m_p_first;
};

std::string label_of(const Subject& first, const Subject& second)
{
    return first.label + " and " + second.label;
}

/// @param count how many seconds are merged into the first. @return whether they were
bool try_to_merge(const ProofSettings& settings, Findings& findings, const Subject& first,
    const Subject& second, int count, bool to_and_fro)
{
    Experiment experiment(settings, findings, label_of(first, second),
        (count > 1 ? "merged with " + std::to_string(count) + " more" : std::string("merged"))
            + (to_and_fro ? " after a redo" : ""));
    Pair pair(experiment, first, second);
    bool merged = pair.begin(to_and_fro);
    for (int i = 0; i < count && merged; ++i) {
        Run run;
        merged
            = pair.merge(run, "the second") && experiment.expect_done(run, Promise::DoSucceeds, "the second");
    }
    if (merged) {
        pair.go_to_and_fro(settings);
    }
    experiment.finish();
    return merged;
}

void try_to_merge_disturbed(const ProofSettings& settings, Findings& findings, const Subject& first,
    const Subject& second, const Record& record, const Disturbance& disturbance)
{
    Experiment experiment(settings, findings, label_of(first, second),
        "merged, the second " + title_of(disturbance, record.reports));
    Pair pair(experiment, first, second);
    if (pair.begin(false)) {
        const std::string before = experiment.digest();
        Run run;
        if (pair.merge(run, "the second", disturbance) && !run.succeeded
            && experiment.expect_state(before,
                disturbance.kind == Disturbance::Cancel ? Promise::CancelRestores : Promise::FailureRestores,
                "")) {
            pair.go_on_without_second();
        }
    }
    experiment.finish();
}

void try_to_merge_without_run(
    const ProofSettings& settings, Findings& findings, const Subject& first, const Subject& second)
{
    Experiment experiment(
        settings, findings, label_of(first, second), "merged, the second listed and not run");
    Pair pair(experiment, first, second);
    if (pair.begin(false) && pair.merge_without_run("the second")) {
        pair.go_on_without_run();
    }
    experiment.finish();
}

/// The states that a document went through, one more than its history has commands.
class States
{
public:
    explicit States(Experiment& experiment)
        : m_experiment(experiment)
        , m_states{experiment.fresh()}
    { }

    /// After a command, which a new state comes of, or, if it was merged, another last one.
    void add()
    {
        m_states.resize(static_cast<std::size_t>(m_experiment.undo_size()) + 1);
        m_states.back() = m_experiment.digest();
    }

    std::size_t steps() const { return m_states.size() - 1; }

    /// Undoes @p count commands. @return false if a state is another one
    bool undo(std::size_t count, const std::string& step)
    {
        for (std::size_t i = 1; i <= count; ++i) {
            const std::string number = step + ", undo " + std::to_string(i) + " of " + std::to_string(count);
            m_experiment.undo(number);
            if (!m_experiment.expect_state(m_states[steps() - i], Promise::MultiUndoRestores, number)) {
                return false;
            }
        }
        return true;
    }

    /// Redoes all @p commands from the fresh document.
    bool redo(const std::vector<Experiment::Command>& kept, const std::string& step)
    {
        for (std::size_t i = 1; i <= steps() && m_experiment.can_redo(); ++i) {
            const std::string number
                = step + ", redo " + std::to_string(i) + " of " + std::to_string(steps());
            const Run run = m_experiment.redo(kept[i - 1], number);
            if (!m_experiment.expect_done(run, Promise::MultiRedoRepeats, number)
                || !m_experiment.expect_state(m_states[i], Promise::MultiRedoRepeats, number)) {
                return false;
            }
        }
        return m_experiment.undo_size() == steps();
    }

private:
    Experiment& m_experiment;
    std::vector<std::string> m_states;
};

} // namespace

void try_merged(const ProofSettings& settings, Findings& findings, const Subject& first,
    const Subject& second, const Record& record)
{
    if (!try_to_merge(settings, findings, first, second, 1, false)) {
        return;
    }
    try_to_merge(settings, findings, first, second, 1, true);
    try_to_merge(settings, findings, first, second, 2, false);
    try_to_merge_without_run(settings, findings, first, second);
    for (const Disturbance::Kind kind : {Disturbance::Cancel, Disturbance::Expected}) {
        for (const std::size_t place : places_of(record.reports.size(), std::min(settings.places, 2))) {
            try_to_merge_disturbed(settings, findings, first, second, record, {kind, place});
        }
    }
}

void try_sequence(const ProofSettings& settings, Findings& findings, const std::vector<Subject>& subjects)
{
    const std::string label = subjects.size() == 1 ? subjects.front().label : std::string("all commands");
    Experiment experiment(settings, findings, label, "several");
    States states(experiment);
    std::vector<Experiment::Command> kept;
    const std::size_t count = subjects.size() == 1 ? 3 : subjects.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Subject& subject = subjects[i % subjects.size()];
        const Experiment::Command command = experiment.make(subject);
        if (!command || !command->validUndo()) {
            continue; // the earlier ones left it nothing to do
        }
        const unsigned long long size = experiment.undo_size();
        if (!experiment.expect_done(
                experiment.insert(command, subject.label), Promise::DoSucceeds, subject.label)) {
            break;
        }
        if (experiment.undo_size() > size) {
            kept.push_back(command);
        }
        states.add();
    }
    if (!experiment.is_over() && states.steps() > 0) {
        const bool went = states.undo(states.steps(), "at first") && states.redo(kept, "at first")
            && states.undo(states.steps(), "again") && states.redo(kept, "again");
        // One step back, and on with another command: it takes the place of what could be redone.
        const Experiment::Command command
            = went && states.undo(1, "one") ? experiment.make(subjects.back()) : Experiment::Command();
        if (command
            && experiment.expect_done(
                experiment.insert(command, "another one"), Promise::DoSucceeds, "another one")) {
            states.add();
            states.undo(states.steps(), "with another one");
        }
    }
    experiment.finish();
}

} // namespace tarqa::housekeeping::testkit
