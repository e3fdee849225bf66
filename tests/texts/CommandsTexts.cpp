#include "texts/Texts.h"

#include "commands/FatalErrorProbe.h"
#include "commands/RefusingDocuments.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/UndoRedoController.h>

#include <boost/make_shared.hpp>

#include <functional>
#include <string>
#include <vector>

// What runs of commands write to the error log, and what the user is asked and told.

using namespace tarqa::housekeeping;
using support::FakeCommand;

namespace {

typedef std::function<void()> Action;
typedef FakeCommand::Step Step;

const DocumentId s_document = DocumentId::build(5);

/// What @p action leaves in the error log.
std::string logged(const Action& action)
{
    support::LogCapture log;
    action();
    const std::string text = log.text();
    log.take_all();
    return text;
}

void execute(AbstractCommand& command)
{
    AbstractCommand::Execute(&command).run(false);
}

void unexecute(AbstractCommand& command)
{
    AbstractCommand::UnExecute(&command).run(false);
}

/// The composite "Batch" of the children A, B and so on, which do these steps.
boost::shared_ptr<CompositeCommand> batch_of(const std::vector<Step>& steps)
{
    const auto batch = boost::make_shared<CompositeCommand>(s_document, "Batch", false);
    char name = 'A';
    for (const Step& step : steps) {
        const auto child = support::make_command(s_document, std::string(1, name++));
        child->on_do = step;
        batch->push_back(child);
    }
    return batch;
}

// The protocol of runs

std::string protocol_of_do(const std::string& description, const Step& step)
{
    FakeCommand command(s_document, "Rotate");
    command.setDescription(description);
    command.on_do = step;
    return logged([&] { execute(command); });
}

std::string protocol_of_undo(const std::string& description)
{
    FakeCommand command(s_document, "Rotate");
    command.setDescription(description);
    return logged([&] { unexecute(command); });
}

boost::shared_ptr<CompositeCommand> three_children()
{
    const auto batch = batch_of({nullptr, support::throws_cancel(), nullptr});
    batch->commands()[1].first->setDescription("2 faults");
    return batch;
}

std::string protocol_of_batch()
{
    return logged([] { execute(*three_children()); });
}

std::string protocol_of_undone_batch()
{
    const auto batch = three_children();
    execute(*batch);
    return logged([&] { unexecute(*batch); });
}

std::string description_of_two()
{
    FakeCommand command(s_document, "Rotate");
    command.appendDescription("a");
    command.appendDescription("b");
    return command.details().description();
}

// Exceptions

/// The code and the message of the cancellation that @p action throws.
std::string cancellation(const Action& action)
{
    try {
        action();
    } catch (CancelCommandException& exception) {
        return std::to_string(exception.code()) + ' ' + exception.message();
    }
    return {};
}

std::string cancelled_by_user()
{
    return cancellation([] {
        support::FakeProgress sink;
        FakeCommand command(s_document, "Rotate");
        command.setProgress(&sink);
        command.request_cancel();
        command.progress(50);
    });
}

std::string cancelled_insertion()
{
    support::LogCapture log;
    const auto batch = batch_of({support::throws_failure("no room")});
    const std::string text = cancellation([&] { TestAccess::do_command(*batch); });
    log.take_all();
    return text;
}

/// What the log has of a fatal error between its head and the protocol of the run, which begins with @p
/// protocol.
std::string fatal_text(const Action& action, const std::string& protocol)
{
    const support::FatalErrorProbe probe;
    const std::string text = logged(action);
    const std::string head = "Further Information: ";
    const std::size_t begin = text.find(head);
    const std::size_t end = text.find(protocol);
    return begin < end && end != std::string::npos
        ? text.substr(begin + head.size(), end - begin - head.size())
        : text;
}

std::string fatal_text_of_do(const Step& step)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = step;
    return fatal_text([&] { execute(command); }, "DO>");
}

std::string fatal_text_of_child(const Step& step)
{
    return fatal_text([&] { execute(*batch_of({step})); }, "DO>");
}

std::string fatal_text_of_undo(const Step& step)
{
    FakeCommand command(s_document, "Rotate");
    command.on_undo = step;
    return fatal_text([&] { unexecute(command); }, "UNDO>");
}

// Boxes

