// Counts the instructions of what hosts do all the time. Run by ./dev check speed under valgrind's callgrind,
// which leaves a file for each path; the name of a path and how often it was done stand in the file. Run by
// itself it only does all of it once.
//
// A path with two lengths after its name is done with few and with many behind it: what grows is seen in the
// instructions, whatever the clock says.

#include "EmptyHost.h"

#include "support/PrivateHome.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/Updateable.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QAbstractListModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QToolBar>

#include <boost/make_shared.hpp>

#include <memory>
#include <string>
#include <valgrind/callgrind.h>
#include <vector>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::document_with;
using empty_host::NoOp;

const int s_few = 10;
const int s_many = 100000;
const int s_times = 200; ///< how often a path is done, so that what happens now and then has its share

/// Does something once, so that what is made at the first time is not counted, then counts it.
/// @param path its name @param each how many operations a call of @p action is
template <class Action>
void count(const std::string& path, int times, int each, Action action)
{
    const std::string label = path + ' ' + std::to_string(times * each); // read when all has been counted
    action();
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    for (int i = 0; i < times; ++i) {
        action();
    }
    CALLGRIND_DUMP_STATS_AT(label.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

std::string with_length(const std::string& path, int length)
{
    return path + '/' + std::to_string(length);
}

// Messages

class Subscriber : public QObject
{
    Q_OBJECT

public:
    unsigned long long received = 0;

public slots:
    void handle_message(housekeeping::ApplicationMessage&) { ++received; }
};

void count_messages()
{
    using housekeeping::ApplicationMessage;
    Subscriber subscriber;
    ApplicationMessage::subscribe(&subscriber, Qt::AutoConnection);
    count("message", s_times, 1, [] { housekeeping::Message::dispatch(ApplicationMessage::instance()); });
    for (const int burst : {s_few, s_many}) {
        const int times = burst == s_few ? s_times : 1;
        const unsigned long long expected = subscriber.received + (times + 1) * burst;
        count(with_length("post", burst), times, burst, [burst] {
            for (int i = 0; i < burst; ++i) {
                ApplicationMessage::instance()->post();
            }
            // The messages come by a timer: one turn of the event loop starts it, another delivers.
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
        });
        if (subscriber.received != expected) {
            qFatal("%llu messages arrived instead of %llu", subscriber.received, expected);
        }
    }
    ApplicationMessage::unsubscribe(&subscriber);
}

// Controllers

class Controller : public housekeeping::AbstractController
{ };

class View : public housekeeping::Updateable
{
public:
    explicit View(housekeeping::AbstractController& controller) { register_controller(&controller); }
    ~View() override { unregister(); }

private:
    void update() override { ++m_updates; }

    unsigned long long m_updates = 0;
};

void count_locker()
{
    Controller controller;
    const View view(controller);
    count("locker", s_times, 1, [&controller] {
        housekeeping::ControllerLocker locker(controller);
        locker.finished();
    });
}

// Commands

/// One command more; the history keeps its length.
void insert(housekeeping::AbstractDocument& document)
{
    housekeeping::CommandManager::instance().insert(boost::make_shared<NoOp>(document.id()), false);
    document.document_history().removeLastUndo();
}

void undo_and_redo(housekeeping::AbstractDocument& document)
{
    housekeeping::CommandManager::instance().undo(document.id());
    housekeeping::CommandManager::instance().redo(document.id());
}

void count_commands()
{
    for (const int length : {s_few, s_many}) {
        housekeeping::AbstractDocument& document = document_with(length);
        count(with_length("insert", length), s_times, 1, [&document] { insert(document); });
        count(with_length("undo_and_redo", length), s_times, 1, [&document] { undo_and_redo(document); });
    }
}

/// The same, with the undo and redo actions in a visible tool bar.
void count_commands_in_a_window()
{
    housekeeping::gui::PresentationManager::instance().init();
    QMainWindow window;
    QToolBar* const p_bar = window.addToolBar("Edit");
    const auto presentation = housekeeping::gui::UndoRedoPresentation::instance();
    p_bar->addAction(presentation->undo_tool_bar_action());
    p_bar->addAction(presentation->redo_tool_bar_action());
    window.show();
    QCoreApplication::processEvents();
    for (const int length : {s_few, s_many}) {
        housekeeping::AbstractDocument& document = document_with(length);
        housekeeping::DocumentManager::instance().current_document(document.id());
        count(with_length("insert_in_a_window", length), s_times, 1, [&document] { insert(document); });
    }
}

// The error log

void count_log()
{
    count("log_entry", s_times, 1, [] {
        housekeeping::ErrorProtocol::instance().log_message("grid 12 has no cells above the water table");
    });
}

// Quick help

class Entry : public housekeeping::AbstractQuickHelpInputEntry
{
public:
    Entry(int row, housekeeping::QuickHelpSection section)
        : AbstractQuickHelpInputEntry(
            nullptr, housekeeping::DocumentId::build(1), QStringLiteral("Explanation %1").arg(row), section)
        , m_input(QStringLiteral("Ctrl+%1").arg(row))
    { }
    ~Entry() override { take_out(); }
    QString input() const override { return m_input; }

private:
    QString m_input;
};

void count_quick_help()
{
    for (const int length : {s_few, s_many}) {
        const auto section = static_cast<housekeeping::QuickHelpSection>(length == s_few ? 0 : 1);
        std::vector<std::unique_ptr<Entry>> entries;
        for (int row = 0; row < length; ++row) {
            entries.push_back(std::make_unique<Entry>(row, section));
            entries.back()->setAttached(true);
        }
        const QAbstractItemModel& model = *housekeeping::QuickHelpManager::instance().sectionModel(section);
        int row = 0;
        count(with_length("quick_help_row", length), s_times, 1, [&] {
            row = (row + 7919) % length;
            model.data(model.index(row, 0), Qt::DisplayRole);
        });
        while (!entries.empty()) {
            entries.pop_back(); // from the end, where it is cheap
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the same on every machine
    const QApplication application(argc, argv);
    const support::PrivateHome home;
    pkBase::pkProductInfo::instance().product_name("Hot paths");
    housekeeping::ControllerManager::instance().init();
    count_messages();
    count_locker();
    count_log();
    count_quick_help();
    count_commands();
    count_commands_in_a_window();
    pkBase::pkDestructor::run();
    return 0;
}

#include "HotPaths.moc"
