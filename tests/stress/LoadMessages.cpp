#include "LoadMessages.h"

#include <algorithm>
#include <cstdlib>

namespace load {

using namespace tarqa::housekeeping;

namespace {

// A number in which a message says what it is: 25 bits of its place in the order, and the types of changes
// that the framework sends are left free below.
constexpr unsigned s_number_bits = 25;
constexpr unsigned s_sender_bits = 4;
constexpr unsigned s_first_number = 16;

const unsigned long long s_hosts_document = 1000000; // stands in the host's own document messages

std::size_t index(Way way)
{
    return static_cast<std::size_t>(way);
}

std::size_t index(Family family)
{
    return static_cast<std::size_t>(family);
}

unsigned code_of(Way way, unsigned sender, unsigned long long number)
{
    return static_cast<unsigned>(way) << (s_number_bits + s_sender_bits) | sender << s_number_bits
        | static_cast<unsigned>(s_first_number + number);
}

std::vector<std::string> files_of(unsigned code)
{
    return {std::to_string(code), "/one/" + std::to_string(code), "/another/" + std::to_string(code)};
}

Message* make_message(Family family, unsigned code)
{
    switch (family) {
    case Family::Application: {
        ApplicationMessage* const p_message = ApplicationMessage::instance();
        p_message->opType(static_cast<ApplicationMessage::OpType>(code));
        return p_message;
    }
    case Family::Document: {
        DocumentMessage* const p_message = DocumentMessage::instance();
        p_message->doc_change_type(static_cast<DocumentMessage::DocChangeType>(code));
        p_message->id(DocumentId::build(s_hosts_document));
        return p_message;
    }
    case Family::FilesInsert: {
        FilesInsertMessage* const p_message = FilesInsertMessage::instance();
        p_message->documentId(DocumentId::build(s_hosts_document));
        p_message->files(files_of(code));
        return p_message;
    }
    case Family::History:
        break;
    }
    return DocumentHistoryMsg::instance();
}

} // namespace

void Sender::send(Way way, Family family)
{
    Message* const p_message
        = make_message(family, code_of(way, m_thread, m_sent[index(way)][index(family)]++));
    if (way == Way::Dispatch) {
        Message::dispatch(p_message);
    } else {
        p_message->post();
    }
}

Subscriber::Subscriber(const std::string& name, const std::vector<DocumentId>& documents,
    Qt::ConnectionType type, Faults& faults)
    : m_name(name)
    , m_documents(documents)
    , m_faults(faults)
{
    for (std::atomic<unsigned long long>& count : m_changes) {
        count = 0;
    }
    ApplicationMessage::subscribe(this, type);
    CommandMessage::subscribe(this, type);
    DocumentHistoryMsg::subscribe(this, type);
    DocumentMessage::subscribe(this, type);
    FilesInsertMessage::subscribe(this, type);
}

/// @p code what a message says that it is
void Subscriber::take(Family family, unsigned code)
{
    const unsigned sender = code >> s_number_bits & (s_senders - 1);
    const Way way = code >> (s_number_bits + s_sender_bits) ? Way::Post : Way::Dispatch;
    unsigned long long& received = m_senders[sender].received[index(way)][index(family)];
    const unsigned expected = code_of(way, sender, received);
    if (code != expected) {
        m_faults.compare("message of family " + std::to_string(index(family)) + " at the " + m_name,
            static_cast<unsigned long long>(expected), static_cast<unsigned long long>(code));
    }
    ++received;
}

void Subscriber::handle_message(housekeeping::ApplicationMessage& message)
{
    take(Family::Application, static_cast<unsigned>(message.opType()));
}

void Subscriber::handle_message(housekeeping::FilesInsertMessage& message)
{
    const std::vector<std::string>& files = message.files();
    const auto code = files.empty() ? 0U : static_cast<unsigned>(std::strtoul(files[0].c_str(), nullptr, 10));
    if (files != files_of(code)) {
        m_faults.add("a message's files are damaged at the " + m_name);
    }
    take(Family::FilesInsert, code);
}

void Subscriber::handle_message(housekeeping::DocumentHistoryMsg&)
{
    ++m_history_messages;
}

void Subscriber::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.id() == s_hosts_document) {
        take(Family::Document, static_cast<unsigned>(message.doc_change_type()));
        return;
    }
    const auto type = static_cast<unsigned>(message.doc_change_type());
    if (type >= m_changes.size()) {
        m_faults.add("unknown change of a document at the " + m_name);
        return;
    }
    ++m_changes[type];
}

void Subscriber::handle_message(housekeeping::CommandMessage& message)
{
    const auto found = std::find(m_documents.begin(), m_documents.end(), message.document_id());
    const auto type = static_cast<unsigned>(message.command_type());
    if (found == m_documents.end() || type >= m_senders[0].runs.size()) {
        m_faults.add("command message of an unknown document or type at the " + m_name);
        return;
    }
    FromSender& from = m_senders[static_cast<std::size_t>(found - m_documents.begin())];
    ++from.runs[type];
    from.mark_of_runs
        = from.mark_of_runs * 31 + message.id().getId() * 8 + type * 2 + (message.isRedoCommand() ? 1 : 0);
}

} // namespace load
