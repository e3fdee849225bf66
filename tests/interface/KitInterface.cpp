#include "interface/Interface.h"

#include <tarqa/testkit/Breach.h>
#include <tarqa/testkit/DialogDriver.h>
#include <tarqa/testkit/FakeCommand.h>
#include <tarqa/testkit/FakeController.h>
#include <tarqa/testkit/FakeDocument.h>
#include <tarqa/testkit/FakeModel.h>
#include <tarqa/testkit/LogCapture.h>
#include <tarqa/testkit/PrivateHome.h>
#include <tarqa/testkit/Promise.h>
#include <tarqa/testkit/RoundTripProof.h>
#include <tarqa/testkit/ShownDialog.h>
#include <tarqa/testkit/StartedApplication.h>

#include <string>
#include <vector>

// What the test kit offers to those who test a host.

using namespace tarqa::housekeeping;
using namespace tarqa::housekeeping::testkit;

namespace {

typedef std::string Text;
typedef std::vector<std::string> Texts;

// The round-trip proof

INTERFACE_HAS(Breach::text, Text (Breach::*)() const);
static_assert(std::is_copy_constructible_v<Breach>);
static_assert(std::is_same_v<decltype(text_of(std::vector<Breach>())), Text>);
static_assert(std::is_same_v<decltype(first_difference(Text(), Text())), Text>);
static_assert(std::is_same_v<decltype(name_of(Promise::DoSucceeds)), Text>);
static_assert(std::is_same_v<decltype(sentence_of(Promise::DoSucceeds)), Text>);

static_assert(std::is_constructible_v<RoundTripProof, RoundTripProof::MakeDocument, RoundTripProof::Digest>);
static_assert(!std::is_copy_constructible_v<RoundTripProof>);
INTERFACE_HAS(
    RoundTripProof::command, RoundTripProof& (RoundTripProof::*)(const Text&, RoundTripProof::MakeCommand));
INTERFACE_HAS(RoundTripProof::except, RoundTripProof& (RoundTripProof::*)(Promise, const Text&));
INTERFACE_HAS(RoundTripProof::modified, RoundTripProof& (RoundTripProof::*)(RoundTripProof::IsModified));
INTERFACE_HAS(RoundTripProof::expect_log, RoundTripProof& (RoundTripProof::*)(const Text&));
INTERFACE_HAS(RoundTripProof::in_worker, RoundTripProof& (RoundTripProof::*)());
INTERFACE_HAS(RoundTripProof::rounds, RoundTripProof& (RoundTripProof::*)(int));
INTERFACE_HAS(RoundTripProof::places, RoundTripProof& (RoundTripProof::*)(int));
INTERFACE_HAS(RoundTripProof::run, std::vector<Breach> (RoundTripProof::*)());
INTERFACE_HAS(RoundTripProof::experiments, int (RoundTripProof::*)() const);
INTERFACE_HAS(RoundTripProof::reports, int (RoundTripProof::*)() const);
INTERFACE_HAS(RoundTripProof::questions, int (RoundTripProof::*)() const);

// Surroundings of a test

static_assert(!std::is_copy_constructible_v<LogCapture>);
INTERFACE_HAS(LogCapture::announce, void (LogCapture::*)(const Text&));
INTERFACE_HAS(LogCapture::unannounced, Texts (LogCapture::*)() const);
INTERFACE_HAS(LogCapture::missing, Texts (LogCapture::*)() const);
INTERFACE_HAS(LogCapture::text, Text (LogCapture::*)() const);
INTERFACE_HAS(LogCapture::lines, Texts (LogCapture::*)() const);
INTERFACE_HAS(LogCapture::take, bool (LogCapture::*)(const Text&));
INTERFACE_HAS(
    LogCapture::took_assert, bool (LogCapture::*)(const Text&, const Text&, const Text&, unsigned int));
INTERFACE_HAS(LogCapture::count, int (LogCapture::*)(const Text&) const);
INTERFACE_HAS(LogCapture::take_all, void (LogCapture::*)());
static_assert(std::is_same_v<decltype(unannounced_log_lines()), Texts>);

/// Shows what is protected.
struct OpenDialogDriver : DialogDriver
{
    using DialogDriver::problem;
};
static_assert(std::is_base_of_v<QObject, DialogDriver>);
INTERFACE_HAS(DialogDriver::click, DialogDriver& (DialogDriver::*)(QMessageBox::StandardButton));
INTERFACE_HAS(DialogDriver::choose_file, DialogDriver& (DialogDriver::*)(const QString&));
INTERFACE_HAS(DialogDriver::enter, DialogDriver& (DialogDriver::*)(const QString&));
INTERFACE_HAS(DialogDriver::cancel, DialogDriver& (DialogDriver::*)());
INTERFACE_HAS(DialogDriver::answer, DialogDriver& (DialogDriver::*)(DialogDriver::Answer));
INTERFACE_HAS(DialogDriver::shown, const std::vector<ShownDialog>& (DialogDriver::*)() const);
INTERFACE_HAS(DialogDriver::pending, int (DialogDriver::*)() const);
INTERFACE_HAS(DialogDriver::problems, Texts (DialogDriver::*)() const);
INTERFACE_HAS(OpenDialogDriver::problem, void (DialogDriver::*)(const Text&));
INTERFACE_HIDES(DialogDriver, problem);

static_assert(!std::is_copy_constructible_v<PrivateHome>);
INTERFACE_HAS(PrivateHome::log_directory, Text (*)());
INTERFACE_HAS(PrivateHome::scratch_directory, Text (*)());

static_assert(std::is_constructible_v<StartedApplication, bool, const Texts&>);
static_assert(!std::is_copy_constructible_v<StartedApplication>);
INTERFACE_HAS(StartedApplication::manager, ApplicationManager& (StartedApplication::*)() const);
INTERFACE_HAS(StartedApplication::application, QApplication& (StartedApplication::*)() const);
INTERFACE_HAS(StartedApplication::arguments, Texts (StartedApplication::*)() const);
INTERFACE_HAS(StartedApplication::unannounced_log_lines, const Texts& (StartedApplication::*)() const);

// Fakes

static_assert(std::is_base_of_v<AbstractModel, FakeModel>);
INTERFACE_HAS(FakeModel::values, FakeModel::Values& (FakeModel::*)());
INTERFACE_HAS(FakeModel::values, const FakeModel::Values& (FakeModel::*)() const);

static_assert(std::is_base_of_v<AbstractDocument, FakeDocument>);
INTERFACE_HAS(FakeDocument::register_factory, void (*)());
INTERFACE_HAS(FakeDocument::create, FakeDocument& (*)());
INTERFACE_HAS(FakeDocument::of, FakeDocument& (*)(AbstractDocument&));
INTERFACE_HAS(FakeDocument::values, FakeModel::Values& (FakeDocument::*)());
INTERFACE_HAS(FakeDocument::text, Text (FakeDocument::*)() const);
INTERFACE_HAS(FakeDocument::is_modified, bool (FakeDocument::*)() const);
INTERFACE_HAS(FakeDocument::title_changes, int (FakeDocument::*)() const);
INTERFACE_HAS(FakeDocument::agrees_to_close, void (FakeDocument::*)(bool));

static_assert(std::is_base_of_v<AbstractController, FakeController>);
static_assert(std::is_base_of_v<AbstractState, FakeController::State>);
INTERFACE_HAS(FakeController::register_factory, void (*)(const Text&));
INTERFACE_HAS(FakeController::make_controllers, void (*)());
INTERFACE_HAS(FakeController::of, FakeController& (*)(const Text&));
INTERFACE_HAS(FakeController::current_state,
    const boost::shared_ptr<FakeController::State>& (FakeController::*)() const);
INTERFACE_HAS(FakeController::states_made, int (FakeController::*)() const);
INTERFACE_HAS(FakeController::updates, int (FakeController::*)() const);
INTERFACE_HAS(FakeController::was_initialised, bool (FakeController::*)() const);
INTERFACE_HAS(FakeController::refresh, void (FakeController::*)());

static_assert(std::is_base_of_v<AbstractCommand, FakeCommand>);
static_assert(std::is_constructible_v<FakeCommand, FakeDocument&, const Text&, const Text&, bool>);

} // namespace