/// The title, the text and the buttons of the one box that @p action shows, closed with @p answer.
std::string box(QMessageBox::StandardButton answer, const Action& action)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(answer);
    logged(action);
    if (dialogs.shown().size() != 1) {
        return "not one box";
    }
    const support::ShownDialog& shown = dialogs.shown().front();
    std::string text = shown.title.toStdString() + '|' + shown.text.toStdString() + '|';
    const std::vector<std::pair<QMessageBox::StandardButton, std::string>> names = {{QMessageBox::Ok, "Ok"},
        {QMessageBox::Yes, "Yes"}, {QMessageBox::YesToAll, "Yes to All"}, {QMessageBox::Cancel, "Cancel"}};
    QMessageBox::StandardButtons rest = shown.buttons;
    for (const auto& name : names) {
        if (rest.testFlag(name.first)) {
            text += '[' + name.second + ']';
            rest.setFlag(name.first, false);
        }
    }
    return rest == 0 ? text : "other buttons";
}

std::string box_of_failure()
{
    return box(QMessageBox::Ok, [] {
        FakeCommand command(s_document, "Rotate");
        command.on_do = support::throws_failure("no room");
        execute(command);
    });
}

std::string box_of_failed_child(QMessageBox::StandardButton answer, bool is_last)
{
    return box(answer, [is_last] {
        const Step failure = support::throws_failure("no room");
        execute(
            *batch_of(is_last ? std::vector<Step>{nullptr, failure} : std::vector<Step>{failure, nullptr}));
    });
}

/// The box that @p run shows when the document refuses to be busy; it has a command to undo and one to redo.
std::string box_of_refusal(const std::function<void(const DocumentId&)>& run)
{
    const DocumentId id = support::create_document().id();
    CommandManager::instance().insert(support::make_command(id, "A"), false);
    CommandManager::instance().insert(support::make_command(id, "B"), false);
    CommandManager::instance().undo(id);
    return box(QMessageBox::Ok, [&] {
        const support::RefusingDocuments refusing;
        run(id);
    });
}

// Assertions

/// The assertion that @p action fails: its source file and its condition, and with @p line also the line.
std::string assertion(const Action& action, bool line = false)
{
    const std::string entry = logged(action);
    const std::size_t number = entry.find(':');
    const std::size_t function = entry.find(" ASSERT FAILED in ");
    const std::size_t condition = entry.rfind(": ");
    if (number == std::string::npos || function == std::string::npos || condition == std::string::npos) {
        return entry;
    }
    const std::string end = entry.substr(condition, entry.find('\n', condition) - condition);
    return entry.substr(0, line ? function : number) + end;
}

std::string assertion_of_progress()
{
    support::FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    return assertion([&] { command.progress(101); }, true);
}

std::string assertion_of_empty_command()
{
    const DocumentId id = support::create_document().id();
    return assertion([&] {
        CommandManager::instance().finish();
        CommandManager::instance().insert(boost::make_shared<CompositeCommand>(id, "Batch", false), false);
    });
}

/// The assertion that a controller without a state fails.
std::string assertion_of_controller(const std::function<void(UndoRedoController&)>& action)
{
    UndoRedoController controller;
    return assertion([&] { action(controller); });
}

/// The name of the one product that makes undo/redo controllers.
std::string product_name()
{
    std::string names;
    for (const std::string& name : AbstractControllerFactory::products()) {
        if (boost::dynamic_pointer_cast<UndoRedoController>(AbstractControllerFactory::create(name))) {
            names += name;
        }
    }
    return names;
}

