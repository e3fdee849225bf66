#include "windows/ChangedFiles.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterReader.h"
#include "support/DialogDriver.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolBar>

#include <boost/make_shared.hpp>

#include <filesystem>

using namespace host_test;
using support::DialogDriver;
using terrain::Deed;
using terrain::read_raster;

namespace {

class ChangedFilesTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        open_terrain_file("a.tif");
    }

    void change() { run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2)); }

    /// Another program writes the file, at some other time.
    static void write_elsewhere(const std::string& name, double height)
    {
        make_tiff(scratch(name), 20, 15, GDT_Float32, std::vector<double>(20 * 15, height));
        static auto s_time = std::filesystem::last_write_time(scratch(name));
        s_time += std::chrono::seconds(7);
        std::filesystem::last_write_time(scratch(name), s_time);
    }
    void come_back()
    {
        QEvent event(QEvent::WindowActivate);
        QApplication::sendEvent(window.get(), &event);
    }

    QToolBar* bar() { return window->findChild<terrain::ChangedFiles*>()->bar(); }
    bool tells() { return bar() && bar()->isVisible(); }
    QString text() { return bar()->findChild<QLabel*>()->text(); }
    void click(const QString& text)
    {
        for (QPushButton* const p_button : bar()->findChildren<QPushButton*>()) {
            if (p_button->text() == text) {
                p_button->click();
                return;
            }
        }
        ADD_FAILURE() << "there is no button " << text.toStdString();
    }
};

} // namespace

TEST_F(ChangedFilesTest, AFileThatStaysAsItIsIsNotSpokenOf)
{
    come_back();
    change();
    come_back();
    EXPECT_FALSE(tells());
}

TEST_F(ChangedFilesTest, AChangedFileIsToldWhenTheWindowBecomesActive)
{
    write_elsewhere("a.tif", 7);
    EXPECT_FALSE(tells());
    come_back();
    ASSERT_TRUE(tells());
    EXPECT_EQ(text().toStdString(), "\"" + scratch("a.tif") + "\" has changed on disk.");
    change();
    come_back();
    EXPECT_TRUE(text().endsWith("Reloading loses your changes."));
    log.take_all();
}

TEST_F(ChangedFilesTest, AFileOfTheSameTimeAndAnotherSizeIsAChangedOne)
{
    const auto time = std::filesystem::last_write_time(scratch("a.tif"));
    make_tiff(scratch("a.tif"), 30, 30, GDT_Float32, {});
    std::filesystem::last_write_time(scratch("a.tif"), time);
    come_back();
    EXPECT_TRUE(tells());
}

TEST_F(ChangedFilesTest, ReloadShowsTheFile)
{
    change();
    write_elsewhere("a.tif", 7);
    come_back();
    click("Reload");
    EXPECT_FALSE(tells());
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(current().title(), scratch("a.tif"));
    EXPECT_EQ(current().terrain().raster().cell(0, 0), 7);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(current().document_history().undoSize(), 0u);
    log.take_all();
}

TEST_F(ChangedFilesTest, AFileThatCannotBeReloadedCostsNothing)
{
    change();
    const auto cells = bits(current());
    write_text(scratch("a.tif"), "rubbish");
    come_back();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    click("Reload");
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(bits(current()), cells);
    EXPECT_TRUE(window->isWindowModified());
    log.take_all();
}

TEST_F(ChangedFilesTest, KeepMineIsSilentUntilTheFileChangesAgain)
{
    write_elsewhere("a.tif", 7);
    come_back();
    click("Keep Mine");
    EXPECT_FALSE(tells());
    come_back();
    EXPECT_FALSE(tells());
    write_elsewhere("a.tif", 8);
    come_back();
    EXPECT_TRUE(tells());
}

TEST_F(ChangedFilesTest, OneDocumentAfterTheOtherIsTold)
{
    open_terrain_file("b.tif");
    write_elsewhere("a.tif", 7);
    write_elsewhere("b.tif", 7);
    come_back();
    EXPECT_TRUE(text().contains("a.tif"));
    click("Keep Mine");
    EXPECT_TRUE(tells());
    EXPECT_TRUE(text().contains("b.tif"));
    window->close_document(); // which is b
    EXPECT_FALSE(tells());
    EXPECT_EQ(documents(), 1);
}

TEST_F(ChangedFilesTest, SavingOverAChangedFileAsks)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).click(QMessageBox::Cancel).click(QMessageBox::Yes);
    window->action(Deed::Save).trigger();
    change();
    write_elsewhere("a.tif", 7);
    window->action(Deed::Save).trigger();
    EXPECT_TRUE(dialogs.shown().at(1).text.contains("has changed on disk since it was read"));
    EXPECT_EQ(read_raster(scratch("a.tif")).cell(0, 0), 7);
    EXPECT_TRUE(window->isWindowModified());
    window->action(Deed::Save).trigger();
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits(current()));
    come_back();
    EXPECT_FALSE(tells()) << "it is ours now";
    log.take_all();
}

TEST_F(ChangedFilesTest, KeepMineDoesNotMeanOverwriteTheirs)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).click(QMessageBox::Cancel);
    window->action(Deed::Save).trigger();
    change();
    write_elsewhere("a.tif", 7);
    come_back();
    click("Keep Mine");
    window->action(Deed::Save).trigger();
    EXPECT_TRUE(dialogs.shown().at(1).text.contains("has changed on disk"));
    EXPECT_EQ(read_raster(scratch("a.tif")).cell(0, 0), 7);
    log.take_all();
}

TEST_F(ChangedFilesTest, AFileThatIsGoneIsToldOnSaveOnly)
{
    change();
    std::filesystem::remove(scratch("a.tif"));
    come_back();
    EXPECT_FALSE(tells());
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes);
    window->action(Deed::Save).trigger();
    EXPECT_TRUE(dialogs.shown().at(0).text.endsWith("is gone. Write it again?"));
    EXPECT_TRUE(std::filesystem::exists(scratch("a.tif")));
    come_back();
    EXPECT_FALSE(tells());
    log.take_all();
}

TEST_F(ChangedFilesTest, WhatTheProgramItselfWritesIsNoChange)
{
    change();
    EXPECT_TRUE(window->write_export(QString::fromStdString(scratch("a.tif"))));
    come_back();
    EXPECT_FALSE(tells());
    log.take_all();
}
