#include "support/LogCapture.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/testkit/FakeCommand.h>
#include <tarqa/testkit/FakeController.h>
#include <tarqa/testkit/FakeDocument.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <typeinfo>

using namespace tarqa::housekeeping;
using tarqa::housekeeping::testkit::FakeCommand;
using tarqa::housekeeping::testkit::FakeController;
using tarqa::housekeeping::testkit::FakeDocument;
using tarqa::housekeeping::testkit::RoundTripProof;

namespace {

void set(FakeDocument& document, const std::string& name, const std::string& value, bool merges = false)
{
    CommandManager::instance().insert(boost::make_shared<FakeCommand>(document, name, value, merges), false);
}

class KitFakes : public testing::Test
{
protected:
    KitFakes()
    {
        FakeController::register_factory("fake");
        FakeController::make_controllers();
    }
};

} // namespace

TEST_F(KitFakes, DocumentIsMadeByTheDocumentManager)
{
    FakeDocument& document = FakeDocument::create();
    EXPECT_EQ(&DocumentManager::instance().current_document(), &document);
    EXPECT_EQ(document.document_type(), "Fake");
    EXPECT_TRUE(document.empty());
    EXPECT_EQ(document.text(), "");
    EXPECT_FALSE(document.is_modified());

    document.values() = {{"b", "2"}, {"a", "1"}};
    EXPECT_EQ(document.text(), "a=1\nb=2\n");
    EXPECT_EQ(document.size(), 2U);
    document.clear();
    EXPECT_TRUE(document.empty());
}

TEST_F(KitFakes, DocumentIsFoundInWhatTheManagerGives)
{
    FakeDocument::register_factory();
    AbstractDocument& first = DocumentManager::instance().create_document();
    EXPECT_EQ(&FakeDocument::of(first), &first);
    EXPECT_NE(&FakeDocument::create(), &first);
    EXPECT_EQ(DocumentManager::instance().num_documents(), 2U);
}

TEST_F(KitFakes, DocumentSaysWhatItWasTold)
{
    FakeDocument& document = FakeDocument::create();
    DocumentManager::instance().document_busy(document.id(), true);
    EXPECT_TRUE(document.is_busy());
    DocumentManager::instance().document_busy(document.id(), false);
    EXPECT_FALSE(document.is_busy());

    document.agrees_to_close(false);
    EXPECT_FALSE(
        DocumentManager::instance().destroy_document(document.id(), false, false, false, DocumentId::null()));
    document.agrees_to_close(true);
    EXPECT_TRUE(
        DocumentManager::instance().destroy_document(document.id(), false, false, false, DocumentId::null()));
    EXPECT_EQ(DocumentManager::instance().num_documents(), 0U);
}

TEST_F(KitFakes, ControllerHasAStateInEveryDocument)
{
    FakeController& controller = FakeController::of("fake");
    EXPECT_TRUE(controller.was_initialised());
    EXPECT_EQ(controller.controller_name(), "fake");
    EXPECT_FALSE(controller.current_state());

    FakeDocument& first = FakeDocument::create();
    ASSERT_TRUE(controller.current_state());
    controller.current_state()->value = 1;
    FakeDocument::create();
    EXPECT_EQ(controller.states_made(), 2);
    EXPECT_EQ(controller.current_state()->value, 0);
    const int updates = controller.updates();

    DocumentManager::instance().current_document(first.id());
    EXPECT_EQ(controller.current_state()->value, 1);
    EXPECT_EQ(&controller.current_state()->owner(), &first);
    EXPECT_EQ(controller.updates(), updates + 1);
}

TEST_F(KitFakes, AnotherControllerIsNone)
{
    support::LogCapture log;
    EXPECT_THROW(FakeController::of("no such controller"), std::bad_cast);
    EXPECT_THROW(FakeController::of("UndoRedoController"), std::bad_cast);
    log.take_all();
}

TEST_F(KitFakes, CommandSetsAValue)
{
    FakeDocument& document = FakeDocument::create();
    document.values()["angle"] = "0";
    set(document, "angle", "90");
    EXPECT_EQ(document.text(), "angle=90\n");
    EXPECT_TRUE(document.is_modified());
    EXPECT_EQ(document.document_history().getUndoCommandDetails(1).at(0).name(), "Set angle");
    CommandManager::instance().undo(document.id());
    EXPECT_EQ(document.text(), "angle=0\n");
    CommandManager::instance().redo(document.id());
    EXPECT_EQ(document.text(), "angle=90\n");
}

TEST_F(KitFakes, CommandTakesANewValueAway)
{
    FakeDocument& document = FakeDocument::create();
    set(document, "angle", "90");
    CommandManager::instance().undo(document.id());
    EXPECT_EQ(document.text(), "");
}

TEST_F(KitFakes, CommandsOfTheSameValueMergeIfTheyMay)
{
    FakeDocument& document = FakeDocument::create();
    set(document, "a", "1", true);
    set(document, "a", "2", true);
    set(document, "b", "3", true);
    set(document, "b", "4", false);
    EXPECT_EQ(document.document_history().undoSize(), 3U);
    for (int i = 0; i < 3; ++i) {
        CommandManager::instance().undo(document.id());
    }
    EXPECT_EQ(document.text(), "");
    CommandManager::instance().redo(document.id());
    EXPECT_EQ(document.text(), "a=2\n");
}

TEST_F(KitFakes, CommandKeepsWhatItPromises)
{
    support::LogCapture log;
    RoundTripProof proof(
        []() -> AbstractDocument& {
            FakeDocument& document = FakeDocument::create();
            document.values() = {{"a", "1"}, {"b", "2"}};
            return document;
        },
        [](AbstractDocument& document) { return FakeDocument::of(document).text(); });
    proof.modified([](AbstractDocument& document) { return FakeDocument::of(document).is_modified(); });
    proof.command("change", [](AbstractDocument& document) {
        return boost::make_shared<FakeCommand>(FakeDocument::of(document), "a", "7", true);
    });
    proof.command("add", [](AbstractDocument& document) {
        return boost::make_shared<FakeCommand>(FakeDocument::of(document), "c", "8", true);
    });
    EXPECT_EQ(text_of(proof.run()), "");
    EXPECT_EQ(proof.reports(), 4);
    EXPECT_GT(proof.experiments(), 50);
    EXPECT_EQ(DocumentManager::instance().num_documents(), 0U);
    log.take_all();
}
