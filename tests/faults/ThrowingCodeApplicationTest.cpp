#include "faults/FaultRuns.h"

#include "support/EmptyRegistry.h"
#include "support/Presentations.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

// Hosts' code that throws inside the event loop, inside the boxes of the error handler, while presentations
// are made, and while recent documents are read and written.
//
// What reaches the application object is logged and the loop goes on; what belongs to neither family of
// exceptions passes, so it is tried only where no loop is in between.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using testing::AnyOf;
using testing::HasSubstr;

namespace {

void at(const std::string& place)
{
    fault_points().reached(place);
}

void call_later(QObject& context, const std::function<void()>& work)
{
    QMetaObject::invokeMethod(&context, work, Qt::QueuedConnection);
}

/// Closes the box that is open now.
void close_box()
{
    if (QWidget* const p_box = QApplication::activeModalWidget()) {
        p_box->close();
    }
}

/// A command that is inserted, undone and redone by events.
class RunsInEvents : public Scenario
{
public:
    void run() override
    {
        call_later(context, [this] { CommandManager::instance().insert(command(id, "B"), false); });
        call_later(context, [this] { CommandManager::instance().undo(id); });
        call_later(context, [this] { CommandManager::instance().redo(id); });
        call_later(context, [this] { last_event_came = true; });
        QCoreApplication::sendPostedEvents(&context, QEvent::MetaCall);
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_FALSE(outcome.thrown);
        EXPECT_TRUE(last_event_came);
        if (p_fault) {
            if (p_fault->kind == Kind::Cancel && outcome.fatal_errors == 0) { // it has no text to show
                EXPECT_THAT(
                    outcome.log, AnyOf(HasSubstr(trace_of(Kind::Cancel)), HasSubstr(">\tB - Failed.")));
            } else {
                EXPECT_THAT(outcome.log,
                    HasSubstr(trace_of(p_fault->kind == Kind::Cancel ? Kind::Failed : p_fault->kind)));
            }
        } else {
            EXPECT_EQ((State{{"B"}, {}, {"B"}}), state_of(id));
        }
    }

private:
    const DocumentId id = add_document();
    QObject context;
    bool last_event_came = false;
};

/// A command fails, and events throw while its box is open.
class BoxOfAFailure : public Scenario
{
public:
    BoxOfAFailure() { sp_command->fails = true; }
    void run() override
    {
        call_later(context, [] { at("event"); });
        call_later(context, [this] {
            boxes += QApplication::activeModalWidget() ? 1 : 0;
            at("second event");
        });
        call_later(context, [] { close_box(); });
        CommandManager::instance().insert(sp_command, false);
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        const std::string place = p_fault ? p_fault->place() : "event";
        if (place != "event" && place != "second event") {
            return; // as in a run without a box
        }
        EXPECT_FALSE(outcome.thrown);
        EXPECT_EQ(1, boxes);
        EXPECT_EQ((State{{"B"}, {}, {}}), state_of(id)); // rolled back
        EXPECT_THAT(outcome.log, HasSubstr("DO>\tB - Failed."));
        if (p_fault) {
            EXPECT_THAT(outcome.log, HasSubstr(trace_of(p_fault->kind)));
        }
    }

private:
    const DocumentId id = add_document();
    const boost::shared_ptr<FaultyCommand> sp_command = command(id, "B");
    QObject context;
    int boxes = 0;
};

/// A fatal error, and events that throw while its two boxes are open.
class BoxesOfAFatalError : public Scenario
{
public:
    BoxesOfAFatalError()
    {
        window.show();
        QApplication::setActiveWindow(&window);
    }
    ~BoxesOfAFatalError() override { ErrorHandler::exit_main_loop_with(nullptr); }
    void run() override
    {
        ErrorHandler::exit_main_loop_with([] {
            support::journal().add("exit_main_loop");
            at("exit_main_loop");
        });
        call_later(context, [] { at("event of the first box"); });
        call_later(context, [this] {
            call_later(context, [] { at("event of the second box"); });
            call_later(context, [] { close_box(); });
            close_box();
        });
        ErrorHandler::instance().fatal_error(std::string("the end"));
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(1, outcome.fatal_errors); // the program is asked to end
        EXPECT_THAT(outcome.log, HasSubstr("the end"));
        const bool is_at_the_end = p_fault && p_fault->place() == "exit_main_loop";
        EXPECT_EQ(is_at_the_end, outcome.thrown.has_value());
        if (p_fault && !is_at_the_end) {
            EXPECT_THAT(outcome.log, HasSubstr(trace_of(p_fault->kind)));
        }
    }

private:
    QWidget window;
    QObject context;
};

/// Presentations that throw in the factory, in init and in build.
class FaultyPresentationFactory : public support::FakePresentationFactory
{
public:
    explicit FaultyPresentationFactory(const std::string& name)
        : FakePresentationFactory(name, "faulty controller")
        , m_name(name)
    {
        on_init = [name](support::FakePresentation&) { at(name + ".init"); };
        on_build = [name](support::FakePresentation&) { at(name + ".build"); };
    }
    boost::shared_ptr<gui::AbstractPresentation> create_product() override
    {
        at(m_name + " factory");
        return FakePresentationFactory::create_product();
    }

private:
    std::string m_name;
};

class Presentations : public Scenario
{
public:
    void run() override { gui::PresentationManager::instance().init(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
        gui::PresentationManager& manager = gui::PresentationManager::instance();
        const bool has_one = !p_fault || p_fault->place() != "one factory";
        const bool has_two = has_one && (!p_fault || p_fault->place() != "two factory");
        EXPECT_EQ(has_one, manager.presentation("one") != nullptr);
        EXPECT_EQ(has_two, manager.presentation("two") != nullptr);
    }
};

/// Undo through the presentation of the menus, which has a mark and a lock of its own.
class UndoByMenu : public Scenario
{
public:
    UndoByMenu()
    {
        gui::PresentationManager::instance().init();
        done(id, "A");
        done(id, "B");
    }
    void run() override { gui::UndoRedoPresentation::instance()->undo_action()->trigger(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_EQ((State{{"A"}, {"B"}, {"A"}}), state_of(id));
            return;
        }
        const bool is_guarded = p_fault->place() == "B.undo" || p_fault->place() == "B.undo, done";
        EXPECT_EQ(is_guarded ? 1 : 0, outcome.fatal_errors);
        EXPECT_EQ(!is_guarded, outcome.thrown.has_value());
        // The menus tell what the history holds, however far it came.
        const bool has_moved = state_of(id).redo == Texts{"B"};
        const auto sp_menus = gui::UndoRedoPresentation::instance();
        EXPECT_EQ(has_moved, sp_menus->redo_action()->toolTip() != "Redo");
    }

private:
    const DocumentId id = add_document();
};

/// Settings of a reader that throw when they are made, read and written.
class FaultyInformation : public support::FakeDataInformation
{
public:
    FaultyInformation()
        : FakeDataInformation("faulty")
    { }
    void info(const QStringList& list, int first) override
    {
        at("information read");
        FakeDataInformation::info(list, first);
    }
    QStringList info() override
    {
        at("information written");
        return FakeDataInformation::info();
    }
};

class FaultyInformationFactory : public AbstractDataInformationFactory
{
public:
    FaultyInformationFactory()
        : AbstractDataInformationFactory("faulty", true)
    { }
    boost::shared_ptr<AbstractDataInformation> create_product() override
    {
        at("information factory");
        return boost::make_shared<FaultyInformation>();
    }
    AbstractDataInformation* create_unmanaged_product() override { return new FaultyInformation; }
};

/// Three recent documents, stored.
class RecentScenario : public Scenario
{
protected:
    RecentScenario()
    {
        TestAccess::destroy<RecentDocumentsQueue>();
        queue().load();
        for (const std::string name : {"a", "b", "c"}) {
            const std::string path = support::PrivateHome::scratch_directory() + "/" + name;
            std::ofstream(path) << name;
            urls.push_back(tarqa::utilities::filesystem_to_url(path));
            queue().push(
                boost::make_shared<DataSource>(urls.back(), boost::make_shared<FaultyInformation>()));
        }
        queue().save();
    }
    ~RecentScenario() override { TestAccess::destroy<RecentDocumentsQueue>(); }

