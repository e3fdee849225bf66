#include "BusyPool.h"
#include "StoredSettings.h"
#include "support/StartedApplication.h"

#include <gtest/gtest.h>

#include <string>

using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::HIGH_SEISMIC_RENDER_QUALITY;
using tarqa::housekeeping::LOW_SEISMIC_RENDER_QUALITY;
using tarqa::housekeeping::MEDIUM_SEISMIC_RENDER_QUALITY;
using tarqa::housekeeping::SeismicRenderQuality;

namespace {

QThreadPool& pool()
{
    return *QThreadPool::globalInstance();
}

/// The global thread pool with this maximum and nothing to do.
void prepare_pool(int maximum)
{
    pool().waitForDone();
    pool().setMaxThreadCount(maximum);
}

} // namespace

// Background tasks

TEST(ApplicationManagerMultiThreading, DependsOnTheRoomInThePool)
{
    const StartedApplication started;
    for (int maximum = 1; maximum <= 5; ++maximum) {
        for (int active = 0; active <= maximum; ++active) {
            prepare_pool(maximum);
            const BusyPool busy(active);
            ASSERT_EQ(active, pool().activeThreadCount());
            EXPECT_EQ(active + 1 < maximum, started.manager().useMultiThreading())
                << active << " of " << maximum;
        }
    }
}

TEST(ApplicationManagerMultiThreading, TwoOfThreeThreadsLeaveNoRoom)
{
    const StartedApplication started;
    prepare_pool(3);
    const BusyPool busy(2);
    EXPECT_FALSE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, OneOfThreeThreadsLeavesRoom)
{
    const StartedApplication started;
    prepare_pool(3);
    const BusyPool busy(1);
    EXPECT_TRUE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, OneThreadIsNoRoom)
{
    const StartedApplication started;
    prepare_pool(1);
    EXPECT_FALSE(started.manager().useMultiThreading());
    prepare_pool(0);
    EXPECT_FALSE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, AnswerChangesWithTheLoad)
{
    const StartedApplication started;
    prepare_pool(3);
    EXPECT_TRUE(started.manager().useMultiThreading());
    {
        const BusyPool busy(3);
        EXPECT_FALSE(started.manager().useMultiThreading());
    }
    EXPECT_TRUE(started.manager().useMultiThreading());
    pool().setMaxThreadCount(1);
    EXPECT_FALSE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, ReservedThreadsCount)
{
    const StartedApplication started;
    prepare_pool(2);
    for (int i = 0; i < 4; ++i) { // also beyond the maximum
        pool().reserveThread();
        EXPECT_FALSE(started.manager().useMultiThreading());
    }
    for (int i = 0; i < 4; ++i) {
        pool().releaseThread();
    }
    EXPECT_TRUE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, OtherPoolsDoNotCount)
{
    const StartedApplication started;
    prepare_pool(3);
    QThreadPool other;
    other.setMaxThreadCount(4);
    const BusyPool busy(4, other);
    EXPECT_TRUE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, IsOffWhenTheUserTurnsItOff)
{
    const StartedApplication started;
    prepare_pool(8);
    started.manager().setUseMultiThreading(false);
    EXPECT_FALSE(started.manager().useMultiThreading());
    started.manager().setUseMultiThreading(true);
    EXPECT_TRUE(started.manager().useMultiThreading());
}

TEST(ApplicationManagerMultiThreading, LoadDoesNotChangeThePreference)
{
    const StartedApplication started;
    prepare_pool(1);
    EXPECT_FALSE(started.manager().useMultiThreading());
    EXPECT_FALSE(stored_settings::exists());
    started.manager().setUseMultiThreading(true);
    EXPECT_FALSE(started.manager().useMultiThreading());
    EXPECT_EQ("true", stored_settings::entries().at("performance_options/use_multithreading"));
}

TEST(ApplicationManagerMultiThreading, RenderingDoesNotDependOnIt)
{
    const StartedApplication started;
    prepare_pool(1);
    started.manager().setUseMultiThreading(false);
    EXPECT_TRUE(started.manager().useMultiThreadedRendering());
    started.manager().setUseMultiThreadedRendering(false);
    EXPECT_FALSE(started.manager().useMultiThreadedRendering());
    prepare_pool(8);
    EXPECT_FALSE(started.manager().useMultiThreadedRendering());
}

