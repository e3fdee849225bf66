#include "support/Fakes.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/Url.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using namespace tarqa::housekeeping;
using support::FakeDataInformation;

namespace {

boost::shared_ptr<FakeDataInformation> information(const std::string& settings)
{
    const auto made = boost::make_shared<FakeDataInformation>("fake");
    made->settings = settings;
    return made;
}

FakeDataInformation& fake(const DataSource& source)
{
    return dynamic_cast<FakeDataInformation&>(*source.data_information());
}

DataSource::Units units(int number)
{
    return static_cast<DataSource::Units>(number);
}

/// Settings whose reading fails with the maker's exception.
class RefusingInformation : public FakeDataInformation
{
public:
    RefusingInformation()
        : FakeDataInformation("refusing")
    { }
    using FakeDataInformation::info;
    void info(const QStringList&, int) override { throw tarqa::Exception(42, "refused", "tests", 7); }
};

/// Makes those, or nothing.
class SpecialFactory : public support::FakeDataInformationFactory
{
public:
    SpecialFactory(const std::string& name, bool gives_nothing)
        : FakeDataInformationFactory(name, false)
        , m_gives_nothing(gives_nothing)
    { }
    AbstractDataInformation* create_unmanaged_product() override
    {
        return m_gives_nothing ? nullptr : new RefusingInformation;
    }

private:
    bool m_gives_nothing;
};

} // namespace

TEST(DataSource, DefaultIsEmptyInMetresAndElevation)
{
    const DataSource source;
    EXPECT_FALSE(source.data_information());
    EXPECT_EQ("", source.url());
    EXPECT_TRUE(source.urls().empty());
    EXPECT_EQ("", source.ds_key());
    EXPECT_EQ(1, source.z_units());
    EXPECT_EQ(64, source.z_sign());
    EXPECT_FALSE(source.inTime());
}

TEST(DataSource, SingleFileIsUrlAndDisplayKey)
{
    const auto settings = information("s");
    const DataSource source("file:///data/a.dat", settings);
    EXPECT_EQ("file:///data/a.dat", source.url());
    EXPECT_EQ("file:///data/a.dat", source.ds_key());
    EXPECT_TRUE(source.urls().empty());
    EXPECT_EQ(settings, source.data_information());
    EXPECT_EQ("fake", source.key());
    EXPECT_EQ(1, source.z_units());
    EXPECT_EQ(64, source.z_sign());
}

TEST(DataSource, SeveralFilesHaveTheFirstAsDisplayKeyAndNoUrl)
{
    const std::vector<std::string> files = {"a.dat", "b.dat"};
    const DataSource source(files, information("s"));
    EXPECT_EQ(files, source.urls());
    EXPECT_EQ("a.dat", source.ds_key());
    EXPECT_EQ("", source.url());
}

TEST(DataSource, SeveralFilesKeepTheInformationInMetresAndElevation)
{
    const auto settings = information("s");
    const DataSource source(std::vector<std::string>{"a.dat", "b.dat"}, settings);
    EXPECT_EQ(settings, source.data_information());
    EXPECT_EQ("fake", source.key());
    EXPECT_EQ(1, source.z_units());
    EXPECT_EQ(64, source.z_sign());
}

TEST(DataSource, NoFilesGiveAnEmptyDisplayKey)
{
    const DataSource source(std::vector<std::string>(), information("s"));
    EXPECT_EQ("", source.ds_key());
    EXPECT_TRUE(source.urls().empty());
}

TEST(DataSource, KeyWithoutInformationIsEmpty)
{
    EXPECT_EQ("", DataSource().key());
}

TEST(DataSource, EmptyDisplayKeyIsIgnored)
{
    DataSource source("a.dat", nullptr);
    source.ds_key("North field");
    EXPECT_EQ("North field", source.ds_key());
    source.ds_key("");
    EXPECT_EQ("North field", source.ds_key());
    EXPECT_EQ("a.dat", source.url());
}

TEST(DataSource, UnitsHaveCanonicalTexts)
{
    const std::vector<std::pair<int, QString>> texts
        = {{0, "inches"}, {1, "metres"}, {2, "feet"}, {3, "miles"}, {4, "metres"}, {5, "kilometres"},
            {6, "seconds"}, {7, "milliseconds"}, {8, "metres"}, {9, "decimetres"}, {10, "metres"}};
    DataSource source;
    for (const auto& [number, text] : texts) {
        source.z_units(units(number));
        EXPECT_EQ(number, source.z_units());
        EXPECT_EQ(text, source.z_units_string()) << number;
        EXPECT_EQ(number == 6 || number == 7, source.inTime()) << number;
    }
}

