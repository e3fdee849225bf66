#include "RecentDocumentsFixture.h"
#include "support/Kept.h"
#include "support/LogCapture.h"

#include <tarqa/utilities/Exception.h>

#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

// Stored lists that were not written by the queue, or by one that knew other kinds of files.

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

typedef std::function<void()> Failure;

/// Settings of a kind that fail in their own way when they are read.
class FailingInformation : public support::FakeDataInformation
{
public:
    FailingInformation(const std::string& key, const Failure& fail)
        : FakeDataInformation(key)
        , m_fail(fail)
    { }

    using FakeDataInformation::info;
    void info(const QStringList&, int) override { m_fail(); }

private:
    Failure m_fail;
};

class FailingInformationFactory : public support::FakeDataInformationFactory
{
public:
    explicit FailingInformationFactory(const Failure& fail)
        : FakeDataInformationFactory("failing", false)
        , m_fail(fail)
    { }
    tarqa::housekeeping::AbstractDataInformation* create_unmanaged_product() override
    {
        return new FailingInformation("failing", m_fail);
    }

private:
    Failure m_fail;
};

/// A queue of three stored entries, the second of which cannot be read.
class RecentDocumentsQueueThatFails : public RecentDocumentsQueue
{
protected:
    RecentDocumentsQueueThatFails()
    {
        support::register_data_information("fake");
        store({a, b, c});
    }

    void fail_with(const Failure& fail)
    {
        support::kept(new FailingInformationFactory(fail));
        QStringList damaged = list(b);
        damaged[1] = "failing";
        store(1, damaged);
    }

    const std::string a = file("a");
    const std::string b = file("b");
    const std::string c = file("c");
};

} // namespace

TEST_F(RecentDocumentsQueue, ValueThatIsNoListIsSkippedAndTheScanGoesOn)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    store(0, 42);
    store(1, 2.5);
    store(2, true);
    store(3, QByteArray("\xff\x00\x01", 3));
    store(4, QVariant());
    store(5, QString());
    store(6, QVariantMap({{"url", QString::fromStdString(a)}}));
    store(7, QStringList());
    store(8, QVariantList());
    store(9, list(a));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a));
}

TEST_F(RecentDocumentsQueue, ListsThatHoldNoFileAreSkipped)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    store(0, list(""));
    store(1, QStringList({"", "", "", "", ""}));
    store(2, list("file://"));
    store(3,
        list("file:///"
             "no/such/directory/a.dat"));
    store(4, list("http://files.example/a.dat"));
    store(5, list("file:///%00"));
    store(6, list("%"));
    store(7, list("file:///%zz%2"));
    store(8, list("fake")); // the kind in place of the file
    store(9, list(std::string(100000, 'x')));
    store(10, list(a));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a));
}

TEST_F(RecentDocumentsQueue, PercentThatEscapesNothingStandsForItself)
{
    support::register_data_information("fake");
    const std::string path = support::PrivateHome::scratch_directory() + "/100%zz%";
    file("100%zz%");
    store(0, list("file://" + path));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre("file://" + path)); // as it was stored
}

TEST_F(RecentDocumentsQueue, PlainPathIsAFileToo)
{
    support::register_data_information("fake");
    file("a");
    const std::string path = support::PrivateHome::scratch_directory() + "/a";
    store(0, list(path));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(path));
}

TEST_F(RecentDocumentsQueue, DirectoryExistsToo)
{
    support::register_data_information("fake");
    const std::string url = tarqa::utilities::filesystem_to_url(support::PrivateHome::scratch_directory());
    store(0, list(url));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(url));
}

TEST_F(RecentDocumentsQueue, ListOfAFileAloneHasTheDefaultKind)
{
    support::register_data_information("fallback", true);
    const std::string a = file("a");
    write_settings_file("[RecentFileList]\nrecently_viewed_doc0=" + a + "\n");
    queue().load();
    ASSERT_THAT(urls(), ElementsAre(a));
    EXPECT_EQ(queue().at(0)->key(), "fallback");
}

TEST_F(RecentDocumentsQueue, ListWithoutSignIsElevationInMetres)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    store(0, QStringList({QString::fromStdString(a), "fake"}));
    queue().load();
    ASSERT_THAT(urls(), ElementsAre(a));
    EXPECT_EQ(queue().at(0)->z_sign(), DataSource::Elevation);
    EXPECT_EQ(queue().at(0)->z_units(), DataSource::Metres);
}

