#include "support/App.h"
#include "support/PrivateHome.h"

#include <tarqa/testkit/DialogDriver.h>

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using tarqa::housekeeping::testkit::DialogDriver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class KitDialogDriver : public testing::Test
{
protected:
    support::App m_app;
    DialogDriver m_dialogs;
};

QMessageBox::StandardButton ask(const QString& title)
{
    return QMessageBox::question(nullptr, title, "Really?", QMessageBox::Yes | QMessageBox::No);
}

} // namespace

TEST_F(KitDialogDriver, ClicksButtonsInTheOrderOfTheScript)
{
    m_dialogs.click(QMessageBox::Yes).click(QMessageBox::No);
    EXPECT_EQ(m_dialogs.pending(), 2);
    EXPECT_EQ(ask("First"), QMessageBox::Yes);
    EXPECT_EQ(m_dialogs.pending(), 1);
    EXPECT_EQ(ask("Second"), QMessageBox::No);
    EXPECT_EQ(m_dialogs.pending(), 0);

    ASSERT_EQ(m_dialogs.shown().size(), 2U);
    EXPECT_EQ(m_dialogs.shown()[0].class_name, "QMessageBox");
    EXPECT_EQ(m_dialogs.shown()[0].title, "First");
    EXPECT_EQ(m_dialogs.shown()[0].text, "Really?");
    EXPECT_EQ(m_dialogs.shown()[0].icon, QMessageBox::Question);
    EXPECT_EQ(m_dialogs.shown()[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(m_dialogs.shown()[1].title, "Second");
    EXPECT_THAT(m_dialogs.problems(), IsEmpty());
}

TEST_F(KitDialogDriver, ChoosesAFile)
{
    const QString directory = QString::fromStdString(support::PrivateHome::scratch_directory());
    m_dialogs.choose_file(directory + "/new.txt");
    EXPECT_EQ(
        QFileDialog::getSaveFileName(nullptr, "Save", directory, "Texts (*.txt)"), directory + "/new.txt");
    EXPECT_TRUE(m_dialogs.shown().at(0).saves);
    EXPECT_EQ(m_dialogs.shown().at(0).filters, QStringList("Texts (*.txt)"));
    EXPECT_THAT(m_dialogs.problems(), IsEmpty());
}

TEST_F(KitDialogDriver, EntersTextsAndNumbers)
{
    m_dialogs.enter("a name").enter("17").enter("2.5").enter("second");
    EXPECT_EQ(QInputDialog::getText(nullptr, "Name", "Which name?"), "a name");
    EXPECT_EQ(QInputDialog::getInt(nullptr, "Number", "How many?"), 17);
    EXPECT_EQ(QInputDialog::getDouble(nullptr, "Number", "How much?"), 2.5);
    EXPECT_EQ(QInputDialog::getItem(nullptr, "Item", "Which?", {"first", "second"}, 0, false), "second");
    EXPECT_EQ(m_dialogs.shown().at(0).text, "Which name?");
    EXPECT_THAT(m_dialogs.problems(), IsEmpty());
}

TEST_F(KitDialogDriver, CancelsAsTheEscapeKeyDoes)
{
    m_dialogs.cancel().cancel();
    bool accepted = true;
    QInputDialog::getText(nullptr, "Name", "Which name?", QLineEdit::Normal, "a", &accepted);
    EXPECT_FALSE(accepted);
    EXPECT_EQ(QMessageBox::question(nullptr, "Save", "?", QMessageBox::Save | QMessageBox::Cancel),
        QMessageBox::Cancel);
    EXPECT_THAT(m_dialogs.problems(), IsEmpty());
}

TEST_F(KitDialogDriver, AnswersAsTold)
{
    m_dialogs.answer([](QDialog& dialog) { dialog.done(42); });
    QDialog dialog;
    EXPECT_EQ(dialog.exec(), 42);
    EXPECT_EQ(m_dialogs.shown().at(0).class_name, "QDialog");
}

TEST_F(KitDialogDriver, SaysThatNoneAppeared)
{
    m_dialogs.click(QMessageBox::Ok).cancel();
    EXPECT_THAT(m_dialogs.problems(), ElementsAre("2 dialog(s) that were to be answered did not appear"));
    EXPECT_THAT(m_dialogs.shown(), IsEmpty());
}

TEST_F(KitDialogDriver, ClosesADialogThatNobodyExpected)
{
    EXPECT_NE(ask("Surprise"), QMessageBox::Yes);
    EXPECT_THAT(m_dialogs.problems(), ElementsAre("unexpected dialog \"Surprise\": Really?"));
    EXPECT_EQ(m_dialogs.shown().size(), 1U);
}

TEST_F(KitDialogDriver, ClosesADialogThatTheAnswerDoesNotFit)
{
    m_dialogs.click(QMessageBox::Abort).choose_file("/x").enter("x").click(QMessageBox::Ok);
    ask("Box");
    ask("No files");
    ask("No texts");
    QInputDialog::getText(nullptr, "No box", "?");
    EXPECT_THAT(m_dialogs.problems(),
        ElementsAre("the dialog \"Box\" has no button " + std::to_string(QMessageBox::Abort),
            "the dialog \"No files\" asks for no file", "the dialog \"No texts\" asks for no text",
            "the dialog \"No box\" has no button " + std::to_string(QMessageBox::Ok)));
}

TEST_F(KitDialogDriver, ClosesADialogThatItsAnswerLeavesOpen)
{
    m_dialogs.answer([](QDialog&) {});
    QDialog dialog;
    dialog.setWindowTitle("Stuck");
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_THAT(m_dialogs.problems(), ElementsAre("the dialog \"Stuck\" did not close"));
}
