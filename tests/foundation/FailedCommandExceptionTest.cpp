#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

using tarqa::housekeeping::CancelCommandException;
using tarqa::housekeeping::FailedCommandException;
using tarqa::housekeeping::HousekeepingException;

const char* const s_file = "host/src/ImportCommand";

std::string information(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    exception.log_information(stream);
    return stream.str();
}

TEST(FailedCommandException, IsASiblingOfTheCancellation)
{
    EXPECT_TRUE((std::is_base_of_v<HousekeepingException, FailedCommandException>));
    EXPECT_FALSE((std::is_base_of_v<CancelCommandException, FailedCommandException>));
    EXPECT_FALSE((std::is_base_of_v<FailedCommandException, CancelCommandException>));
}

TEST(FailedCommandException, KeepsWhatItIsMadeFrom)
{
    const FailedCommandException exception(31, std::string("The file is empty"), s_file, 12);
    EXPECT_EQ(exception.code(), 31u);
    EXPECT_EQ(exception.message(), "The file is empty");
    EXPECT_STREQ(exception.what(), "The file is empty");
    EXPECT_EQ(exception.file(), s_file);
    EXPECT_EQ(exception.line(), 12u);
    EXPECT_EQ(FailedCommandException(31, QString("text"), s_file, 12).message(), "text");
    EXPECT_EQ(FailedCommandException(31, "literal", s_file, 12).message(), "literal");
}

TEST(FailedCommandException, LogsWhatItsBaseLogs)
{
    const FailedCommandException exception(31, std::string("The file is empty"), s_file, 12);
    const HousekeepingException base(31, std::string("The file is empty"), s_file, 12);
    EXPECT_EQ(information(exception), information(base));
}

TEST(FailedCommandException, CopiesAndAssigns)
{
    const FailedCommandException original(31, std::string("The file is empty"), s_file, 12);
    const FailedCommandException copy(original);
    FailedCommandException assigned(1, std::string("other"), "other", 1);
    assigned = original;
    EXPECT_EQ(information(copy), information(original));
    EXPECT_EQ(information(assigned), information(original));
}

} // namespace
