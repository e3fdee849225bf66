#include "HelpFixture.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QUrlQuery>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// The form for a new issue: its address, as the browser is given it, and as the form's server reads it.

using namespace help_test;
using pkBase::pkProductInfo;
using support::LogCapture;
using tarqa::housekeeping::DataSource;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::DocumentManager;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;

namespace {

typedef std::vector<std::pair<std::string, std::string>> Items;

const char* const s_version_line
    = "Version: 2.4.1 [branch: release/2.4] - Build number 1234 - Build date 2024-05-06";

/// What a server reads in a part of a form's address: "+" is a blank there.
std::string form_decoded(QByteArray part)
{
    return QByteArray::fromPercentEncoding(part.replace('+', ' ')).toStdString();
}

/// The items of a form's address, read as its server does, in order.
Items form_items(const QUrl& url)
{
    Items items;
    const QByteArray address = url.toEncoded();
    const QByteArray query = address.mid(address.indexOf('?') + 1);
    EXPECT_FALSE(query.contains('#')); // what follows it is not sent
    for (const QByteArray& item : query.split('&')) {
        const int end_of_name = item.contains('=') ? item.indexOf('=') : item.size();
        items.emplace_back(form_decoded(item.left(end_of_name)), form_decoded(item.mid(end_of_name + 1)));
    }
    return items;
}

class HelpManagerIssue : public HelpFixture
{
protected:
    HelpManagerIssue()
    {
        pkProductInfo& product = pkProductInfo::instance();
        product.version("2.4.1");
        product.branch("release/2.4");
        product.build_number(1234);
        product.build_date("2024-05-06");
    }

    /// The address that was opened, once.
    static QUrl report()
    {
        OpenedUrls opened;
        call("newJIRAIssue");
        const std::vector<QUrl> urls = opened.take();
        EXPECT_EQ(1u, urls.size());
        return urls.empty() ? QUrl() : urls.front();
    }

    static std::string description()
    {
        for (const auto& item : form_items(report())) {
            if (item.first == "description") {
                return item.second;
            }
        }
        return "no description";
    }

    /// A new current document with a data source that is called @p key.
    static support::FakeDocument& open_document(const std::string& key)
    {
        support::FakeDocument& document = support::create_document();
        document.datasource(boost::shared_ptr<DataSource>(new DataSource(key, {})));
        return document;
    }
};

} // namespace

TEST_F(HelpManagerIssue, ItemsStandInTheirOrder)
{
    EXPECT_THAT(form_items(report()),
        ElementsAre(Pair("pid", "10001"), Pair("issuetype", "1"), Pair("reporter", ""),
            Pair("assignee", "-1"), Pair("priority", "6"), Pair("summary", ""),
            Pair("description", std::string("\n\n") + s_version_line), Pair("versions", "11900")));
}

TEST_F(HelpManagerIssue, AddressIsWrittenThisWay)
{
    pkProductInfo::instance().branch("main");
    const QByteArray address = report().toEncoded();
    EXPECT_EQ("pid=10001&issuetype=1&reporter=&assignee=-1&priority=6&summary=&description=",
        address.mid(address.indexOf('?') + 1).split('V').front().replace("%0A%0A", "").toStdString());
    EXPECT_THAT(address.toStdString(), testing::EndsWith("2024-05-06&versions=11900"));
    EXPECT_THAT(address.toStdString(), HasSubstr("description=%0A%0AVersion"));
    EXPECT_FALSE(address.contains('+'));
    EXPECT_FALSE(address.contains(' '));
}

TEST_F(HelpManagerIssue, FormLeadsNowhereUntilItIsSet)
{
    const QUrl form = HelpManager::issue_form();
    EXPECT_EQ("https", form.scheme());
    EXPECT_TRUE(form.host().endsWith(".example")) << form.host().toStdString();
    EXPECT_FALSE(form.hasQuery());
    EXPECT_EQ(form, report().adjusted(QUrl::RemoveQuery));
}

