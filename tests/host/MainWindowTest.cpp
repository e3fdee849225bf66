#include "windows/MainWindow.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterReader.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentBox.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QMimeData>
#include <QtGui/QDragEnterEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QListWidget>

#include <gtest/gtest.h>

#include <filesystem>

namespace housekeeping = tarqa::housekeeping;
using namespace host_test;
using housekeeping::DocumentManager;
using support::DialogDriver;
using terrain::Deed;
using terrain::MainWindow;

namespace {

class MainWindowTest : public WindowTest
{
protected:
    /// Whether the window accepts the data; drops it then.
    bool drop(const QMimeData& data)
    {
        QDragEnterEvent enter({100, 100}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
        return true;
    }
};

} // namespace

TEST_F(MainWindowTest, BeginsWithoutADocument)
{
    EXPECT_EQ(window->windowTitle(), "Tarq Terrain");
    EXPECT_EQ(window->view(), nullptr);
    EXPECT_EQ(window->reading(), "");
    EXPECT_FALSE(window->document_box().isEnabled());
    for (const terrain::KeyBinding& binding : terrain::key_bindings()) {
        EXPECT_EQ(window->action(binding.deed).isEnabled(), binding.scope == terrain::Scope::Program)
            << binding.description.toStdString();
    }
}

TEST_F(MainWindowTest, OpensARaster)
{
    const QString file = terrain_file("hills.tif");
    EXPECT_TRUE(window->open(file));
    EXPECT_TRUE(log.take("Opened \"" + file.toStdString() + "\""));
    ASSERT_EQ(documents(), 1);
    ASSERT_NE(window->view(), nullptr);
    EXPECT_EQ(window->view()->document(), current().id());
    EXPECT_EQ(window->windowTitle(), file + "[*] - Tarq Terrain");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(window->document_box().currentText(), "hills");
    EXPECT_EQ(window->quick_help().sheet().title(), "hills");
    EXPECT_TRUE(window->action(Deed::Export).isEnabled());
}

TEST_F(MainWindowTest, AFileThatCannotBeOpenedIsShownInABoxAndTheRestOpens)
{
    const std::string missing = scratch("missing.tif");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    window->open(QStringList{QString::fromStdString(missing), terrain_file("a.tif")});
    EXPECT_EQ(dialogs.shown().at(0).title, "Open");
    EXPECT_EQ(dialogs.shown().at(0).parent, window.get());
    EXPECT_EQ(dialogs.shown().at(0).text.trimmed().toStdString(),
        "Cannot read \"" + missing + "\": there is no such file");
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(window->document_box().currentText(), "a");
    log.take_all();
}

TEST_F(MainWindowTest, ARefusedFileLeavesTheCurrentDocumentInSight)
{
    window->open(terrain_file("a.tif"));
    write_text(scratch("rubbish.tif"), "rubbish");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->open(QString::fromStdString(scratch("rubbish.tif"))));
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(window->document_box().currentText(), "a");
    EXPECT_NE(window->view(), nullptr);
    log.take_all();
}

TEST_F(MainWindowTest, EachDocumentKeepsItsMap)
{
    window->open(terrain_file("a.tif"));
    window->view()->zoom_in();
    const double scale = window->view()->scale();
    const housekeeping::DocumentId first = current().id();
    window->open(terrain_file("b.tif"));
    EXPECT_NE(window->view()->scale(), scale);
    EXPECT_EQ(window->document_box().count(), 2);
    EXPECT_EQ(window->document_box().currentText(), "b");

    DocumentManager::instance().current_document(first);
    EXPECT_EQ(window->document_box().currentText(), "a");
    EXPECT_EQ(window->view()->scale(), scale);
    EXPECT_EQ(window->quick_help().sheet().title(), "a");
    EXPECT_TRUE(window->windowTitle().contains("a.tif"));
    log.take_all();
}

