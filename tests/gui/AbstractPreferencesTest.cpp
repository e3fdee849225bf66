#include "PreferencesFixture.h"

#include <gmock/gmock.h>

#include <QtCore/QMetaMethod>

#include <limits>
#include <type_traits>

// A page by itself.

using preferences_test::FakePage;
using tarqa::housekeeping::gui::AbstractPreferences;
using testing::ElementsAre;

namespace {

/// A page that stores its values in its own way, called as the page calls itself.
class StoringPage : public AbstractPreferences
{
public:
    void read_page(const std::string& path) { read(path); }
    void write_page(const std::string& path) { write(path); }
    void read_base(const std::string& path) { AbstractPreferences::read(path); }
    void write_base(const std::string& path) { AbstractPreferences::write(path); }

    std::vector<std::string> paths;

protected:
    void read(const std::string& path) override { paths.push_back("read " + path); }
    void write(const std::string& path) override { paths.push_back("write " + path); }
};

} // namespace

TEST(AbstractPreferences, IsAWidgetWithSlots)
{
    EXPECT_TRUE((std::is_base_of_v<QWidget, AbstractPreferences>));
    EXPECT_TRUE(std::has_virtual_destructor_v<AbstractPreferences>);
    const QMetaObject& meta = AbstractPreferences::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tarqa::housekeeping::gui::AbstractPreferences");
    for (const char* slot : {"accept()", "aboutToShow()"}) {
        const int index = meta.indexOfMethod(slot);
        ASSERT_GE(index, meta.methodOffset()) << slot;
        EXPECT_EQ(meta.method(index).methodType(), QMetaMethod::Slot) << slot;
        EXPECT_EQ(meta.method(index).access(), QMetaMethod::Public) << slot;
    }
}

TEST(AbstractPreferences, HasNeitherLabelNorWeightAtFirst)
{
    const support::App app;
    const AbstractPreferences page;
    EXPECT_EQ(page.label(), QString());
    EXPECT_EQ(page.weight(), 0);
    EXPECT_EQ(page.parentWidget(), nullptr);
}

TEST(AbstractPreferences, KeepsLabelAndWeight)
{
    const support::App app;
    AbstractPreferences page;
    for (const char* label : {"General", "A && B", "Gel\xc3\xa4nde %1", ""}) {
        page.label(label);
        EXPECT_EQ(page.label(), QString::fromUtf8(label));
    }
    for (const int weight : {5, -5, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        page.weight(weight);
        EXPECT_EQ(page.weight(), weight);
    }
}

TEST(AbstractPreferences, TakesAParent)
{
    const support::App app;
    QWidget parent;
    const AbstractPreferences page(&parent);
    EXPECT_EQ(page.parentWidget(), &parent);
}

TEST(AbstractPreferences, IsValidUnlessItSaysOtherwise)
{
    const support::App app;
    AbstractPreferences page;
    EXPECT_TRUE(page.isValidPanel());
}

TEST(AbstractPreferences, BaseAppliesRefreshesAndStoresNothing)
{
    const support::App app;
    StoringPage page;
    page.label("General");
    page.AbstractPreferences::accept();
    page.AbstractPreferences::aboutToShow();
    page.read_base("path");
    page.write_base("path");
    EXPECT_TRUE(page.paths.empty());
    EXPECT_EQ(page.label(), "General");
    EXPECT_TRUE(page.children().isEmpty());
}

TEST(AbstractPreferences, ReadsAndWritesInItsOwnWay)
{
    const support::App app;
    StoringPage page;
    page.read_page("General/Page");
    page.write_page("General/Page");
    EXPECT_THAT(page.paths, ElementsAre("read General/Page", "write General/Page"));
}

TEST(AbstractPreferences, SlotsReachThePageThatOverridesThem)
{
    const support::App app;
    FakePage page("a", 0);
    EXPECT_TRUE(QMetaObject::invokeMethod(&page, "accept"));
    EXPECT_TRUE(QMetaObject::invokeMethod(&page, "aboutToShow"));
    EXPECT_THAT(support::journal().entries(), ElementsAre("a.accept", "a.aboutToShow"));
}
