#include "commands/RefusingDocuments.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QTranslator>
#include <QtWidgets/QMessageBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

// What the command manager does when a document refuses to be marked as busy. Marks nest, so none ever does.

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using support::make_command;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString s_context = "tarqa::housekeeping::CommandManager";
const QMessageBox::StandardButtons s_ok = QMessageBox::Ok;

const QString s_insert_text = "This Document is busy - please try again when current operation is finished";
const QString s_undo_text
    = "This Document is busy - please try to UNDO again when current operation is finished";
const QString s_redo_text
    = "This Document is busy - please try to REDO again when current operation is finished";

/// Puts every text of the command manager into brackets.
class BracketTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return context == s_context ? '[' + QString(text) + ']' : QString();
    }
    bool isEmpty() const override { return false; }
};

CommandManager& manager()
{
    return CommandManager::instance();
}

bool mutex_is_free()
{
    QMutex& mutex = TestAccess::mutex(manager());
    if (!mutex.tryLock()) {
        return false;
    }
    mutex.unlock();
    return true;
}

/// A document with the command "Done", which refuses from refuse() on.
class CommandManagerRefusal : public testing::Test
{
protected:
    CommandManagerRefusal() { manager().insert(make_command(id, "Done"), false); }
    ~CommandManagerRefusal() override { log.take_all(); }

    /// Lets the documents refuse, and the user close the box that tells so.
    void refuse()
    {
        journal().clear();
        refusing = std::make_unique<support::RefusingDocuments>();
        dialogs.answer([](QDialog& box) {
            EXPECT_FALSE(mutex_is_free()); // the run has not been left yet
            box.accept();
        });
    }

    void expect_one_warning(const QString& text)
    {
        ASSERT_EQ(1u, dialogs.shown().size());
        EXPECT_EQ("QMessageBox", dialogs.shown()[0].class_name);
        EXPECT_EQ("Warning", dialogs.shown()[0].title);
        EXPECT_EQ(text, dialogs.shown()[0].text);
        EXPECT_EQ(s_ok, dialogs.shown()[0].buttons);
        EXPECT_EQ(1, refusing->refused());
        EXPECT_EQ(0, refusing->cleared()); // the mark is somebody else's
        EXPECT_TRUE(mutex_is_free());
    }

    support::App app;
    support::DialogDriver dialogs;
    support::LogCapture log;
    FakeDocument& document = support::create_document();
    const DocumentId id = document.id();
    JournalingReceiver receiver;
    std::unique_ptr<support::RefusingDocuments> refusing;
};

} // namespace

TEST_F(CommandManagerRefusal, InsertWarnsAndDropsTheCommand)
{
    refuse();
    manager().insert(make_command(id, "Rotate"), false);
    expect_one_warning(s_insert_text);
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_EQ(1u, document.document_history().undoSize());
}

TEST_F(CommandManagerRefusal, UndoWarnsAndLeavesTheCommandOnTheRedoStack)
{
    refuse();
    manager().undo(id);
    expect_one_warning(s_undo_text);
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
    EXPECT_EQ(0u, document.document_history().undoSize());
    EXPECT_EQ(1u, document.document_history().redoSize());
}

TEST_F(CommandManagerRefusal, RedoWarnsAndLeavesTheCommandOnTheUndoStack)
{
    manager().undo(id);
    refuse();
    manager().redo(id);
    expect_one_warning(s_redo_text);
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
    EXPECT_EQ(1u, document.document_history().undoSize());
    EXPECT_EQ(0u, document.document_history().redoSize());
}

TEST_F(CommandManagerRefusal, NobodyIsAskedForACommandThatSetsNoMark)
{
    const support::RefusingDocuments refusing_now;
    const boost::shared_ptr<FakeCommand> command = make_command(id, "Rotate");
    command->sets_document_busy(false);
    manager().insert(command, false);
    manager().undo(id);
    manager().redo(id);
    EXPECT_EQ(2, journal().count("Rotate.do"));
    EXPECT_EQ(1, journal().count("Rotate.undo"));
    EXPECT_EQ(0, refusing_now.refused());
    EXPECT_EQ(0, refusing_now.cleared());
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(CommandManagerRefusal, NextCommandRunsWhenTheDocumentAgreesAgain)
{
    refuse();
    manager().insert(make_command(id, "Rotate"), false);
    refusing.reset();
    manager().insert(make_command(id, "Move"), false);
    EXPECT_EQ(0, journal().count("Rotate."));
    EXPECT_EQ(1, journal().count("Move.do"));
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

TEST_F(CommandManagerRefusal, WarningsAreTranslated)
{
    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    refuse();
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Ok);
    manager().insert(make_command(id, "Rotate"), false);
    manager().undo(id);
    manager().redo(id);
    QCoreApplication::removeTranslator(&translator);
    ASSERT_EQ(3u, dialogs.shown().size());
    const QString texts[] = {s_insert_text, s_undo_text, s_redo_text};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ("[Warning]", dialogs.shown()[i].title);
        EXPECT_EQ('[' + texts[i] + ']', dialogs.shown()[i].text);
    }
}
