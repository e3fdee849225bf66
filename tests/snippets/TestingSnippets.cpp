// docs/testing-a-host.md

//! [includes]
#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/testkit/DialogDriver.h>
#include <tarqa/testkit/FakeController.h>
#include <tarqa/testkit/FakeDocument.h>
#include <tarqa/testkit/LogCapture.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace tarqa::housekeeping;
using namespace tarqa::housekeeping::testkit;
//! [includes]

namespace {

/// A host's command.
class RenameCommand : public AbstractCommand
{
public:
    RenameCommand(FakeDocument& document, const std::string& name)
        : AbstractCommand(document.id(), "Rename")
        , m_document(document)
        , m_name(name)
    { }
    void rollback() override { undo_command(); }

protected:
    void remember() override { m_old_name = m_document.values()["name"]; }
    void do_command() override
    {
        if (m_name.empty()) {
            throw FailedCommandException(4711, "A valley must have a name", __FILE__, __LINE__);
        }
        progress(0);
        m_document.values()["name"] = m_name;
        progress(100);
    }
    void undo_command() override
    {
        if (!m_old_name.empty()) {
            m_document.values()["name"] = m_old_name;
        }
    }

private:
    FakeDocument& m_document; // not owned
    std::string m_name;
    std::string m_old_name;
};

} // namespace

//! [proof]
TEST(RenameCommand, KeepsItsPromises)
{
    FakeController::make_controllers();
    RoundTripProof proof(
        []() -> AbstractDocument& {
            FakeDocument& document = FakeDocument::create();
            document.values()["name"] = "valley";
            return document;
        },
        [](AbstractDocument& document) { return FakeDocument::of(document).text(); });
    proof.command("Rename", [](AbstractDocument& document) {
        return boost::make_shared<RenameCommand>(FakeDocument::of(document), "hill");
    });
    proof.modified([](AbstractDocument& document) { return FakeDocument::of(document).is_modified(); });
    EXPECT_EQ(text_of(proof.run()), "");
    EXPECT_GT(proof.reports(), 1); // else there is no place in the middle of a run
}
//! [proof]

//! [log]
TEST(RenameCommand, SaysThatANameIsMissing)
{
    FakeController::make_controllers(); // before the first document, as in a host
    FakeDocument& document = FakeDocument::create();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok); // the user's answer to the next box
    CommandManager::instance().insert(boost::make_shared<RenameCommand>(document, ""), false);
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("A valley must have a name"));
    EXPECT_EQ(dialogs.problems(), std::vector<std::string>()); // no dialog was left over, and none was missed
    EXPECT_TRUE(log.take("A valley must have a name")); // what is shown is logged, too
    log.take_all(); // where it was thrown
}
//! [log]
