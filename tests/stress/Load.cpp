#include "Load.h"

#include "LoadTexts.h"
#include "NumberCommand.h"

#include "support/Controllers.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QTimer>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace load {

using namespace tarqa::housekeeping;

namespace {

const unsigned long long s_batch = 32; // steps for each permit
const unsigned s_permits = 2; // for each thread
const unsigned long long s_all = ~0ULL;

HistoryLines lines_of(const std::vector<CommandDetails>& details)
{
    HistoryLines lines;
    for (const CommandDetails& command : details) {
        lines.push_back(command.name() + ": " + command.description());
    }
    return lines;
}

std::string joined(const HistoryLines& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    return text;
}

/// What of a fault in two long texts is worth seeing.
void compare_from_difference(
    Faults& faults, const std::string& what, const std::string& expected, const std::string& actual)
{
    const std::size_t length = std::min(expected.size(), actual.size());
    const auto end = expected.begin() + static_cast<std::ptrdiff_t>(length);
    const auto at = static_cast<std::size_t>(
        std::mismatch(expected.begin(), end, actual.begin()).first - expected.begin());
    faults.compare(
        what + " from character " + std::to_string(at) + " on", expected.substr(at), actual.substr(at));
}

unsigned long long total(const MessageCounts& counts)
{
    unsigned long long sum = 0;
    for (const auto& families : counts) {
        for (const unsigned long long count : families) {
            sum += count;
        }
    }
    return sum;
}

unsigned long long history_messages(const MessageCounts& counts)
{
    const auto family = static_cast<std::size_t>(Family::History);
    return counts[0][family] + counts[1][family];
}

} // namespace

unsigned long long Report::row(const std::string& name) const
{
    for (const auto& row : rows) {
        if (row.first == name) {
            return row.second;
        }
    }
    return 0;
}

std::ostream& operator<<(std::ostream& stream, const Report& report)
{
    for (const auto& row : report.rows) {
        stream << row.first << std::string(row.first.size() < 45 ? 45 - row.first.size() : 1, ' ')
               << row.second << '\n';
    }
    for (const std::string& fault : report.faults) {
        stream << "FAULT: " << fault << '\n';
    }
    return stream;
}

Load::Load(const Options& options)
    : m_options(options)
    , m_flow(options.threads * s_permits)
    , m_steps(options.threads, 0)
{
    // What belongs to the main thread, before another thread asks for it.
    ErrorHandler::instance();
    CommandManager::instance();
    MessageHandler::instance();
    support::init_controllers();

    m_documents = create_documents(options.threads);
    m_gui = std::make_unique<Gui>(m_documents, m_flow, m_faults);
    if (!options.queued) {
        m_gui->silence();
    }
    std::vector<DocumentId> ids;
    for (unsigned thread = 0; thread < options.threads; ++thread) {
        ids.push_back(m_documents[thread]->id());
        m_threads.push_back(std::make_unique<LoadThread>(thread, m_documents));
    }
    m_direct = std::make_unique<Subscriber>("direct subscriber", ids, Qt::DirectConnection, m_faults);
    if (options.queued) {
        m_queued = std::make_unique<Subscriber>("main thread", ids, Qt::AutoConnection, m_faults);
    }
    m_log_begin = std::filesystem::file_size(ErrorProtocol::instance().log_filename());
}

Load::~Load()
{
    m_direct.reset();
    m_queued.reset();
    m_gui.reset();
    for (const DocumentId& id : DocumentManager::instance().current_documents()) {
        DocumentManager::instance().destroy_document(id, true, false, false, DocumentId::null());
    }
}

std::vector<NumbersDocument*> Load::create_documents(unsigned count)
{
    std::vector<NumbersDocument*> documents;
    while (documents.size() < count) {
        documents.push_back(&NumbersDocument::create());
    }
    return documents;
}

Report Load::run()
{
    run_threads();
    m_gui->deliver_rest();
    add_rows_of_steps();
    check_entries();
    check_busy();
    check_messages();
    check_histories();
    m_faults.compare("runs that overlap", 0ULL, NumberCommand::overlaps());
    m_report.fault_count = m_faults.count();
    m_report.faults = m_faults.texts();
    add_row("mismatches", m_report.fault_count);
    return m_report;
}

