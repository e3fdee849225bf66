#include "faults/FaultRuns.h"

#include "commands/FatalErrorProbe.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <limits>
#include <mutex>
#include <thread>

namespace throwing_code {

using namespace tarqa::housekeeping;
using support::journal;

namespace {

const unsigned long long s_all = std::numeric_limits<unsigned long long>::max();

Texts names_of(const std::vector<CommandDetails>& details)
{
    Texts names;
    for (const CommandDetails& entry : details) {
        names.insert(names.begin(), entry.name());
    }
    return names;
}

/// Whether nobody holds it, this thread included.
template <class Mutex, class Unlock>
bool is_free(Mutex& mutex, bool (Mutex::*try_lock)(), Unlock unlock)
{
    bool free = false;
    std::thread([&] {
        free = (mutex.*try_lock)();
        if (free) {
            unlock(mutex);
        }
    }).join();
    return free;
}

bool is_free(QMutex& mutex)
{
    return is_free<QMutex>(
        mutex, static_cast<bool (QMutex::*)()>(&QMutex::try_lock), [](QMutex& locked) { locked.unlock(); });
}

bool is_free(std::mutex& mutex)
{
    return is_free<std::mutex>(mutex, &std::mutex::try_lock, [](std::mutex& locked) { locked.unlock(); });
}

bool expect_free_locks()
{
    DocumentManager& documents = DocumentManager::instance();
    const bool run_free = is_free(TestAccess::mutex(CommandManager::instance()));
    const bool registry_free = is_free(TestAccess::registry_mutex(documents));
    const bool queue_free = is_free(TestAccess::mutex(MessageHandler::instance()));
    EXPECT_TRUE(run_free);
    EXPECT_TRUE(registry_free);
    EXPECT_TRUE(queue_free);
    EXPECT_TRUE(is_free(TestAccess::busy_mutex(documents)));
    EXPECT_TRUE(is_free(TestAccess::destruction_mutex(documents)));
    EXPECT_TRUE(is_free(TestAccess::container_mutex(documents)));
    for (const std::string& name : AbstractControllerFactory::products()) {
        if (TestAccess::controllers(ControllerManager::instance()) == 0) {
            break;
        }
        const auto sp_controller = ControllerManager::instance().controller(name);
        if (!sp_controller) {
            continue;
        }
        EXPECT_TRUE(is_free(TestAccess::mutex(*sp_controller))) << name;
        EXPECT_FALSE(sp_controller->is_locked()) << name;
        if (const auto* p_undo = dynamic_cast<const UndoRedoController*>(sp_controller.get())) {
            EXPECT_TRUE(TestAccess::follows_history(*p_undo));
        }
    }
    return run_free && registry_free && queue_free;
}

/// In another thread, as a worker does.
void insert_elsewhere(const DocumentId& id)
{
    const auto sp_command = boost::make_shared<FaultyCommand>(id, "Elsewhere");
    std::thread([&sp_command] { CommandManager::instance().insert(sp_command, false); }).join();
    EXPECT_THAT(FaultyDocument::of(id).faulty_model().done, testing::Contains("Elsewhere"));
}

/// Goes through the history to both ends. A step takes its command from one stack to the other whatever
/// happened before.
void go_through_history(const DocumentId& id, const Scenario& scenario)
{
    const State before = state_of(id);
    CommandManager& manager = CommandManager::instance();
    for (std::size_t step = 0; step < before.undo.size(); ++step) {
        manager.undo(id);
    }
    State now = state_of(id);
    EXPECT_TRUE(now.undo.empty());
    EXPECT_EQ(before.undo.size() + before.redo.size(), now.redo.size());
    const bool was_consistent = now.model.empty();
    const std::size_t count = now.redo.size();
    for (std::size_t step = 0; step < count; ++step) {
        manager.redo(id);
    }
    now = state_of(id);
    EXPECT_EQ(count, now.undo.size());
    EXPECT_TRUE(now.redo.empty());
    if (was_consistent && scenario.model_of(before.undo) == before.model) {
        EXPECT_THAT(now.model,
            testing::ElementsAreArray(scenario.model_of(now.undo))); // each is done, once, in this order
    }
}

void expect_deliverable_queue()
{
    MessageHandler& handler = MessageHandler::instance();
    const int before = TestAccess::queued(handler);
    ApplicationMessage::instance()->post();
    EXPECT_EQ(before + 1, TestAccess::queued(handler));
    TestAccess::idleTimeout(handler);
    EXPECT_EQ(0, TestAccess::queued(handler));
}

/// What stands in it has been accounted for. A fatal error empties the log, and what comes then is told from
/// what was there by its length.
void empty_log()
{
    const std::string file = ErrorProtocol::instance().log_filename();
    if (std::filesystem::exists(file)) {
        std::filesystem::resize_file(file, 0);
    }
}

/// One scenario from its making to its end, with a fault or without.
Texts try_once(const std::function<std::unique_ptr<Scenario>()>& make, const Fault* p_fault)
{
    journal().clear();
    empty_log();
    support::LogCapture log;
    const std::unique_ptr<Scenario> scenario = make();
    const int fatal_before = support::FatalErrorProbe::exits();
    const std::string log_before = log.text();
    if (p_fault) {
        fault_points().arm(p_fault->index, p_fault->kind, p_fault->mode);
    } else {
        fault_points().count();
    }
    Outcome outcome;
    outcome.thrown = thrown_by([&scenario] { scenario->run(); });
    Texts places = fault_points().stop();
    outcome.fatal_errors = support::FatalErrorProbe::exits() - fatal_before;
    outcome.log = log.text();
    if (outcome.log.rfind(log_before, 0) == 0) { // a fatal error may have emptied it
        outcome.log.erase(0, log_before.size());
    }

    if (!p_fault || p_fault->mode == Mode::Once) {
        scenario->check(p_fault, outcome);
    }
    expect_nothing_stays_behind(*scenario, p_fault);
    log.take_all();
    return places;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const State& state)
{
    return stream << "undo " << testing::PrintToString(state.undo) << ", redo "
                  << testing::PrintToString(state.redo) << ", model " << testing::PrintToString(state.model);
}

State state_of(const DocumentId& id)
{
    FaultyDocument& document = FaultyDocument::of(id);
    const AbstractDocumentHistory& history = document.document_history();
    return {names_of(history.getUndoCommandDetails(s_all)), names_of(history.getRedoCommandDetails(s_all)),
        document.faulty_model().done};
}

std::string without_number(const std::string& place)
{
    return place.substr(0, place.find(" #"));
}

void drop_everything()
{
    TestAccess::destroy<gui::PresentationManager>();
    TestAccess::destroy<DocumentManager>();
    TestAccess::destroy<CommandManager>();
    TestAccess::destroy<ControllerManager>();
    TestAccess::destroy<MessageHandler>();
}

void expect_nothing_stays_behind(const Scenario& scenario, const Fault* p_fault)
{
    const bool is_marked = scenario.leaves_a_mark();
    const bool may_be_flagged = p_fault && scenario.may_leave_a_flag(*p_fault);
    DocumentManager& documents = DocumentManager::instance();
    if (!is_marked) {
        EXPECT_FALSE(documents.documents_busy());
    }
    const std::vector<DocumentId> ids = documents.current_documents();
    for (const DocumentId& id : ids) {
        if (is_marked) {
            documents.document_busy(id, false); // what belongs to the mark can be taken away
        }
        EXPECT_FALSE(documents.document_busy(id));
        if (!may_be_flagged) {
            EXPECT_FALSE(documents.document_from_id(id).is_busy());
        }
    }
    EXPECT_FALSE(documents.documents_busy());
    if (!expect_free_locks()) {
        return; // the rest would stand still
    }
    expect_deliverable_queue();
    for (const DocumentId& id : ids) {
        go_through_history(id, scenario);
        insert_elsewhere(id);
    }
    for (const DocumentId& id : ids) {
        EXPECT_TRUE(documents.destroy_document(id, true, false, false, DocumentId::null()));
        EXPECT_FALSE(documents.document_exists(id)); // it did not count as one in destruction
    }
}

void try_every_place(const std::string& name, const std::function<std::unique_ptr<Scenario>()>& make,
    const std::vector<Kind>& kinds)
{
    register_faulty_host();
    const support::FatalErrorProbe probe;
    Fault fault;
    {
        SCOPED_TRACE(name + ", without a fault");
        fault.places = try_once(make, nullptr);
    }
    ASSERT_FALSE(fault.places.empty());
    int runs = 0;
    for (const Mode mode : {Mode::Once, Mode::FromThere}) {
        for (std::size_t index = 0; index < fault.places.size(); ++index) {
            for (const Kind kind : kinds) {
                fault.index = index;
                fault.kind = kind;
                fault.mode = mode;
                SCOPED_TRACE(
                    name + ", " + name_of(kind) + (mode == Mode::Once ? " at " : " from ") + fault.place());
                const Texts places = try_once(make, &fault);
                // Up to the fault it is the same run.
                ASSERT_GT(places.size(), index);
                EXPECT_TRUE(std::equal(places.begin(),
                    places.begin() + static_cast<std::ptrdiff_t>(index) + 1, fault.places.begin()));
                ++runs;
            }
        }
    }
    std::cout << name << ": " << fault.places.size() << " places x " << kinds.size()
              << " kinds x 2 modes = " << runs << " runs" << std::endl;
}

// Scenario

Scenario::Scenario()
{
    drop_everything();
    register_faulty_host();
    ControllerManager& controllers = ControllerManager::instance();
    controllers.init();
    subscriber = std::make_unique<FaultySubscriber>();
    view = std::make_unique<FaultyView>("undo view", *controllers.controller("UndoRedoController"));
    other_view = std::make_unique<FaultyView>("view", *controllers.controller("faulty controller"));
}

Scenario::~Scenario()
{
    drop_everything();
}

bool Scenario::may_leave_a_flag(const Fault& fault) const
{
    // Its own operation threw: the manager cannot say in which state that left it.
    const std::string place = without_number(fault.place());
    return fault.mode == Mode::FromThere || place == "document.is_busy"
        || place == "document.set_busy(false)";
}

DocumentId Scenario::add_document()
{
    return DocumentManager::instance().create_document().id();
}

boost::shared_ptr<FaultyCommand> Scenario::command(const DocumentId& id, const std::string& name)
{
    const auto sp_command = boost::make_shared<FaultyCommand>(id, name);
    sp_command->setProgress(&progress);
    return sp_command;
}

boost::shared_ptr<FaultyCommand> Scenario::done(const DocumentId& id, const std::string& name)
{
    const auto sp_command = command(id, name);
    CommandManager::instance().insert(sp_command, false);
    return sp_command;
}

} // namespace throwing_code