TEST_F(HelpManagerIssue, HostSetsTheForm)
{
    const QUrl form("http://issues.host.example:8080/secure/CreateIssueDetails!init.jspa");
    HelpManager::issue_form(form);
    EXPECT_EQ(form, HelpManager::issue_form());
    const QUrl url = report();
    EXPECT_EQ(form, url.adjusted(QUrl::RemoveQuery));
    EXPECT_EQ(8u, form_items(url).size());
    EXPECT_EQ(form, HelpManager::issue_form()); // as it was
    EXPECT_EQ(url, report());
}

TEST_F(HelpManagerIssue, QueryOfTheHostsFormIsReplaced)
{
    HelpManager::issue_form(QUrl("https://issues.host.example/new?pid=7&team=maps&description=old"));
    const QUrl url = report();
    EXPECT_EQ(QUrl("https://issues.host.example/new"), url.adjusted(QUrl::RemoveQuery));
    EXPECT_THAT(form_items(url),
        ElementsAre(Pair("pid", "10001"), Pair("issuetype", "1"), Pair("reporter", ""),
            Pair("assignee", "-1"), Pair("priority", "6"), Pair("summary", ""),
            Pair("description", std::string("\n\n") + s_version_line), Pair("versions", "11900")));
    EXPECT_EQ("pid=7&team=maps&description=old", HelpManager::issue_form().query()); // as it was
}

TEST_F(HelpManagerIssue, FactsThatAreNotSetAreReportedAsTheyAre)
{
    pkProductInfo& product = pkProductInfo::instance();
    product.version("0.0.0");
    product.branch("");
    product.build_number(0);
    product.build_date("");
    EXPECT_EQ("\n\nVersion: 0.0.0 [branch: ] - Build number 0 - Build date ", description());
}

TEST_F(HelpManagerIssue, FactsKeepTheirSpecialCharacters)
{
    pkProductInfo& product = pkProductInfo::instance();
    product.version("2.4+rc1 %1 %2");
    product.branch(u8"fix/a&b#c=d+e%20f Größe");
    product.build_number(4294967295u);
    product.build_date("6 May 2024, 10:00+02:00");
    EXPECT_EQ(u8"\n\nVersion: 2.4+rc1 %1 %2 [branch: fix/a&b#c=d+e%20f Größe] - Build number 4294967295"
              " - Build date 6 May 2024, 10:00+02:00",
        description());
}

// The document

TEST_F(HelpManagerIssue, DocumentIsNamedInASecondLine)
{
    open_document("/data/north field.dat");
    EXPECT_EQ(
        std::string("\n\n") + s_version_line + "\nCurrent Document: /data/north field.dat", description());
}

TEST_F(HelpManagerIssue, DocumentChangesNothingButTheDescription)
{
    const Items without = form_items(report());
    open_document("/data/north field.dat");
    Items with = form_items(report());
    ASSERT_EQ(without.size(), with.size());
    EXPECT_THAT(with[6].second, StartsWith(without[6].second));
    with[6] = without[6];
    EXPECT_EQ(without, with);
}

TEST_F(HelpManagerIssue, DocumentIsTheCurrentOne)
{
    const support::FakeDocument& first = open_document("/data/first.dat");
    open_document("/data/second.dat");
    EXPECT_THAT(description(), HasSubstr("\nCurrent Document: /data/second.dat"));
    DocumentManager::instance().current_document(first.id());
    EXPECT_THAT(description(), HasSubstr("\nCurrent Document: /data/first.dat"));
}

TEST_F(HelpManagerIssue, DocumentIsNamedByItsDisplayKey)
{
    support::FakeDocument& document = open_document("/data/north field.dat");
    const boost::shared_ptr<DataSource> source(new DataSource("/data/a.dat",
        boost::shared_ptr<tarqa::housekeeping::AbstractDataInformation>(
            new support::FakeDataInformation("kind of file"))));
    source->ds_key("North Field");
    document.datasource(source);
    EXPECT_THAT(description(), testing::EndsWith("\nCurrent Document: North Field"));
}

struct Key
{
    const char* name; // of the test
    const char* key;
};

void PrintTo(const Key& key, std::ostream* p_stream)
{
    *p_stream << key.name;
}

class HelpManagerIssueKey : public HelpManagerIssue, public testing::WithParamInterface<Key>
{ };

