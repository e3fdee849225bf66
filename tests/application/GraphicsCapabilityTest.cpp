#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtGui/QColor>

#include <gtest/gtest.h>

#include <string>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;

ApplicationManager& manager()
{
    return ApplicationManager::instance();
}

// What the rendering component stores

TEST(GraphicsCapability, NothingIsKnownAtFirst)
{
    EXPECT_FALSE(manager().glTest());
    EXPECT_EQ(manager().glVersion(), 0.0f);
    EXPECT_EQ(manager().glRenderer(), "???");
    EXPECT_FALSE(manager().glslAvail());
    EXPECT_EQ(manager().glslVersion(), 0.0f);
    EXPECT_FALSE(manager().vertShaderAvail());
    EXPECT_FALSE(manager().fragShaderAvail());
    EXPECT_FALSE(manager().geomShaderAvail());
    EXPECT_FALSE(manager().fpTexturesAvail());
    EXPECT_FALSE(manager().shaderInstancingAvail());
    EXPECT_EQ(manager().totalGraphicsMemory(), 0);
    EXPECT_FALSE(manager().likelyUsingSoftwareMesa());
    EXPECT_FALSE(manager().resetIdsOnOpen());
}

TEST(GraphicsCapability, NumbersAndTextsAreKept)
{
    manager().setGLVersion(4.5f);
    manager().setGlslVersion(4.6f);
    manager().setGlRenderer("a renderer");
    manager().setTotalGraphicsMemory(8192);
    EXPECT_EQ(manager().glVersion(), 4.5f);
    EXPECT_EQ(manager().glslVersion(), 4.6f);
    EXPECT_EQ(manager().glRenderer(), "a renderer");
    EXPECT_EQ(manager().totalGraphicsMemory(), 8192);
    manager().setGlRenderer("");
    EXPECT_EQ(manager().glRenderer(), "");
}

struct Flag
{
    const char* name;
    bool (ApplicationManager::*get)() const;
    void (ApplicationManager::*set)(bool);
};

const Flag s_flags[] = {
    {"glTest", &ApplicationManager::glTest, &ApplicationManager::setGlTest},
    {"glslAvail", &ApplicationManager::glslAvail, &ApplicationManager::setGlslAvail},
    {"vertShaderAvail", &ApplicationManager::vertShaderAvail, &ApplicationManager::setVertShaderAvail},
    {"fragShaderAvail", &ApplicationManager::fragShaderAvail, &ApplicationManager::setFragShaderAvail},
    {"geomShaderAvail", &ApplicationManager::geomShaderAvail, &ApplicationManager::setGeomShaderAvail},
    {"fpTexturesAvail", &ApplicationManager::fpTexturesAvail, &ApplicationManager::setFpTexturesAvail},
    {"shaderInstancingAvail", &ApplicationManager::shaderInstancingAvail,
        &ApplicationManager::setShaderInstancingAvail},
    {"resetIdsOnOpen", &ApplicationManager::resetIdsOnOpen, &ApplicationManager::setResetIdsOnOpen},
};

TEST(GraphicsCapability, EachFlagIsKeptForItself)
{
    for (const Flag& set : s_flags) {
        (manager().*set.set)(true);
        for (const Flag& flag : s_flags) {
            EXPECT_EQ((manager().*flag.get)(), flag.name == set.name) << flag.name << " after " << set.name;
        }
        (manager().*set.set)(false);
        EXPECT_FALSE((manager().*set.get)()) << set.name;
    }
}

// Software renderers

TEST(GraphicsCapability, RenderersNameTellsSoftware)
{
    for (const char* const name : {"Gallium", "Gallium 0.4 on llvmpipe", "Mesa Gallium", "xGalliumx"}) {
        manager().setGlRenderer(name);
        EXPECT_TRUE(manager().likelyUsingSoftwareMesa()) << name;
    }
    for (const char* const name : {"gallium", "GALLIUM", "Galium", "llvmpipe", "Mesa", "", "Gall ium"}) {
        manager().setGlRenderer("Gallium");
        manager().setGlRenderer(name);
        EXPECT_FALSE(manager().likelyUsingSoftwareMesa()) << name;
    }
}

