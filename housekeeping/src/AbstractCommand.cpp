#include <tarqa/housekeeping/AbstractCommand.h>

#include "Assertion.h"
#include "LoggingExceptions.h"
#include "ReadyMessage.h"
#include "UnexpectedFailure.h"

#include <pkBase/AbstractProgress.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <cstring>
#include <exception>
#include <mutex>
#include <string_view>
#include <utility>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/AbstractCommand";
const CatchPoint s_catch_point = {s_source, 223, 234};
constexpr unsigned int s_line_of_progress = 136;
constexpr unsigned int s_cancelled = 1028;
const char* const s_do = "DO>";
const char* const s_undo = "UNDO>";

/// Around one access to the details of any command, never longer.
std::mutex s_details_mutex;

constexpr std::size_t s_usual_protocol = 120; // in bytes

/// Takes the pieces of a protocol, and only adds up how long they are.
class Length
{
public:
    void put(std::string_view piece) { m_length += piece.size(); }
    std::size_t length() const { return m_length; }

private:
    std::size_t m_length = 0;
};

/// Takes the same pieces, and writes them to where there is room for them.
class Writer
{
public:
    explicit Writer(char* p_room)
        : m_p_room(p_room)
    { }
    void put(std::string_view piece)
    {
        std::memcpy(m_p_room, piece.data(), piece.size());
        m_p_room += piece.size();
    }

private:
    char* m_p_room; // not owned
};

template <class Sink>
void put_outcome(Sink& sink, const std::string& description, bool succeeded)
{
    if (!description.empty()) {
        sink.put(": ");
        sink.put(description);
    }
    if (succeeded) {
        sink.put(" - Succeeded.\n");
    } else {
        sink.put(" - Failed.\n");
    }
}

template <class Sink>
void put_children(Sink& sink, const CompositeCommand::Commands& children)
{
    for (const CompositeCommand::Commands::value_type& child : children) {
        if (child.first) {
            sink.put("\t* ");
            sink.put(child.first->name());
            put_outcome(sink, child.first->details().description(), child.second);
        }
    }
}

/// A run of a progress sink, closed on every way out.
class ProgressRun
{
public:
    explicit ProgressRun(pkBase::AbstractProgress* p_progress)
        : m_p_progress(p_progress)
    {
        if (m_p_progress) {
            m_p_progress->open_run(0);
        }
    }
    ~ProgressRun()
    {
        logging_exceptions("An unknown exception was thrown while progress was closed", [this] { close(); });
    }
    ProgressRun(const ProgressRun&) = delete;
    ProgressRun& operator=(const ProgressRun&) = delete;

    void close()
    {
        if (pkBase::AbstractProgress* const p_progress = std::exchange(m_p_progress, nullptr)) {
            p_progress->close_run();
        }
    }

private:
    pkBase::AbstractProgress* m_p_progress; // not owned
};

void send(AbstractCommand& command, CommandMessage::CommandType type, bool redo)
{
    const ReadyMessage<CommandMessage, message_memory::RunOfCommand> message;
    message->id(command.id());
    message->command(&command);
    message->document_id(command.document_id());
    message->setAsRedoCommand(redo);
    message->command_type(type);
    message->dispatch();
}

} // namespace

AbstractCommand::AbstractCommand(DocumentId document_id, const std::string& name)
    : m_id(CommandManager::instance().createId())
    , m_document_id(document_id)
{
    m_details.setName(name);
}

AbstractCommand::AbstractCommand(const AbstractCommand&) = default;
AbstractCommand& AbstractCommand::operator=(const AbstractCommand&) = default;
AbstractCommand::~AbstractCommand() = default;

unsigned long long AbstractCommand::size() const
{
    return 1;
}

void AbstractCommand::rememberGeo(unsigned long long) { }

bool AbstractCommand::stackWith(boost::shared_ptr<AbstractCommand>)
{
    return false;
}

void AbstractCommand::finished(bool) { }

bool AbstractCommand::empty() const
{
    return size() == 0;
}

void AbstractCommand::setName(const std::string& name)
{
    const std::lock_guard<std::mutex> lock(s_details_mutex);
    m_details.setName(name);
}

void AbstractCommand::setDescription(const std::string& description)
{
    const std::lock_guard<std::mutex> lock(s_details_mutex);
    m_details.setDescription(description);
}

void AbstractCommand::setIcon(const QIcon& icon)
{
    const QIcon old = m_details.icon(); // dies after the lock
    const std::lock_guard<std::mutex> lock(s_details_mutex);
    m_details.setIcon(icon);
}

void AbstractCommand::appendDescription(const std::string& text)
{
    const std::string& description = m_details.description();
    setDescription(description.empty() ? text : description + ", " + text);
}

CommandDetails AbstractCommand::details_copy() const
{
    const std::lock_guard<std::mutex> lock(s_details_mutex);
    return m_details;
}

