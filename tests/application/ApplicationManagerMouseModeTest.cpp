#include "StoredSettings.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::LEFT_BUTTON_NAVIGATION_MOUSE_MODE;
using tarqa::housekeeping::MouseMode;
using tarqa::housekeeping::THREE_BUTTON_MOUSE_MODE;
using tarqa::housekeeping::TWO_BUTTON_MOUSE_MODE;

namespace housekeeping = tarqa::housekeeping; // signals and slots spell their parameter's type this way

namespace {

const char* const s_signal = SIGNAL(mouseButtonsPreferencesChanged(housekeeping::MouseMode));

/// Notes the modes and the thread in which it learns of them.
class ModeReceiver : public QObject
{
    Q_OBJECT

public:
    std::vector<MouseMode> modes;
    std::atomic<QThread*> thread{nullptr};

public slots:
    void receive(housekeeping::MouseMode mode)
    {
        modes.push_back(mode);
        thread = QThread::currentThread();
    }
};

std::string stored_mode()
{
    const auto entries = stored_settings::entries();
    const auto found = entries.find("application/mouse_mode");
    return found == entries.end() ? "none" : found->second;
}

} // namespace

TEST(ApplicationManagerMouseMode, NumbersAreThoseThatAreStored)
{
    EXPECT_EQ(0, static_cast<int>(THREE_BUTTON_MOUSE_MODE));
    EXPECT_EQ(1, static_cast<int>(TWO_BUTTON_MOUSE_MODE));
    EXPECT_EQ(2, static_cast<int>(LEFT_BUTTON_NAVIGATION_MOUSE_MODE));
}

TEST(ApplicationManagerMouseMode, IsAMetaTypeUnderTheNameOfTheSignal)
{
    ApplicationManager::instance();
    EXPECT_NE(QMetaType::UnknownType, QMetaType::type("housekeeping::MouseMode"));
    EXPECT_EQ(qMetaTypeId<MouseMode>(), QMetaType::type("housekeeping::MouseMode"));
}

TEST(ApplicationManagerMouseMode, EverySettingIsTold)
{
    const StartedApplication started;
    const QSignalSpy spy(&started.manager(), s_signal);
    ASSERT_TRUE(spy.isValid());
    const std::vector<MouseMode> modes = {TWO_BUTTON_MOUSE_MODE, LEFT_BUTTON_NAVIGATION_MOUSE_MODE,
        LEFT_BUTTON_NAVIGATION_MOUSE_MODE, THREE_BUTTON_MOUSE_MODE, THREE_BUTTON_MOUSE_MODE};
    for (const MouseMode mode : modes) {
        started.manager().setMouseMode(mode);
    }
    ASSERT_EQ(modes.size(), static_cast<std::size_t>(spy.count()));
    for (std::size_t i = 0; i < modes.size(); ++i) {
        const QVariant& told = spy.at(static_cast<int>(i)).at(0);
        EXPECT_EQ(QMetaType::type("housekeeping::MouseMode"), told.userType());
        EXPECT_EQ(modes[i], told.value<MouseMode>());
    }
}

TEST(ApplicationManagerMouseMode, FirstModeIsToldAlthoughItIsTheDefault)
{
    const StartedApplication started;
    const QSignalSpy spy(&started.manager(), &ApplicationManager::mouseButtonsPreferencesChanged);
    started.manager().setMouseMode(THREE_BUTTON_MOUSE_MODE);
    EXPECT_EQ(1, spy.count());
    EXPECT_EQ("0", stored_mode());
}

TEST(ApplicationManagerMouseMode, IsSetAndStoredWhenItIsTold)
{
    const StartedApplication started;
    int calls = 0;
    QObject receiver;
    QObject::connect(&started.manager(), &ApplicationManager::mouseButtonsPreferencesChanged, &receiver,
        [&](MouseMode mode) {
            ++calls;
            EXPECT_EQ(TWO_BUTTON_MOUSE_MODE, mode);
            EXPECT_EQ(TWO_BUTTON_MOUSE_MODE, started.manager().mouseMode());
            EXPECT_EQ("1", stored_mode());
        });
    started.manager().setMouseMode(TWO_BUTTON_MOUSE_MODE);
    EXPECT_EQ(1, calls);
}