const std::vector<texts::Row> s_rows = {
    // The protocol
    {"Done", "DO>\tRotate - Succeeded.\n", [] { return protocol_of_do("", nullptr); }},
    {"DoneWithDescription", "DO>\tRotate: 3 faults - Succeeded.\n",
        [] { return protocol_of_do("3 faults", nullptr); }},
    {"Cancelled", "DO>\tRotate - Failed.\n", [] { return protocol_of_do("", support::throws_cancel()); }},
    {"CancelledWithDescription", "DO>\tRotate: 3 faults - Failed.\n",
        [] { return protocol_of_do("3 faults", support::throws_cancel()); }},
    {"Undone", "UNDO>\tRotate - Succeeded.\n", [] { return protocol_of_undo(""); }},
    {"UndoneWithDescription", "UNDO>\tRotate: 3 faults - Succeeded.\n",
        [] { return protocol_of_undo("3 faults"); }},
    {"Batch", "DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B: 2 faults - Failed.\n\t* C - Succeeded.\n",
        protocol_of_batch},
    {"UndoneBatch",
        "UNDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B: 2 faults - Failed.\n\t* C - Succeeded.\n",
        protocol_of_undone_batch},
    {"AppendedDescription", "a, b", description_of_two},

    // Exceptions
    {"CancelledByUser", "1028 Command was cancelled by user!", cancelled_by_user},
    {"CancelledInsertion", "7006 Insertion Cancelled", cancelled_insertion},

    // Fatal errors
    {"StandardExceptionOfADo", "An unknown serious error has occured in this Command : boom\n\n",
        [] { return fatal_text_of_do(support::throws_std("boom")); }},
    {"UnknownExceptionOfADo",
        "Error 2: An unknown serious error has occured in this Command\n"
        "Thrown in housekeeping/src/AbstractCommand, line 234\n",
        [] { return fatal_text_of_do(support::throws_unknown()); }},
    {"LibraryExceptionOfADo",
        "Error 42: boom\nThrown in tests/Fakes, line 7\n"
        "Caught in housekeeping/src/AbstractCommand, line 223\n",
        [] { return fatal_text_of_do(support::throws_tarqa("boom")); }},
    {"StandardExceptionOfAChild", "An unknown serious error has occured in this Command : boom\n\n",
        [] { return fatal_text_of_child(support::throws_std("boom")); }},
    {"UnknownExceptionOfAChild",
        "Error 2: An unknown serious error has occured in this Command\n"
        "Thrown in housekeeping/src/CompositeCommand, line 162\n",
        [] { return fatal_text_of_child(support::throws_unknown()); }},
    {"LibraryExceptionOfAChild",
        "Error 42: boom\nThrown in tests/Fakes, line 7\n"
        "Caught in housekeeping/src/CompositeCommand, line 151\n",
        [] { return fatal_text_of_child(support::throws_tarqa("boom")); }},
    {"StandardExceptionOfAnUndo", "An unknown serious error has occured in this Command UNDO : boom\n\n",
        [] { return fatal_text_of_undo(support::throws_std("boom")); }},
    {"LibraryExceptionOfAnUndo", "An unknown serious error has occured in this Command UNDO : boom\n\n",
        [] { return fatal_text_of_undo(support::throws_tarqa("boom")); }},
    {"UnknownExceptionOfAnUndo", "An unknown serious error has occured in this Command UNDO\n\n",
        [] { return fatal_text_of_undo(support::throws_unknown()); }},

    // Boxes
    {"Failure", "Error|no room\n|[Ok]", box_of_failure},
    {"FailedChild", "Warning|no room\nContinue ?|[Yes][Yes to All][Cancel]",
        [] { return box_of_failed_child(QMessageBox::Yes, false); }},
    {"FailedLastChild", "Warning|no room|[Ok]", [] { return box_of_failed_child(QMessageBox::Ok, true); }},
    {"RefusedInsert",
        "Warning|This Document is busy - please try again when current operation is finished|[Ok]",
        [] {
            return box_of_refusal([](const DocumentId& id) {
                CommandManager::instance().insert(support::make_command(id, "C"), false);
            });
        }},
    {"RefusedUndo",
        "Warning|This Document is busy - please try to UNDO again when current operation is finished|[Ok]",
        [] { return box_of_refusal([](const DocumentId& id) { CommandManager::instance().undo(id); }); }},
    {"RefusedRedo",
        "Warning|This Document is busy - please try to REDO again when current operation is finished|[Ok]",
        [] { return box_of_refusal([](const DocumentId& id) { CommandManager::instance().redo(id); }); }},

    {"ControllerProduct", "UndoRedoController", product_name},

    // Assertions
    {"PercentageAboveAHundred", "housekeeping/src/AbstractCommand:136: 100 >= percentage",
        assertion_of_progress},
    {"NullChild", "housekeeping/src/CompositeCommand: utilities::valid_pointer(command)",
        [] { return assertion([] { batch_of({})->push_back(nullptr); }); }},
    {"EmptyCommand", "housekeeping/src/CommandManager: !sp_command->empty()", assertion_of_empty_command},
    {"UndoWithoutState",
        "housekeeping/src/UndoRedoController: !utilities::null_pointer(m_sp_undo_redo_state)",
        [] { return assertion_of_controller([](UndoRedoController& controller) { controller.undo(1); }); }},
    {"RedoWithoutState",
        "housekeeping/src/UndoRedoController: !utilities::null_pointer(m_sp_undo_redo_state)",
        [] { return assertion_of_controller([](UndoRedoController& controller) { controller.redo(1); }); }},
    {"UndoDetailsWithoutState",
        "housekeeping/src/UndoRedoController: utilities::valid_pointer(m_sp_undo_redo_state)",
        [] {
            return assertion_of_controller(
                [](UndoRedoController& controller) { controller.getUndoCommandDetails(1); });
        }},
    {"RedoDetailsWithoutState",
        "housekeeping/src/UndoRedoController: utilities::valid_pointer(m_sp_undo_redo_state)",
        [] {
            return assertion_of_controller(
                [](UndoRedoController& controller) { controller.getRedoCommandDetails(1); });
        }},
};

INSTANTIATE_TEST_SUITE_P(Commands, Texts, testing::ValuesIn(s_rows), texts::name_of);

} // namespace
