#include "style/ColourScheme.h"
#include "FakePortal.h"
#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageBus.h"
#include "support/MessageSpy.h"
#include "support/PrivateHome.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <thread>

using namespace host_test;
using support::MessageBus;
using support::SilentBus;
using terrain::ColourScheme;
using terrain::scheme_palette;

namespace {

QVariant wrapped(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

/// A program on a desktop with a message bus.
class ColourSchemeTest : public testing::Test
{
protected:
    static void be_a_dark_platform() { QApplication::setPalette(QPalette(Qt::white, Qt::darkGray)); }

    void start(unsigned int colours)
    {
        portal.emplace(bus, colours);
        scheme.emplace();
    }

    /// Waits until all windows are dark or light.
    bool becomes(bool dark) const
    {
        return support::wait_until([this, dark] { return scheme->is_dark() == dark; })
            && QApplication::palette() == scheme_palette(dark);
    }

    bool was_asked(int times = 1) const
    {
        return support::wait_until([this, times] { return portal->questions() == times; });
    }

    MessageBus bus{support::session_bus};
    support::App application;
    support::LogCapture log;
    std::optional<FakePortal> portal;
    std::optional<ColourScheme> scheme;
};

/// How well one colour is read on another, from 1 to 21, as the guidelines for web contents define it.
double contrast(const QColor& text, const QColor& paper)
{
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double share) {
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const double one = luminance(text) + 0.05;
    const double other = luminance(paper) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

struct TextOnPaper
{
    QPalette::ColorRole text;
    QPalette::ColorRole paper;
};

const TextOnPaper s_texts[] = {{QPalette::WindowText, QPalette::Window},
    {QPalette::ButtonText, QPalette::Window}, {QPalette::Text, QPalette::Window},
    {QPalette::Text, QPalette::Base}, {QPalette::Text, QPalette::AlternateBase},
    {QPalette::ButtonText, QPalette::Button}, {QPalette::ToolTipText, QPalette::ToolTipBase},
    {QPalette::PlaceholderText, QPalette::Base}, {QPalette::PlaceholderText, QPalette::AlternateBase},
    {QPalette::Link, QPalette::Base}, {QPalette::Link, QPalette::Window},
    {QPalette::LinkVisited, QPalette::Base}, {QPalette::LinkVisited, QPalette::Window},
    {QPalette::HighlightedText, QPalette::Highlight}, {QPalette::BrightText, QPalette::Window}};

} // namespace

// The colours

TEST(SchemePalette, TextsAreReadable)
{
    for (const bool dark : {false, true}) {
        const QPalette palette = scheme_palette(dark);
        const auto contrast_of = [&palette](QPalette::ColorGroup group, const TextOnPaper& pair) {
            return contrast(palette.color(group, pair.text), palette.color(group, pair.paper));
        };
        for (const TextOnPaper& pair : s_texts) {
            EXPECT_GE(contrast_of(QPalette::Active, pair), 4.5) << dark << pair.text << pair.paper;
            EXPECT_GE(contrast_of(QPalette::Inactive, pair), 4.5) << dark << pair.text << pair.paper;
            EXPECT_GE(contrast_of(QPalette::Disabled, pair), 2.5) << dark << pair.text << pair.paper;
        }
    }
}

TEST(SchemePalette, WhatIsChosenStandsOutFromItsSurroundings)
{
    for (const bool dark : {false, true}) {
        const QPalette palette = scheme_palette(dark);
        for (const QPalette::ColorRole paper : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            EXPECT_GE(contrast(palette.color(QPalette::Highlight), palette.color(paper)), 3) << dark << paper;
        }
    }
}

TEST(SchemePalette, EveryRoleHasAColourInEveryState)
{
    for (const bool dark : {false, true}) {
        const QPalette palette = scheme_palette(dark);
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            if (role == QPalette::NoRole) {
                continue;
            }
            for (const QPalette::ColorGroup group :
                {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                EXPECT_TRUE(palette.isBrushSet(group, static_cast<QPalette::ColorRole>(role))) << role;
            }
        }
    }
}

TEST(SchemePalette, IsDarkOrLight)
{
    EXPECT_TRUE(terrain::is_dark(scheme_palette(true)));
    EXPECT_FALSE(terrain::is_dark(scheme_palette(false)));
}

// What the desktop says

TEST_F(ColourSchemeTest, IsDarkOnADarkDesktop)
{
    start(FakePortal::dark);
    EXPECT_TRUE(becomes(true));
    EXPECT_EQ(QToolTip::palette(), scheme_palette(true));
}

TEST_F(ColourSchemeTest, IsLightOnALightDesktopWhateverThePlatform)
{
    be_a_dark_platform();
    start(FakePortal::light);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(QToolTip::palette(), scheme_palette(false));
}

TEST_F(ColourSchemeTest, NeverWaitsForTheAnswer)
{
    start(FakePortal::dark);
    EXPECT_FALSE(scheme->is_dark()) << "it has answered within the constructor";
    EXPECT_EQ(portal->questions(), 0);
    EXPECT_EQ(QApplication::palette(), scheme_palette(false));
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColourSchemeTest, FollowsChanges)
{
    start(FakePortal::light);
    ASSERT_TRUE(was_asked());
    portal->announce(FakePortal::dark);
    EXPECT_TRUE(becomes(true));
    portal->announce(FakePortal::light);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(QToolTip::palette(), scheme_palette(false));
    EXPECT_EQ(portal->questions(), 1);
}

TEST_F(ColourSchemeTest, NoPreferenceIsThePlatforms)
{
    be_a_dark_platform();
    start(FakePortal::no_preference);
    ASSERT_TRUE(was_asked());
    portal->announce(FakePortal::light);
    EXPECT_TRUE(becomes(false));
    portal->announce(FakePortal::no_preference);
    EXPECT_TRUE(becomes(true)) << "the colours are the program's own, not the platform's";
}

TEST_F(ColourSchemeTest, NumbersThatNobodyKnowsAreNoPreference)
{
    start(FakePortal::dark);
    ASSERT_TRUE(becomes(true));
    portal->announce(3);
    EXPECT_TRUE(becomes(false));
    portal->announce(FakePortal::dark);
    ASSERT_TRUE(becomes(true));
    portal->announce(0xffffffffu);
    EXPECT_TRUE(becomes(false));
}

TEST_F(ColourSchemeTest, OtherSettingsAreNotHeard)
{
    start(FakePortal::dark);
    ASSERT_TRUE(becomes(true));
    portal->announce("org.freedesktop.appearance", "contrast", 2u);
    portal->announce("org.gnome.desktop.interface", "color-scheme", 2u);
    portal->announce(QString(), QString(), 2u);
    portal->announce(FakePortal::dark); // comes after those
    QCoreApplication::processEvents();
    EXPECT_TRUE(scheme->is_dark());
}

TEST_F(ColourSchemeTest, SilentPortalIsListenedToAllTheSame)
{
    be_a_dark_platform();
    portal.emplace(bus, FakePortal::light);
    portal->answer_with([](const QDBusMessage&) { return QDBusMessage(); });
    scheme.emplace();
    ASSERT_TRUE(was_asked());
    EXPECT_TRUE(scheme->is_dark());
    portal->announce(FakePortal::light);
    EXPECT_TRUE(becomes(false));
}

TEST_F(ColourSchemeTest, PortalThatComesLaterIsAsked)
{
    scheme.emplace();
    EXPECT_EQ(QApplication::palette(), scheme_palette(false));
    QCoreApplication::processEvents();
    portal.emplace(bus, FakePortal::dark);
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColourSchemeTest, PortalThatCameBackIsAskedAgain)
{
    start(FakePortal::light);
    ASSERT_TRUE(was_asked());
    portal.reset();
    portal.emplace(bus, FakePortal::dark);
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColourSchemeTest, OddAnswersAreNotHeard)
{
    const FakePortal::Answer answers[]
        = {[](const QDBusMessage& question) { return question.createReply(wrapped("dark")); },
            [](const QDBusMessage& question) { return question.createReply(wrapped(wrapped(1))); },
            [](const QDBusMessage& question) {
                return question.createReply(wrapped(QStringList{"1", "1"}));
            },
            [](const QDBusMessage& question) { return question.createReply(1); },
            [](const QDBusMessage& question) {
                return question.createReply(QVariantMap{{"dark", 1u}});
            },
            [](const QDBusMessage& question) { return question.createReply(); },
            [](const QDBusMessage& question) {
                return question.createErrorReply(QDBusError::UnknownInterface, "there is no such interface");
            }};
    for (const FakePortal::Answer& answer : answers) {
        portal.emplace(bus, FakePortal::dark);
        portal->answer_with(answer);
        scheme.emplace();
        ASSERT_TRUE(was_asked());
        portal->announce(FakePortal::light); // comes after the answer
        QCoreApplication::processEvents();
        EXPECT_FALSE(scheme->is_dark());
        portal->announce(FakePortal::dark);
        EXPECT_TRUE(becomes(true));
        scheme.reset();
        portal.reset();
        QApplication::setPalette(QPalette(Qt::lightGray));
    }
}

TEST_F(ColourSchemeTest, AnswerMayHaveAnyNumberOfWrappers)
{
    portal.emplace(bus, FakePortal::light);
    portal->answer_with([](const QDBusMessage& question) {
        return question.createReply(wrapped(wrapped(wrapped(wrapped(FakePortal::dark)))));
    });
    scheme.emplace();
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColourSchemeTest, OddAnnouncementsAreNotHeard)
{
    start(FakePortal::dark);
    ASSERT_TRUE(becomes(true));
    for (const QVariant& value :
        {QVariant("light"), QVariant(2), QVariant(false), QVariant(QStringList{"2"})}) {
        portal->announce("org.freedesktop.appearance", "color-scheme", value);
        QCoreApplication::processEvents();
        EXPECT_TRUE(scheme->is_dark());
    }
    portal->announce(FakePortal::light);
    EXPECT_TRUE(becomes(false));
}

TEST_F(ColourSchemeTest, NothingIsHeardAfterItsEnd)
{
    start(FakePortal::light);
    ASSERT_TRUE(was_asked());
    scheme.reset();
    portal->announce(FakePortal::dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::palette(), scheme_palette(false));
}

// The message bus

TEST_F(ColourSchemeTest, EndOfTheBusIsNoTrouble)
{
    start(FakePortal::dark);
    ASSERT_TRUE(becomes(true));
    testing::internal::CaptureStderr();
    bus.kill();
    scheme.reset();
    scheme.emplace();
    QCoreApplication::processEvents();
    EXPECT_TRUE(scheme->is_dark()) << "as the palette is that it finds";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ColourSchemeTest, BusIsLookedForInTheRuntimeFolder)
{
    qunsetenv(support::session_bus);
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(support::PrivateHome::scratch_directory()));
    start(FakePortal::dark);
    EXPECT_TRUE(becomes(true));
}

TEST_F(ColourSchemeTest, FirstOfSeveralAddressesCounts)
{
    portal.emplace(bus, FakePortal::dark);
    MessageBus::use(support::session_bus, bus.address().toStdString() + ";unix:path=/nowhere");
    scheme.emplace();
    EXPECT_TRUE(becomes(true));
}

TEST(ColourSchemeOnABus, BusMayHaveASocketWithoutAFile)
{
    const QString folder = QString::fromStdString(support::PrivateHome::scratch_directory());
    const MessageBus bus(support::session_bus, "unix:abstract=" + folder + "/abstract");
    const support::App application;
    FakePortal portal(bus, FakePortal::dark);
    const ColourScheme scheme;
    EXPECT_TRUE(support::wait_until([&scheme] { return scheme.is_dark(); }));
}

namespace {

/// Starts and ends, and checks that nothing is said of the bus.
void start_without_a_bus()
{
    const support::App application;
    const support::LogCapture log;
    testing::internal::CaptureStderr();
    {
        const ColourScheme scheme;
        for (int i = 0; i < 10; ++i) {
            QCoreApplication::processEvents();
        }
        EXPECT_FALSE(scheme.is_dark());
        EXPECT_EQ(QApplication::palette(), scheme_palette(false));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

void start_without_a_bus(const std::string& address)
{
    MessageBus::use(support::session_bus, address);
    start_without_a_bus();
}

} // namespace

TEST(ColourSchemeWithoutABus, NobodyMissesABusThatIsNotThere)
{
    start_without_a_bus("unix:path=" + support::PrivateHome::scratch_directory() + "/nowhere");
}

TEST(ColourSchemeWithoutABus, NobodyMissesAnAddress)
{
    qunsetenv(support::session_bus);
    start_without_a_bus();
}

TEST(ColourSchemeWithoutABus, NobodyMissesARuntimeFolder)
{
    qunsetenv(support::session_bus);
    qunsetenv("XDG_RUNTIME_DIR");
    start_without_a_bus();
}

TEST(ColourSchemeWithoutABus, NobodyMindsABusOfAnotherKind)
{
    start_without_a_bus("carrier-pigeon:loft=7");
}

TEST(ColourSchemeWithoutABus, NobodyMindsAnAddressThatIsNone)
{
    start_without_a_bus("garbage");
}

TEST(ColourSchemeWithoutABus, NobodyMindsAnAddressThatIsTooLong)
{
    start_without_a_bus("unix:path=/" + std::string(300, 'x'));
}

TEST(ColourSchemeWithoutABus, NobodyMindsAnEmptyName)
{
    start_without_a_bus("unix:path=");
}

TEST(ColourSchemeWithoutABus, NobodyWaitsForABusThatNeverAnswers)
{
    const SilentBus bus; // takes connections, for that the operating system needs nobody
    start_without_a_bus(bus.address());
}

TEST(ColourSchemeWithoutABus, NobodyMissesABusThatClosesAtOnce)
{
    SilentBus bus;
    std::thread porter([&bus] { bus.refuse(); });
    start_without_a_bus(bus.address());
    bus.hang_up();
    porter.join();
}
