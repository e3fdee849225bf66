#include "../application/SettingsTable.h"
#include "PreferencesFixture.h"
#include "preferences/PreferencesChanged.h"
#include "support/MessageSpy.h"

#include <QtCore/QThreadPool>
#include <QtNetwork/QNetworkProxyFactory>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>

#include <gmock/gmock.h>

using namespace host_test;
using housekeeping::ApplicationManager;
using testing::ElementsAre;
using testing::IsEmpty;
using Page = housekeeping::gui::AbstractPreferences;

namespace {

/// Each stored setting of the application, in the words of its table.
class PreferencesPagesOfSetting : public PreferencesTest, public testing::WithParamInterface<Setting>
{
protected:
    /// A value that is not the initial one and that the page can take.
    static std::string other()
    {
        const Setting& setting = GetParam();
        return setting.key == "pathToFFmpegExecutable" ? "/bin/sh" : setting.others.front();
    }

    void start_with_page()
    {
        start();
        page = make_page(product_for_group(GetParam().group));
        page->aboutToShow();
    }

    std::string shown_value() const { return shown(*page, GetParam().key); }
    std::string value() const { return GetParam().get(manager()); }
    void enter_value(const std::string& text) { enter(*page, GetParam().key, text); }

    std::unique_ptr<Page> page;
};

std::string key_of(const testing::TestParamInfo<Setting>& info)
{
    return info.param.key;
}

class PreferencesPages : public PreferencesTest
{
protected:
    void start_with_page(const std::string& group)
    {
        start();
        page = make_page(product_for_group(group));
    }

    std::unique_ptr<Page> page;
};

} // namespace

// Each setting

TEST_P(PreferencesPagesOfSetting, IsShownAsItIs)
{
    store(GetParam().path(), QString::fromStdString(other()));
    start_with_page();
    EXPECT_EQ(shown_value(), GetParam().read_back ? other() : GetParam().initial);
}

TEST_P(PreferencesPagesOfSetting, HasItsDefaultWithNothingStored)
{
    start_with_page();
    EXPECT_EQ(shown_value(), GetParam().initial);
}

TEST_P(PreferencesPagesOfSetting, IsAppliedByAcceptOnlyAndNothingElseIs)
{
    start_with_page();
    enter_value(other());
    EXPECT_EQ(value(), GetParam().initial);
    EXPECT_THAT(stored_paths(), IsEmpty());
    page->accept();
    EXPECT_EQ(value(), other());
    EXPECT_EQ(stored(GetParam().path()), other());
    EXPECT_THAT(stored_paths(), ElementsAre(GetParam().path()));
    EXPECT_EQ(shown_value(), other());
    took_proxy_report();
}

TEST_P(PreferencesPagesOfSetting, WhatWasNotAppliedIsDroppedWhenThePageShowsAgain)
{
    start_with_page();
    enter_value(other());
    page->aboutToShow();
    EXPECT_EQ(shown_value(), GetParam().initial);
    page->accept();
    EXPECT_THAT(stored_paths(), IsEmpty());
}

TEST_P(PreferencesPagesOfSetting, ShowsWhatOthersHaveSet)
{
    start_with_page();
    GetParam().set(manager(), other());
    page->aboutToShow();
    EXPECT_EQ(shown_value(), other());
}

TEST_P(PreferencesPagesOfSetting, KeepsWhatOthersHaveSetMeanwhile)
{
    start_with_page();
    GetParam().set(manager(), other());
    page->accept();
    EXPECT_EQ(value(), other());
    EXPECT_EQ(stored(GetParam().path()), other());
}

TEST_P(PreferencesPagesOfSetting, DefaultsAreEnteredAndThenApplied)
{
    start_with_page();
    GetParam().set(manager(), other());
    page->aboutToShow();
    restore_defaults(*page);
    EXPECT_EQ(shown_value(), GetParam().initial);
    EXPECT_EQ(value(), other());
    page->accept();
    EXPECT_EQ(value(), GetParam().initial);
    EXPECT_THAT(stored_paths(), ElementsAre(GetParam().path()));
    took_proxy_report();
}

