#include "texts/Failures.h"
#include "texts/Texts.h"

#include "support/App.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QTranslator>

// What messages are called: in signals and slots, in translations, and in the error log.

namespace {

using namespace tarqa::housekeeping;
using texts::assertion_in;
using texts::Row;

typedef std::vector<Row> Rows;

std::string s_last_warning; // of Qt

void keep_warning(QtMsgType, const QMessageLogContext&, const QString& text)
{
    s_last_warning = text.toStdString();
}

/// The slot that a class looks for in its subscribers; Qt names it when there is none.
template <class X>
std::string fixed_slot()
{
    QObject receiver;
    const QtMessageHandler before = qInstallMessageHandler(keep_warning);
    X::subscribe(&receiver, Qt::AutoConnection);
    qInstallMessageHandler(before);
    return s_last_warning.substr(s_last_warning.find("handle"));
}

/// The signal that carries the messages of a class.
template <class X>
std::string signal()
{
    const QMetaObject& meta_object = X::staticMetaObject;
    for (int i = meta_object.methodOffset(); i < meta_object.methodCount(); ++i) {
        if (meta_object.method(i).methodType() == QMetaMethod::Signal) {
            return meta_object.method(i).methodSignature().toStdString();
        }
    }
    return "no signal";
}

/// Keeps the context of the last text that was looked up.
class ContextKeeper : public QTranslator
{
public:
    QString translate(const char* context, const char*, const char*, int) const override
    {
        last = context;
        return {};
    }
    bool isEmpty() const override { return false; }

    mutable std::string last;
};

template <class X>
std::string translation_context()
{
    const support::App app;
    ContextKeeper keeper;
    QCoreApplication::installTranslator(&keeper);
    X::tr("text");
    return keeper.last;
}

template <class X>
std::string assertion_of_null()
{
    return assertion_in([] { TestAccess::class_instance_dispatch<X>(nullptr); });
}

std::string line_of_the_null_message()
{
    support::LogCapture log;
    Message::dispatch(nullptr);
    const std::string line = log.lines().at(0);
    log.take_all();
    return line.substr(0, line.find(" in "));
}

/// @param name of the class with the part of the namespace that Qt's texts hold
template <class X>
Rows rows_of(const std::string& name, const std::string& source)
{
    const std::string row = name.substr(name.rfind(':') + 1);
    return {{row + "Signal", "message_dispatched(" + name + "&)", signal<X>},
        {row + "Slot", "handle_message(" + name + "&)", fixed_slot<X>},
        {row + "TranslationContext", "tarqa::" + name, translation_context<X>},
        {row + "Null", source + ": p_message", assertion_of_null<X>}};
}

Rows all_rows()
{
    Rows rows = {
        {"NullMessage", "housekeeping/src/Message: msg",
            [] {
                return assertion_in(
                    [] { Message::dispatch(nullptr); }, "tarqa::housekeeping::Message::dispatch");
            }},
        {"LineOfTheNullMessage", "housekeeping/src/Message:59 ASSERT FAILED", line_of_the_null_message},
        {"DocumentMessageWithoutId", "housekeeping/src/DocumentMessage: m_id_set",
            [] { return assertion_in([] { DocumentMessage().id(); }); }},
        {"NullCommand", "housekeeping/src/CommandMessage: p_cmd",
            [] { return assertion_in([] { CommandMessage().command(nullptr); }); }},
        {"MessageWithoutCommand", "housekeeping/src/CommandMessage: m_p_command",
            [] { return assertion_in([] { CommandMessage().command(); }); }},
        {"SlotOfTheTimer", "idleTimeout()",
            [] {
                const QMetaObject& meta_object = MessageHandler::staticMetaObject;
                return meta_object.method(meta_object.methodOffset()).methodSignature().toStdString();
            }},
    };
    for (const Rows& more : {rows_of<ApplicationMessage>(
                                 "housekeeping::ApplicationMessage", "housekeeping/src/ApplicationMessage"),
             rows_of<CommandMessage>("housekeeping::CommandMessage", "housekeeping/src/CommandMessage"),
             rows_of<DocumentHistoryMsg>(
                 "housekeeping::DocumentHistoryMsg", "housekeeping/src/DocumentHistoryMsg"),
             rows_of<DocumentMessage>("housekeeping::DocumentMessage", "housekeeping/src/DocumentMessage"),
             rows_of<FilesInsertMessage>(
                 "housekeeping::FilesInsertMessage", "housekeeping/src/FilesInsertMessage"),
             rows_of<gui::MainWindowMessage>(
                 "housekeeping::gui::MainWindowMessage", "housekeeping/gui/src/MainWindowMessage")}) {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Messaging, Texts, testing::ValuesIn(all_rows()), texts::name_of);
