#include "support/App.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/testkit/DialogDriver.h>
#include <tarqa/testkit/FakeDocument.h>
#include <tarqa/testkit/LogCapture.h>
#include <tarqa/testkit/PrivateHome.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// docs/testing-a-host.md

using namespace tarqa::housekeeping;
using namespace tarqa::housekeeping::testkit;

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

//! [listener]
/// Fails a test that leaves an entry in the error log that no LogCapture accounted for.
class UnannouncedEntries : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override
    {
        for (const std::string& line : unannounced_log_lines()) {
            ADD_FAILURE() << "unannounced entry in the error log: " << line;
        }
    }
};
//! [listener]

} // namespace

int main(int argc, char** argv)
{
    //! [main]
    const PrivateHome home; // before anything else: logs and preferences go there
    ControllerManager::instance().init(); // as every host does before its first document
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new UnannouncedEntries);
    return RUN_ALL_TESTS();
    //! [main]
}

//! [proof]
TEST(RenameCommand, KeepsItsPromises)
{
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
    EXPECT_EQ(text_of(proof.run()), "");
}
//! [proof]

//! [log]
TEST(RenameCommand, LogsThatANameIsMissing)
{
    FakeDocument& document = FakeDocument::create();
    LogCapture log;
    CommandManager::instance().insert(boost::make_shared<RenameCommand>(document, ""), false);
    EXPECT_TRUE(log.take("A valley must have a name"));
    log.take_all(); // where it was thrown
}
//! [log]

TEST(RenameCommand, SaysThatANameIsMissing)
{
    const support::App app;
    FakeDocument& document = FakeDocument::create();
    LogCapture log;
    //! [dialogs]
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    CommandManager::instance().insert(boost::make_shared<RenameCommand>(document, ""), false);
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("A valley must have a name"));
    EXPECT_EQ(dialogs.problems(), std::vector<std::string>()); // no dialog was left over, and none was missed
    //! [dialogs]
    log.take_all();
}