INSTANTIATE_TEST_SUITE_P(Table, PreferencesPagesOfSetting, testing::ValuesIn(settings_table()), key_of);

// Telling the program

TEST_F(PreferencesPages, OneMessageTellsThatPreferencesWereChanged)
{
    start_with_page("viewer_options");
    support::ApplicationMessageSpy spy;
    bool is_ours = false;
    QColor background;
    spy.run_in_slot([&](housekeeping::ApplicationMessage& message) {
        is_ours = terrain::is_preferences_changed(message);
        background = manager().viewBackgroundColour();
    });
    enter(*page, "background_color", "#102030");
    enter(*page, "animate_jumps", "false");
    EXPECT_EQ(spy.count(), 0);
    page->accept();
    EXPECT_EQ(spy.count(), 1);
    EXPECT_TRUE(is_ours);
    EXPECT_EQ(background, QColor("#102030")) << "they are there by then";
}

TEST_F(PreferencesPages, ApplyingNothingTellsNobody)
{
    start_with_page("viewer_options");
    const support::ApplicationMessageSpy spy;
    page->accept();
    EXPECT_EQ(spy.count(), 0);
}

TEST_F(PreferencesPages, OtherMessagesOfTheProgramAreNotTakenForIt)
{
    EXPECT_FALSE(terrain::is_preferences_changed(housekeeping::ApplicationMessage()));
}

TEST_F(PreferencesPages, MouseButtonsAreAnnouncedOnlyWhenTheyChange)
{
    start_with_page("application");
    const QSignalSpy spy(&manager(), &ApplicationManager::mouseButtonsPreferencesChanged);
    enter(*page, "showEntityIds2", "false");
    page->accept();
    EXPECT_EQ(spy.count(), 0);
    enter(*page, "mouse_mode", "2");
    page->accept();
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(PreferencesPages, ProxySettingsTakeEffectAtOnce)
{
    start_with_page("application");
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    enter(*page, "useSystemProxySettings", "false");
    EXPECT_TRUE(QNetworkProxyFactory::usesSystemConfiguration());
    page->accept();
    EXPECT_FALSE(QNetworkProxyFactory::usesSystemConfiguration());
    EXPECT_FALSE(took_proxy_report());
    enter(*page, "useSystemProxySettings", "true");
    page->accept();
    EXPECT_TRUE(QNetworkProxyFactory::usesSystemConfiguration());
    EXPECT_TRUE(took_proxy_report());
}

TEST_F(PreferencesPages, ProxySettingsAreLeftAloneWhenSomethingElseChanges)
{
    start_with_page("application");
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    enter(*page, "showEntityIds2", "false");
    page->accept();
    EXPECT_FALSE(QNetworkProxyFactory::usesSystemConfiguration());
    EXPECT_FALSE(took_proxy_report());
}

// Settings that are told otherwise than they are stored

TEST_F(PreferencesPages, ComputingInTheBackgroundIsShownAsSetWhileThePoolIsFull)
{
    start_with_page("performance_options");
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    ASSERT_FALSE(manager().useMultiThreading());
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "use_multithreading"), "true");
    page->accept();
    EXPECT_THAT(stored_paths(), IsEmpty());
    enter(*page, "use_multithreading", "false");
    page->accept();
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "use_multithreading"), "false");
}

