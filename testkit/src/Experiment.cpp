#include "Experiment.h"

#include "RunWatch.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/testkit/LogCapture.h>

#include <algorithm>
#include <exception>

namespace tarqa::housekeeping::testkit {

namespace {

// How the error log begins the entry of a fatal error, which the user's language does not change.
bool is_fatal(const std::string& line)
{
    return line == "FATAL ERROR!" || line == "fatal error!";
}

/// A line of the proof's own, which counts as protocol. A fatal error empties the log: what it and the next
/// one leave there may be the same text, and without a line between them nobody would see the second.
void tell_log(const std::string& text)
{
    const LogCapture seen;
    ErrorHandler::instance().report_command("\t* round-trip proof: " + text + '\n');
}

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

} // namespace

Experiment::Held::Held(AbstractDocument& document)
    : m_document(document)
    , m_id(document.id())
{ }

Experiment::Held::~Held()
{
    DocumentManager::instance().destroy_document(m_id, true, false, false, DocumentId::null());
}

Experiment::Experiment(
    const ProofSettings& settings, Findings& findings, const std::string& label, const std::string& title)
    : m_settings(settings)
    , m_findings(findings)
    , m_label(label)
    , m_title(title)
    , m_other(settings.make_document())
    , m_document(settings.make_document())
    , m_fresh(digest())
    , m_fresh_other(settings.digest(*m_other))
{
    ++m_findings.experiments;
    m_over = m_other.id() == m_document.id(); // nothing can be tried on them; finish() says so
    DocumentManager::instance().current_document(m_other.id());
}

Experiment::~Experiment() = default;

std::string Experiment::digest() const
{
    return m_settings.digest(*m_document);
}

bool Experiment::can_undo() const
{
    return !m_over && undo_size() > 0;
}

bool Experiment::can_redo() const
{
    return !m_over && m_document->document_history().redoSize() > 0;
}

unsigned long long Experiment::undo_size() const
{
    return m_document->document_history().undoSize();
}

Experiment::Command Experiment::make(const Subject& subject)
{
    if (m_over) {
        return {};
    }
    const std::string before = digest();
    const Command command = subject.make(*m_document);
    if (!command) {
        if (m_made.empty()) {
            breach(Promise::IsMade, "", "the maker gave none for a fresh document");
        }
        return command;
    }
    if (command->document_id() != m_document->id()) {
        breach(Promise::IsMade, "", "it was made for another document");
        return {};
    }
    expect_state(before, Promise::MakingChangesNothing, "made");
    if (command->name().empty()) {
        breach(Promise::NameStays, "made", "it has no name");
    }
    for (const Made& earlier : m_made) {
        if (earlier.id == command->id()) {
            breach(Promise::IdStays, "made", "it has the id of an earlier one");
        }
    }
    command->setProgress(&m_sink);
    m_made.push_back({command, command->name(), command->id()});
    return command;
}

Run Experiment::insert(const Command& command, const std::string& step, const Disturbance& disturbance)
{
    const Run run = perform(
        step, [&command] { CommandManager::instance().insert(command, false); }, command.get(), disturbance);
    if (disturbance.kind == Disturbance::None) {
        look_at_log(run, step, Promise::DoSucceeds);
    }
    look_at_modified(step);
    return run;
}

Run Experiment::undo(const std::string& step)
{
    const Run run = perform(
        step, [this] { CommandManager::instance().undo(m_document->id()); }, nullptr, Disturbance());
    look_at_log(run, step, Promise::UndoNeverFails);
    if (!run.reports.empty()) {
        breach(
            Promise::UndoReportsNothing, step, "it reported " + std::to_string(run.reports.front()) + " %");
    }
    return run;
}

Run Experiment::redo(const Command& command, const std::string& step, const Disturbance& disturbance)
{
    const Run run = perform(
        step, [this] { CommandManager::instance().redo(m_document->id()); }, command.get(), disturbance);
    if (disturbance.kind == Disturbance::None) {
        look_at_log(run, step, Promise::RedoRepeats);
    }
    look_at_modified(step);
    return run;
}

Run Experiment::perform(const std::string& step, const std::function<void()>& action,
    AbstractCommand* p_command, const Disturbance& disturbance)
{
    Run run;
    if (m_over) {
        return run;
    }
    if (disturbance.kind != Disturbance::None) {
        tell_log(m_title + ", " + step);
    }
    const LogCapture log;
    const RunWatch watch;
    m_sink.begin(p_command, disturbance);
    try {
        action();
    } catch (const std::exception& e) {
        breach(Promise::ThrowsNothing, step, quoted(e.what()) + " came out of the command manager");
        m_over = true;
    } catch (...) {
        breach(Promise::ThrowsNothing, step, "an unknown exception came out of the command manager");
        m_over = true;
    }
    m_sink.end();
    run.reports = m_sink.reports();
    run.succeeded = watch.heard() && watch.type() != CommandMessage::Failed;
    run.log = log.lines();
    run.fatal = std::any_of(run.log.begin(), run.log.end(), is_fatal);
    look_at_commands(step);
    look_at_busy_marks(step);
    look_at_other_document(step);
    return run;
}

/// Of an undisturbed run: it writes nothing that was not expected.
void Experiment::look_at_log(const Run& run, const std::string& step, Promise promise_of_fatal)
{
    if (run.fatal) {
        const std::string& text = run.log.back();
        breach(promise_of_fatal, step, "a fatal error: " + quoted(text));
        return;
    }
    for (const std::string& line : run.log) {
        const bool expected = std::any_of(m_settings.expected_log.begin(), m_settings.expected_log.end(),
            [&line](const std::string& part) { return line.find(part) != std::string::npos; });
        if (!expected) {
            breach(Promise::LogsNothing, step, "the error log has " + quoted(line));
            return;
        }
    }
}

void Experiment::look_at_commands(const std::string& step)
{
    for (Made& made : m_made) {
        if (made.command->name() != made.name) {
            breach(Promise::NameStays, step,
                "it is called " + quoted(made.command->name()) + ", not " + quoted(made.name));
            made.name = made.command->name(); // each change is said once
        }
        if (made.command->id() != made.id) {
            breach(Promise::IdStays, step, "it has another id");
            made.id = made.command->id();
        }
    }
}

void Experiment::look_at_modified(const std::string& step)
{
    if (!m_over && m_settings.is_modified && !m_settings.is_modified(*m_document)) {
        breach(Promise::ModifiedStays, step, "the document does not count as modified");
    }
}

void Experiment::look_at_other_document(const std::string& step)
{
    const std::string now = m_settings.digest(*m_other);
    const std::string difference = first_difference(m_fresh_other, now);
    if (!difference.empty()) {
        breach(Promise::OthersUntouched, step, difference);
        m_fresh_other = now; // each change is said once
    }
}

/// Takes the marks away that it finds, or they would be found after every step.
void Experiment::look_at_busy_marks(const std::string& step)
{
    if (!DocumentManager::const_instance().document_busy(m_document.id())) {
        return;
    }
    breach(Promise::BusyMarksGo, step, "the document is still busy");
    while (DocumentManager::const_instance().document_busy(m_document.id())) {
        DocumentManager::instance().document_busy(m_document.id(), false);
    }
}

bool Experiment::expect_done(const Run& run, Promise promise, const std::string& step)
{
    if (m_over) {
        return false;
    }
    if (run.succeeded && !run.fatal) {
        return true;
    }
    const std::string why = run.log.empty() ? std::string() : ": " + quoted(run.log.back());
    breach(promise, step, (run.fatal ? "a fatal error" : "the run counts as failed") + why);
    return false;
}

bool Experiment::expect_state(const std::string& expected, Promise promise, const std::string& step)
{
    if (m_over) {
        return false;
    }
    const std::string difference = first_difference(expected, digest());
    if (!difference.empty()) {
        breach(promise, step, difference);
    }
    return difference.empty();
}

void Experiment::breach(Promise promise, const std::string& step, const std::string& difference)
{
    m_findings.add({promise, m_label,
        m_title.empty() || step.empty() ? m_title + step : m_title + ", " + step, difference});
}

void Experiment::finish()
{
    if (m_other.id() == m_document.id()) {
        breach(Promise::DigestIsStable, "made", "the same document was made twice");
        return;
    }
    look_at_other_document("at last");
}

void Experiment::compare_documents()
{
    expect_state(m_fresh, Promise::DigestIsStable, "the digest a second time");
    const std::string difference = first_difference(m_fresh_other, m_fresh);
    if (!difference.empty()) {
        breach(Promise::DigestIsStable, "a second document", difference);
    }
}

} // namespace tarqa::housekeeping::testkit
