#include "LogFiles.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace {

using namespace tarqa::housekeeping;
using support::DialogDriver;
using support::FakeCommand;
using testing::HasSubstr;

const char* const s_unknown = "An unknown serious error has occured in this Command";
const DocumentId s_document = DocumentId::build(5);

/// Translates every text of the framework into its context, a bar and the text.
class ContextTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        const QString name = QString::fromUtf8(context);
        const bool ours = name == "QObject" || name.startsWith("tarqa::");
        return ours ? name + '|' + QString::fromUtf8(text) : QString();
    }
    bool isEmpty() const override { return false; }
};

std::string common(const std::string& text)
{
    return "QObject|" + text;
}

std::string of(const std::string& name, const std::string& text)
{
    return "tarqa::housekeeping::" + name + "|" + text;
}

/// The message of the housekeeping exception that @p action throws.
std::string message_of(const std::function<void()>& action)
{
    try {
        action();
    } catch (HousekeepingException& exception) {
        return exception.message();
    }
    return "nothing was thrown";
}

/// An application whose language has a text for everything; the log may hold anything.
class Translation : public testing::Test
{
protected:
    Translation() { QCoreApplication::installTranslator(&m_translator); }
    ~Translation() override
    {
        QCoreApplication::removeTranslator(&m_translator);
        log.take_all();
    }

    static std::string standard_error_of(const std::function<void()>& action)
    {
        testing::internal::CaptureStderr();
        action();
        return testing::internal::GetCapturedStderr();
    }
    static std::string failure_message(const std::string& detail)
    {
        return common("Fatal error!  ") + "Tarq"
            + common(" has terminated unexpectedly. Please contact Velmor Stade with a bug report.")
            + common("A full failure report can be found in the file : ") + log_files::path(1)
            + common("\nDetail: ") + detail;
    }

    support::LogCapture log;
    support::App app;

private:
    ContextTranslator m_translator;

protected:
    DialogDriver dialogs;
};

} // namespace

// Exceptions

TEST_F(Translation, UnknownDocument)
{
    EXPECT_EQ(common("Document does not exist"),
        message_of([] { DocumentManager::instance().document_from_id(s_document); }));
}

TEST_F(Translation, DocumentWithoutAModel)
{
    support::FakeDocument document;
    document.remove_model();
    EXPECT_EQ(common("Attempt to get invalid model from document"), message_of([&] { document.model(); }));
}

TEST_F(Translation, CancelledCommand)
{
    support::FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    EXPECT_EQ(common("Command was cancelled by user!"), message_of([&] { command.progress(50); }));
}

TEST_F(Translation, BatchThatIsBrokenOff)
{
    CompositeCommand batch(s_document, "Batch", false);
    const auto child = support::make_command(s_document, "A");
    child->on_do = support::throws_failure("no room");
    batch.push_back(child);
    dialogs.click(QMessageBox::Ok);
    EXPECT_EQ(common("Insertion Cancelled"), message_of([&] { TestAccess::do_command(batch); }));
    EXPECT_EQ(of("CompositeCommand", "Warning"), dialogs.shown().at(0).title.toStdString());
    EXPECT_EQ("no room", dialogs.shown().at(0).text.toStdString());
}

// Commands

TEST_F(Translation, FailureOfACommand)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_failure("no room");
    dialogs.click(QMessageBox::Ok);
    AbstractCommand::Execute(&command).run(false);
    EXPECT_EQ(of("AbstractCommand", "Error"), dialogs.shown().at(0).title.toStdString());
}

TEST_F(Translation, QuestionWhetherToGoOn)
{
    CompositeCommand batch(s_document, "Batch", false);
    const auto child = support::make_command(s_document, "A");
    child->on_do = support::throws_failure("no room");
    batch.push_back(child);
    batch.push_back(support::make_command(s_document, "B"));
    dialogs.click(QMessageBox::Yes);
    AbstractCommand::Execute(&batch).run(false);
    EXPECT_EQ(of("CompositeCommand", "Warning"), dialogs.shown().at(0).title.toStdString());
    EXPECT_EQ("no room" + of("CompositeCommand", "\nContinue ?"), dialogs.shown().at(0).text.toStdString());
}

TEST_F(Translation, UnknownErrorOfACommand)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_unknown();
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::Execute(&command).run(false); }),
        HasSubstr(common(s_unknown)));
    command.on_do = support::throws_std("boom");
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::Execute(&command).run(false); }),
        HasSubstr(of("AbstractCommand", std::string(s_unknown) + " : ") + "boom"));
}

TEST_F(Translation, UnknownErrorOfAnUndo)
{
    FakeCommand command(s_document, "Rotate");
    command.on_undo = support::throws_unknown();
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::UnExecute(&command).run(false); }),
        HasSubstr(of("AbstractCommand", std::string(s_unknown) + " UNDO") + "\n"));
    command.on_undo = support::throws_std("boom");
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::UnExecute(&command).run(false); }),
        HasSubstr(of("AbstractCommand", std::string(s_unknown) + " UNDO : ") + "boom"));
}

TEST_F(Translation, UnknownErrorInABatch)
{
    CompositeCommand batch(s_document, "Batch", false);
    const auto child = support::make_command(s_document, "A");
    batch.push_back(child);
    child->on_do = support::throws_unknown();
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::Execute(&batch).run(false); }),
        HasSubstr(common(s_unknown)));
    child->on_do = support::throws_std("boom");
    EXPECT_THAT(standard_error_of([&] { AbstractCommand::Execute(&batch).run(false); }),
        HasSubstr(of("CompositeCommand", std::string(s_unknown) + " : ") + "boom"));
}

// Fatal errors

TEST_F(Translation, FailureMessage)
{
    EXPECT_EQ(failure_message("why"), TestAccess::failure_error_message("why"));
}

TEST_F(Translation, FatalExceptions)
{
    const HousekeepingException exception(2, "bad thing", "housekeeping/src/X", 7);
    EXPECT_THAT(standard_error_of([&] { ErrorHandler::instance().fatal_error(exception); }),
        HasSubstr(failure_message(common("A C++ fatal error has occured : ") + "\n")));
    EXPECT_THAT(
        standard_error_of([] { ErrorHandler::instance().fatal_error(std::runtime_error("standard")); }),
        HasSubstr(
            failure_message(common("An Exception creating a fatal error has occured : ") + "standard")));
}

TEST_F(Translation, DialogsOfAFatalError)
{
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Yes).cancel();
    ErrorHandler::instance().fatal_error("the disk is gone");
    ASSERT_EQ(3u, dialogs.shown().size());
    const support::ShownDialog& box = dialogs.shown()[0];
    EXPECT_EQ(of("ErrorHandler", "Fatal Error"), box.title.toStdString());
    EXPECT_EQ(failure_message("the disk is gone\n\n\n\n"), box.text.toStdString());
    const support::ShownDialog& offer = dialogs.shown()[1];
    EXPECT_EQ(of("ErrorHandler", "Tarq Fatal Error"), offer.title.toStdString());
    EXPECT_EQ(of("ErrorHandler", "Save error log to file for PKX support"), offer.text.toStdString());
    const support::ShownDialog& files = dialogs.shown()[2];
    EXPECT_EQ(of("ErrorHandler", "Save Tarq Error Log"), files.title.toStdString());
    EXPECT_EQ("Tarq_Error.log", files.file);
    EXPECT_EQ(QStringList(QString::fromStdString(of("ErrorHandler", "Log files (*.log)"))), files.filters);
}
