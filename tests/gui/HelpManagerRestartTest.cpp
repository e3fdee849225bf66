#include "HelpFixture.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <pthread.h>

// Closing the program and starting it again. The program that is started is a script in the directory of the
// test, which writes down its arguments.

using namespace help_test;
using support::PrivateHome;
using tarqa::housekeeping::ApplicationManager;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Journals what it is asked, and by which event loop.
class Window : public AbstractMainWindow
{
public:
    bool may_close() override
    {
        journal().add("may_close");
        return agrees;
    }
    void closeEvent(QCloseEvent* p_event) override
    {
        journal().add("close");
        p_event->setAccepted(closes);
    }

    bool agrees = true;
    bool closes = true;
};

const QEventLoop* s_p_loop = nullptr; // that runs

/// Called in this process before it makes another one.
void journal_start()
{
    journal().add(s_p_loop && s_p_loop->isRunning() ? "start, loop running" : "start, loop told to end");
}

/// A program that is a script.
class RestartedScript : public testing::Test
{
protected:
    RestartedScript()
    {
        pkBase::pkProductInfo::instance().product_name(s_product);
        register_launcher();
        write_script();
        pthread_atfork(&journal_start, nullptr, nullptr);
    }

    /// Restarts from the event loop. @return whether the loop was told to end
    static bool restart()
    {
        QEventLoop loop;
        s_p_loop = &loop;
        bool told_to_end = false;
        QTimer::singleShot(0, [&loop, &told_to_end] {
            EXPECT_TRUE(QMetaObject::invokeMethod(&HelpManager::instance(), "restart"));
            journal().add("returned");
            told_to_end = !loop.isRunning();
            loop.quit();
        });
        loop.exec();
        s_p_loop = nullptr;
        return told_to_end;
    }

    static std::string file() { return PrivateHome::scratch_directory() + "/arguments"; }

    /// What the script was called with, its own path first; waits for it.
    static Lines second_process()
    {
        QFile arguments(QString::fromStdString(file()));
        EXPECT_TRUE(support::wait_until([&arguments] { return arguments.exists(); }));
        EXPECT_TRUE(arguments.open(QIODevice::ReadOnly));
        Lines lines;
        for (const QByteArray& line : arguments.readAll().split('\n')) {
            lines.push_back(line.toStdString());
        }
        lines.pop_back(); // after the last line end
        return lines;
    }

    /// For tests in which nothing is started: the journal would say so.
    static Lines calls() { return journal().entries(); }

