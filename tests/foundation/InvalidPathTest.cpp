#include <tarqa/housekeeping/InvalidPath.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::InvalidPath;

const char* const s_file = "housekeeping/src/DataSource";

std::string information(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    exception.log_information(stream);
    return stream.str();
}

TEST(InvalidPath, IsAHousekeepingException)
{
    EXPECT_TRUE((std::is_base_of_v<HousekeepingException, InvalidPath>));
    EXPECT_THROW(throw InvalidPath(3, std::string("bad"), s_file, 4, "C:/x"), HousekeepingException);
}

TEST(InvalidPath, KeepsWhatItIsMadeFrom)
{
    const InvalidPath exception(3, std::string("no such directory"), s_file, 4, "C:/x");
    EXPECT_EQ(exception.code(), 3u);
    EXPECT_EQ(exception.message(), "no such directory");
    EXPECT_STREQ(exception.what(), "no such directory");
    EXPECT_EQ(exception.file(), s_file);
    EXPECT_EQ(exception.line(), 4u);
    EXPECT_EQ(exception.path(), "C:/x");
}

TEST(InvalidPath, TakesTheMessageAsQString)
{
    const InvalidPath exception(3, QString::fromUtf8("kein Ordner für Daten"), s_file, 4, "C:/x");
    EXPECT_EQ(exception.message(), "kein Ordner für Daten");
    EXPECT_EQ(exception.path(), "C:/x");
}

TEST(InvalidPath, TakesTheMessageAsALiteral)
{
    const InvalidPath exception(3, "no such directory", s_file, 4, "C:/x");
    EXPECT_EQ(exception.code(), 3u);
    EXPECT_EQ(exception.message(), "no such directory");
    EXPECT_EQ(exception.file(), s_file);
    EXPECT_EQ(exception.line(), 4u);
    EXPECT_EQ(exception.path(), "C:/x");
}

TEST(InvalidPath, LogsTheFaultyPathAfterTheBaseText)
{
    const InvalidPath exception(3, std::string("no such directory"), s_file, 4, "C:/x");
    const HousekeepingException base(3, std::string("no such directory"), s_file, 4);
    EXPECT_EQ(information(exception), information(base) + "Faulty path = \"C:/x\"\n");
}

TEST(InvalidPath, LogsThePathAsItStands)
{
    const InvalidPath empty(3, std::string("m"), s_file, 4, "");
    const InvalidPath quoted(3, std::string("m"), s_file, 4, "/a \"b\"/c\\d");
    const std::string base = information(HousekeepingException(3, std::string("m"), s_file, 4));
    EXPECT_EQ(information(empty), base + "Faulty path = \"\"\n");
    EXPECT_EQ(information(quoted), base + "Faulty path = \"/a \"b\"/c\\d\"\n");
}

TEST(InvalidPath, LogsThePathThroughTheRootToo)
{
    const InvalidPath exception(3, std::string("m"), s_file, 4, "C:/x");
    const tarqa::Exception& root = exception;
    std::ostringstream stream;
    stream << root;
    EXPECT_EQ(stream.str(), information(exception));
}

TEST(InvalidPath, CopiesAndAssignsThePath)
{
    const InvalidPath original(3, std::string("m"), s_file, 4, "C:/x");
    const InvalidPath copy(original);
    InvalidPath assigned(9, std::string("other"), "other", 1, "D:/y");
    assigned = original;
    EXPECT_EQ(copy.path(), "C:/x");
    EXPECT_EQ(assigned.path(), "C:/x");
    EXPECT_EQ(information(assigned), information(original));
}

} // namespace