TEST(DataSource, UnitsAreReadInEverySpelling)
{
    const std::vector<std::pair<int, QStringList>> spellings = {{1, {"METRES", "METRE", "M"}},
        {9, {"DECIMETRES", "DECIMETRE", "DM"}}, {5, {"KILOMETRES", "KILOMETRE", "KILO", "KM", "KMS"}},
        {0, {"INCHES", "INCH", "IN"}}, {2, {"FEET", "FOOT", "FT"}}, {3, {"MILES", "MILE", "ML"}},
        {6, {"SECONDS", "SECOND", "SEC"}}, {7, {"MILLISECONDS", "MILLISECOND", "MSEC"}}};
    for (const auto& [number, texts] : spellings) {
        for (const QString& text : texts) {
            EXPECT_EQ(number, DataSource::unitsFromString(text)) << text.toStdString();
            EXPECT_EQ(number, DataSource::unitsFromString(text.toLower())) << text.toStdString();
        }
    }
    EXPECT_EQ(5, DataSource::unitsFromString("Kms"));
    EXPECT_EQ(1, DataSource::unitsFromString("Metres"));
}

TEST(DataSource, CanonicalTextsAreReadBack)
{
    for (const int number : {0, 1, 2, 3, 5, 6, 7, 9}) {
        DataSource source;
        source.z_units(units(number));
        EXPECT_EQ(number, DataSource::unitsFromString(source.z_units_string()));
    }
}

TEST(DataSource, UnknownUnitsAreLoggedAndGiveMetres)
{
    for (const char* text : {"yards", "ms", "S", "", " M", "metres "}) {
        support::LogCapture log;
        EXPECT_EQ(1, DataSource::unitsFromString(text)) << text;
        EXPECT_TRUE(
            log.took_assert("units_found", "DataSource::unitsFromString", "housekeeping/src/DataSource"))
            << text;
    }
}

TEST(DataSource, UnitsAreSetByText)
{
    DataSource source;
    source.z_units(QString("millisecond"));
    EXPECT_EQ(7, source.z_units());
    EXPECT_TRUE(source.inTime());
}

TEST(DataSource, SignIsReadCaseSensitively)
{
    EXPECT_EQ(128, DataSource::signFromString("depth"));
    for (const char* text : {"Depth", "DEPTH", "depth ", "elevation", ""}) {
        EXPECT_EQ(64, DataSource::signFromString(text)) << text;
    }
}

TEST(DataSource, SignHasATextForDepthOnly)
{
    DataSource source;
    EXPECT_EQ("elevation", source.z_sign_string());
    source.z_sign(DataSource::Depth);
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ("depth", source.z_sign_string());
    source.z_sign(static_cast<DataSource::Sign>(1));
    EXPECT_EQ("elevation", source.z_sign_string());
}

TEST(DataSource, ListIsEmptyWithoutInformation)
{
    EXPECT_TRUE(DataSource("a.dat", nullptr).info().isEmpty());
    EXPECT_TRUE(DataSource().info().isEmpty());
}

TEST(DataSource, ListHoldsUrlKindSignUnitsAndSettings)
{
    DataSource source("a.dat", information("comma"));
    EXPECT_EQ(QStringList({"a.dat", "fake", "elevation", "metres", "comma"}), source.info());
    source.z_sign(DataSource::Depth);
    source.z_units(DataSource::Milliseconds);
    EXPECT_EQ(QStringList({"a.dat", "fake", "depth", "milliseconds", "comma"}), source.info());
}

TEST(DataSource, ListIsReadBackUnchanged)
{
    support::register_data_information("fake");
    const QStringList list = {"a.dat", "fake", "depth", "decimetres", "comma"};
    DataSource source;
    source.info(list);
    EXPECT_EQ(list, source.info());
    EXPECT_EQ("a.dat", source.url());
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(9, source.z_units());
    EXPECT_EQ("comma", fake(source).settings);
    EXPECT_EQ(4, fake(source).first_read);
    EXPECT_EQ("", source.ds_key()); // not part of the list
}