    std::string script = PrivateHome::scratch_directory() + "/a program";

private:
    void write_script() const
    {
        QFile program(QString::fromStdString(script));
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        const std::string draft = file() + ".part";
        program.write(("#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" > '" + draft + "'\nmv '" + draft + "' '"
            + file() + "'\n")
                          .c_str());
        ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

/// A program with a command line whose first word is the script.
class HelpManagerRestart : public RestartedScript
{
protected:
    HelpManagerRestart()
    {
        for (std::string& word : m_words) {
            m_pointers.push_back(word.data());
        }
        m_pointers.push_back(nullptr);
        m_count = static_cast<int>(m_words.size());
        m_p_arguments = m_pointers.data();
        {
            support::LogCapture log;
            ApplicationManager::instance().init(m_count, m_p_arguments, "test", true);
            support::take_start_up_lines(log);
        }
        QGuiApplication::setQuitOnLastWindowClosed(false); // only quitting ends a loop
        HelpManager::instance();
    }
    ~HelpManagerRestart() override { pkBase::pkDestructor::run(); }

private:
    std::vector<std::string> m_words
        = {script, "-platform", "offscreen", "an argument", "--option=\"quoted\"", u8"Störung.dat", ""};
    std::vector<char*> m_pointers; // into m_words
    int m_count = 0;
    char** m_p_arguments = nullptr;
};

/// A program that makes its application object itself.
class HelpManagerRestartOfAPlainHost : public RestartedScript
{
protected:
    ~HelpManagerRestartOfAPlainHost() override { TestAccess::destroy<HelpManager>(); }

    support::App app{script};
};

} // namespace

TEST_F(HelpManagerRestart, AsksClosesQuitsAndStartsInThisOrder)
{
    Window window;
    EXPECT_TRUE(restart());
    EXPECT_THAT(calls(), ElementsAre("may_close", "close", "start, loop told to end", "returned"));
    second_process();
}

TEST_F(HelpManagerRestart, ProgramGetsItsArgumentsAgain)
{
    const Window window;
    EXPECT_TRUE(restart());
    // Qt's own options too; the name of the program is none of them.
    EXPECT_THAT(second_process(),
        ElementsAre(
            script, "-platform", "offscreen", "an argument", "--option=\"quoted\"", u8"Störung.dat", ""));
}

TEST_F(HelpManagerRestart, MainLoopEnds)
{
    const Window window;
    QTimer::singleShot(0, [] { QMetaObject::invokeMethod(&HelpManager::instance(), "restart"); });
    QApplication::exec(); // would go on for ever
    EXPECT_EQ(1, journal().count("start"));
    second_process();
}

TEST_F(HelpManagerRestart, NothingHappensUnlessTheWindowMayClose)
{
    Window window;
    window.agrees = false;
    window.show();
    EXPECT_FALSE(restart());
    EXPECT_THAT(calls(), ElementsAre("may_close", "returned"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(HelpManagerRestart, NothingIsStartedIfTheCloseIsRefused)
{
    Window window;
    window.closes = false;
    window.show();
    EXPECT_FALSE(restart());
    EXPECT_THAT(calls(), ElementsAre("may_close", "close", "returned"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(HelpManagerRestart, MayBeTriedAgainAfterARefusal)
{
    Window window;
    window.agrees = false;
    EXPECT_FALSE(restart());
    window.agrees = true;
    window.closes = false;
    EXPECT_FALSE(restart());
    window.closes = true;
    EXPECT_TRUE(restart());
    EXPECT_EQ(3, journal().count("may_close"));
    EXPECT_EQ(2, journal().count("close"));
    EXPECT_EQ(1, journal().count("start"));
    second_process();
}

TEST_F(HelpManagerRestart, WindowIsClosed)
{
    Window window;
    window.show();
    EXPECT_TRUE(restart());
    EXPECT_FALSE(window.isVisible());
    second_process();
}

TEST_F(HelpManagerRestart, NewestWindowIsTheOneThatIsAsked)
{
    Window older;
    older.agrees = false;
    support::LogCapture log;
    const Window newest;
    EXPECT_TRUE(log.take("m_instance == 0"));
    EXPECT_TRUE(restart());
    EXPECT_EQ(1, journal().count("may_close"));
    second_process();
}

TEST_F(HelpManagerRestart, WindowThatIsGoneIsNotTouched)
{
    std::make_unique<Window>().reset();
    EXPECT_TRUE(restart()); // nobody objects
    EXPECT_THAT(calls(), ElementsAre("start, loop told to end", "returned"));
    second_process();
}

TEST_F(HelpManagerRestart, WindowMayGoWhileItIsAsked)
{
    class Vanishing : public AbstractMainWindow
    {
    public:
        bool may_close() override
        {
            delete this;
            return true;
        }
    };
    new Vanishing;
    EXPECT_TRUE(restart());
    EXPECT_THAT(calls(), ElementsAre("start, loop told to end", "returned"));
    second_process();
}

TEST_F(HelpManagerRestart, NeedsNoWindow)
{
    support::LogCapture log;
    EXPECT_TRUE(restart());
    EXPECT_TRUE(log.take("m_instance"));
    EXPECT_THAT(calls(), ElementsAre("start, loop told to end", "returned"));
    second_process();
}

TEST_F(HelpManagerRestart, ProgramThatCannotBeStartedIsLogged)
{
    const Window window;
    ASSERT_TRUE(QFile::remove(QString::fromStdString(script)));
    support::LogCapture log;
    testing::internal::CaptureStderr();
    EXPECT_TRUE(restart());
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr(script)); // no window is left
    EXPECT_TRUE(log.take(script));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(file())));
}

TEST_F(HelpManagerRestart, IsConnectedByNameToAnActionOfTheHost)
{
    Window window;
    window.agrees = false;
    QAction host("Restart");
    ASSERT_TRUE(QObject::connect(&host, SIGNAL(triggered()), &HelpManager::instance(), SLOT(restart())));
    host.trigger();
    EXPECT_THAT(calls(), ElementsAre("may_close"));
}

TEST_F(HelpManagerRestartOfAPlainHost, ProgramIsStartedAgain)
{
    const Window window;
    EXPECT_TRUE(restart());
    EXPECT_THAT(second_process(), ElementsAre(script));
}