TEST(ApplicationManagerMouseMode, ReceiverMaySetAnotherSetting)
{
    const StartedApplication started;
    QObject receiver;
    QObject::connect(&started.manager(), &ApplicationManager::mouseButtonsPreferencesChanged, &receiver,
        [&] { started.manager().setUseShaderRendering(false); });
    started.manager().setMouseMode(TWO_BUTTON_MOUSE_MODE);
    EXPECT_EQ(stored_settings::entries(),
        (std::map<std::string, std::string>{
            {"application/mouse_mode", "1"}, {"viewer_options/shader_rendering", "false"}}));
}

TEST(ApplicationManagerMouseMode, IsToldWithoutAnApplication)
{
    ApplicationManager& manager = ApplicationManager::instance();
    const QSignalSpy spy(&manager, s_signal);
    support::LogCapture log;
    manager.setMouseMode(TWO_BUTTON_MOUSE_MODE);
    EXPECT_TRUE(log.take("The setting \"application/mouse_mode\" could not be stored in "));
    EXPECT_EQ(1, spy.count());
    EXPECT_EQ(TWO_BUTTON_MOUSE_MODE, manager.mouseMode());
}

TEST(ApplicationManagerMouseMode, StartTellsNothing)
{
    stored_settings::write("application", "mouse_mode", "2");
    const QSignalSpy spy(&ApplicationManager::instance(), s_signal);
    const StartedApplication started;
    EXPECT_EQ(LEFT_BUTTON_NAVIGATION_MOUSE_MODE, started.manager().mouseMode());
    EXPECT_EQ(0, spy.count());
}

TEST(ApplicationManagerMouseMode, OtherSettingsTellNothing)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    const QSignalSpy spy(&manager, s_signal);
    manager.setIndustrySector(1);
    manager.setUseEyeVisibilityIndicator(true);
    manager.setSeismicRenderQuality(tarqa::housekeeping::LOW_SEISMIC_RENDER_QUALITY);
    EXPECT_EQ(0, spy.count());
}

TEST(ApplicationManagerMouseMode, ReachesReceiversByQueue)
{
    const StartedApplication started;
    ModeReceiver receiver;
    ASSERT_TRUE(QObject::connect(&started.manager(), s_signal, &receiver,
        SLOT(receive(housekeeping::MouseMode)), Qt::QueuedConnection));
    started.manager().setMouseMode(TWO_BUTTON_MOUSE_MODE);
    started.manager().setMouseMode(LEFT_BUTTON_NAVIGATION_MOUSE_MODE);
    EXPECT_TRUE(receiver.modes.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(
        receiver.modes, (std::vector<MouseMode>{TWO_BUTTON_MOUSE_MODE, LEFT_BUTTON_NAVIGATION_MOUSE_MODE}));
}

TEST(ApplicationManagerMouseMode, ReachesReceiversInOtherThreads)
{
    const StartedApplication started;
    ModeReceiver receiver;
    QThread thread;
    receiver.moveToThread(&thread);
    QObject::connect(&started.manager(), &ApplicationManager::mouseButtonsPreferencesChanged, &receiver,
        &ModeReceiver::receive);
    started.manager().setMouseMode(TWO_BUTTON_MOUSE_MODE);
    thread.start();
    QMetaObject::invokeMethod(
        &receiver, [&thread] { thread.quit(); }, Qt::QueuedConnection); // after the mode
    thread.wait();
    EXPECT_EQ(receiver.modes, std::vector<MouseMode>{TWO_BUTTON_MOUSE_MODE});
    EXPECT_EQ(&thread, receiver.thread);
}

#include "ApplicationManagerMouseModeTest.moc"
