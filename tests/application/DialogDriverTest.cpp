#include "support/DialogDriver.h"
#include "support/App.h"

#include <QtWidgets/QMessageBox>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using support::App;
using support::DialogDriver;

int ask()
{
    return QMessageBox::question(nullptr, "A title", "a text", QMessageBox::Yes | QMessageBox::No);
}

TEST(DialogDriver, AnswersInOrder)
{
    const App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).click(QMessageBox::No);
    EXPECT_EQ(ask(), QMessageBox::Yes);
    EXPECT_EQ(ask(), QMessageBox::No);
    EXPECT_EQ(dialogs.shown().size(), 2u);
}

TEST(DialogDriver, AnswersADialogThatAnAnswerOpens)
{
    const App app;
    DialogDriver dialogs;
    int inner = 0;
    dialogs.answer([&inner](QDialog& dialog) {
        inner = ask();
        dialog.reject();
    });
    dialogs.click(QMessageBox::Yes);
    ask();
    EXPECT_EQ(inner, QMessageBox::Yes);
}

TEST(DialogDriver, AnswersTheSameObjectAgain)
{
    const App app;
    DialogDriver dialogs;
    QMessageBox box(QMessageBox::Information, "A title", "a text", QMessageBox::Ok | QMessageBox::Cancel);
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Cancel);
    EXPECT_EQ(box.exec(), QMessageBox::Ok);
    EXPECT_EQ(box.exec(), QMessageBox::Cancel);
}

TEST(DialogDriver, FailsForAnUnexpectedDialogAndClosesIt)
{
    const App app;
    DialogDriver dialogs;
    EXPECT_NONFATAL_FAILURE(ask(), "unexpected dialog \"A title\": a text");
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST(DialogDriver, FailsForADialogThatDidNotAppear)
{
    const App app;
    auto dialogs = std::make_unique<DialogDriver>();
    dialogs->click(QMessageBox::Ok);
    EXPECT_NONFATAL_FAILURE(dialogs.reset(), "did not appear");
}

TEST(DialogDriver, FailsForAMissingButtonAndClosesTheDialog)
{
    const App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save);
    EXPECT_NONFATAL_FAILURE(ask(), "has no button");
}

TEST(DialogDriver, FailsForABoxWhereAFileIsToBeChosen)
{
    const App app;
    DialogDriver dialogs;
    dialogs.choose_file("a file");
    EXPECT_NONFATAL_FAILURE(ask(), "asks for no file");
}

TEST(DialogDriver, FailsForAStuckDialogAndClosesIt)
{
    const App app;
    DialogDriver dialogs;
    dialogs.answer([](QDialog&) {});
    EXPECT_NONFATAL_FAILURE(ask(), "did not close");
}

} // namespace