    static RecentDocumentsQueue& queue() { return RecentDocumentsQueue::instance(); }
    static Texts loaded()
    {
        Texts loaded;
        for (const auto& sp_source : queue()) {
            loaded.push_back(sp_source->url());
        }
        return loaded;
    }
    static void start_again()
    {
        TestAccess::destroy<RecentDocumentsQueue>();
        queue().load();
    }

    Texts urls;
};

class LoadingRecent : public RecentScenario
{
public:
    LoadingRecent() { TestAccess::destroy<RecentDocumentsQueue>(); }
    void run() override { queue().load(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_FALSE(outcome.thrown);
        Texts expected = urls;
        // A standard exception costs the settings of an entry, anything else the entry.
        if (p_fault && p_fault->kind != Kind::Standard && p_fault->kind != Kind::Memory) {
            expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(p_fault->index / 2));
            EXPECT_THAT(outcome.log, HasSubstr(trace_of(p_fault->kind)));
        }
        EXPECT_EQ(expected, loaded());
        start_again(); // and nothing of what is stored has gone
        EXPECT_EQ(urls, loaded());
    }
};

class SavingRecent : public RecentScenario
{
public:
    void run() override { queue().save(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
        EXPECT_EQ(urls, loaded());
        start_again();
        EXPECT_EQ(urls, loaded());
    }
};

/// Subscribers of the quick help that throw when a title comes and goes.
class QuickHelp : public Scenario
{
public:
    QuickHelp()
    {
        QObject::connect(&QuickHelpManager::instance(), &QuickHelpManager::titleChanged, &context,
            [] { at("titleChanged"); });
    }
    void run() override
    {
        entry.setAttached(true);
        entry.setAttached(false);
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
        entry.setAttached(true);
        EXPECT_EQ("Title", QuickHelpManager::instance().title(DocumentId::null()));
        entry.setAttached(false);
        EXPECT_EQ("", QuickHelpManager::instance().title(DocumentId::null()));
    }

private:
    QObject context;
    QuickHelpTitleEntry entry{nullptr, DocumentId::null(), "Title"};
};

} // namespace

TEST(ThrowingCode, RunsInsideEvents)
{
    const support::StartedApplication started(false);
    try_every_place<RunsInEvents>("insert, undo and redo in events", known_kinds);
}

TEST(ThrowingCode, EventsInsideTheBoxOfAFailure)
{
    const support::StartedApplication started;
    const std::vector<Kind> kinds = {Kind::Housekeeping, Kind::Cancel, Kind::Standard, Kind::Memory};
    try_every_place<BoxOfAFailure>("box of a failed command", kinds);
}

TEST(ThrowingCode, EventsInsideTheBoxesOfAFatalError)
{
    const support::StartedApplication started;
    try_every_place<BoxesOfAFatalError>("boxes of a fatal error", known_kinds);
}

TEST(ThrowingCode, MakingOfPresentations)
{
    const support::EmptyRegistry<gui::AbstractPresentationFactory> registry;
    FaultyPresentationFactory one("one");
    FaultyPresentationFactory two("two");
    try_every_place<Presentations>("PresentationManager's init");
    drop_everything();
}

TEST(ThrowingCode, UndoByTheMenu)
{
    const support::StartedApplication started(false);
    try_every_place<UndoByMenu>("undo by the menu");
}

TEST(ThrowingCode, LoadingOfRecentDocuments)
{
    FaultyInformationFactory factory;
    try_every_place<LoadingRecent>("recent documents, load");
}

TEST(ThrowingCode, SavingOfRecentDocuments)
{
    FaultyInformationFactory factory;
    try_every_place<SavingRecent>("recent documents, save");
}

TEST(ThrowingCode, SubscribersOfTheQuickHelp)
{
    try_every_place<QuickHelp>("quick help's titles");
}
