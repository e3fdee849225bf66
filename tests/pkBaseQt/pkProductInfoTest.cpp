#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>

#include <gtest/gtest.h>

#include <locale>
#include <sstream>
#include <type_traits>

#include <QtCore/QPointer>
#include <QtTest/QSignalSpy>

using pkBase::pkProductInfo;

namespace {

class GroupedNumbers : public std::numpunct<char>
{
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::string log_block()
{
    std::ostringstream stream;
    pkProductInfo::const_instance().write_to_log(stream);
    return stream.str();
}

} // namespace

TEST(pkProductInfo, HasDefaults)
{
    const pkProductInfo& info = pkProductInfo::const_instance();
    EXPECT_EQ(info.product_name(), "Tarq");
    EXPECT_EQ(info.marketing_name(), "Tarq");
    EXPECT_EQ(info.organization_name(), "Tarqa");
    EXPECT_EQ(info.version(), "0.0.0");
    EXPECT_EQ(info.build_number(), 0u);
    EXPECT_EQ(info.branch(), "");
    EXPECT_EQ(info.build_date(), "");
}

TEST(pkProductInfo, IsOneObject)
{
    EXPECT_EQ(&pkProductInfo::instance(), &pkProductInfo::const_instance());
    EXPECT_EQ(&pkProductInfo::instance(), &pkProductInfo::instance());
    EXPECT_FALSE(std::is_default_constructible<pkProductInfo>::value);
}

TEST(pkProductInfo, KeepsWhatIsSet)
{
    pkProductInfo& info = pkProductInfo::instance();
    info.product_name("TarqTerrain");
    info.marketing_name("Tarq Gel\xc3\xa4nde");
    info.organization_name("Maker & Co.");
    info.version("2.4.1-\xce\xb2");
    info.build_number(4294967295u);
    info.branch("release/2.4");
    info.build_date("2024-02-29");
    const pkProductInfo& read = pkProductInfo::const_instance();
    EXPECT_EQ(read.product_name(), "TarqTerrain");
    EXPECT_EQ(read.marketing_name(), "Tarq Gel\xc3\xa4nde");
    EXPECT_EQ(read.organization_name(), "Maker & Co.");
    EXPECT_EQ(read.version(), "2.4.1-\xce\xb2");
    EXPECT_EQ(read.build_number(), 4294967295u);
    EXPECT_EQ(read.branch(), "release/2.4");
    EXPECT_EQ(read.build_date(), "2024-02-29");
}

TEST(pkProductInfo, MarketingNameIsTheProductNameUntilSet)
{
    pkProductInfo& info = pkProductInfo::instance();
    info.product_name("TarqTerrain");
    EXPECT_EQ(info.marketing_name(), "TarqTerrain");
    info.marketing_name("Tarq Terrain");
    EXPECT_EQ(info.marketing_name(), "Tarq Terrain");
    EXPECT_EQ(info.product_name(), "TarqTerrain");
    info.marketing_name("");
    EXPECT_EQ(info.marketing_name(), "TarqTerrain");
}

TEST(pkProductInfo, TakesEmptyAndHugeTexts)
{
    const std::string huge(1024 * 1024, 'x');
    pkProductInfo& info = pkProductInfo::instance();
    info.product_name("");
    info.version(huge);
    EXPECT_EQ(info.product_name(), "");
    EXPECT_EQ(info.marketing_name(), "");
    EXPECT_EQ(log_block(), "Organisation: Tarqa\nVersion: " + huge + "\nBuild: 0\n");
}

TEST(pkProductInfo, LogBlockHasOneLinePerFact)
{
    EXPECT_EQ(log_block(), "Product: Tarq\nOrganisation: Tarqa\nVersion: 0.0.0\nBuild: 0\n");
    pkProductInfo& info = pkProductInfo::instance();
    info.marketing_name("Tarq Terrain");
    info.version("2.4.1");
    info.build_number(1712);
    info.branch("main");
    info.build_date("2024-02-29");
    EXPECT_EQ(log_block(),
        "Product: Tarq Terrain\nOrganisation: Tarqa\nVersion: 2.4.1\nBuild: 1712\nBranch: main\n"
        "Build date: 2024-02-29\n");
}

TEST(pkProductInfo, LogBlockIsTheSameWhateverTheStreamIsSetTo)
{
    pkProductInfo::instance().build_number(1712);
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new GroupedNumbers));
    stream << std::hex << std::showbase;
    pkProductInfo::instance().write_to_log(stream);
    EXPECT_EQ(stream.str(), log_block());
    EXPECT_NE(stream.str().find("Build: 1712\n"), std::string::npos);
}

TEST(pkProductInfo, ShowHelpAsksTheHelpBrowserOnly)
{
    pkProductInfo& info = pkProductInfo::instance();
    QSignalSpy inside(&info, SIGNAL(openHelp(const QString&)));
    QSignalSpy outside(&info, SIGNAL(openHelpExternal(const QString&)));
    ASSERT_TRUE(inside.isValid());
    info.show_help(QString::fromUtf8("topics/Gel\xc3\xa4nde.html#top"));
    ASSERT_EQ(inside.count(), 1);
    EXPECT_EQ(inside.first().first().toString(), QString::fromUtf8("topics/Gel\xc3\xa4nde.html#top"));
    EXPECT_EQ(outside.count(), 0);
}

TEST(pkProductInfo, ShowHelpExternalAsksOutsideOnly)
{
    pkProductInfo& info = pkProductInfo::instance();
    QSignalSpy inside(&info, SIGNAL(openHelp(const QString&)));
    QSignalSpy outside(&info, SIGNAL(openHelpExternal(const QString&)));
    ASSERT_TRUE(outside.isValid());
    info.show_help_external(QString());
    ASSERT_EQ(outside.count(), 1);
    EXPECT_EQ(outside.first().first().toString(), QString());
    EXPECT_EQ(inside.count(), 0);
}

TEST(pkProductInfo, IsDestroyedInPhaseSevenAndFreshAfterwards)
{
    static bool s_lived_in_phase_six = false;
    static QPointer<pkProductInfo> s_info;
    s_info = &pkProductInfo::instance();
    s_info->product_name("TarqTerrain");
    pkBase::pkDestructor(pkBase::pkDestructionPhase(6), [] { s_lived_in_phase_six = !s_info.isNull(); });
    static bool s_gone_in_phase_eight = false;
    pkBase::pkDestructor(pkBase::pkDestructionPhase(8), [] { s_gone_in_phase_eight = s_info.isNull(); });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(s_lived_in_phase_six);
    EXPECT_TRUE(s_gone_in_phase_eight);
    EXPECT_EQ(pkProductInfo::instance().product_name(), "Tarq");
}
