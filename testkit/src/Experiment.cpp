#include "Experiment.h"

#include "RefusedRun.h"
#include "RunWatch.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/testkit/LogCapture.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <sstream>

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

const char* const s_flags[]
    = {"m_valid_undo", "m_set_document_busy", "m_stack_identical", "m_clear_redo_when_undoing"};

std::array<bool, 4> flags_of(const AbstractCommand& command)
{
    return {command.validUndo(), command.set_document_busy(), command.stackIndenticalCommand(),
        command.shouldClearRedoWhenUndoing()};
}

/// Whatever makes a line break somewhere: of menus, lists, the log or the lines of a printed text.
bool has_line_break(const std::string& text)
{
    static const QString s_breaks = QString::fromUtf8("\n\r\v\f\xc2\x85\xe2\x80\xa8\xe2\x80\xa9");
    const QString decoded = QString::fromStdString(text);
    return std::any_of(
        decoded.begin(), decoded.end(), [](const QChar letter) { return s_breaks.contains(letter); });
}

/// The first text with a line break that the protocol or a list shows of a command, and what it is; empty if
/// there is none.
std::string text_with_break(const AbstractCommand& command, const std::string& whose)
{
    if (has_line_break(command.name())) {
        return "the name " + whose + "has a line break";
    }
    if (has_line_break(command.details().description())) {
        return "the description " + whose + "has a line break";
    }
    if (const auto* const p_composite = dynamic_cast<const CompositeCommand*>(&command)) {
        for (const CompositeCommand::Commands::value_type& child : p_composite->commands()) {
            const std::string text
                = child.first ? text_with_break(*child.first, "of a child ") : std::string();
            if (!text.empty()) {
                return text;
            }
        }
    }
    return {};
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
    m_made.push_back({command, command->name(), command->id(), flags_of(*command), false});
    look_at_texts(m_made.back(), "made");
    return command;
}

Run Experiment::insert(const Command& command, const std::string& step, const Disturbance& disturbance)
{
    const Run run = perform(
        step, [&] { call([&command] { CommandManager::instance().insert(command, false); }); }, command.get(),
        disturbance);
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
        step, [this] { call([this] { CommandManager::instance().redo(m_document->id()); }); }, command.get(),
        disturbance);
    if (disturbance.kind == Disturbance::None) {
        look_at_log(run, step, Promise::RedoRepeats);
    }
    look_at_modified(step);
    return run;
}

void Experiment::insert_without_run(const Command& command, const std::string& step)
{
    keep_from_running(step, [&command] { CommandManager::instance().insert(command, false); });
}

void Experiment::redo_without_run(const std::string& step)
{
    keep_from_running(step, [this] { CommandManager::instance().redo(m_document->id()); });
}

void Experiment::keep_from_running(const std::string& step, const std::function<void()>& action)
{
    const auto refused = [&action] {
        const RefusedRun refusal;
        try {
            action();
        } catch (const RefusedRun::Refusal&) { // as it is to be
        }
    };
    perform(step, refused, nullptr, Disturbance());
}

void Experiment::let_go(Command& command, const std::string& step)
{
    if (m_over) {
        return;
    }
    const std::string before = digest();
    m_made.erase(std::remove_if(m_made.begin(), m_made.end(),
                     [&command](const Made& made) { return made.command == command; }),
        m_made.end());
    command.reset();
    expect_state(before, Promise::GoingChangesNothing, step);
    look_at_other_document(step);
}

/// In this thread, or in another one.
void Experiment::call(const std::function<void()>& action) const
{
    if (!m_in_worker) {
        action();
        return;
    }
    std::exception_ptr p_thrown;
    const std::unique_ptr<QThread> p_worker(QThread::create([&action, &p_thrown] {
        try {
            action();
        } catch (...) {
            p_thrown = std::current_exception();
        }
    }));
    p_worker->start();
    p_worker->wait();
    if (QCoreApplication::instance()) { // messages that wait for this thread speak of what goes soon
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }
    if (p_thrown) {
        std::rethrow_exception(p_thrown);
    }
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
    bool lost_mark = false;
    m_sink.at_close([this, p_command, &lost_mark] {
        lost_mark = p_command && p_command->set_document_busy()
            && !DocumentManager::const_instance().document_busy(m_document.id());
    });
    attempt(step, action);
    m_sink.end();
    m_sink.at_close({});
    run.reports = m_sink.reports();
    run.succeeded = watch.heard() && watch.type() != CommandMessage::Failed;
    look_at_commands(step);
    run.log = without_protocol(log.lines());
    run.fatal = std::any_of(run.log.begin(), run.log.end(), is_fatal);
    if (lost_mark) {
        breach(Promise::BusyMarksBalance, step, "the document is no longer busy at the end of the run");
    }
    look_at_busy_marks(step);
    look_at_other_document(step);
    return run;
}

/// Nothing is to be thrown; what is, ends the experiment.
void Experiment::attempt(const std::string& step, const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& e) {
        breach(Promise::ThrowsNothing, step, quoted(e.what()) + " came out of the command manager");
        m_over = true;
    } catch (...) {
        breach(Promise::ThrowsNothing, step, "an unknown exception came out of the command manager");
        m_over = true;
    }
}

/// Without the further lines of protocols whose texts have line breaks, which is another matter.
std::vector<std::string> Experiment::without_protocol(std::vector<std::string> log) const
{
    for (const Made& made : m_made) {
        if (!made.has_breaks) {
            continue;
        }
        std::istringstream protocol(made.command->protocol("", true) + made.command->protocol("", false));
        for (std::string line; std::getline(protocol, line);) {
            const auto found = std::find(log.begin(), log.end(), line);
            if (found != log.end()) {
                log.erase(found);
            }
        }
    }
    return log;
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
        const std::array<bool, 4> flags = flags_of(*made.command);
        for (std::size_t i = 0; i < flags.size(); ++i) {
            if (flags[i] != made.flags[i]) {
                breach(Promise::FlagsStay, step,
                    s_flags[i] + std::string(flags[i] ? " is true now" : " is false now"));
            }
        }
        made.flags = flags;
        look_at_texts(made, step);
    }
}

void Experiment::look_at_texts(Made& made, const std::string& step)
{
    const std::string text = text_with_break(*made.command, "");
    if (!text.empty() && !made.has_breaks) { // said once
        breach(Promise::TextsAreOneLine, step, text);
        made.has_breaks = true;
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
    breach(Promise::BusyMarksBalance, step, "the document is still busy");
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