TEST(DataSource, EmptyListChangesNothing)
{
    const auto settings = information("comma");
    DataSource source("a.dat", settings);
    source.z_sign(DataSource::Depth);
    source.info(QStringList());
    EXPECT_EQ("a.dat", source.url());
    EXPECT_EQ(settings, source.data_information());
    EXPECT_EQ(128, source.z_sign());
}

TEST(DataSource, ListOfTwoEntriesLeavesSignAndUnits)
{
    support::register_data_information("fake");
    DataSource source;
    source.z_sign(DataSource::Depth);
    source.z_units(DataSource::Feet);
    source.info({"a.dat", "fake"});
    EXPECT_EQ("a.dat", source.url());
    EXPECT_EQ("fake", source.key());
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(2, source.z_units());
}

TEST(DataSource, ListOfOneEntryHasTheDefaultKind)
{
    support::register_data_information("fallback", true);
    DataSource source;
    source.info({"a.dat"});
    EXPECT_EQ("a.dat", source.url());
    EXPECT_EQ("fallback", source.key());
}

TEST(DataSource, ListWithoutUnitsLogsThemAndSetsTheSign)
{
    support::register_data_information("fake");
    support::LogCapture log;
    DataSource source;
    source.z_units(DataSource::Feet);
    source.info({"a.dat", "fake", "depth"});
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(1, source.z_units());
    EXPECT_TRUE(log.took_assert("units_found", "DataSource::unitsFromString", "housekeeping/src/DataSource"));
}

TEST(DataSource, KindThatCannotBeMadeIsSwallowedAndTheRestIsRead)
{
    const auto settings = information("old"); // and no factory at all
    DataSource source("old.dat", settings);
    EXPECT_NO_THROW(source.info({"new.dat", "unheard of", "depth", "feet", "comma"}));
    EXPECT_EQ("new.dat", source.url());
    EXPECT_EQ(settings, source.data_information());
    EXPECT_EQ("old", settings->settings);
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(2, source.z_units());
}

TEST(DataSource, UnknownKindWithoutADefaultIsSwallowedToo)
{
    support::register_data_information("fake");
    DataSource source;
    EXPECT_NO_THROW(source.info({"new.dat", "unheard of", "depth", "feet"}));
    EXPECT_FALSE(source.data_information());
    EXPECT_EQ(128, source.z_sign());
}

TEST(DataSource, SettingsThatCannotBeReadLeaveTheNewInformation)
{
    support::register_data_information("fake").fails_to_read = true;
    DataSource source("old.dat", nullptr);
    EXPECT_NO_THROW(source.info({"new.dat", "fake", "depth", "feet", "comma"}));
    EXPECT_EQ("new.dat", source.url());
    ASSERT_TRUE(source.data_information()); // stored before the failure
    EXPECT_EQ(4, fake(source).first_read);
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(2, source.z_units());
}

TEST(DataSource, ExceptionThatIsNoStandardOneIsPassedOn)
{
    static SpecialFactory factory("refusing", false);
    DataSource source("old.dat", nullptr);
    EXPECT_THROW(source.info({"new.dat", "refusing", "depth", "feet", "comma"}), tarqa::Exception);
    EXPECT_EQ("new.dat", source.url());
    EXPECT_EQ(64, source.z_sign()); // not read any more
}

TEST(DataSource, FactoryThatGivesNothingLeavesNoInformationInAList)
{
    static SpecialFactory factory("nothing", true);
    DataSource source("old.dat", information("old"));
    source.info({"new.dat", "nothing", "depth", "feet", "comma"});
    EXPECT_EQ("new.dat", source.url());
    EXPECT_FALSE(source.data_information());
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(2, source.z_units());
}

TEST(DataSource, FactoryThatGivesNothingLeavesNoInformationInTheTextForm)
{
    static SpecialFactory factory("nothing", true);
    DataSource source("old.dat", information("old"));
    std::istringstream stream("file:///new.dat\nnothing\ncomma\n");
    EXPECT_EQ(&stream, &(stream >> source));
    EXPECT_EQ("file:///new.dat", source.url());
    EXPECT_FALSE(source.data_information());
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ("comma", rest);
}

TEST(DataSource, TextFormIsNothingWithoutInformation)
{
    std::ostringstream stream;
    stream << DataSource("a.dat", nullptr);
    EXPECT_EQ("", stream.str());
}

