#include "windows/FileWork.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/BrushCommand.h"
#include "commands/CommandQueue.h"
#include "commands/CommandRunner.h"
#include "commands/ScaleCommand.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "tour/Gate.h"
#include "windows/ChangedFiles.h"
#include "windows/DocumentFiles.h"
#include "windows/DocumentViews.h"
#include "windows/FileProgressBar.h"
#include "windows/MapTools.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>

using namespace host_test;
using support::DialogDriver;
using terrain::Deed;
using testing::ElementsAre;

namespace {

class FileWorkTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        work().report_also_to(&gate);
    }
    void TearDown() override
    {
        gate.open();
        stroke_gate.open();
        runner().abandon();
        runner().report_also_to(nullptr);
        WindowTest::TearDown();
    }

    terrain::FileWork& work() { return *window->findChild<terrain::FileWork*>(); }
    terrain::FileProgressBar& bar() { return work().bar(); }

    /// Holds the next file up half-way, and does @p action meanwhile.
    void meanwhile(const std::function<void()>& action)
    {
        gate.close();
        auto* const p_timer = new QTimer(window.get());
        QObject::connect(p_timer, &QTimer::timeout, window.get(), [this, p_timer, action] {
            if (gate.holds() && bar().bar().value() > 0) {
                p_timer->deleteLater();
                p_timer->stop();
                action();
                gate.open();
            }
        });
        p_timer->start(5);
    }

    /// A raster of so many rows that reading it reports often.
    static QString tall_file(const std::string& name)
    {
        make_tiff(scratch(name), 4, 2000, GDT_Float32, {});
        return QString::fromStdString(scratch(name));
    }

    terrain::CommandQueue& queue() { return window->views().tools().queue(); }
    void draw_stroke()
    {
        queue().add(boost::make_shared<terrain::BrushCommand>(current().id(),
            terrain::Brush{terrain::Brush::Direction::Raise, 2, 5},
            terrain::BrushCommand::Path{{1, 1}, {2, 2}, {3, 3}}));
    }
    /// A stroke of one document is held up, one of the current document waits for it.
    void begin_stroke_and_let_one_wait()
    {
        open_terrain_file("small.tif");
        runner().report_also_to(&stroke_gate);
        stroke_gate.close();
        draw_stroke();
        ASSERT_TRUE(support::wait_until([this] { return stroke_gate.holds(); }));
        ASSERT_TRUE(window->open(tall_file("a.tif")));
        draw_stroke();
        ASSERT_EQ(queue().waiting(), 1u);
    }
    /// @return whether the one that waits goes on waiting when the other one has ended
    bool let_stroke_end_and_look()
    {
        stroke_gate.open();
        EXPECT_TRUE(support::wait_until([] { return !runner().is_running(); }));
        QCoreApplication::sendPostedEvents();
        return queue().waiting() == 1 && !runner().is_running();
    }

    terrain::Gate gate{40};
    terrain::Gate stroke_gate{40};
};

} // namespace

TEST_F(FileWorkTest, ReadingShowsItsProgressInTheStatusBar)
{
    const QString file = tall_file("a.tif");
    bool was_shown = false;
    int percentage = 0;
    meanwhile([&] {
        was_shown = bar().isVisible() && bar().cancel_button().isEnabled() && work().is_running();
        percentage = bar().bar().value();
    });
    EXPECT_TRUE(window->open(file));
    EXPECT_TRUE(was_shown);
    EXPECT_GE(percentage, 40);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_FALSE(work().is_running());
    EXPECT_EQ(documents(), 1);
    log.take_all();
}

TEST_F(FileWorkTest, ACancelledFileLeavesNothingBehind)
{
    const QString file = tall_file("a.tif");
    meanwhile([&] { QTest::mouseClick(&bar().cancel_button(), Qt::LeftButton); });
    EXPECT_FALSE(window->open(file));
    EXPECT_EQ(documents(), 0);
    EXPECT_EQ(window->statusBar()->currentMessage(), "Open: cancelled");
    EXPECT_TRUE(log.lines().empty()) << "nobody failed";
    EXPECT_TRUE(window->open(file)) << "and another time it is read";
    log.take_all();
}

TEST_F(FileWorkTest, CancellingEndsTheWholeList)
{
    const QStringList files{tall_file("a.tif"), tall_file("b.tif"), tall_file("c.tif")};
    meanwhile([&] { QTest::keyClick(window.get(), Qt::Key_Escape); });
    window->open(files);
    EXPECT_EQ(documents(), 0);
}