TEST_F(MainWindowTest, TheBoxAndTheKeysGoFromDocumentToDocument)
{
    window->open({terrain_file("a.tif"), terrain_file("b.tif"), terrain_file("c.tif")});
    log.take_all();
    QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(current().short_title(), "a") << "after the last one comes the first one";
    QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(current().short_title(), "b");
    QTest::keyClick(window.get(), Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(window.get(), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(current().short_title(), "c");
    QTest::keyClick(&window->document_box(), Qt::Key_Home);
    EXPECT_EQ(current().short_title(), "a");
}

TEST_F(MainWindowTest, DocumentsOfTheSameNameAreListedWithTheirTitles)
{
    make_directory("one");
    make_directory("two");
    const QString one = terrain_file("one/a.tif");
    const QString two = terrain_file("two/a.tif");
    window->open({one, two, terrain_file("b.tif")});
    log.take_all();
    EXPECT_EQ(window->document_box().itemText(0), one);
    EXPECT_EQ(window->document_box().itemText(1), two);
    EXPECT_EQ(window->document_box().itemText(2), "b");
}

TEST_F(MainWindowTest, ClosingADocumentShowsTheNextOne)
{
    window->open({terrain_file("a.tif"), terrain_file("b.tif")});
    log.take_all();
    window->action(Deed::Close).trigger();
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(window->document_box().count(), 1);
    EXPECT_EQ(window->document_box().currentText(), "a");
    ASSERT_NE(window->view(), nullptr);
    EXPECT_EQ(window->view()->document(), current().id());
    EXPECT_EQ(window->quick_help().sheet().title(), "a");
}

TEST_F(MainWindowTest, ClosingTheLastDocumentShowsTheStartPage)
{
    window->open(terrain_file("a.tif"));
    log.take_all();
    terrain::move_pointer(*window->view(), window->view()->rect().center());
    EXPECT_NE(window->reading(), "");
    window->action(Deed::Close).trigger();
    EXPECT_EQ(documents(), 0);
    EXPECT_EQ(window->view(), nullptr);
    EXPECT_EQ(window->reading(), "");
    EXPECT_EQ(window->windowTitle(), "Tarq Terrain");
    EXPECT_FALSE(window->action(Deed::Close).isEnabled());
    EXPECT_EQ(window->quick_help().sheet().title(), "Tarq Terrain");
    window->close_document(); // nothing happens
}

TEST_F(MainWindowTest, ABusyDocumentIsNeitherClosedNorExported)
{
    window->open(terrain_file("a.tif"));
    log.take_all();
    const housekeeping::DocumentId id = current().id();
    DocumentManager::instance().document_busy(id, true);
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Ok).click(QMessageBox::Ok);
    window->action(Deed::Close).trigger();
    window->action(Deed::Export).trigger();
    EXPECT_FALSE(window->close());
    ASSERT_EQ(dialogs.shown().size(), 3u);
    EXPECT_TRUE(dialogs.shown()[0].text.contains("a.tif\" is busy"));
    EXPECT_EQ(documents(), 1);
    EXPECT_TRUE(window->isVisible());
    log.take_all();

    DocumentManager::instance().document_busy(id, false);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(documents(), 0);
}

TEST_F(MainWindowTest, QuittingClosesAllDocuments)
{
    window->open({terrain_file("a.tif"), terrain_file("b.tif")});
    log.take_all();
    window->action(Deed::Quit).trigger();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(documents(), 0);
}

TEST_F(MainWindowTest, DroppedFilesAreOpened)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(terrain_file("a.tif")), QUrl("http://nowhere.example/x.tif"),
        QUrl::fromLocalFile(terrain_file("b c.tif"))});
    EXPECT_TRUE(drop(data));
    EXPECT_EQ(documents(), 2);
    EXPECT_EQ(window->document_box().currentText(), "b c");
    log.take_all();
}

TEST_F(MainWindowTest, DroppedFilesAreAnnouncedAndAskedForByMessage)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId id = current().id();
    support::FilesInsertMessageSpy spy;
    std::vector<housekeeping::gui::UrlList> dropped;
    QObject::connect(window.get(), &MainWindow::dropped,
        [&dropped](const housekeeping::gui::UrlList& urls) { dropped.push_back(urls); });
    QMimeData data;
    const QString file = terrain_file("b c.tif");
    data.setUrls({QUrl::fromLocalFile(file)});
    EXPECT_TRUE(drop(data));
    ASSERT_EQ(dropped.size(), 1u);
    ASSERT_EQ(dropped[0].size(), 1u);
    EXPECT_EQ(dropped[0][0], QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded).toStdString());
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received()[0].files, std::vector<std::string>{file.toStdString()});
    EXPECT_EQ(spy.received()[0].document_id, id.getId());
    log.take_all();
}

