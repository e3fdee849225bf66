#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

using namespace tarqa::housekeeping;
using support::FakeDataInformation;

namespace {

/// One that keeps everything as the base has it.
class PlainInformation : public AbstractDataInformation
{
public:
    PlainInformation()
        : AbstractDataInformation("plain")
    { }
};

} // namespace

TEST(AbstractDataInformation, StartsCompleteWithoutAnImportMode)
{
    const PlainInformation information;
    EXPECT_TRUE(information.is_complete());
    EXPECT_EQ(-1, information.ascii_import_mode());
    EXPECT_EQ("plain", information.key());
}

TEST(AbstractDataInformation, ImportModeAndCompletenessCanBeSet)
{
    FakeDataInformation information("fake");
    information.set_ascii_import_mode(4);
    EXPECT_EQ(4, information.ascii_import_mode());
    information.set_complete(false);
    EXPECT_FALSE(information.is_complete());
}

TEST(AbstractDataInformation, BaseHasNoSettingsAndNoImage)
{
    PlainInformation information;
    information.info({"url", "plain", "depth", "metres", "more"}, 4);
    EXPECT_TRUE(information.info().isEmpty());
    EXPECT_EQ(0u, information.attaching_image_to_geoId());
    EXPECT_EQ("", information.image_name());
}

TEST(AbstractDataInformation, BaseReadsAndWritesNothing)
{
    PlainInformation information;
    std::stringstream stream("text");
    EXPECT_EQ(&stream, &(stream >> information));
    EXPECT_EQ(0, stream.tellg());

    std::ostringstream output;
    EXPECT_EQ(&output, &(output << information));
    EXPECT_EQ("", output.str());
}

TEST(AbstractDataInformation, StreamOperatorsCallTheConcreteClass)
{
    FakeDataInformation information("fake");
    std::istringstream input("comma separated\nrest");
    AbstractDataInformation& base = information;
    EXPECT_EQ(&input, &(input >> base));
    EXPECT_EQ("comma separated", information.settings);

    std::ostringstream output;
    output << base;
    EXPECT_EQ("comma separated\n", output.str());
}

TEST(AbstractDataInformation, IsNotCopied)
{
    EXPECT_TRUE(std::is_default_constructible_v<PlainInformation>);
    EXPECT_FALSE(std::is_copy_constructible_v<PlainInformation>);
    EXPECT_FALSE(std::is_copy_assignable_v<PlainInformation>);
}
