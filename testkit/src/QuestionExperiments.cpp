#include "BoxAnswers.h"
#include "DisturbedRun.h"
#include "Experiment.h"
#include "Experiments.h"

namespace tarqa::housekeeping::testkit {

namespace {

typedef QMessageBox::StandardButton Answer;

/// One run of a composite in which its questions are answered.
class QuestionedRun
{
public:
    /// The arguments must outlive the object.
    QuestionedRun(
        const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
        : m_settings(settings)
        , m_findings(findings)
        , m_subject(subject)
        , m_record(record)
    { }

    /// In a first run. @return whether anything was asked
    bool in_do(const Disturbance& disturbance, Answer answer)
    {
        Experiment experiment(
            m_settings, m_findings, m_subject.label, title(disturbance, m_record.reports, answer));
        const Experiment::Command command = experiment.make(m_subject);
        if (!command) {
            return false;
        }
        return judge(
            experiment, command, answer, [&] { return experiment.insert(command, "do", disturbance); });
    }

    /// In a redo.
    bool in_redo(const Disturbance& disturbance, Answer answer)
    {
        Experiment experiment(m_settings, m_findings, m_subject.label,
            title(disturbance, m_record.reports_of_redo, answer) + " in a redo");
        const Experiment::Command command = experiment.make(m_subject);
        if (!command) {
            return false;
        }
        experiment.insert(command, "do");
        experiment.undo("undo before it");
        return experiment.can_redo() && judge(experiment, command, answer, [&] {
            return experiment.redo(command, "redo", disturbance);
        });
    }

private:
    static std::string title(
        const Disturbance& disturbance, const std::vector<unsigned int>& reports, Answer answer)
    {
        const char* const text = answer == QMessageBox::Cancel ? "Cancel"
            : answer == QMessageBox::Yes                       ? "Yes"
                                                               : "Yes to All";
        return (disturbance.kind == Disturbance::None ? name_of(disturbance.kind)
                                                      : title_of(disturbance, reports))
            + ", the question answered with " + text;
    }

    template <class Action>
    bool judge(
        Experiment& experiment, const Experiment::Command& command, Answer answer, const Action& action)
    {
        DisturbedRun disturbed(experiment, m_record, command);
        Run run;
        int questions = 0;
        {
            const BoxAnswers boxes(answer);
            run = action();
            questions = boxes.questions();
        }
        m_findings.questions += questions;
        if (questions > 0 && !experiment.is_over()) {
            disturbed.judge_answered(run, answer == QMessageBox::Cancel);
        }
        experiment.finish();
        return questions > 0;
    }

    const ProofSettings& m_settings;
    Findings& m_findings;
    const Subject& m_subject;
    const Record& m_record;
};

} // namespace

void try_questions(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record)
{
    if (!record.composite) {
        return;
    }
    QuestionedRun questioned(settings, findings, subject, record);
    if (questioned.in_do({}, QMessageBox::Cancel)) { // a child fails by itself
        questioned.in_do({}, QMessageBox::Yes);
        questioned.in_do({}, QMessageBox::YesToAll);
    }
    for (const std::size_t place : places_of(record.reports.size(), settings.places)) {
        const Disturbance failure{Disturbance::Expected, place, false};
        if (questioned.in_do(failure, QMessageBox::Cancel)) { // not where the last child fails
            questioned.in_do(failure, QMessageBox::Yes);
            questioned.in_do({Disturbance::Expected, place, true}, QMessageBox::YesToAll);
        }
    }
    for (const std::size_t place :
        places_of(record.redoable ? record.reports_of_redo.size() : 0, settings.places)) {
        questioned.in_redo({Disturbance::Expected, place, false}, QMessageBox::Cancel);
    }
}

} // namespace tarqa::housekeeping::testkit