void AbstractCommand::progress(unsigned int percentage) const
{
    if (!m_progress) {
        return;
    }
    HK_ASSERT_AT(100 >= percentage, "100 >= percentage", s_line_of_progress);
    throw_if_cancelled();
    m_progress->set_percentage(percentage);
}

void AbstractCommand::progress_text(const std::string& text) const
{
    if (m_progress) {
        m_progress->set_text(QString::fromStdString(text));
    }
}

void AbstractCommand::throw_if_cancelled() const
{
    if (m_cancelled) {
        throw CancelCommandException(HousekeepingException(
            s_cancelled, QObject::tr("Command was cancelled by user!"), s_source, __LINE__));
    }
}

std::string AbstractCommand::protocol(const char* prefix, bool succeeded) const
{
    std::string text = begin_protocol(prefix);
    end_protocol(text, succeeded);
    return text;
}

/// What is written before the run: the name is the one that the command has then.
std::string AbstractCommand::begin_protocol(const char* prefix) const
{
    std::string protocol;
    protocol.reserve(s_usual_protocol);
    protocol += prefix;
    protocol += '\t';
    protocol += name();
    return protocol;
}

/// Made long enough at once: a composite may have many children, each of them with a line of many pieces.
void AbstractCommand::end_protocol(std::string& protocol, bool succeeded) const
{
    const auto* const p_composite
        = m_may_be_composite ? dynamic_cast<const CompositeCommand*>(this) : nullptr;
    const auto put_rest = [&](auto& sink) {
        put_outcome(sink, m_details.description(), succeeded);
        if (p_composite) {
            put_children(sink, p_composite->commands());
        }
    };
    Length rest;
    put_rest(rest);
    const std::size_t begin = protocol.size();
    protocol.resize(begin + rest.length());
    Writer writer(&protocol[begin]);
    put_rest(writer);
}

void AbstractCommand::set_document_modified() const
{
    DocumentManager::instance().document_from_id(m_document_id).set_modified(true);
}

AbstractCommand::Execute* AbstractCommand::execute_runnable()
{
    set_document_modified();
    return new Execute(this);
}

AbstractCommand::UnExecute* AbstractCommand::unexecute_runnable()
{
    return new UnExecute(this);
}

AbstractCommand::Execute::Execute(AbstractCommand* p_command)
    : m_p_command(p_command)
{ }

AbstractCommand::Execute::~Execute() = default;

void AbstractCommand::Execute::run(bool redo)
{
    AbstractCommand& command = *m_p_command;
    std::string protocol = command.begin_protocol(s_do);
    ProgressRun progress_run(command.m_progress);
    const bool succeeded = attempt();
    command.finished(succeeded);
    progress_run.close();

    command.end_protocol(protocol, succeeded);
    send(command, succeeded ? CommandMessage::Done : CommandMessage::Failed, redo);
    ErrorHandler::instance().report_command(protocol);
}

/// Does the command, and deals with whatever it throws. @return false if it was cancelled or failed as
/// expected; after any other exception it counts as done, and the program is about to end
bool AbstractCommand::Execute::attempt()
{
    AbstractCommand& command = *m_p_command;
    try {
        command.remember();
        command.do_command();
    } catch (CancelCommandException&) {
        command.rollback();
        command.m_cancelled = false; // the same command can run again
        return false;
    } catch (FailedCommandException& e) {
        ErrorHandler::instance().message(tr("Error").toStdString(), e, QMessageBox::Ok);
        command.rollback();
        return false;
    } catch (...) {
        report_unexpected_failure(
            s_catch_point, tr("An unknown serious error has occured in this Command : "));
    }
    return true;
}

AbstractCommand::UnExecute::UnExecute(AbstractCommand* p_command)
    : m_p_command(p_command)
{ }

AbstractCommand::UnExecute::~UnExecute() = default;

void AbstractCommand::UnExecute::run(bool redo)
{
    AbstractCommand& command = *m_p_command;
    std::string protocol = command.begin_protocol(s_undo);
    ProgressRun progress_run(command.m_progress);
    const auto fatal = [](const char* text) {
        ErrorHandler::instance().fatal_error(
            tr("An unknown serious error has occured in this Command UNDO : ").toStdString() + text);
    };
    try {
        command.undo_command();
    } catch (tarqa::Exception& e) {
        fatal(e.what());
    } catch (std::exception& e) {
        fatal(e.what());
    } catch (...) {
        ErrorHandler::instance().fatal_error(
            tr("An unknown serious error has occured in this Command UNDO").toStdString());
    }
    command.finished(true);
    progress_run.close();

    command.end_protocol(protocol, true); // an undo always counts as done
    send(command, CommandMessage::Undone, redo);
    ErrorHandler::instance().report_command(protocol);
}

} // namespace tarqa::housekeeping