TEST(GraphicsCapability, MissingShadersTellSoftware)
{
    for (const bool test : {false, true}) {
        for (const bool vertex : {false, true}) {
            for (const bool fragment : {false, true}) {
                for (const bool software : {false, true}) {
                    manager().setGlTest(test);
                    manager().setVertShaderAvail(vertex);
                    manager().setFragShaderAvail(fragment);
                    manager().setGlRenderer(software ? "Gallium" : "hardware");
                    EXPECT_EQ(manager().likelyUsingSoftwareMesa(), software || (test && !vertex && !fragment))
                        << test << vertex << fragment << software;
                }
            }
        }
    }
}

TEST(GraphicsCapability, OtherFlagsDoNotTellSoftware)
{
    manager().setGlTest(true);
    manager().setVertShaderAvail(true);
    EXPECT_FALSE(manager().likelyUsingSoftwareMesa()); // no GLSL, no geometry shaders, no instancing
}

// The colour rule

/// A started program with a background for its views.
class ColourOnBackground : public testing::Test
{
protected:
    /// What becomes of @p colour on @p background.
    QColor checked(QColor colour, const QColor& background)
    {
        m_started.manager().setViewBackgroundColour(background);
        m_started.manager().checkColourAgaistBackground(colour);
        return colour;
    }

    static QColor hsv(const QColor& colour) { return colour.toHsv(); }
    static QColor grey(int value) { return QColor(value, value, value); }

    const QColor white{Qt::white};
    const QColor black{Qt::black};

private:
    StartedApplication m_started;
};

TEST_F(ColourOnBackground, WhiteOnWhiteBecomesBlack)
{
    EXPECT_EQ(checked(white, white).rgba(), black.rgba());
}

TEST_F(ColourOnBackground, BlackOnBlackBecomesWhite)
{
    EXPECT_EQ(checked(black, black).rgba(), white.rgba());
}

TEST_F(ColourOnBackground, ModelOfTheColourDoesNotMatter)
{
    ASSERT_NE(hsv(white), white); // although it is
    EXPECT_EQ(checked(hsv(white), white).rgba(), black.rgba());
    EXPECT_EQ(checked(white, hsv(white)).rgba(), black.rgba());
    EXPECT_EQ(checked(hsv(white), hsv(white)).rgba(), black.rgba());
    EXPECT_EQ(checked(hsv(black), black).rgba(), white.rgba());
    EXPECT_EQ(checked(black, hsv(black)).rgba(), white.rgba());
    EXPECT_EQ(checked(white.toCmyk(), white).rgba(), black.rgba());

    const QColor red(200, 0, 0);
    EXPECT_EQ(checked(hsv(red), red).rgba(), red.darker(200).rgba());
}

TEST_F(ColourOnBackground, DarkBackgroundIsLightened)
{
    EXPECT_EQ(checked(grey(127), grey(127)).rgba(), grey(127).lighter(150).rgba());
    EXPECT_EQ(checked(grey(1), grey(1)).rgba(), grey(1).lighter(150).rgba());
    const QColor red(127, 0, 0);
    EXPECT_EQ(checked(red, red).rgba(), red.lighter(150).rgba());
}

TEST_F(ColourOnBackground, LightBackgroundIsDarkened)
{
    EXPECT_EQ(checked(grey(128), grey(128)).rgba(), grey(128).darker(200).rgba());
    EXPECT_EQ(checked(grey(254), grey(254)).rgba(), grey(254).darker(200).rgba());
    const QColor red(128, 0, 0); // its value counts, not its lightness
    EXPECT_EQ(checked(red, red).rgba(), red.darker(200).rgba());
}

TEST_F(ColourOnBackground, ColourThatDiffersIsLeftAlone)
{
    EXPECT_EQ(checked(black, white), black);
    EXPECT_EQ(checked(white, black), white);
    EXPECT_EQ(checked(white, grey(254)), white);
    EXPECT_EQ(checked(grey(254), white), grey(254));
    EXPECT_EQ(checked(grey(127), grey(128)), grey(127));
    EXPECT_EQ(checked(hsv(grey(127)), grey(128)), hsv(grey(127)));
    EXPECT_EQ(checked(QColor(255, 255, 0), white), QColor(255, 255, 0));
}

TEST_F(ColourOnBackground, TranslucentWhiteIsNotWhite)
{
    const QColor translucent(255, 255, 255, 128);
    EXPECT_EQ(checked(translucent, white), translucent);
}

TEST_F(ColourOnBackground, BackgroundIsNotChanged)
{
    checked(grey(100), grey(100));
    EXPECT_EQ(manager().viewBackgroundColour(), grey(100));
}

} // namespace
