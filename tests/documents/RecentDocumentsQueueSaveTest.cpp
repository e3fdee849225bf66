#include "RecentDocumentsFixture.h"
#include "support/LogCapture.h"

#include <pkBaseQt/pkProductInfo.h>

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include <QtCore/QCoreApplication>

#include <sys/stat.h>

// What is stored of the list in the user's settings, and where.

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string content(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace

TEST_F(RecentDocumentsQueue, EntriesAreStoredFromTheOldestOn)
{
    queue().load();
    queue().push(source("a", "comma"));
    queue().push(source("b"));
    queue().save();
    EXPECT_EQ(stored(0), QStringList({"a", "fake", "elevation", "metres", "comma"}));
    EXPECT_EQ(stored(1), QStringList({"b", "fake", "elevation", "metres", ""}));
    EXPECT_FALSE(is_stored(2));
}

TEST_F(RecentDocumentsQueue, SignAndUnitsAreStored)
{
    queue().load();
    const auto depth = source("a", "comma");
    depth->z_sign(DataSource::Depth);
    depth->z_units(DataSource::Milliseconds);
    queue().push(depth);
    queue().save();
    EXPECT_EQ(stored(0), QStringList({"a", "fake", "depth", "milliseconds", "comma"}));
}

TEST_F(RecentDocumentsQueue, KeysAreNumberedInDecimal)
{
    queue().load();
    for (int i = 0; i < 12; ++i) {
        push("url" + std::to_string(i));
    }
    queue().save();
    EXPECT_EQ(stored(9).value(0), "url9");
    EXPECT_EQ(stored(10).value(0), "url10");
    EXPECT_EQ(stored(11).value(0), "url11");
    QSettings settings("Tarqa", "TarqAllVersions");
    settings.beginGroup("RecentFileList");
    EXPECT_EQ(settings.allKeys().size(), 12);
}

TEST_F(RecentDocumentsQueue, ListIsSharedByAllVersionsOfTheProduct)
{
    pkBase::pkProductInfo::instance().product_name("TarqTerrain");
    pkBase::pkProductInfo::instance().version("7.0");
    queue().load();
    push("a");
    queue().save();
    EXPECT_TRUE(std::filesystem::is_regular_file(settings_file()));
    EXPECT_THAT(content(settings_file()), HasSubstr("[RecentFileList]"));
    EXPECT_THAT(content(settings_file()), HasSubstr("\nrecently_viewed_doc0=a, fake, elevation, metres, "));
}

TEST_F(RecentDocumentsQueue, OrganisationIsThatOfTheProductInformation)
{
    pkBase::pkProductInfo::instance().organization_name("North Field Works");
    queue().load();
    push("a");
    queue().save();
    EXPECT_TRUE(std::filesystem::is_regular_file(settings_file("North Field Works")));
    EXPECT_FALSE(std::filesystem::exists(settings_file()));
}

TEST_F(RecentDocumentsQueue, OrganisationIsReadAtEachLoad)
{
    queue().load();
    pkBase::pkProductInfo::instance().organization_name("Later");
    push("a");
    queue().save();
    EXPECT_TRUE(is_stored(0));
    EXPECT_FALSE(std::filesystem::exists(settings_file("Later")));
    queue().load();
    queue().save();
    EXPECT_TRUE(std::filesystem::exists(settings_file("Later")));
}

TEST_F(RecentDocumentsQueue, OrganisationAndNameOfTheApplicationObjectAreNotUsed)
{
    QCoreApplication::setOrganizationName("Other");
    QCoreApplication::setApplicationName("OtherProgram");
    QSettings::setDefaultFormat(QSettings::IniFormat);
    queue().load();
    push("a");
    queue().save();
    EXPECT_TRUE(std::filesystem::is_regular_file(settings_file()));
    EXPECT_FALSE(std::filesystem::exists(std::getenv("XDG_CONFIG_HOME") + std::string("/Other")));
}

TEST_F(RecentDocumentsQueue, EntryWithoutInformationIsStoredAsAnEmptyList)
{
    const std::string b = file("b");
    queue().load();
    queue().push(boost::make_shared<DataSource>(file("a"), nullptr));
    push(b);
    queue().save();
    EXPECT_TRUE(is_stored(0));
    EXPECT_EQ(stored(0), QStringList());
    EXPECT_EQ(stored(1).value(0).toStdString(), b);

    support::register_data_information("fake");
    restart();
    queue().load(); // finds no file in the first one
    EXPECT_THAT(urls(), ElementsAre(b));
}

TEST_F(RecentDocumentsQueue, EmptyListStoresNothing)
{
    queue().load();
    queue().save();
    EXPECT_FALSE(is_stored(0));
}

TEST_F(RecentDocumentsQueue, SavingLeavesTheListAsItIs)
{
    queue().load();
    push("a");
    push("b");
    Queue::const_instance().save();
    queue().save();
    EXPECT_THAT(urls(), ElementsAre("a", "b"));
}

TEST_F(RecentDocumentsQueue, SaveBeforeTheFirstLoadLeavesTheStoredListAlone)
{
    const std::string a = file("a");
    store({a});
    push("b");
    queue().save(); // without an organisation
    EXPECT_EQ(stored(0), list(a));
    support::register_data_information("fake");
    queue().load();
    EXPECT_THAT(urls(), ElementsAre("b", a));
}

TEST_F(RecentDocumentsQueue, DestructionDoesNotSave)
{
    queue().load();
    push("a");
    restart();
    EXPECT_FALSE(is_stored(0));
}

TEST_F(RecentDocumentsQueue, PushDoesNotSave)
{
    queue().load();
    push("a");
    EXPECT_FALSE(is_stored(0));
}

TEST_F(RecentDocumentsQueue, OtherSettingsStay)
{
    QSettings("Tarqa", "TarqAllVersions").setValue("RecentFileList/other", 1);
    QSettings("Tarqa", "TarqAllVersions").setValue("recently_viewed_doc0", 2);
    QSettings("Tarqa", "TarqAllVersions").setValue("Other/recently_viewed_doc0", 3);
    queue().load();
    EXPECT_THAT(urls(), IsEmpty());
    push("a");
    queue().save();
    const QSettings settings("Tarqa", "TarqAllVersions");
    EXPECT_EQ(settings.value("RecentFileList/other").toInt(), 1);
    EXPECT_EQ(settings.value("recently_viewed_doc0").toInt(), 2);
    EXPECT_EQ(settings.value("Other/recently_viewed_doc0").toInt(), 3);
}

TEST_F(RecentDocumentsQueue, ShorterListKeepsTheOldTailAndReadsItBack)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    const std::string c = file("c");
    store({a, b, c});
    remove(a);
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(b, c));
    queue().save();
    EXPECT_EQ(stored(0), list(b));
    EXPECT_EQ(stored(1), list(c));
    EXPECT_EQ(stored(2), list(c)); // the tail
    restart();
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(b, c));
}

