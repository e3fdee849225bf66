#pragma once

#include "Faults.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>

#include <QtCore/QObject>

#include <array>
#include <atomic>
#include <string>
#include <vector>

namespace load {

// Messages that threads send, with the sender and a number in them, and those who take them.

namespace housekeeping = tarqa::housekeeping; // the slots must spell their parameter's type this way

enum class Way : unsigned
{
    Dispatch,
    Post
};
enum class Family : unsigned
{
    Application,
    Document,
    FilesInsert,
    History ///< which cannot tell who sent it
};
constexpr unsigned s_ways = 2;
constexpr unsigned s_families = 4;
constexpr unsigned s_senders = 16;

/// How many messages, by way and family.
typedef std::array<std::array<unsigned long long, s_families>, s_ways> MessageCounts;

/// Sends the messages of one thread, numbered by way and family.
class Sender
{
public:
    explicit Sender(unsigned thread)
        : m_thread(thread)
    { }

    void send(Way way, Family family);

    const MessageCounts& sent() const { return m_sent; }

private:
    unsigned m_thread;
    MessageCounts m_sent = {};
};

/**
 * Takes all messages, and sees whether those of each sender come once each and in order. With
 * Qt::DirectConnection its slots run in the senders' threads, and each of its counters belongs to one of
 * them; otherwise all of it belongs to the thread that it lives in.
 */
class Subscriber : public QObject
{
    Q_OBJECT

public:
    /// @param name for what goes wrong @param documents those of the senders, in order
    Subscriber(const std::string& name, const std::vector<housekeeping::DocumentId>& documents,
        Qt::ConnectionType type, Faults& faults);

    /// What came of a sender; without the history messages, which name none.
    const MessageCounts& received(unsigned sender) const { return m_senders[sender].received; }
    unsigned long long history_messages() const { return m_history_messages; }
    /// The messages of the runs on a document, by CommandMessage::CommandType.
    const std::array<unsigned long long, 4>& runs(unsigned sender) const { return m_senders[sender].runs; }
    /// Depends on all command messages of a document and on their order.
    unsigned long long mark_of_runs(unsigned sender) const { return m_senders[sender].mark_of_runs; }
    /// The document manager's messages, by DocumentMessage::DocChangeType.
    unsigned long long changes(housekeeping::DocumentMessage::DocChangeType type) const
    {
        return m_changes[static_cast<unsigned>(type)];
    }

public slots:
    void handle_message(housekeeping::ApplicationMessage& message);
    void handle_message(housekeeping::CommandMessage& message);
    void handle_message(housekeeping::DocumentHistoryMsg& message);
    void handle_message(housekeeping::DocumentMessage& message);
    void handle_message(housekeeping::FilesInsertMessage& message);

private:
    struct FromSender
    {
        MessageCounts received = {};
        std::array<unsigned long long, 4> runs = {};
        unsigned long long mark_of_runs = 0;
    };

    void take(Family family, unsigned code);

    std::string m_name;
    std::vector<housekeeping::DocumentId> m_documents;
    Faults& m_faults;
    std::array<FromSender, s_senders> m_senders;
    std::array<std::atomic<unsigned long long>, 16> m_changes; // any thread
    std::atomic<unsigned long long> m_history_messages{0}; // any thread
};

} // namespace load
