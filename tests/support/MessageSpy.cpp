#include "support/MessageSpy.h"

#include "support/TestAccess.h"

#include <QtTest/QTest>

namespace support {

using tarqa::housekeeping::TestAccess;

namespace {

template <class Spy>
void subscribe(const Spy& spy, Subscription subscription)
{
    if (subscription == Subscription::AtOnce) {
        Spy::Sent::subscribe(&spy, Qt::AutoConnection);
    }
}

} // namespace

bool wait_until(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, 10000);
}

ApplicationMessageSpy::ApplicationMessageSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

void ApplicationMessageSpy::handle_message(housekeeping::ApplicationMessage& message)
{
    ReceivedApplicationMessage entry;
    entry.op_type = message.opType();
    record(entry, message);
}

CommandMessageSpy::CommandMessageSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

void CommandMessageSpy::handle_message(housekeeping::CommandMessage& message)
{
    ReceivedCommandMessage entry;
    entry.command = TestAccess::command(message); // the getter would log a missing one
    entry.id = message.id().getId();
    entry.command_type = message.command_type();
    entry.document_id = message.document_id().getId();
    entry.redo = message.isRedoCommand();
    record(entry, message);
}

DocumentHistoryMsgSpy::DocumentHistoryMsgSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

void DocumentHistoryMsgSpy::handle_message(housekeeping::DocumentHistoryMsg& message)
{
    ReceivedDocumentHistoryMsg entry;
    entry.kind = TestAccess::kind(message);
    record(entry, message);
}

DocumentMessageSpy::DocumentMessageSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

std::vector<int> DocumentMessageSpy::types() const
{
    std::vector<int> types;
    for (const ReceivedDocumentMessage& entry : received()) {
        types.push_back(entry.type);
    }
    return types;
}

void DocumentMessageSpy::handle_message(housekeeping::DocumentMessage& message)
{
    ReceivedDocumentMessage entry;
    entry.type = message.doc_change_type();
    entry.id_set = TestAccess::id_set(message);
    entry.id = entry.id_set ? message.id().getId() : 0; // the getter would log a missing one
    record(entry, message);
}

FilesInsertMessageSpy::FilesInsertMessageSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

void FilesInsertMessageSpy::handle_message(housekeeping::FilesInsertMessage& message)
{
    ReceivedFilesInsertMessage entry;
    entry.document_id = message.documentId().getId();
    entry.files = message.files();
    record(entry, message);
}

MainWindowMessageSpy::MainWindowMessageSpy(Subscription subscription)
{
    subscribe(*this, subscription);
}

void MainWindowMessageSpy::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    ReceivedMainWindowMessage entry;
    entry.kind = message.kind();
    entry.target = message.target();
    entry.owner = message.owner();
    record(entry, message);
}

} // namespace support