void Load::run_threads()
{
    if (m_options.steps == 0) {
        QTimer::singleShot(m_options.seconds * 1000, m_gui.get(), [this] { m_stop = true; });
    }
    m_running = m_options.threads;
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < m_options.threads; ++thread) {
        threads.emplace_back([this, thread] { work(thread); });
    }
    m_gui->run_until([this] { return m_running == 0; });
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void Load::work(unsigned thread)
{
    Plan steps = plan(thread);
    unsigned long long done = 0;
    while (!m_stop && (m_options.steps == 0 || done < m_options.steps)) {
        m_threads[thread]->run(steps.next());
        if (++done % s_batch == 0) {
            QMetaObject::invokeMethod(m_gui.get(), "caught_up", Qt::QueuedConnection);
            m_flow.take();
        }
    }
    m_steps[thread] = done;
    --m_running;
}

/// The same steps again, all in one thread.
void Load::replay(const std::vector<NumbersDocument*>& documents) const
{
    // Not the main thread: there a failure would be shown.
    std::thread([this, &documents] {
        for (unsigned thread = 0; thread < m_options.threads; ++thread) {
            LoadThread again(thread, documents);
            Plan steps = plan(thread);
            for (unsigned long long step = 0; step < m_steps[thread]; ++step) {
                again.replay(steps.next());
            }
        }
    }).join();
}

// --- checks

