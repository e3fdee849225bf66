#include <tarqa/housekeeping/HousekeepingException.h>

#include <gtest/gtest.h>

#include <exception>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

using tarqa::Exception;
using tarqa::ExceptionTemplate;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::HousekeepingExceptionTag;
using tarqa::housekeeping::HousekeepingTag;

const char* const s_file = "housekeeping/src/DocumentManager";

std::string information(const Exception& exception)
{
    std::ostringstream stream;
    exception.log_information(stream);
    return stream.str();
}

TEST(HousekeepingException, IsTheTaggedTemplateOverTheRoot)
{
    EXPECT_TRUE((std::is_same_v<HousekeepingException, ExceptionTemplate<Exception, HousekeepingTag>>));
    EXPECT_TRUE((std::is_base_of_v<Exception, HousekeepingException>));
    EXPECT_TRUE((std::is_base_of_v<HousekeepingException,
        ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag>>));
    EXPECT_TRUE(std::is_empty_v<HousekeepingTag>);
    EXPECT_TRUE(std::is_empty_v<HousekeepingExceptionTag>);
    EXPECT_EQ(sizeof(HousekeepingException), sizeof(Exception));
}

TEST(HousekeepingException, IsNoStandardException)
{
    EXPECT_FALSE((std::is_base_of_v<std::exception, HousekeepingException>));
}

TEST(HousekeepingException, KeepsWhatItIsMadeFrom)
{
    const HousekeepingException exception(1014, std::string("Document does not exist"), s_file, 77);
    EXPECT_EQ(exception.code(), 1014u);
    EXPECT_EQ(exception.message(), "Document does not exist");
    EXPECT_STREQ(exception.what(), "Document does not exist");
    EXPECT_EQ(exception.file(), "housekeeping/src/DocumentManager");
    EXPECT_EQ(exception.line(), 77u);
}

TEST(HousekeepingException, TakesTheMessageAsQStringInUtf8)
{
    const HousekeepingException exception(2, QString::fromUtf8("Größe 3 µ"), s_file, 1);
    EXPECT_EQ(exception.message(), "Größe 3 µ");
    EXPECT_STREQ(exception.what(), "Größe 3 µ");
}

TEST(HousekeepingException, TakesALiteral)
{
    const HousekeepingException exception(2, "a literal", s_file, 1);
    EXPECT_EQ(exception.message(), "a literal");
}

TEST(HousekeepingException, LogsWhatTheRootLogs)
{
    const HousekeepingException exception(1014, std::string("Document does not exist"), s_file, 77);
    const Exception root(1014, std::string("Document does not exist"), s_file, 77);
    EXPECT_FALSE(information(root).empty());
    EXPECT_EQ(information(exception), information(root));
}

TEST(HousekeepingException, SecondTagMakesATypeOfItsOwnThatLogsAsItsBase)
{
    typedef ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag> Tagged;
    Tagged exception(7006, std::string("message"), s_file, 5);
    HousekeepingException base(7006, std::string("message"), s_file, 5);
    exception.caught_here("housekeeping/src/AbstractCommand", 223);
    base.caught_here("housekeeping/src/AbstractCommand", 223);
    EXPECT_EQ(information(exception), information(base));
    EXPECT_STREQ(exception.what(), "message");
    EXPECT_EQ(sizeof(Tagged), sizeof(Exception)); // no fields of its own
    EXPECT_FALSE((std::is_same_v<Tagged, HousekeepingException>));
    EXPECT_THROW(throw Tagged(7006, QString("message"), s_file, 5), Tagged);
    EXPECT_THROW(throw Tagged(7006, QString("message"), s_file, 5), HousekeepingException);
}

TEST(HousekeepingException, CopiesAndAssignsWithTheTrail)
{
    HousekeepingException original(1014, std::string("Document does not exist"), s_file, 77);
    original.caught_here("housekeeping/src/AbstractCommand", 223);
    const HousekeepingException copy(original);
    HousekeepingException assigned(2, std::string("other"), "other", 1);
    assigned = original;
    EXPECT_EQ(information(copy), information(original));
    EXPECT_EQ(information(assigned), information(original));
    EXPECT_EQ(assigned.code(), 1014u);
    EXPECT_NE(information(original).find("housekeeping/src/AbstractCommand"), std::string::npos);
    EXPECT_NE(information(original).find("223"), std::string::npos);
}

TEST(HousekeepingException, IsCaughtAsTheRootButNotAsAStandardException)
{
    std::string caught_as;
    try {
        throw HousekeepingException(
            7006, std::string("Attempt to get invalid model from document"), s_file, 1);
    } catch (std::exception&) {
        caught_as = "std::exception";
    } catch (Exception& e) {
        caught_as = "tarqa::Exception " + e.message();
    }
    EXPECT_EQ(caught_as, "tarqa::Exception Attempt to get invalid model from document");
}

TEST(HousekeepingException, RethrownKeepsItsTypeAndTrail)
{
    try {
        try {
            throw HousekeepingException(2, std::string("message"), s_file, 1);
        } catch (Exception& e) {
            e.caught_here("housekeeping/src/CommandManager", 99);
            throw;
        }
    } catch (HousekeepingException& e) {
        EXPECT_NE(information(e).find("housekeeping/src/CommandManager"), std::string::npos);
        return;
    }
    FAIL() << "not caught by its own type";
}

TEST(HousekeepingException, TransfersTheHistoryOfTheReplacedOne)
{
    Exception replaced(5, std::string("the first failure"), "maker/src/Reader", 8);
    replaced.caught_here("maker/src/Loader", 9);
    HousekeepingException exception(2, std::string("the second failure"), s_file, 1);
    exception.catch_and_transfer(replaced);
    const std::string text = information(exception);
    for (const char* part :
        {"the second failure", "the first failure", "maker/src/Reader", "maker/src/Loader"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(exception.code(), 2u);
    EXPECT_EQ(exception.message(), "the second failure");
}

} // namespace
