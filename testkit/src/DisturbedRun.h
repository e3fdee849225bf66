#pragma once

#include "Experiment.h"
#include "Experiments.h"

#include <string>

namespace tarqa::housekeeping::testkit {

/// A disturbed run of one command, and what comes after it.
class DisturbedRun
{
public:
    /// Before the run. The arguments must outlive the object.
    DisturbedRun(Experiment& experiment, const Record& record, const Experiment::Command& command);

    /// Looks at @p run, which was disturbed, and goes on with the command.
    void judge(const Run& run, const Disturbance& disturbance);
    /// Looks at @p run, in which a composite's question was answered.
    void judge_answered(const Run& run, bool with_cancel);
    /// Looks at @p run, which came after a request that was too late for the run before: it may be cancelled
    /// by it or, where the command forgets such requests, do the whole.
    void judge_after_late_request(const Run& run);

private:
    void judge_cancelled(const Run& run);
    void judge_failed(const Run& run, bool expected);
    void go_on(Promise promise_of_undo, Promise promise);
    bool has_cancelled_batch() const;

    Experiment& m_experiment;
    const Record& m_record;
    const Experiment::Command& m_command;
    std::string m_before;
};

} // namespace tarqa::housekeeping::testkit
