#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

// The programs of the guides. A driver is linked into them, which uses their window and closes it.

namespace {

/// A run of a program, which is to end in order.
struct GuideRun
{
    explicit GuideRun(const QString& name)
    {
        const QTemporaryDir home;
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", home.path()); // else its log would be among those of this process
        environment.insert("XDG_CONFIG_HOME", home.path());
        program.setProcessEnvironment(environment);
        program.start(QString(HK_GUIDE_PROGRAMS) + '/' + name, QStringList());
        EXPECT_TRUE(program.waitForFinished(60000)) << program.errorString().toStdString();
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        printed = program.readAllStandardOutput().toStdString();

        const QDir logs(home.path() + "/tarqa", "*.log");
        EXPECT_EQ(logs.entryList().size(), 1);
        QFile file(logs.filePath(logs.entryList().value(0)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        log = file.readAll().toStdString();
        log.erase(
            0, log.find("Background rendering")); // what the start-up says differs from machine to machine
    }

    std::string printed;
    std::string log;
};

const char* const s_empty_log = "Background rendering is ON\n"
                                "************** END OF ERROR LOG ***************\n";

} // namespace

TEST(StartUpGuide, ProgramShowsAWindowAndEnds)
{
    const GuideRun run("guide_start_up");
    EXPECT_EQ(run.printed, "a window\n");
    EXPECT_EQ(run.log, s_empty_log);
}

TEST(FirstHostGuide, FirstStepShowsAWindowAndEnds)
{
    const GuideRun run("guide_first_window");
    EXPECT_EQ(run.printed, "a window\n");
    EXPECT_EQ(run.log, s_empty_log);
}

TEST(FirstHostGuide, HostAddsUndoesAndRedoes)
{
    const GuideRun run("guide_first_host");
    EXPECT_EQ(run.printed,
        "1 in the panel, then \"Undo Add borehole: Borehole 1\"\n"
        "2 in the panel, then \"Undo Add borehole: Borehole 2\"\n"
        "1 in the panel, then \"Undo Add borehole: Borehole 1\"\n"
        "2 in the panel, then \"Undo Add borehole: Borehole 2\"\n");
    EXPECT_EQ(run.log,
        "Background rendering is ON\n"
        "DO>\tAdd borehole: Borehole 1 - Succeeded.\n"
        "DO>\tAdd borehole: Borehole 2 - Succeeded.\n"
        "UNDO>\tAdd borehole: Borehole 2 - Succeeded.\n"
        "DO>\tAdd borehole: Borehole 2 - Succeeded.\n"
        "************** END OF ERROR LOG ***************\n");
}
