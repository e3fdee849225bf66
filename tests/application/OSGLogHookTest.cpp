#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <osg/Notify>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <thread>

namespace {

const osg::NotifySeverity s_dropped[] = {osg::WARN, osg::NOTICE, osg::INFO, osg::DEBUG_INFO, osg::DEBUG_FP};

/// A started application whose log is looked at; OpenSceneGraph sends everything.
class OSGLogHook : public testing::Test
{
protected:
    OSGLogHook() { osg::setNotifyLevel(osg::DEBUG_FP); }
    ~OSGLogHook() override { log.take_all(); }

    const support::StartedApplication started;
    support::LogCapture log;
};

} // namespace

TEST_F(OSGLogHook, ReplacesTheLibrarysOwnHandler)
{
    ASSERT_NE(osg::getNotifyHandler(), nullptr);
    EXPECT_EQ(dynamic_cast<osg::StandardNotifyHandler*>(osg::getNotifyHandler()), nullptr);
}

TEST_F(OSGLogHook, TheTwoMostSevereAreLoggedAsTheyStand)
{
    osg::getNotifyHandler()->notify(osg::ALWAYS, "always 100%1");
    osg::getNotifyHandler()->notify(osg::FATAL, "fatal");
    EXPECT_EQ(log.text(), "always 100%1\nfatal\n");
}

TEST_F(OSGLogHook, OthersAreDropped)
{
    testing::internal::CaptureStderr();
    for (const osg::NotifySeverity severity : s_dropped) {
        osg::getNotifyHandler()->notify(severity, "text");
        osg::notify(severity) << "text" << std::endl;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log.text(), "");
}

TEST_F(OSGLogHook, StreamedNoticesOfTheTwoAreLogged)
{
    osg::notify(osg::ALWAYS) << "value " << 5 << std::endl;
    osg::notify(osg::FATAL) << "no context" << std::endl;
    EXPECT_TRUE(log.take("value 5"));
    EXPECT_TRUE(log.take("no context"));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(OSGLogHook, EmptyTextsAreSkipped)
{
    osg::getNotifyHandler()->notify(osg::ALWAYS, "");
    osg::getNotifyHandler()->notify(osg::FATAL, nullptr);
    osg::notify(osg::FATAL) << std::flush;
    EXPECT_EQ(log.text(), "");
}

TEST_F(OSGLogHook, FatalNoticeDoesNotEndTheProgram)
{
    osg::notify(osg::FATAL) << "the end" << std::endl;
    EXPECT_NE(started.manager().qapplication(), nullptr);
    EXPECT_TRUE(log.take("the end"));
}

TEST_F(OSGLogHook, TakesNoticesOfWorkerThreads)
{
    std::thread([] { osg::getNotifyHandler()->notify(osg::FATAL, "from a worker"); }).join();
    EXPECT_EQ(log.text(), "from a worker\n");
}