std::string Load::read_log() const
{
    std::ifstream file(ErrorProtocol::instance().log_filename(), std::ios::binary);
    if (m_options.mix.fatal_text == 0) {
        file.seekg(static_cast<std::streamoff>(m_log_begin));
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void Load::check_entries()
{
    for (unsigned thread = 0; thread < m_options.threads; ++thread) {
        m_expected.emplace_back(plan(thread), thread, m_steps[thread]);
    }
    const std::string log = read_log();
    add_row("bytes in the log", log.size());
    add_row("log entries read whole", check_log(log, m_options.mix.fatal_text != 0, m_expected, m_faults));
    add_row("log entries written", 0);
    unsigned long long& written = m_report.rows.back().second;
    for (const ExpectedEntries& expected : m_expected) {
        written += expected.count();
    }
    if (m_options.mix.fatal_text == 0) {
        m_faults.compare("entries of the log", written, m_report.row("log entries read whole"));
    }
}

void Load::check_busy()
{
    DocumentManager& manager = DocumentManager::instance();
    m_faults.compare("some document is marked", 0ULL, manager.documents_busy() ? 1ULL : 0ULL);
    for (const NumbersDocument* p_document : m_documents) {
        m_faults.compare("document is marked", 0ULL, manager.document_busy(p_document->id()) ? 1ULL : 0ULL);
        m_faults.compare("document thinks it is busy", 0ULL, p_document->is_busy() ? 1ULL : 0ULL);
    }
}

void Load::check_messages()
{
    unsigned long long sent = total(m_gui->sent());
    for (const auto& thread : m_threads) {
        sent += total(thread->sent());
    }
    add_row("messages sent by the threads and the GUI", sent);
    check_subscriber(*m_direct, "direct subscriber");
    if (!m_queued) {
        return;
    }
    check_subscriber(*m_queued, "main thread");
    for (unsigned thread = 0; thread < m_options.threads; ++thread) {
        m_faults.compare("order of the command messages on the main thread", m_direct->mark_of_runs(thread),
            m_queued->mark_of_runs(thread));
    }
    for (const auto type : {DocumentMessage::Busy, DocumentMessage::Idle}) {
        m_faults.compare(
            "document messages on the main thread", m_direct->changes(type), m_queued->changes(type));
    }
}

void Load::check_subscriber(const Subscriber& subscriber, const std::string& name)
{
    unsigned long long delivered = subscriber.history_messages();
    unsigned long long history = history_messages(m_gui->sent());
    unsigned long long times_busy = 0;
    for (unsigned thread = 0; thread <= m_options.threads; ++thread) {
        const bool is_gui = thread == m_options.threads;
        MessageCounts expected = is_gui ? m_gui->sent() : m_threads[thread]->sent();
        for (auto& families : expected) {
            families[static_cast<std::size_t>(Family::History)] = 0;
        }
        delivered += total(subscriber.received(thread));
        if (expected != subscriber.received(thread)) {
            m_faults.compare("messages of thread " + std::to_string(thread) + " at the " + name,
                total(expected), total(subscriber.received(thread)));
            m_faults.add("or their families differ");
        }
        if (is_gui) {
            continue;
        }
        const ShadowDocument& shadow = m_expected[thread].document();
        const auto& runs = subscriber.runs(thread);
        m_faults.compare("messages of done commands at the " + name, shadow.done, runs[CommandMessage::Done]);
        m_faults.compare(
            "messages of undone commands at the " + name, shadow.undone, runs[CommandMessage::Undone]);
        m_faults.compare(
            "messages of failed commands at the " + name, shadow.failed, runs[CommandMessage::Failed]);
        delivered += shadow.done + shadow.undone + shadow.failed;
        history += shadow.history_changes + history_messages(m_threads[thread]->sent());
        times_busy += shadow.times_busy;
    }
    m_faults.compare("history messages at the " + name, history, subscriber.history_messages());
    m_faults.compare("messages of a change of the current document at the " + name, m_gui->current_changes(),
        subscriber.changes(DocumentMessage::CurrentChanged));
    if (!m_options.mix.foreign_marks) { // which may come between the last mark and the end of the flag
        m_faults.compare(
            "busy messages at the " + name, times_busy, subscriber.changes(DocumentMessage::Busy));
        m_faults.compare(
            "idle messages at the " + name, times_busy, subscriber.changes(DocumentMessage::Idle));
    }
    delivered += subscriber.changes(DocumentMessage::Busy) + subscriber.changes(DocumentMessage::Idle)
        + subscriber.changes(DocumentMessage::CurrentChanged);
    add_row("messages delivered, the library's included, to the " + name, delivered);
}

void Load::check_histories()
{
    m_direct.reset();
    m_queued.reset();
    m_gui->silence();
    const std::vector<NumbersDocument*> documents = create_documents(m_options.threads);
    replay(documents);
    for (unsigned thread = 0; thread < m_options.threads; ++thread) {
        check_document(thread, *documents[thread], "replayed");
        const NumbersDocument& again = *documents[thread];
        const NumbersDocument& document = *m_documents[thread];
        compare_from_difference(m_faults, "replayed undo list of thread " + std::to_string(thread),
            joined(lines_of(again.document_history().getUndoCommandDetails(s_all))),
            joined(lines_of(document.document_history().getUndoCommandDetails(s_all))));
        compare_from_difference(m_faults, "replayed redo list of thread " + std::to_string(thread),
            joined(lines_of(again.document_history().getRedoCommandDetails(s_all))),
            joined(lines_of(document.document_history().getRedoCommandDetails(s_all))));
        m_faults.compare("replayed numbers of thread " + std::to_string(thread) + " are the same", 1ULL,
            again.numbers == document.numbers && again.sum == document.sum ? 1ULL : 0ULL);
        check_document(thread, document, "concurrent");
    }
    add_row("histories compared with a sequential replay", m_options.threads);
}

/// Against the rules alone.
void Load::check_document(unsigned thread, const NumbersDocument& document, const std::string& name)
{
    const ShadowDocument& shadow = m_expected[thread].document();
    const std::string of = " of thread " + std::to_string(thread);
    const AbstractDocumentHistory& history = document.document_history();
    compare_from_difference(m_faults, name + " undo list" + of, joined(shadow.undo_lines()),
        joined(lines_of(history.getUndoCommandDetails(s_all))));
    compare_from_difference(m_faults, name + " redo list" + of, joined(shadow.redo_lines()),
        joined(lines_of(history.getRedoCommandDetails(s_all))));
    m_faults.compare(name + " numbers" + of + " are as expected", 1ULL,
        shadow.numbers() == document.numbers && shadow.sum() == document.sum ? 1ULL : 0ULL);
}

void Load::add_rows_of_steps()
{
    for (unsigned kind = 0; kind < s_kinds; ++kind) {
        unsigned long long steps = 0;
        for (const auto& thread : m_threads) {
            steps += thread->steps()[kind];
        }
        add_row(std::string("steps: ") + name_of(static_cast<Kind>(kind)), steps);
    }
    add_row("listings by the GUI", m_gui->listings());
}

} // namespace load