TEST_F(RecentDocumentsQueue, TailOfALongerListReturns)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    const std::string d = file("d");
    store({a, b});
    pkBase::pkProductInfo::instance().organization_name("Elsewhere");
    queue().load();
    EXPECT_THAT(urls(), IsEmpty());
    pkBase::pkProductInfo::instance().organization_name("Tarqa");
    queue().max_size(1);
    queue().load(); // only b stays
    push(d);
    EXPECT_THAT(urls(), ElementsAre(d));
    queue().save();
    restart();
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(d, b));
}

TEST_F(RecentDocumentsQueue, SettingsThatCannotBeWrittenHurtNobody)
{
    // A file where the directory ought to be.
    std::ofstream(std::getenv("XDG_CONFIG_HOME") + std::string("/Tarqa")) << "in the way";
    support::LogCapture log;
    queue().load();
    EXPECT_TRUE(push("a"));
    EXPECT_NO_THROW(queue().save());
    EXPECT_TRUE(log.take("The recent documents could not be stored in " + settings_file()));
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre("a"));
    EXPECT_EQ(content(std::getenv("XDG_CONFIG_HOME") + std::string("/Tarqa")), "in the way");
}

TEST_F(RecentDocumentsQueue, StoredListIsForThisUserOnly)
{
    ::umask(022);
    queue().load();
    push(file("a"));
    for (int time = 0; time < 2; ++time) {
        queue().save();
        EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(settings_file()).permissions());
    }
    EXPECT_EQ(std::filesystem::perms(0700),
        std::filesystem::status(std::filesystem::path(settings_file()).parent_path()).permissions());
    restart();
    queue().load();
    EXPECT_EQ(1u, urls().size());
}

TEST_F(RecentDocumentsQueue, AddressesThatAreNoFilesAreNotListed)
{
    const std::vector<std::string> odd
        = {"javascript:alert(1)", "data:text/html,x", "http://help.example/a.tif",
            "file://server.example/share/a.tif", file("a") + "%00.tif", file("b") + "\n"};
    for (const std::string& address : odd) {
        push(address);
    }
    queue().load();
    push(file("c"));
    queue().save();
    restart();
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(file("c")));
}

TEST_F(RecentDocumentsQueue, DirectoryInPlaceOfTheSettingsHurtsNobody)
{
    std::filesystem::create_directories(settings_file());
    support::LogCapture log;
    queue().load();
    EXPECT_TRUE(push("a"));
    EXPECT_NO_THROW(queue().save());
    EXPECT_TRUE(log.take("The recent documents could not be stored in " + settings_file()));
    EXPECT_THAT(urls(), ElementsAre("a"));
    EXPECT_TRUE(std::filesystem::is_directory(settings_file()));
}
