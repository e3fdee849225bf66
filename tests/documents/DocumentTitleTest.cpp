#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <memory>

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;

namespace {

boost::shared_ptr<DataSource> source(const std::string& file)
{
    return boost::make_shared<DataSource>(file, boost::make_shared<support::FakeDataInformation>("fake"));
}

std::string short_title_of(const std::string& title, bool linked = false)
{
    FakeDocument document;
    TestAccess::title(document, title);
    EXPECT_EQ(title, document.title());
    document.linked_to_petrel(linked);
    return document.short_title();
}

} // namespace

TEST(AbstractDocument, TitlesCountTheDocumentsOfTheProcess)
{
    auto first = std::make_unique<FakeDocument>();
    const FakeDocument second;
    EXPECT_EQ("Document 1", first->title());
    EXPECT_EQ("Document 2", second.title());
    first.reset();
    EXPECT_EQ("Document 3", FakeDocument().title());
}

TEST(AbstractDocument, FirstTitleIsNoChange)
{
    const FakeDocument document;
    EXPECT_EQ(0, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, TitleFollowsTheDataSource)
{
    FakeDocument& document = create_document();
    const auto data = source("file:///data/a%20b.dat");
    document.datasource(data);
    EXPECT_EQ(data, document.datasource());
    EXPECT_EQ("/data/a b.dat", document.title());
    EXPECT_EQ(1, journal().count("Document 1.title_changed(/data/a b.dat)"));
    EXPECT_EQ(1, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, TitlePrefersTheDisplayKey)
{
    FakeDocument& document = create_document();
    const auto data = source("file:///data/a.dat");
    data->ds_key("North field");
    document.datasource(data);
    EXPECT_EQ("North field", document.title());
}

TEST(AbstractDocument, TitleTakesTheUrlOfASourceWithoutADisplayKey)
{
    support::register_data_information("fake");
    FakeDocument& document = create_document();
    const auto data = boost::make_shared<DataSource>();
    data->info({"file:///data/a.dat", "fake", "depth", "feet"});
    ASSERT_EQ("", data->ds_key());
    document.datasource(data);
    EXPECT_EQ("/data/a.dat", document.title());
    EXPECT_EQ(1, journal().count("Document 1.title_changed(/data/a.dat)"));
}

TEST(AbstractDocument, SourceWithoutKeyAndUrlLeavesTheTitle)
{
    FakeDocument& document = create_document();
    document.datasource(source(""));
    EXPECT_EQ("Document 1", document.title());
    EXPECT_EQ(0, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, SourceWithoutInformationLeavesTheTitle)
{
    FakeDocument& document = create_document();
    const auto data = boost::make_shared<DataSource>("/data/a.dat", nullptr);
    document.datasource(data);
    EXPECT_EQ(data, document.datasource());
    EXPECT_EQ("Document 1", document.title());
    EXPECT_EQ(0, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, EmptySourceIsLoggedAndStored)
{
    FakeDocument& document = create_document();
    document.datasource(source("/data/a.dat"));
    support::LogCapture log;
    document.datasource(nullptr);
    EXPECT_TRUE(log.took_assert(
        "utilities::valid_pointer(ds)", "AbstractDocument::datasource", "housekeeping/src/AbstractDocument"));
    EXPECT_FALSE(document.datasource());
    EXPECT_EQ("/data/a.dat", document.title());
    EXPECT_EQ(1, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, DocumentsOfOneFileAreNumbered)
{
    FakeDocument& first = create_document();
    FakeDocument& second = create_document();
    FakeDocument& third = create_document();
    FakeDocument& other = create_document();
    first.datasource(source("/data/a.dat"));
    other.datasource(source("/data/b.dat"));
    second.datasource(source("/data/a.dat"));
    third.datasource(source("file:///data/a.dat")); // the same file
    EXPECT_EQ("/data/a.dat", first.title());
    EXPECT_EQ("/data/a.dat 2", second.title());
    EXPECT_EQ("/data/a.dat 3", third.title());
    EXPECT_EQ("/data/b.dat", other.title());
    EXPECT_EQ(1, journal().count("Document 2.title_changed(/data/a.dat 2)"));
}

TEST(AbstractDocument, ClosedDocumentsDoNotCountForTheNumber)
{
    FakeDocument& first = create_document();
    FakeDocument& second = create_document();
    first.datasource(source("/data/a.dat"));
    DocumentManager::instance().destroy_document(first.id(), true, false, false, DocumentId::null());
    second.datasource(source("/data/a.dat"));
    EXPECT_EQ("/data/a.dat", second.title());
}

TEST(AbstractDocument, NumberComparesUrlsWithTheNewKey)
{
    FakeDocument& first = create_document();
    FakeDocument& second = create_document();
    for (FakeDocument* document : {&first, &second}) {
        const auto data = source("/data/a.dat");
        data->ds_key("North field");
        document->datasource(data);
    }
    EXPECT_EQ("North field", first.title());
    EXPECT_EQ("North field", second.title()); // no url reads "North field"
}

TEST(AbstractDocument, DocumentThatIsNotRegisteredDoesNotCount)
{
    FakeDocument& first = create_document();
    first.datasource(source("/data/a.dat"));
    FakeDocument stray;
    stray.datasource(source("/data/a.dat"));
    EXPECT_EQ("/data/a.dat", stray.title());
}

TEST(AbstractDocument, SourceWithoutInformationCountsForTheNumber)
{
    create_document().datasource(boost::make_shared<DataSource>("/data/a.dat", nullptr));
    FakeDocument& second = create_document();
    second.datasource(source("/data/a.dat"));
    EXPECT_EQ("/data/a.dat 2", second.title());
}

TEST(AbstractDocument, NumberCountsWhatTheSourcesSayNow)
{
    support::register_data_information("fake");
    FakeDocument& first = create_document();
    FakeDocument& second = create_document();
    FakeDocument& third = create_document();
    for (FakeDocument* document : {&first, &second}) {
        document->datasource(source("/data/a.dat"));
    }
    second.datasource()->info({"file:///data/b%2Edat", "fake", "depth", "feet"});
    third.datasource(source("/data/b.dat"));
    EXPECT_EQ("/data/b.dat 2", third.title());
    third.datasource(source("/data/a.dat"));
    EXPECT_EQ("/data/a.dat 2", third.title()); // the first one's and its own
    EXPECT_EQ("/data/a.dat 2", second.title()); // as it was
}

TEST(AbstractDocument, EmptyKeyChangesNothing)
{
    FakeDocument document;
    TestAccess::title(document, "");
    EXPECT_EQ("Document 1", document.title());
    EXPECT_EQ(0, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, ShortTitleHasNoDirectoriesAndNoLastExtension)
{
    EXPECT_EQ("well.field", short_title_of("C:\\data\\well.field.tq"));
    EXPECT_EQ("well.field", short_title_of("/data/well.field.tq"));
    EXPECT_EQ("well", short_title_of("well.tq"));
    EXPECT_EQ("well", short_title_of("well"));
    EXPECT_EQ("", short_title_of("/data/"));
    EXPECT_EQ("a 2", short_title_of("/data.d/a 2"));
}

TEST(AbstractDocument, ShortTitleOfANewDocumentIsItsTitle)
{
    EXPECT_EQ("Document 1", FakeDocument().short_title());
}

TEST(AbstractDocument, ShortTitleLooksForABackslashOnlyWithoutSlashes)
{
    EXPECT_EQ("b\\c", short_title_of("a/b\\c.d"));
    EXPECT_EQ("b\\c", short_title_of("/b\\c.d"));
}

TEST(AbstractDocument, ShortTitleKeepsOtherAlphabets)
{
    EXPECT_EQ("Brønn åtte", short_title_of("/data/Brønn åtte.tq"));
}

TEST(AbstractDocument, ShortTitleTellsOfThePetrelLink)
{
    EXPECT_EQ("well.field (Linked to Petrel)", short_title_of("C:\\data\\well.field.tq", true));
}
