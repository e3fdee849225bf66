#include "PreferencesFixture.h"
#include "RasterFiles.h"
#include "preferences/ProgramChooser.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

using namespace host_test;
using support::DialogDriver;
using terrain::ProgramChooser;

namespace {

const char* const s_key = "pathToFFmpegExecutable";
const char* const s_path = "animation_tool/pathToFFmpegExecutable";

/// The page with the path of the FFmpeg program.
class PreferencesProgram : public PreferencesTest
{
protected:
    void start_with_page()
    {
        start();
        page = make_page("AnimationPreferences");
        page->show();
    }

    /// A file that may be run, or may not.
    static QString file(const std::string& name, bool is_program)
    {
        const QString path = QString::fromStdString(scratch(name));
        write_text(path.toStdString(), "#!/bin/sh\n");
        const QFile::Permissions readable = QFile::ReadOwner | QFile::WriteOwner;
        EXPECT_TRUE(QFile::setPermissions(path, is_program ? readable | QFile::ExeOwner : readable));
        return path;
    }

    ProgramChooser& chooser() const { return dynamic_cast<ProgramChooser&>(*widget_of(*page, s_key)); }
    QLineEdit& edit() const { return *chooser().findChild<QLineEdit*>(); }
    QPushButton& browse() const { return *chooser().findChild<QPushButton*>("browse"); }

    void expect_refused(const QString& path, const QString& complaint)
    {
        edit().setText(path);
        page->accept();
        EXPECT_EQ(chooser().complaint(), complaint);
        EXPECT_EQ(edit().text(), path) << "nothing is lost";
        EXPECT_EQ(edit().accessibleDescription(), complaint);
    }

    std::unique_ptr<housekeeping::gui::AbstractPreferences> page;
};

} // namespace

TEST_F(PreferencesProgram, OfWhichThereIsNoneIsRefusedBesideTheField)
{
    store(s_path, "/bin/sh");
    start_with_page();
    const support::ApplicationMessageSpy spy;
    expect_refused(QString::fromStdString(scratch("no-such-program")), "There is no such file.");
    expect_refused(file("text", false), "This file is no program that you may run.");
    expect_refused(QString::fromStdString(make_directory("folder")), "This is a folder, not a program.");
    expect_refused("sh", "Give the whole path, from the root folder on.");
    EXPECT_EQ(manager().linkToFFMPEG(), "/bin/sh");
    EXPECT_EQ(stored(s_path), "/bin/sh");
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(PreferencesProgram, IsTakenOnceThePathIsRight)
{
    start_with_page();
    expect_refused("/no/such/program", "There is no such file.");
    const QString program = file("program", true);
    edit().setText("  " + program + ' ');
    page->accept();
    EXPECT_EQ(chooser().complaint(), "");
    EXPECT_EQ(manager().linkToFFMPEG(), program);
}

TEST_F(PreferencesProgram, MayBeNone)
{
    store(s_path, "/bin/sh");
    start_with_page();
    edit().clear();
    page->accept();
    EXPECT_EQ(chooser().complaint(), "");
    EXPECT_EQ(manager().linkToFFMPEG(), "");
    EXPECT_EQ(stored_paths(), std::vector<std::string>{s_path});
    EXPECT_EQ(stored(s_path), "");
}

TEST_F(PreferencesProgram, ThatHasGoneSinceIsToldAndKept)
{
    store(s_path, "/no/such/program");
    start_with_page();
    EXPECT_EQ(chooser().path(), "/no/such/program");
    EXPECT_EQ(chooser().complaint(), "There is no such file.");
    page->accept();
    EXPECT_EQ(manager().linkToFFMPEG(), "/no/such/program");
}

TEST_F(PreferencesProgram, IsLookedAtWhenTheFieldIsLeftAndNotWhileItIsTyped)
{
    start_with_page();
    QTest::keyClicks(&edit(), "/no/such");
    EXPECT_EQ(chooser().complaint(), "");
    QTest::keyClick(&edit(), Qt::Key_Return);
    EXPECT_EQ(chooser().complaint(), "There is no such file.");
    QTest::keyClicks(&edit(), "/program");
    EXPECT_EQ(chooser().complaint(), "");
}

TEST_F(PreferencesProgram, ComplaintIsShownWithASignOnlyWhileThereIsOne)
{
    start_with_page();
    const auto visible_labels = [this] {
        int count = 0;
        for (const QLabel* p_label : chooser().findChildren<QLabel*>()) {
            count += p_label->isVisible();
        }
        return count;
    };
    EXPECT_EQ(visible_labels(), 0);
    expect_refused("/no/such/program", "There is no such file.");
    EXPECT_EQ(visible_labels(), 2);
    edit().clear();
    page->accept();
    EXPECT_EQ(visible_labels(), 0);
}

TEST_F(PreferencesProgram, IsChosenInADialogThatBeginsAtThePresentOne)
{
    const QString program = file("program", true);
    store(s_path, program);
    start_with_page();
    DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) {
        dynamic_cast<QFileDialog&>(dialog).selectFile("/bin/sh");
        dialog.accept();
    });
    browse().click();
    ASSERT_TRUE(support::wait_until([this] { return chooser().path() == "/bin/sh"; }));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].title, "FFmpeg program");
    EXPECT_EQ(dialogs.shown()[0].file, "program");
    EXPECT_FALSE(dialogs.shown()[0].saves);
    EXPECT_EQ(manager().linkToFFMPEG(), program) << "not before it is applied";
    page->accept();
    EXPECT_EQ(manager().linkToFFMPEG(), "/bin/sh");
}

TEST_F(PreferencesProgram, StaysWhenTheDialogIsCancelled)
{
    store(s_path, "/bin/sh");
    start_with_page();
    DialogDriver dialogs;
    dialogs.cancel();
    browse().click();
    ASSERT_TRUE(support::wait_until([&dialogs] { return dialogs.shown().size() == 1; }));
    ASSERT_TRUE(support::wait_until([this] { return !chooser().findChild<QDialog*>(); }));
    EXPECT_EQ(chooser().path(), "/bin/sh");
}

TEST_F(PreferencesProgram, PageMayGoWhileItsDialogIsOpen)
{
    start_with_page();
    browse().click();
    const QPointer<QDialog> dialog(chooser().findChild<QDialog*>());
    ASSERT_TRUE(dialog);
    page.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(dialog);
}
