#include "RecentDocumentsFixture.h"
#include "support/ChildProcess.h"

#include <gmock/gmock.h>

// The list as this and other programs have stored it.

using support::ChildProcess;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts) {
        all += text + "\n";
    }
    return all;
}

/// Waits for @p work in another process. @return what it gave
std::string in_another_process(const std::function<std::string()>& work)
{
    ChildProcess process(work);
    std::string report = process.report();
    EXPECT_EQ(process.let_go(), 0);
    return report;
}

} // namespace

TEST_F(RecentDocumentsQueue, LoadsFromTheOldestOn)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    const std::string c = file("c");
    store({a, b, c});
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a, b, c));
}

TEST_F(RecentDocumentsQueue, LoadedEntryHoldsWhatWasStored)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const QStringList all = {QString::fromStdString(a), "fake", "depth", "feet", "comma"};
    store(0, all);
    queue().load();
    ASSERT_EQ(queue().size(), 1U);
    const auto entry = queue().at(0);
    EXPECT_EQ(entry->info(), all);
    EXPECT_EQ(entry->url(), a);
    EXPECT_EQ(entry->key(), "fake");
    EXPECT_EQ(entry->z_sign(), DataSource::Depth);
    EXPECT_EQ(entry->z_units(), DataSource::Feet);
    EXPECT_EQ(entry->ds_key(), ""); // of a default data source; not in the list
    EXPECT_TRUE(entry->urls().empty());
}

TEST_F(RecentDocumentsQueue, LoadsNothingWhereNothingIsStored)
{
    queue().load();
    EXPECT_EQ(queue().size(), 0U);
    EXPECT_FALSE(std::filesystem::exists(settings_file()));
}

TEST_F(RecentDocumentsQueue, MissingFileIsSkippedAndTheScanGoesOn)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string c = file("c");
    store({missing_file("x"), a, missing_file("y"), missing_file("z"), c});
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a, c));
}

TEST_F(RecentDocumentsQueue, SkippedEntryStaysStored)
{
    const std::string x = missing_file("x");
    store({x});
    queue().load();
    EXPECT_EQ(stored(0), list(x));
}

TEST_F(RecentDocumentsQueue, EntryOfAFileThatVanishedAfterLoadingStays)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    store({a});
    queue().load();
    remove(a);
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a));
}

TEST_F(RecentDocumentsQueue, FileThatComesBackIsLoadedAgain)
{
    support::register_data_information("fake");
    const std::string a = missing_file("a");
    store({a});
    queue().load();
    EXPECT_THAT(urls(), IsEmpty());
    file("a");
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a));
}

TEST_F(RecentDocumentsQueue, GapEndsTheScan)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    store(0, list(a));
    store(2, list(b));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a));
}

TEST_F(RecentDocumentsQueue, ListThatDoesNotBeginAtZeroIsNotFound)
{
    store(1, list(file("a")));
    queue().load();
    EXPECT_THAT(urls(), IsEmpty());
}

TEST_F(RecentDocumentsQueue, KeysAreScannedByNumberNotByText)
{
    support::register_data_information("fake");
    std::vector<std::string> files;
    for (int i = 0; i < 12; ++i) {
        files.push_back(file("f" + std::to_string(i)));
    }
    store(files);
    queue().load();
    EXPECT_EQ(urls(), files);
}

TEST_F(RecentDocumentsQueue, LongStoredListKeepsItsNewestTwenty)
{
    support::register_data_information("fake");
    std::vector<std::string> files;
    for (int i = 0; i < 25; ++i) {
        files.push_back(file("f" + std::to_string(i)));
    }
    store(files);
    queue().load();
    EXPECT_EQ(urls(), std::vector<std::string>(files.begin() + 5, files.end()));
}

TEST_F(RecentDocumentsQueue, DuplicateInTheStoredListCountsOnce)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    store({a, b, a});
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(b, a));
}

TEST_F(RecentDocumentsQueue, LoadingTwiceKeepsTheOrder)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    store({a, b});
    queue().load();
    const auto before = queue().at(0);
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a, b));
    EXPECT_NE(queue().at(0), before); // a new data source each time
}

TEST_F(RecentDocumentsQueue, LoadingDoesNotEmptyTheListAndPutsTheStoredEntriesLast)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    store({a, b});
    push(a);
    push("c");
    queue().load();
    EXPECT_THAT(urls(), ElementsAre("c", a, b));
}

TEST_F(RecentDocumentsQueue, SavedListComesBackInANewProcess)
{
    support::register_data_information("fake");
    const std::string odd = file("G\xc3\xa4"
                                 "nde, \"x\"; 100% @File(1).dat");
    const std::string b = file("b");
    const std::string comma = "a, b;\n\t\"c\" \\ \xc3\xa4 @Invalid()";
    in_another_process([&] {
        queue().load();
        queue().push(source(odd, comma));
        queue().push(source(b, "@ByteArray(x)"));
        queue().save();
        return "saved";
    });
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(odd, b));
    EXPECT_EQ(queue().at(0)->info(), list(odd, comma));
    EXPECT_EQ(queue().at(1)->info(), list(b, "@ByteArray(x)"));
}

TEST_F(RecentDocumentsQueue, LoadingAgainMergesWhatAnotherProcessSaved)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    const std::string c = file("c");
    queue().load();
    push(a);
    queue().save();
    const std::string seen = in_another_process([&] {
        restart();
        queue().load();
        push(b);
        queue().save();
        return joined(urls());
    });
    EXPECT_EQ(seen, joined({a, b}));
    push(c);
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(c, a, b));
}

TEST_F(RecentDocumentsQueue, ProcessThatSavesLastWinsIndexByIndex)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    const std::string c = file("c");
    queue().load();
    push(c);
    in_another_process([&] {
        restart();
        queue().load();
        push(a);
        push(b);
        queue().save();
        return "saved";
    });
    queue().save(); // only the first place
    restart();
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(c, b));
}

TEST_F(RecentDocumentsQueue, SettingsObjectOfTheHostSeesTheList)
{
    support::register_data_information("fake");
    const std::string a = file("a");
    const std::string b = file("b");
    QSettings of_the_host("Tarqa", "TarqAllVersions");
    of_the_host.beginGroup("RecentFileList");
    queue().load();
    push(a);
    queue().save();
    EXPECT_EQ(of_the_host.value("recently_viewed_doc0").toStringList(), list(a));
    EXPECT_EQ(of_the_host.group(), "RecentFileList");
    of_the_host.setValue("recently_viewed_doc1", list(b));
    queue().load();
    EXPECT_THAT(urls(), ElementsAre(a, b));
}
