#include <tarqa/housekeeping/CompositeCommand.h>

#include "Assertion.h"
#include "UnexpectedFailure.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/utilities/Pointers.h>

#include <cstddef>
#include <utility>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/CompositeCommand";
const CatchPoint s_catch_point = {s_source, 151, 162};
constexpr unsigned int s_line_of_cancel = 142;
constexpr unsigned int s_line_of_pass_over = 146;
constexpr unsigned int s_insertion_cancelled = 7006;
constexpr std::size_t s_first_room = 8; // for children

} // namespace

CompositeCommand::CompositeCommand(
    const DocumentId& document_id, const std::string& name, bool stack_identical)
    : AbstractCommand(document_id, name)
{
    m_stack_identical = stack_identical;
    m_may_be_composite = true;
}

CompositeCommand::CompositeCommand(const CompositeCommand&) = default;
CompositeCommand& CompositeCommand::operator=(const CompositeCommand&) = default;
CompositeCommand::~CompositeCommand() = default;

unsigned long long CompositeCommand::size() const
{
    return m_commands.size();
}

void CompositeCommand::push_back(boost::shared_ptr<AbstractCommand> command)
{
    if (HK_ASSERT(utilities::valid_pointer(command), "utilities::valid_pointer(command)")) {
        if (m_commands.empty()) {
            m_commands.reserve(s_first_room);
        }
        m_commands.emplace_back(std::move(command), false);
    }
}

void CompositeCommand::clear()
{
    m_commands.clear();
}

void CompositeCommand::remember()
{
    if (details().description().empty() && m_commands.size() == 1 && m_commands.front().first) {
        setDescription(m_commands.front().first->details().description());
    }
}

/// Inline, since it is run once for each of what may be many children.
inline void CompositeCommand::run_child(Commands::value_type& child, bool is_last, bool& ask_no_more)
{
    AbstractCommand& command = *child.first;
    try {
        command.remember();
        child.second = true;
        command.do_command();
        command.finished(true);
    } catch (CancelCommandException&) {
        command.rollback();
        command.m_cancelled = false;
        child.second = false;
    } catch (FailedCommandException& e) {
        // The flag deliberately stays set, so that undo calls the failed child as well.
        if (!ask_no_more) {
            ask_or_give_up(e, is_last, ask_no_more);
        }
        e.caught_here(s_source, s_line_of_pass_over);
    } catch (...) {
        report_unexpected_failure(
            s_catch_point, tr("An unknown serious error has occured in this Command : "));
    }
}

void CompositeCommand::do_command()
{
    // A redo that is cut short must roll back only what it ran itself.
    for (Commands::value_type& child : m_commands) {
        child.second = false;
    }
    bool ask_no_more = false;
    for (Commands::value_type& child : m_commands) {
        if (child.first) {
            run_child(child, &child == &m_commands.back(), ask_no_more);
        }
    }
}

/// Asks whether to go on after @p failure; the failure of the last child leaves no choice.
/// @throws CancelCommandException if the batch is to be rolled back
void CompositeCommand::ask_or_give_up(const HousekeepingException& failure, bool is_last, bool& ask_no_more)
{
    ErrorHandler& handler = ErrorHandler::instance();
    const std::string title = tr("Warning").toStdString();
    QMessageBox::StandardButton answer = QMessageBox::Cancel;
    if (is_last) {
        handler.message(title, failure.message(), QMessageBox::Ok);
    } else {
        answer = handler.message(title, failure.message() + tr("\nContinue ?").toStdString(),
            QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::Cancel);
    }
    if (answer == QMessageBox::Cancel) {
        HousekeepingException cancelled(
            s_insertion_cancelled, QObject::tr("Insertion Cancelled"), s_source, s_line_of_cancel);
        cancelled.catch_and_transfer(failure);
        throw CancelCommandException(cancelled);
    }
    ask_no_more = answer == QMessageBox::YesToAll;
}

void CompositeCommand::rollback()
{
    for (const Commands::value_type& child : m_commands) {
        if (child.first && child.second) {
            child.first->rollback();
        }
    }
}

void CompositeCommand::undo_command()
{
    for (auto child = m_commands.rbegin(); child != m_commands.rend(); ++child) {
        if (child->first && child->second) {
            child->first->undo_command();
            child->first->finished(true);
        }
    }
}

void CompositeCommand::finished(bool) { }

bool CompositeCommand::stackWith(boost::shared_ptr<AbstractCommand> newer)
{
    if (!stackIndenticalCommand() || !newer) {
        return false;
    }
    // Every pair is tried: one success does not stop the others.
    bool merged = false;
    const auto* const p_newer = dynamic_cast<const CompositeCommand*>(newer.get());
    for (const Commands::value_type& own : m_commands) {
        if (!own.first) {
            continue;
        }
        if (!p_newer) {
            merged = own.first->stackWith(newer) || merged;
            continue;
        }
        for (const Commands::value_type& other : p_newer->m_commands) {
            merged = own.first->stackWith(other.first) || merged;
        }
    }
    return merged;
}

} // namespace tarqa::housekeeping