TEST_F(RecentDocumentsQueue, ListWithoutUnitsIsLoggedAndInMetres)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    store(0, QStringList({QString::fromStdString(a), "fake", "depth"}));
    support::LogCapture log;
    queue().load();
    EXPECT_TRUE(log.took_assert("units_found", "DataSource::unitsFromString", "housekeeping/src/DataSource"));
    ASSERT_THAT(urls(), ElementsAre(a));
    EXPECT_EQ(queue().at(0)->z_sign(), DataSource::Depth);
    EXPECT_EQ(queue().at(0)->z_units(), DataSource::Metres);
}

TEST_F(RecentDocumentsQueue, UnknownKindBecomesTheDefaultKind)
{
    support::register_data_information("fallback", true);
    const std::string a = file("a");
    store(0, QStringList({QString::fromStdString(a), "unheard of", "depth", "feet", "comma"}));
    queue().load();
    ASSERT_THAT(urls(), ElementsAre(a));
    EXPECT_EQ(queue().at(0)->key(), "fallback");
    EXPECT_EQ(queue().at(0)->z_sign(), DataSource::Depth);
}

TEST_F(RecentDocumentsQueue, UnknownKindWithoutADefaultIsSwallowed)
{
    support::register_data_information("other");
    const std::string a = file("a");
    const std::string b = file("b");
    store(0, QStringList({QString::fromStdString(a), "unheard of", "depth", "feet", "comma"}));
    store(1, QStringList({QString::fromStdString(b), "other", "depth", "feet", "comma"}));
    queue().load();
    ASSERT_THAT(urls(), ElementsAre(a, b));
    EXPECT_FALSE(queue().at(0)->data_information());
    EXPECT_EQ(queue().at(0)->z_sign(), DataSource::Depth);
    EXPECT_EQ(queue().at(0)->z_units(), DataSource::Feet);
    EXPECT_EQ(queue().at(1)->key(), "other");
}

TEST_F(RecentDocumentsQueue, LoadsWithoutAnyKindRegistered)
{
    const std::string a = file("a");
    const std::string b = file("b");
    store({a, b});
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a, b));
    EXPECT_FALSE(queue().at(0)->data_information());
}

TEST_F(RecentDocumentsQueue, SettingsThatCannotBeReadKeepTheEntry)
{
    support::register_data_information("fake").fails_to_read = true;
    const std::string a = file("a");
    const std::string b = file("b");
    store({a, b});
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a, b));
}

TEST_F(RecentDocumentsQueue, FileFullOfNonsenseLoadsNothing)
{
    write_settings_file(std::string("\0\xff[[", 4) + "RecentFileList\n=\n%%%\nrecently_viewed_doc0\n]\xc3");
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), IsEmpty());
}

TEST_F(RecentDocumentsQueue, EntriesThatAreWrittenWronglyAreSkipped)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    write_settings_file("[RecentFileList]\n"
                        "recently_viewed_doc0=@Variant(nonsense)\n"
                        "recently_viewed_doc1=@Invalid()\n"
                        "recently_viewed_doc2=\n"
                        "recently_viewed_doc3=@ByteArray("
        + a
        + "\n"
          "recently_viewed_doc4=,,,,\n"
          "recently_viewed_doc5=\"\\xZZ\"\n"
          "recently_viewed_doc6=@Rect(1 2 3 4)\n"
          "recently_viewed_doc7="
        + a + ", fake, depth, feet, comma\n");
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a));
    EXPECT_EQ(queue().at(0)->z_units(), DataSource::Feet);
}

// Kinds that fail in a way that the data source does not know

TEST_F(RecentDocumentsQueueThatFails, MakersExceptionCostsItsEntryAndIsLogged)
{
    fail_with([] { throw tarqa::Exception(42, "no such delimiter", "tests/documents", 7); });
    support::LogCapture log;
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a, c));
    EXPECT_TRUE(log.take("no such delimiter"));
    log.take_all();
    EXPECT_TRUE(is_stored(1)); // a later version may read it
}

TEST_F(RecentDocumentsQueueThatFails, UnknownExceptionCostsItsEntryAndIsLogged)
{
    fail_with([] { throw 42; });
    support::LogCapture log;
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a, c));
    EXPECT_TRUE(log.take("An entry of the recent documents cannot be read, for an unknown reason"));
    EXPECT_TRUE(is_stored(1));
}

TEST_F(RecentDocumentsQueueThatFails, StandardExceptionCostsNothingAndIsNotLogged)
{
    fail_with([] { throw std::runtime_error("no such delimiter"); });
    const support::LogCapture log;
    EXPECT_NO_THROW(queue().load());
    EXPECT_THAT(urls(), ElementsAre(a, b, c)); // without its settings
}

TEST_F(RecentDocumentsQueueThatFails, EntryThatIsInTheListAlreadyStaysInIt)
{
    push(b);
    fail_with([] { throw 42; });
    support::LogCapture log;
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(b, a, c));
    log.take_all();
}