TEST_F(FileWorkTest, OtherInputDoesNotReachTheWindow)
{
    open_terrain_file("small.tif");
    const QString file = tall_file("a.tif");
    meanwhile([&] {
        QTest::keyClick(window.get(), Qt::Key_W, Qt::ControlModifier);
        QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    });
    EXPECT_TRUE(window->open(file));
    EXPECT_EQ(documents(), 2);
    EXPECT_TRUE(window->isVisible());
    log.take_all();
}

TEST_F(FileWorkTest, ClosingTheWindowCancelsAndLeavesItOpen)
{
    const QString file = tall_file("a.tif");
    meanwhile([&] { EXPECT_FALSE(window->close()); });
    EXPECT_FALSE(window->open(file));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->close()) << "the second time";
}

TEST_F(FileWorkTest, FilesThatAreAskedForMeanwhileAreOpenedNext)
{
    const QString first = tall_file("a.tif");
    const std::string second = make_terrain_file("b.tif");
    meanwhile([&] {
        auto* const p_message = housekeeping::FilesInsertMessage::instance();
        p_message->files({second});
        housekeeping::Message::dispatch(p_message);
        EXPECT_EQ(documents(), 0);
    });
    EXPECT_TRUE(window->open(first));
    EXPECT_EQ(documents(), 2);
    EXPECT_EQ(current().title(), second);
    log.take_all();
}

TEST_F(FileWorkTest, ACancelledExportKeepsTheOldFileAndTheChanges)
{
    ASSERT_TRUE(window->open(tall_file("a.tif")));
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    const std::string directory = make_directory("out");
    write_text(directory + "/out.tif", "the old file");
    bool was_busy = false;
    meanwhile([&] {
        was_busy = current().is_busy();
        bar().cancel();
    });
    EXPECT_FALSE(window->write_export(QString::fromStdString(directory + "/out.tif")));
    EXPECT_TRUE(was_busy) << "nobody may change what is being written";
    EXPECT_FALSE(current().is_busy());
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(read_text(directory + "/out.tif"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("out.tif"));
    log.take_all();
}

TEST_F(FileWorkTest, AStrokeThatWaitsDoesNotBeginInWhatIsBeingWritten)
{
    begin_stroke_and_let_one_wait();
    bool did_wait = false;
    meanwhile([&] { did_wait = let_stroke_end_and_look(); });
    const std::string sum = terrain::checksum(current().terrain().raster());
    EXPECT_TRUE(window->write_export(QString::fromStdString(make_directory("out") + "/out.tif")));
    EXPECT_TRUE(did_wait);
    EXPECT_TRUE(support::wait_until([this] { return queue().waiting() == 0 && !runner().is_running(); }));
    EXPECT_NE(terrain::checksum(current().terrain().raster()), sum) << "its turn has come";
    EXPECT_TRUE(current().is_modified()) << "the file is without it";
    log.take_all();
}

TEST_F(FileWorkTest, AStrokeThatWaitsDoesNotBeginInADocumentThatIsReadAgain)
{
    begin_stroke_and_let_one_wait();
    const housekeeping::DocumentId old = current().id();
    bool did_wait = false;
    meanwhile([&] { did_wait = let_stroke_end_and_look(); });
    emit window->findChild<terrain::ChangedFiles*>()->reload_asked(old);
    EXPECT_TRUE(did_wait);
    EXPECT_EQ(queue().waiting(), 0u);
    EXPECT_EQ(documents(), 2);
    EXPECT_FALSE(housekeeping::DocumentManager::instance().document_exists(old));
    EXPECT_FALSE(current().is_modified());
    log.take_all();
}

TEST_F(FileWorkTest, AFailureInTheOtherThreadIsShownInABox)
{
    const QString file = tall_file("a.tif");
    cut_file(file.toStdString(), 20000);
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->open(file));
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("broken or cut short"));
    EXPECT_EQ(documents(), 0);
    log.take_all();
}

TEST_F(FileWorkTest, WorkEndsWithTheProgramsLoop)
{
    const QString file = tall_file("a.tif");
    gate.close();
    QTimer::singleShot(0, window.get(), [this] {
        QCoreApplication::quit();
        gate.open();
    });
    window->open(file);
    EXPECT_FALSE(work().is_running());
    log.take_all();
}