TEST_P(HelpManagerIssueKey, ReachesTheFormAsItIs)
{
    open_document(GetParam().key);
    const QUrl url = report();
    const Items items = form_items(url);
    ASSERT_EQ(8u, items.size()) << url.toEncoded().toStdString();
    EXPECT_EQ(
        std::string("\n\n") + s_version_line + "\nCurrent Document: " + GetParam().key, items[6].second);
    EXPECT_EQ("versions", items[7].first);
    // What the desktop hands to the browser, by whichever of its forms, is the same.
    EXPECT_EQ(items, form_items(QUrl(url.toString(QUrl::FullyEncoded))));
    EXPECT_EQ(items, form_items(QUrl(url.toString())));
}

INSTANTIATE_TEST_SUITE_P(HelpManager, HelpManagerIssueKey,
    testing::Values(Key{"Plus", "a+b"}, Key{"Ampersand", "a&b=c"}, Key{"Hash", "a#b"}, Key{"Equals", "="},
        Key{"Umlauts", u8"Störung Ägir ß"}, Key{"OtherScripts", u8"岩石 🪨"}, Key{"PercentSign", "100%"},
        Key{"OnlyAPercentSign", "%"}, Key{"EncodedPercentSign", "100%25"}, Key{"EncodedBlank", "a%20b"},
        Key{"EncodedUmlaut", "a%C3%BCb"}, Key{"PercentSignBeforeLetters", "a%zzb"},
        Key{"Placeholders", "%1 %2"}, Key{"Blank", "a b"}, Key{"Separators", "a;b,c?d/e:f@g"},
        Key{"MarkUp", "<b>\"bold\"</b>"}, Key{"Brackets", "{a}|[b]\\^`'"}, Key{"Others", "~a*(b)!$"},
        Key{"LineEnd", "a\nb"}),
    [](const testing::TestParamInfo<Key>& key) { return std::string(key.param.name); });

TEST_F(HelpManagerIssue, NoDocumentIsNotNamed)
{
    const LogCapture log; // and not missed
    EXPECT_THAT(description(), Not(HasSubstr("Current Document")));
}

TEST_F(HelpManagerIssue, DocumentThatWasClosedIsNotNamed)
{
    const DocumentId id = open_document("/data/north field.dat").id();
    DocumentManager::instance().destroy_document(id, true, false, false, DocumentId::null());
    EXPECT_THAT(description(), Not(HasSubstr("Current Document")));
}

TEST_F(HelpManagerIssue, DocumentWithoutADataSourceIsNotNamed)
{
    support::create_document();
    ASSERT_FALSE(DocumentManager::instance().current_document().datasource());
    EXPECT_EQ(std::string("\n\n") + s_version_line, description());
}

TEST_F(HelpManagerIssue, DocumentWithAnEmptyKeyIsNotNamed)
{
    support::create_document().datasource(boost::shared_ptr<DataSource>(new DataSource));
    EXPECT_EQ(std::string("\n\n") + s_version_line, description());
}

// Around it

TEST_F(HelpManagerIssue, NeedsNeitherLauncherNorActions)
{
    report();
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(boxes().empty());
}

TEST_F(HelpManagerIssue, IsConnectedByNameToAnActionOfTheHost)
{
    QAction host("Report a Problem...");
    ASSERT_TRUE(QObject::connect(&host, SIGNAL(triggered()), &manager(), SLOT(newJIRAIssue())));
    OpenedUrls opened;
    host.trigger();
    EXPECT_EQ(1u, opened.take().size());
}

TEST_F(HelpManagerIssue, FormIsNamedWhenThereIsNoBrowser)
{
    LogCapture log;
    call("newJIRAIssue"); // no handler, and this platform has no services of its own
    EXPECT_TRUE(log.take(HelpManager::issue_form().toString().toStdString()));
    log.take_all();
    // To be copied, it is the whole address.
    const QString text = dismiss_box();
    const QUrl named(text.mid(text.indexOf(HelpManager::issue_form().toString())));
    EXPECT_EQ(form_items(report()), form_items(named));
}
