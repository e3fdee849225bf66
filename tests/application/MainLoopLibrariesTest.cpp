#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <cpl_error.h>
#include <gtest/gtest.h>
#include <osg/Group>
#include <osgDB/Registry>

#include <functional>
#include <string>
#include <vector>

namespace {

using support::LogCapture;
using support::StartedApplication;

/// Runs the main loop of a program with a window once. @param action called inside
template <class Action>
void run_main_loop(const StartedApplication& started, Action action)
{
    QWidget window;
    started.manager().top_level_widget(&window);
    QTimer::singleShot(0, [&] {
        action();
        started.manager().exit_main_loop();
    });
    started.manager().main_loop();
}

// OpenSceneGraph

bool is_cached(const std::string& name)
{
    return osgDB::Registry::instance()->getRefFromObjectCache(name).valid();
}

TEST(MainLoopScenes, ObjectCacheIsClearedAtTheEnd)
{
    const StartedApplication started;
    LogCapture log;
    osg::ref_ptr<osg::Group> object = new osg::Group;
    osgDB::Registry::instance()->addEntryToObjectCache("a.osg", object);
    bool cached_inside = false;
    run_main_loop(started, [&] { cached_inside = is_cached("a.osg"); });
    EXPECT_TRUE(cached_inside);
    EXPECT_FALSE(is_cached("a.osg"));
    EXPECT_EQ(object->referenceCount(), 1);
}

TEST(MainLoopScenes, PlugInsAreClosedAtTheEnd)
{
    const StartedApplication started;
    LogCapture log;
    osgDB::Registry* const p_registry = osgDB::Registry::instance();
    const std::string plug_in = p_registry->createLibraryNameForExtension("rgb");
    ASSERT_EQ(p_registry->loadLibrary(plug_in), osgDB::Registry::LOADED);
    osgDB::Registry::LoadStatus inside = osgDB::Registry::NOT_LOADED;
    run_main_loop(started, [&] { inside = p_registry->loadLibrary(plug_in); });
    EXPECT_EQ(inside, osgDB::Registry::PREVIOUSLY_LOADED);
    EXPECT_EQ(p_registry->loadLibrary(plug_in), osgDB::Registry::LOADED);
}

// GDAL

std::vector<std::string>& host_messages()
{
    static std::vector<std::string> s_messages;
    return s_messages;
}

void host_handler(CPLErr, CPLErrorNum, const char* message)
{
    host_messages().push_back(message);
}

void complain(const char* message)
{
    CPLError(CE_Warning, CPLE_AppDefined, "%s", message);
}

TEST(MainLoopRasters, MessagesAreLoggedUntilItsEnd)
{
    const StartedApplication started;
    LogCapture log;
    complain("before");
    EXPECT_TRUE(log.take("CE_Warning: before"));
    run_main_loop(started, [] { complain("inside"); });
    EXPECT_TRUE(log.take("CE_Warning: inside"));

    testing::internal::CaptureStderr();
    complain("after");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Warning 1: after\n"); // as GDAL does it by itself
}

TEST(MainLoopRasters, HostsOwnHandlerIsBackAfterwards)
{
    CPLSetErrorHandler(&host_handler);
    const StartedApplication started;
    LogCapture log;
    run_main_loop(started, [] { complain("inside"); });
    EXPECT_TRUE(log.take("CE_Warning: inside"));
    EXPECT_TRUE(host_messages().empty());

    complain("after");
    EXPECT_EQ(host_messages(), std::vector<std::string>{"after"});
}

TEST(MainLoopRasters, FormerHandlerIsForgotten)
{
    CPLSetErrorHandler(&host_handler);
    LogCapture log;
    {
        const StartedApplication started(log);
        support::take_start_up_lines(log);
        run_main_loop(started, [] {});
        CPLSetErrorHandler(&CPLQuietErrorHandler); // the host changes its mind, and keeps it to the end
    }
    complain("after");
    EXPECT_TRUE(host_messages().empty());
}

TEST(MainLoopRasters, HandlerIsBackWithoutAMainLoop)
{
    CPLSetErrorHandler(&host_handler);
    LogCapture log;
    {
        const StartedApplication started(log);
        support::take_start_up_lines(log);
    }
    complain("after");
    EXPECT_EQ(host_messages(), std::vector<std::string>{"after"});
}

// Which comes first

/// Complains to GDAL when it goes.
class DyingObject : public osg::Group
{
public:
    explicit DyingObject(const char* name)
        : m_name(name)
    { }

protected:
    ~DyingObject() override { complain(m_name); }

private:
    const char* m_name;
};

/// Complains to GDAL when the watched object goes.
class Mourner : public osg::Observer
{
public:
    void objectDeleted(void*) override
    {
        was_cached = is_cached("a.osg");
        complain("plug-in");
    }
    bool was_cached = true;
};

TEST(MainLoopEnd, ObjectsGoBeforePlugInsAndTheseBeforeGDALsMessages)
{
    CPLSetErrorHandler(&host_handler);
    const StartedApplication started;
    LogCapture log;
    osgDB::Registry* const p_registry = osgDB::Registry::instance();
    p_registry->addEntryToObjectCache("a.osg", new DyingObject("object"));
    osgDB::ReaderWriter* const p_reader = p_registry->getReaderWriterForExtension("rgb");
    ASSERT_NE(p_reader, nullptr);
    Mourner mourner;
    p_reader->addObserver(&mourner);
    run_main_loop(started, [] {});
    complain("after");

    EXPECT_FALSE(mourner.was_cached);
    EXPECT_EQ(log.text(), "CE_Warning: object\nCE_Warning: plug-in\n");
    EXPECT_EQ(host_messages(), std::vector<std::string>{"after"});
    log.take_all();
}

/// Calls an action when it goes.
class LastAct : public osg::Group
{
public:
    explicit LastAct(std::function<void()> action)
        : m_action(std::move(action))
    { }

protected:
    ~LastAct() override { m_action(); }

private:
    std::function<void()> m_action;
};

TEST(MainLoopEnd, LoopIsOverWhenObjectsGo)
{
    const StartedApplication started;
    LogCapture log;
    QWidget window;
    int calls = 0;
    osgDB::Registry::instance()->addEntryToObjectCache("a.osg", new LastAct([&] {
        ++calls;
        started.manager().top_level_widget(&window); // checks whether the loop runs
    }));
    run_main_loop(started, [] {});
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(
        log.took_assert("0 == m_p_top_widget", "top_level_widget", "housekeeping/src/ApplicationManager"));
    EXPECT_EQ(log.count("false == m_in_main_loop"), 0);
}

TEST(MainLoopEnd, ObjectsAreKeptUntilThen)
{
    const StartedApplication started;
    LogCapture log;
    bool gone = false;
    osgDB::Registry::instance()->addEntryToObjectCache("a.osg", new LastAct([&gone] { gone = true; }));
    bool gone_inside = true;
    run_main_loop(started, [&] { gone_inside = gone; });
    EXPECT_FALSE(gone_inside);
    EXPECT_TRUE(gone);
}

} // namespace