// Quality of seismic sections

TEST(ApplicationManagerSeismicQuality, NumbersAreThoseThatAreStored)
{
    EXPECT_EQ(0, static_cast<int>(LOW_SEISMIC_RENDER_QUALITY));
    EXPECT_EQ(1, static_cast<int>(MEDIUM_SEISMIC_RENDER_QUALITY));
    EXPECT_EQ(2, static_cast<int>(HIGH_SEISMIC_RENDER_QUALITY));
}

TEST(ApplicationManagerSeismicQuality, DependsOnShadersAndTheRenderer)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    for (const bool shaders : {true, false}) {
        for (const bool software : {false, true}) {
            for (const int stored : {0, 1, 2}) {
                manager.setUseShaderRendering(shaders);
                manager.setGlRenderer(software ? "Gallium 0.4 on a processor" : "A graphics card");
                manager.setSeismicRenderQuality(static_cast<SeismicRenderQuality>(stored));
                const int expected = !shaders ? 0 : software && stored == 2 ? 1 : stored;
                EXPECT_EQ(expected, static_cast<int>(manager.seismicRenderQuality()))
                    << shaders << software << stored;
                EXPECT_EQ(std::to_string(stored),
                    stored_settings::entries().at("performance_options/seismicRenderQuality"));
            }
        }
    }
}

TEST(ApplicationManagerSeismicQuality, ReturnsWithTheShaders)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    manager.setUseShaderRendering(false);
    EXPECT_EQ(LOW_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality());
    manager.setUseShaderRendering(true);
    EXPECT_EQ(HIGH_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality());
    EXPECT_EQ(0u, stored_settings::entries().count("performance_options/seismicRenderQuality"));
}

TEST(ApplicationManagerSeismicQuality, IsNotTheHighestWithoutAnyShader)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    EXPECT_EQ(HIGH_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality()); // nothing is known yet
    manager.setGlTest(true);
    EXPECT_EQ(MEDIUM_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality());
    manager.setVertShaderAvail(true);
    EXPECT_EQ(HIGH_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality());
    manager.setVertShaderAvail(false);
    manager.setFragShaderAvail(true);
    EXPECT_EQ(HIGH_SEISMIC_RENDER_QUALITY, manager.seismicRenderQuality());
}

TEST(ApplicationManagerSeismicQuality, StoredOneIsLoweredToo)
{
    stored_settings::write(
        "[viewer_options]\nshader_rendering=false\n[performance_options]\nseismicRenderQuality=2\n");
    const StartedApplication started;
    EXPECT_EQ(LOW_SEISMIC_RENDER_QUALITY, started.manager().seismicRenderQuality());
}

// Instanced dip symbols

TEST(ApplicationManagerInstancedDips, NeedAllFour)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    for (int bits = 0; bits < 16; ++bits) {
        manager.setGlslAvail(bits & 1);
        manager.setShaderInstancingAvail(bits & 2);
        manager.setFpTexturesAvail(bits & 4);
        manager.setUseShaderRendering(bits & 8);
        EXPECT_EQ(bits == 15, manager.instancedDipRenderingAvail()) << bits;
    }
}

TEST(ApplicationManagerInstancedDips, AreNotAvailableAtFirst)
{
    const StartedApplication started;
    EXPECT_TRUE(started.manager().useShaderRendering());
    EXPECT_FALSE(started.manager().instancedDipRenderingAvail());
}

TEST(ApplicationManagerInstancedDips, NeedNothingElse)
{
    const StartedApplication started;
    ApplicationManager& manager = started.manager();
    manager.setGlslAvail(true);
    manager.setShaderInstancingAvail(true);
    manager.setFpTexturesAvail(true);
    EXPECT_TRUE(manager.instancedDipRenderingAvail()); // no shader of any kind, no OpenGL test
    manager.setGlRenderer("Gallium");
    EXPECT_TRUE(manager.instancedDipRenderingAvail());
}