TEST_F(PreferencesPages, SeismicQualityIsShownAsSetAndWhatIsInUseIsSaid)
{
    start_with_page("performance_options");
    const auto& in_use = dynamic_cast<const QLabel&>(*widget_of(*page, "quality_in_use"));
    EXPECT_EQ(in_use.text(), "");
    EXPECT_TRUE(in_use.isHidden());

    manager().setGlTest(true);
    manager().setGlRenderer("llvmpipe");
    ASSERT_EQ(manager().seismicRenderQuality(), housekeeping::MEDIUM_SEISMIC_RENDER_QUALITY);
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "seismicRenderQuality"), "2");
    EXPECT_EQ(in_use.text(), "In use: Medium, since the processor does the work of the graphics.");
    EXPECT_FALSE(in_use.isHidden());

    manager().setUseShaderRendering(false);
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "seismicRenderQuality"), "2");
    EXPECT_EQ(in_use.text(), "In use: Low, since drawing with shaders is off, see Viewer.");

    enter(*page, "seismicRenderQuality", "0");
    page->accept();
    EXPECT_EQ(stored("performance_options/seismicRenderQuality"), "0");
    EXPECT_TRUE(in_use.isHidden());
}

TEST_F(PreferencesPages, WhatHoldsForTheSessionIsShownAsItIsNow)
{
    start_with_page("application");
    manager().setCreateUniqueObjectNames(false);
    manager().setResetIdsOnOpen(true);
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "create_unique_object_names"), "false");
    EXPECT_EQ(shown(*page, "resetIdsOnOpen"), "true");
    enter(*page, "resetIdsOnOpen", "false");
    EXPECT_TRUE(manager().resetIdsOnOpen());
    page->accept();
    EXPECT_FALSE(manager().resetIdsOnOpen());
    EXPECT_THAT(stored_paths(), ElementsAre("application/create_unique_object_names"));
}

// Odd values

TEST_F(PreferencesPages, ASectorThatIsNotListedIsShownAndKept)
{
    store("application/industry_sector", -3);
    start_with_page("application");
    EXPECT_EQ(shown(*page, "industry_sector"), "-3");
    enter(*page, "showEntityIds2", "false");
    page->accept();
    EXPECT_EQ(manager().industrySector(), -3);
    enter(*page, "industry_sector", "4");
    page->accept();
    EXPECT_EQ(manager().industrySector(), 4);
    page->aboutToShow();
    EXPECT_EQ(shown(*page, "industry_sector"), "4");
}

TEST_F(PreferencesPages, WhatIsDamagedInTheSettingsIsShownAsItsDefaultAndLeftAlone)
{
    const std::vector<std::pair<std::string, QVariant>> damaged = {{"application/mouse_mode", 9},
        {"application/industry_sector", "mining"}, {"application/showHiddenAttributes", "perhaps"},
        {"performance_options/seismicRenderQuality", "fine"}, {"performance_options/use_multithreading", ""},
        {"viewer_options/background_color", "paper"},
        {"viewer_options/highlight_color", QByteArray("\0\xff", 2)},
        {"animation_tool/pathToFFmpegExecutable", "\n \t"}};
    for (const auto& [path, value] : damaged) {
        store(path, value);
    }
    start();
    const auto value = [](const std::string& path) {
        const std::size_t slash = path.find('/');
        const auto one = make_page(product_for_group(path.substr(0, slash)));
        one->aboutToShow();
        one->accept();
        return shown(*one, path.substr(slash + 1));
    };
    std::vector<std::string> values;
    for (const auto& entry : damaged) {
        values.push_back(value(entry.first));
    }
    EXPECT_THAT(values, ElementsAre("0", "0", "true", "2", "false", "#ffffff", "#ffff00", ""));
    for (const auto& [path, before] : damaged) {
        EXPECT_EQ(QVariant(QString::fromStdString(stored(path))), before.toString()) << path;
    }
}

TEST_F(PreferencesPages, AQualityBeyondTheHighestIsShownAsTheDefault)
{
    start();
    for (const int number : {-1, 3, 2147483647}) {
        store("performance_options/seismicRenderQuality", number);
        const auto one = make_page(product_for_group("performance_options"));
        EXPECT_EQ(shown(*one, "seismicRenderQuality"), "2") << number;
    }
}