TEST(DataSource, TextFormHoldsUrlKindAndSettings)
{
    DataSource source("file:///data/a.dat", information("comma"));
    source.z_sign(DataSource::Depth);
    source.ds_key("North field");
    std::ostringstream stream;
    EXPECT_EQ(&stream, &(stream << source));
    EXPECT_EQ("file:///data/a.dat\nfake\ncomma\n", stream.str());
}

TEST(DataSource, TextFormIsReadBack)
{
    support::register_data_information("fake");
    std::istringstream stream("file:///data/a.dat\nfake\ncomma\nthe rest");
    DataSource source("old.dat", nullptr);
    source.z_sign(DataSource::Depth);
    source.z_units(DataSource::Feet);
    EXPECT_EQ(&stream, &(stream >> source));
    EXPECT_EQ("file:///data/a.dat", source.url());
    EXPECT_EQ("fake", source.key());
    EXPECT_EQ("comma", fake(source).settings);
    // Not part of the text form:
    EXPECT_EQ("old.dat", source.ds_key());
    EXPECT_EQ(128, source.z_sign());
    EXPECT_EQ(2, source.z_units());
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ("the rest", rest);
}

TEST(DataSource, PlainPathIsReadAsAUrl)
{
    support::register_data_information("fake");
    std::istringstream stream("C:/data/a.dat\nfake\ncomma\n");
    DataSource source;
    stream >> source;
    EXPECT_EQ("file:///C:/data/a.dat", source.url());
    EXPECT_EQ(tarqa::utilities::filesystem_to_url("C:/data/a.dat"), source.url());
}

TEST(DataSource, UrlIsReadUnchanged)
{
    support::register_data_information("fake");
    std::istringstream stream("file://server/share/a b%20c.dat\nfake\ncomma\n");
    DataSource source;
    stream >> source;
    EXPECT_EQ("file://server/share/a b%20c.dat", source.url());
}

TEST(DataSource, TextThatDoesNotBeginLikeAFileUrlIsReadAsAPath)
{
    support::register_data_information("fake");
    for (const char* text :
        {"FILE:///data/a.dat", "/data/file://a.dat", " file:///data/a.dat", "file:/a.dat"}) {
        std::istringstream stream(std::string(text) + "\nfake\ncomma\n");
        DataSource source;
        stream >> source;
        EXPECT_EQ(tarqa::utilities::filesystem_to_url(text), source.url());
        EXPECT_NE(text, source.url());
    }
}

TEST(DataSource, ReadingLeavesTheListOfFiles)
{
    support::register_data_information("fake");
    const std::vector<std::string> files = {"a.dat", "b.dat"};
    DataSource source(files, information("s"));
    source.info({"c.dat", "fake", "depth", "feet", "comma"});
    EXPECT_EQ(files, source.urls());
    std::istringstream stream("file:///d.dat\nfake\ncomma\n");
    stream >> source;
    EXPECT_EQ("file:///d.dat", source.url());
    EXPECT_EQ(files, source.urls());
}

TEST(DataSource, UnknownKindInTheTextFormUsesTheDefault)
{
    support::register_data_information("fallback", true);
    std::istringstream stream("file:///a.dat\nunheard of\ncomma\n");
    DataSource source;
    stream >> source;
    EXPECT_EQ("fallback", source.key());
    EXPECT_EQ("comma", fake(source).settings);
}

TEST(DataSource, UnknownKindInTheTextFormThrows)
{
    DataSource source;
    std::istringstream nothing_registered("file:///a.dat\nfake\ncomma\n");
    EXPECT_THROW(nothing_registered >> source, std::runtime_error);

    support::register_data_information("fake");
    std::istringstream unknown("file:///b.dat\nunheard of\ncomma\n");
    EXPECT_THROW(unknown >> source, std::runtime_error);
    EXPECT_EQ("file:///b.dat", source.url()); // stored before
    EXPECT_FALSE(source.data_information());
}

TEST(DataSource, CopiesShareTheInformation)
{
    DataSource source("a.dat", information("comma"));
    const DataSource copy(source);
    EXPECT_EQ(source.data_information(), copy.data_information());
    source.ds_key("changed");
    EXPECT_EQ("a.dat", copy.ds_key());
}
