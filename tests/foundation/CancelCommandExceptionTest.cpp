#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

using tarqa::ExceptionTemplate;
using tarqa::housekeeping::CancelCommandException;
using tarqa::housekeeping::FailedCommandException;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::HousekeepingExceptionTag;

HousekeepingException cause()
{
    return HousekeepingException(
        1028, std::string("Command was cancelled by user!"), "housekeeping/src/AbstractCommand", 136);
}

TEST(CancelCommandException, DerivesFromTheTaggedHousekeepingException)
{
    typedef ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag> Base;
    EXPECT_TRUE((std::is_base_of_v<Base, CancelCommandException>));
    EXPECT_TRUE((std::is_base_of_v<HousekeepingException, CancelCommandException>));
    EXPECT_FALSE((std::is_base_of_v<FailedCommandException, CancelCommandException>));
    EXPECT_FALSE((std::is_convertible_v<HousekeepingException, CancelCommandException>));
}

TEST(CancelCommandException, HasNoFieldsOfItsOwn)
{
    EXPECT_EQ(sizeof(CancelCommandException), sizeof(tarqa::Exception));
}

TEST(CancelCommandException, KeepsWhatItsCauseSays)
{
    HousekeepingException origin = cause();
    origin.caught_here("housekeeping/src/CompositeCommand", 142);
    const CancelCommandException exception(origin);
    EXPECT_EQ(exception.code(), 1028u);
    EXPECT_EQ(exception.message(), "Command was cancelled by user!");
    EXPECT_STREQ(exception.what(), "Command was cancelled by user!");
    EXPECT_EQ(exception.file(), "housekeeping/src/AbstractCommand");
    EXPECT_EQ(exception.line(), 136u);
    EXPECT_EQ(exception.trail(), origin.trail());
}

TEST(CancelCommandException, LeavesNoTextInAStream)
{
    CancelCommandException exception(cause());
    exception.caught_here("housekeeping/src/CompositeCommand", 142);
    std::ostringstream stream;
    exception.log_information(stream);
    EXPECT_EQ(stream.str(), "");
    EXPECT_TRUE(stream.good());

    const tarqa::Exception& root = exception;
    root.log_information(stream);
    stream << root;
    EXPECT_EQ(stream.str(), "");
}

TEST(CancelCommandException, CopiesStaySilent)
{
    const CancelCommandException original(cause());
    const CancelCommandException copy(original);
    CancelCommandException assigned(HousekeepingException(7006, std::string("other"), "other", 1));
    assigned = original;
    std::ostringstream stream;
    copy.log_information(stream);
    assigned.log_information(stream);
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(copy.code(), 1028u);
    EXPECT_EQ(assigned.code(), 1028u);
    EXPECT_EQ(assigned.message(), "Command was cancelled by user!");
}

TEST(CancelCommandException, IsCaughtBeforeTheGeneralException)
{
    std::string caught_by;
    try {
        throw CancelCommandException(cause());
    } catch (CancelCommandException&) {
        caught_by = "cancel";
    } catch (FailedCommandException&) {
        caught_by = "failed";
    } catch (tarqa::Exception&) {
        caught_by = "root";
    }
    EXPECT_EQ(caught_by, "cancel");
}

TEST(CancelCommandException, IsCaughtAsAHousekeepingException)
{
    EXPECT_THROW(throw CancelCommandException(cause()), HousekeepingException);
}

} // namespace