TEST_F(MainWindowTest, OpensWhatAMessageAsksFor)
{
    auto* const p_message = housekeeping::FilesInsertMessage::instance();
    p_message->files({make_terrain_file("a.tif"), make_terrain_file("b.tif")});
    housekeeping::Message::dispatch(p_message);
    EXPECT_EQ(documents(), 2);
    log.take_all();
}

TEST_F(MainWindowTest, OtherThingsCannotBeDropped)
{
    QMimeData data;
    data.setText("no file");
    EXPECT_FALSE(drop(data));
    data.setUrls({QUrl("http://nowhere.example/x.tif")});
    EXPECT_FALSE(drop(data));
    EXPECT_EQ(documents(), 0);
}

TEST_F(MainWindowTest, AsksForFilesToOpen)
{
    const QString file = terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.choose_file(file).cancel();
    window->action(Deed::Open).trigger();
    EXPECT_FALSE(dialogs.shown().at(0).saves);
    EXPECT_EQ(documents(), 1);
    window->action(Deed::Open).trigger();
    EXPECT_EQ(documents(), 1);
    log.take_all();
}

TEST_F(MainWindowTest, ExportsTheCurrentRaster)
{
    window->open(terrain_file("a.tif"));
    DialogDriver dialogs;
    dialogs.choose_file(QString::fromStdString(scratch("out"))); // without a suffix
    window->action(Deed::Export).trigger();
    EXPECT_TRUE(dialogs.shown().at(0).saves);
    EXPECT_TRUE(log.take("Exported \"" + scratch("out.tif") + "\""));
    EXPECT_EQ(terrain::read_raster(scratch("out.tif")).columns, 20);
    log.take_all();
}

TEST_F(MainWindowTest, AnExportThatFailsIsShownInABox)
{
    window->open(terrain_file("a.tif"));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Ok);
    EXPECT_FALSE(window->write_export(QString::fromStdString(scratch("out.png"))));
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("must end in one of \".tif\" (GeoTIFF)"));
    EXPECT_FALSE(window->write_export(QString::fromStdString(scratch("nowhere/out.tif"))));
    EXPECT_EQ(dialogs.shown().at(1).title, "Export");
    EXPECT_FALSE(std::filesystem::exists(scratch("out.png")));
    log.take_all();
}

TEST_F(MainWindowTest, TheStatusBarTellsWhatIsUnderThePointer)
{
    window->open(terrain_file("a.tif"));
    log.take_all();
    terrain::TerrainView& view = *window->view();
    const QPoint point = view.widget_position({4.5, 3.5}).toPoint();
    terrain::move_pointer(view, point);
    EXPECT_EQ(window->reading(), view.reading_text(point));
    EXPECT_TRUE(window->reading().startsWith("316 metres   at "));
}

TEST_F(MainWindowTest, KeysZoomAndMoveTheMap)
{
    window->open(terrain_file("a.tif"));
    log.take_all();
    terrain::TerrainView& view = *window->view();
    const double scale = view.scale();
    QTest::keyClick(&view, Qt::Key_Plus);
    EXPECT_GT(view.scale(), scale);
    QTest::keyClick(&view, Qt::Key_Minus);
    QTest::keyClick(&view, Qt::Key_Minus);
    EXPECT_LT(view.scale(), scale);
    QTest::keyClick(&view, Qt::Key_0);
    EXPECT_EQ(view.scale(), scale);
    const QPointF place = view.map_position({50, 50});
    QTest::keyClick(&view, Qt::Key_Left);
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_LT(view.map_position({50, 50}).x(), place.x());
    EXPECT_GT(view.map_position({50, 50}).y(), place.y());
}

TEST_F(MainWindowTest, ASecondWindowShowsTheDocumentsThatAreOpen)
{
    window->open({terrain_file("a.tif"), terrain_file("b.tif")});
    log.take_all();
    const MainWindow second;
    EXPECT_TRUE(
        log.took_assert("m_instance == 0", "AbstractMainWindow", "housekeeping/gui/src/AbstractMainWindow"))
        << "the base expects one window in a program";
    EXPECT_EQ(second.document_box().count(), 2);
    EXPECT_EQ(second.home().documents().count(), 2);
    ASSERT_NE(second.view(), nullptr);
    EXPECT_EQ(second.view()->document(), current().id());
}
