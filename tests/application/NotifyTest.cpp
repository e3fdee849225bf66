#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/InvalidPath.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::CancelCommandException;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::InvalidPath;

/// Does in its event handler what the test says.
class Receiver : public QObject
{
public:
    explicit Receiver(std::function<void()> action)
        : m_action(std::move(action))
    { }

    bool event(QEvent* p_event) override
    {
        if (p_event->type() != QEvent::User) {
            return QObject::event(p_event);
        }
        m_action();
        return true;
    }

private:
    std::function<void()> m_action;
};

class DeafReceiver : public QObject
{
public:
    bool event(QEvent*) override { return false; }
};

HousekeepingException some_exception()
{
    return HousekeepingException(2, std::string("bad thing"), "tests/NotifyTest", 7);
}

std::string entry_of(const tarqa::Exception& exception)
{
    std::ostringstream text;
    text << "TARQA EXCEPTION THROWN:\n" << exception << "\n\n";
    return text.str();
}

class Notify : public testing::Test
{
private:
    StartedApplication m_started; // before the capture

protected:
    ~Notify() override { log.take_all(); }

    /// Delivers one event whose handler does @p action. @return what notify() returned
    bool notify(const std::function<void()>& action)
    {
        Receiver receiver(action);
        QEvent event(QEvent::User);
        return m_started.application().notify(&receiver, &event);
    }

    tarqa::housekeeping::ApplicationManager& manager() const { return m_started.manager(); }

    LogCapture log;
};

TEST_F(Notify, GivesTheAnswerOfTheHandler)
{
    EXPECT_TRUE(notify([] {}));
    DeafReceiver deaf;
    QEvent event(QEvent::User);
    EXPECT_FALSE(manager().qapplication()->notify(&deaf, &event));
    EXPECT_EQ(log.text(), "");
}

TEST_F(Notify, LogsAMakersException)
{
    const tarqa::Exception exception(7, std::string("maker's"), "tests/NotifyTest", 9);
    EXPECT_FALSE(notify([&] { throw exception; }));
    EXPECT_EQ(log.text(), entry_of(exception));
}

TEST_F(Notify, LogsAHousekeepingException)
{
    EXPECT_FALSE(notify([] { throw some_exception(); }));
    EXPECT_EQ(log.text(), entry_of(some_exception()));
}

TEST_F(Notify, LogsAllThatAnExceptionHasToSay)
{
    const InvalidPath exception(3, std::string("no such file"), "tests/NotifyTest", 9, "/a/b");
    EXPECT_FALSE(notify([&] { throw exception; }));
    EXPECT_EQ(log.text(), entry_of(exception));
    EXPECT_NE(log.text().find("Faulty path = \"/a/b\"\n"), std::string::npos);
}

TEST_F(Notify, LogsThatACancellationHasNothingToSay)
{
    EXPECT_FALSE(notify([] { throw CancelCommandException(some_exception()); }));
    EXPECT_EQ(log.text(), "TARQA EXCEPTION THROWN:\n\n\n");
}

TEST_F(Notify, LogsAStandardException)
{
    EXPECT_FALSE(notify([] { throw std::out_of_range("out of range"); }));
    EXPECT_EQ(log.text(), "STD EXCEPTION THROWN:out of range\n\n");
}

TEST_F(Notify, LetsAnythingElsePass)
{
    EXPECT_THROW(notify([] { throw 42; }), int);
    EXPECT_THROW(notify([] { throw std::string("text"); }), std::string);
    EXPECT_EQ(log.text(), "");
}

TEST_F(Notify, LoopGoesOnAfterExceptions)
{
    QWidget window;
    manager().top_level_widget(&window);
    Receiver makers([] { throw some_exception(); });
    Receiver standard([] { throw std::runtime_error("standard"); });
    Receiver last([this] { manager().exit_main_loop(); });
    QCoreApplication::postEvent(&makers, new QEvent(QEvent::User));
    QCoreApplication::postEvent(&standard, new QEvent(QEvent::User));
    QCoreApplication::postEvent(&last, new QEvent(QEvent::User));
    manager().main_loop();
    EXPECT_EQ(log.text(), entry_of(some_exception()) + "STD EXCEPTION THROWN:standard\n\n");
}

TEST_F(Notify, ReceiverGetsLaterEvents)
{
    QWidget window;
    manager().top_level_widget(&window);
    int calls = 0;
    Receiver receiver([&] {
        if (++calls == 3) {
            manager().exit_main_loop();
        }
        throw std::runtime_error(std::to_string(calls));
    });
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
    }
    manager().main_loop();
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(log.text(), "STD EXCEPTION THROWN:1\n\nSTD EXCEPTION THROWN:2\n\nSTD EXCEPTION THROWN:3\n\n");
}

TEST_F(Notify, LogsExceptionsOfQueuedSlots)
{
    QWidget window;
    manager().top_level_widget(&window);
    QObject receiver;
    QMetaObject::invokeMethod(
        &receiver, [] { throw some_exception(); }, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        &receiver, [] { throw std::runtime_error("standard"); }, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        &receiver, [this] { manager().exit_main_loop(); }, Qt::QueuedConnection);
    manager().main_loop();
    EXPECT_EQ(log.text(), entry_of(some_exception()) + "STD EXCEPTION THROWN:standard\n\n");
}

TEST_F(Notify, LogsExceptionsOfTimers)
{
    QWidget window;
    manager().top_level_widget(&window);
    int shots = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++shots == 2) {
            manager().exit_main_loop();
        }
        throw std::runtime_error("shot");
    });
    timer.start(0);
    manager().main_loop();
    EXPECT_EQ(shots, 2);
    EXPECT_EQ(log.text(), "STD EXCEPTION THROWN:shot\n\nSTD EXCEPTION THROWN:shot\n\n");
}

TEST_F(Notify, LogsExceptionsOfOtherThreads)
{
    bool went_on = false;
    {
        Receiver thrower([] { throw some_exception(); });
        Receiver last([&went_on] { went_on = true; });
        support::EventThread thread;
        thrower.moveToThread(&thread);
        last.moveToThread(&thread);
        QCoreApplication::postEvent(&thrower, new QEvent(QEvent::User));
        QCoreApplication::postEvent(&last, new QEvent(QEvent::User));
        QMetaObject::invokeMethod(
            &last, [] {}, Qt::BlockingQueuedConnection);
    }
    EXPECT_TRUE(went_on);
    EXPECT_EQ(log.text(), entry_of(some_exception()));
}

} // namespace
