#include "interface/Interface.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What the library offers for sending messages and for subscribing to them.

using namespace tarqa::housekeeping;
using gui::MainWindowMessage; // what it offers to menus is in the shell's table

namespace {

// The base

static_assert(std::is_base_of_v<QObject, Message>);
static_assert(std::is_abstract_v<Message>);
static_assert(!std::is_destructible_v<Message>);
static_assert(!std::is_copy_constructible_v<Message>);
static_assert(sizeof(Message) == sizeof(QObject), "no members of its own");
INTERFACE_HAS(Message::dispatch, void (*)(Message*));
INTERFACE_HAS(Message::dispatch, void (Message::*)());
INTERFACE_HAS(Message::post, void (Message::*)());
INTERFACE_HAS(Message::operator new, void* (*)(std::size_t));
INTERFACE_HAS(Message::operator new, void* (*)(std::size_t, const std::nothrow_t&) noexcept);
INTERFACE_HAS(Message::operator new, void* (*)(std::size_t, std::align_val_t));
INTERFACE_HAS(Message::operator new, void* (*)(std::size_t, void*) noexcept);
INTERFACE_HAS(Message::operator delete, void (*)(void*, std::size_t) noexcept);
INTERFACE_HAS(Message::operator delete, void (*)(void*, std::size_t, std::align_val_t) noexcept);
INTERFACE_HAS(Message::operator delete, void (*)(void*, const std::nothrow_t&) noexcept);
INTERFACE_HAS(Message::operator delete, void (*)(void*, void*) noexcept);

// clang-format off
template <class B> struct MessageDispatch : B { void dispatch() override { } };
template <class B> struct MessagePost : B { void post() override { } };
// clang-format on
static_assert(interface::are_the_pure_ones<Message, MessageDispatch, MessagePost>);

// What all message classes have

/// Whether anybody may reach the object that emits the messages of a class, or make it emit.
template <class X, class = void>
struct ShowsItsClassInstance : std::false_type
{ };
template <class X>
struct ShowsItsClassInstance<X, std::void_t<decltype(X::class_instance())>> : std::true_type
{ };
template <class X, class = void>
struct ShowsItsEmission : std::false_type
{ };
template <class X>
struct ShowsItsEmission<X,
    std::void_t<decltype(std::declval<X&>().class_instance_dispatch(std::declval<X*>()))>> : std::true_type
{ };

template <class X>
struct MessageTable
{
    static_assert(std::is_base_of_v<Message, X> && !std::is_abstract_v<X>);
    static_assert(std::is_default_constructible_v<X>);
    static_assert(std::is_copy_constructible_v<X> && !std::is_copy_assignable_v<X>);
    static_assert(std::is_destructible_v<X>);
    static_assert(!ShowsItsClassInstance<X>::value && !ShowsItsEmission<X>::value);
    INTERFACE_HAS(X::instance, X* (*)());
    INTERFACE_HAS(X::type_name, const char* (*)());
    INTERFACE_HAS(X::subscribe, bool (*)(const QObject*, const char*, Qt::ConnectionType));
    INTERFACE_HAS(X::subscribe, bool (*)(const QObject*, Qt::ConnectionType));
    INTERFACE_HAS(X::unsubscribe, bool (*)(const QObject*));
    INTERFACE_HAS(X::dispatch, void (*)(Message*));
    INTERFACE_HAS(X::dispatch, void (X::*)());
    INTERFACE_HAS(X::post, void (X::*)());
    INTERFACE_HAS(X::message_dispatched, void (X::*)(X&));
    INTERFACE_HAS(X::tr, QString (*)(const char*, const char*, int));
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // Qt's own word on trUtf8
    INTERFACE_HAS(X::trUtf8, QString (*)(const char*, const char*, int));
#pragma GCC diagnostic pop
};
template struct MessageTable<ApplicationMessage>;
template struct MessageTable<CommandMessage>;
template struct MessageTable<DocumentHistoryMsg>;
template struct MessageTable<DocumentMessage>;
template struct MessageTable<FilesInsertMessage>;
template struct MessageTable<MainWindowMessage>;

INTERFACE_HAS(ApplicationMessage::type_name, const char* (*)());
INTERFACE_HAS(CommandMessage::type_name, const char* (*)());
INTERFACE_HAS(DocumentHistoryMsg::type_name, const char* (*)());
INTERFACE_HAS(DocumentMessage::type_name, const char* (*)());
INTERFACE_HAS(FilesInsertMessage::type_name, const char* (*)());
INTERFACE_HAS(MainWindowMessage::type_name, const char* (*)());

// The host's own

static_assert(sizeof(ApplicationMessage::OpType) == 4);
static_assert(ApplicationMessage::DefaultOperation == 1);
INTERFACE_HAS(ApplicationMessage::opType, void (ApplicationMessage::*)(ApplicationMessage::OpType));
INTERFACE_HAS(ApplicationMessage::opType, ApplicationMessage::OpType (ApplicationMessage::*)() const);

typedef std::vector<std::string> Files;
INTERFACE_HAS(FilesInsertMessage::documentId, void (FilesInsertMessage::*)(DocumentId));
INTERFACE_HAS(FilesInsertMessage::documentId, DocumentId (FilesInsertMessage::*)() const);
INTERFACE_HAS(FilesInsertMessage::files, void (FilesInsertMessage::*)(const Files&));
INTERFACE_HAS(FilesInsertMessage::files, const Files& (FilesInsertMessage::*)() const);

// Commands and documents

static_assert(sizeof(CommandMessage::CommandType) == 4);
static_assert(CommandMessage::Done == 0 && CommandMessage::Undone == 1 && CommandMessage::Failed == 3);
INTERFACE_HAS(CommandMessage::command, void (CommandMessage::*)(AbstractCommand*));
INTERFACE_HAS(CommandMessage::command, const AbstractCommand* (CommandMessage::*)() const);
INTERFACE_HAS(CommandMessage::command_type, void (CommandMessage::*)(CommandMessage::CommandType));
INTERFACE_HAS(CommandMessage::command_type, CommandMessage::CommandType (CommandMessage::*)() const);
INTERFACE_HAS(CommandMessage::id, void (CommandMessage::*)(CommandId));
INTERFACE_HAS(CommandMessage::id, CommandId (CommandMessage::*)() const);
INTERFACE_HAS(CommandMessage::document_id, void (CommandMessage::*)(DocumentId));
INTERFACE_HAS(CommandMessage::document_id, DocumentId (CommandMessage::*)() const);
INTERFACE_HAS(CommandMessage::setAsRedoCommand, void (CommandMessage::*)(bool));
INTERFACE_HAS(CommandMessage::isRedoCommand, bool (CommandMessage::*)() const);

static_assert(sizeof(DocumentMessage::DocChangeType) == 4);
static_assert(
    DocumentMessage::NoChange == 0 && DocumentMessage::Created == 1 && DocumentMessage::Destroyed == 4);
static_assert(
    DocumentMessage::Busy == 5 && DocumentMessage::Idle == 6 && DocumentMessage::CurrentChanged == 15);
INTERFACE_HAS(DocumentMessage::doc_change_type, void (DocumentMessage::*)(DocumentMessage::DocChangeType));
INTERFACE_HAS(DocumentMessage::doc_change_type, DocumentMessage::DocChangeType (DocumentMessage::*)() const);
INTERFACE_HAS(DocumentMessage::id, void (DocumentMessage::*)(DocumentId));
INTERFACE_HAS(DocumentMessage::id, DocumentId (DocumentMessage::*)() const);

// The handler

static_assert(std::is_base_of_v<QObject, MessageHandler>);
static_assert(!std::is_default_constructible_v<MessageHandler>);
static_assert(!interface::is_destroyed_by_anybody<MessageHandler>);
INTERFACE_HAS(MessageHandler::instance, MessageHandler& (*)());
INTERFACE_HAS(MessageHandler::const_instance, const MessageHandler& (*)());
INTERFACE_HAS(MessageHandler::post, void (MessageHandler::*)(Message*));
INTERFACE_HAS(MessageHandler::restart, void (MessageHandler::*)());
INTERFACE_HAS(MessageHandler::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(MessageHandler::metaObject, const QMetaObject* (MessageHandler::*)() const);
INTERFACE_HAS(MessageHandler::qt_metacast, void* (MessageHandler::*)(const char*));
INTERFACE_HAS(MessageHandler::qt_metacall, int (MessageHandler::*)(QMetaObject::Call, int, void**));

QMetaMethod method_of(const QMetaObject& meta_object, const char* signature)
{
    return meta_object.method(meta_object.indexOfMethod(signature));
}

} // namespace

TEST(MessageInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_TRUE(interface::in_a_row(static_cast<void (Message::*)()>(&Message::dispatch), &Message::post));
}

TEST(MessageInterface, SignalsAreKnownByTheirSignatures)
{
    const auto is_signal_of = [](const QMetaObject& meta_object, const char* signature) {
        const QMetaMethod method = method_of(meta_object, signature);
        return method.methodType() == QMetaMethod::Signal && method.enclosingMetaObject() == &meta_object;
    };
    EXPECT_TRUE(is_signal_of(
        ApplicationMessage::staticMetaObject, "message_dispatched(housekeeping::ApplicationMessage&)"));
    EXPECT_TRUE(
        is_signal_of(CommandMessage::staticMetaObject, "message_dispatched(housekeeping::CommandMessage&)"));
    EXPECT_TRUE(is_signal_of(
        DocumentHistoryMsg::staticMetaObject, "message_dispatched(housekeeping::DocumentHistoryMsg&)"));
    EXPECT_TRUE(is_signal_of(
        DocumentMessage::staticMetaObject, "message_dispatched(housekeeping::DocumentMessage&)"));
    EXPECT_TRUE(is_signal_of(
        FilesInsertMessage::staticMetaObject, "message_dispatched(housekeeping::FilesInsertMessage&)"));
    EXPECT_TRUE(is_signal_of(
        MainWindowMessage::staticMetaObject, "message_dispatched(housekeeping::gui::MainWindowMessage&)"));
}

TEST(MessageHandlerInterface, HasOneSlot)
{
    const QMetaObject& meta_object = MessageHandler::staticMetaObject;
    EXPECT_EQ(QMetaMethod::Slot, method_of(meta_object, "idleTimeout()").methodType());
    EXPECT_EQ(1, meta_object.methodCount() - meta_object.methodOffset());
}
