#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/ThreadLocal.h>
#include <tarqa/housekeeping/TimerObject.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/Updateable.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QTimer>

#include <mutex>
#include <vector>

namespace tarqa::housekeeping {

/// What tests may see of the framework's private parts; the framework's classes make it their friend.
class TestAccess
{
public:
    /// Deletes a singleton as the ordered destruction does.
    template <class Singleton>
    static void destroy()
    {
        Singleton::destroy_instance();
    }
    /// The singleton, or null; never makes one.
    template <class Singleton>
    static Singleton* peek()
    {
        return Singleton::get_instance().peek();
    }

    // Messages
    template <class X>
    static void class_instance_dispatch(X* p_message)
    {
        X sender;
        sender.class_instance_dispatch(p_message);
    }
    template <class X>
    static void class_instance_dispatch(X& sender, X& message)
    {
        sender.class_instance_dispatch(&message);
    }
    static QTimer& timer(MessageHandler& handler) { return *handler.m_timer; }
    static QMutex& mutex(MessageHandler& handler) { return handler.m_mutex; }
    static int queued(MessageHandler& handler) { return handler.m_queue.size(); }
    static void idleTimeout(MessageHandler& handler) { handler.idleTimeout(); }
    static bool id_set(const DocumentMessage& message) { return message.m_id_set; }
    static const AbstractCommand* command(const CommandMessage& message) { return message.m_p_command; }
    static int kind(const DocumentHistoryMsg& message) { return message.m_kind; }
    static std::vector<QObject*> entries(const gui::MainWindowMessage& message)
    {
        return std::vector<QObject*>(message.m_entries.begin(), message.m_entries.end());
    }

    // Documents
    static void title(AbstractDocument& document, const std::string& key) { document.title(key); }
    static void create_states(AbstractDocument& document) { document.create_states(); }
    static void model_id(AbstractModel& model, DocumentId id) { model.m_id = id; }
    static void register_null_document(DocumentManager& manager, DocumentId id)
    {
        manager.m_document_registry[id].reset();
    }
    static QMutex& registry_mutex(DocumentManager& manager) { return manager.m_registry_mutex; }
    static QMutex& busy_mutex(DocumentManager& manager) { return manager.m_busy_mutex; }
    static QMutex& destruction_mutex(DocumentManager& manager) { return manager.m_destruction_mutex; }
    static std::mutex& container_mutex(DocumentManager& manager) { return manager.m_container_mutex; }

    // Preferences
    static void load_settings(ApplicationManager& manager) { manager.loadSettings(); }

    // Controllers
    static void acquire(AbstractController& controller) { controller.acquire(); }
    static void release(AbstractController& controller, bool update) { controller.release(update); }
    static QMutex& mutex(AbstractController& controller) { return controller.m_mutex; }
    static std::size_t controllers(const ControllerManager& manager)
    {
        return manager.m_controller_map.size();
    }
    static std::size_t registered_views() { return Updateable::registry().size(); }
    static bool follows_history(const UndoRedoController& controller) { return controller.m_follow_history; }

    // Presentations
    static std::size_t presentations(const gui::PresentationManager& manager)
    {
        return manager.m_presentations.size();
    }
    static void update_presentation_private(gui::AbstractPresentation& presentation)
    {
        presentation.update_presentation_private();
    }
    static std::string controller_name(const gui::UndoRedoPresentation& presentation)
    {
        return presentation.controller_name();
    }
    static UndoRedoController* controller(const gui::UndoRedoPresentation& presentation)
    {
        return presentation.controller();
    }
    static AbstractQuickHelpEntry* createQuickHelpKeySequenceEntry(gui::UndoRedoPresentation& presentation,
        QAction* p_action, const QString& description, const QuickHelpSection& section)
    {
        return presentation.createQuickHelpKeySequenceEntry(p_action, description, section);
    }

    // Help browser: templates, as only its own tests know WebKit
    template <class View>
    static void execJS(View& view, const QString& script)
    {
        view.execJS(script);
    }
    template <class View>
    static void flushJS(View& view)
    {
        view.flushJS();
    }
    template <class View>
    static bool& defer_js(View& view)
    {
        return view.m_defer_js;
    }
    template <class View>
    static const QStringList& pending_js(const View& view)
    {
        return view.m_pending_js;
    }
    template <class View>
    static const QObject* js_controller(const View& view)
    {
        return view.m_p_controller;
    }

    // Commands
    static bool cancel_requested(const AbstractCommand& command) { return command.m_cancelled; }
    static void do_command(AbstractCommand& command) { command.do_command(); }
    static void undo_command(AbstractCommand& command) { command.undo_command(); }
    static QMutex& mutex(CommandManager& manager) { return manager.m_mutex; }
    static void push_back_null(CompositeCommand& command)
    {
        command.m_commands.emplace_back(boost::shared_ptr<AbstractCommand>(), false);
    }
    static void progress(const AbstractCommand& command, unsigned int percentage)
    {
        command.progress(percentage);
    }
    static void progress_text(const AbstractCommand& command, const std::string& text)
    {
        command.progress_text(text);
    }

    // Start-up
    static QString lock_file_name(const QString& id, const QString& file_path, const QString& session)
    {
        return ApplicationManager::lock_file_name(id, file_path, session);
    }
    static int thread_pool_size(int processors, int maximum)
    {
        return ApplicationManager::thread_pool_size(processors, maximum);
    }

    static QString proxy_report(const QString& host, int port, int type)
    {
        return ApplicationManager::proxy_report(host, port, type);
    }

    // Threads
    static void main_thread_id(ThreadLocal& threads, unsigned int id) { threads.m_main_thread_id = id; }

    // Error log
    static std::string failure_error_message(const std::string& detail)
    {
        return ErrorHandler::failure_error_message(detail);
    }
    static QMessageBox::StandardButton last_button(const ErrorHandler& handler) { return handler.m_button; }

    // Timing
    static void start(TimerObject& timer, const QTime& start) { timer.m_start = start; }
    static int milliseconds_between(const QTime& start, const QTime& end)
    {
        return TimerObject::milliseconds_between(start, end);
    }
    /// A timing report without the clock; @p steps are (name, nanoseconds, count) in first-seen order.
    struct Step
    {
        QString name;
        qint64 nanoseconds;
        int count;
    };
    static QString timing_report(const QString& task, int milliseconds, const QList<Step>& steps)
    {
        QList<QString> order;
        QHash<QString, TimerObject::Statistics> statistics;
        for (const Step& step : steps) {
            order.append(step.name);
            statistics[step.name].nanoseconds = step.nanoseconds;
            statistics[step.name].count = step.count;
        }
        return TimerObject::report(task, milliseconds, order, statistics);
    }
};

} // namespace tarqa::housekeeping
