#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/ExceptionTemplate.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>
#include <sstream>
#include <type_traits>

using tarqa::Exception;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct FirstTag;
struct SecondTag;
typedef tarqa::ExceptionTemplate<Exception, FirstTag> FirstException;
typedef tarqa::ExceptionTemplate<Exception, SecondTag> SecondException;

/// An exception type that is made from a caught base exception.
class Renamed : public FirstException
{
public:
    explicit Renamed(const Exception& base)
        : FirstException(base)
    { }
};

/// Adds a line to what the base writes.
class Detailed : public Exception
{
public:
    Detailed()
        : Exception(5, "text", "file", 6)
    { }
    void log_information(std::ostream& stream) const override
    {
        Exception::log_information(stream);
        stream << "detail\n";
    }
};

class GroupedNumbers : public std::numpunct<char>
{
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::string log_of(const Exception& exception)
{
    std::ostringstream stream;
    exception.log_information(stream);
    return stream.str();
}

} // namespace

TEST(Exception, IsNoStandardException)
{
    EXPECT_FALSE((std::is_base_of<std::exception, Exception>::value));
    EXPECT_TRUE(std::has_virtual_destructor<Exception>::value);
}

TEST(Exception, KeepsCodeMessageAndPlace)
{
    const Exception exception(1014, std::string("no such document"), "housekeeping/src/DocumentManager", 59);
    EXPECT_EQ(exception.code(), 1014u);
    EXPECT_EQ(exception.message(), "no such document");
    EXPECT_STREQ(exception.what(), "no such document");
    EXPECT_EQ(exception.file(), "housekeeping/src/DocumentManager");
    EXPECT_EQ(exception.line(), 59u);
    EXPECT_THAT(exception.trail(), IsEmpty());
}

TEST(Exception, TakesMessagesAsStringQtTextAndLiteral)
{
    EXPECT_EQ(Exception(1, std::string("a\0b", 3), "f", 1).message(), std::string("a\0b", 3));
    EXPECT_EQ(Exception(1, QString::fromUtf8("Gel\xc3\xa4nde \xe2\x82\xac"), "f", 1).message(),
        "Gel\xc3\xa4nde \xe2\x82\xac");
    EXPECT_EQ(Exception(1, "literal", "f", 1).message(), "literal");
}

TEST(Exception, TakesNullAndEmptyTextsAsEmpty)
{
    const char* const null = nullptr;
    const Exception nothing(0, null, null, 0);
    EXPECT_EQ(nothing.message(), "");
    EXPECT_EQ(nothing.file(), "");
    EXPECT_STREQ(nothing.what(), "");
    EXPECT_EQ(Exception(0, QString(), null, 0).message(), "");
    EXPECT_EQ(log_of(nothing), "Error 0: \nThrown in , line 0\n");
}

TEST(Exception, KeepsAHugeMessage)
{
    const std::string message(8 * 1024 * 1024, 'x');
    const Exception exception(4294967295u, message, "f", 4294967295u);
    EXPECT_EQ(exception.message(), message);
    EXPECT_EQ(log_of(exception).size(),
        message.size() + std::string("Error 4294967295: \nThrown in f, line 4294967295\n").size());
}

TEST(Exception, LogsOneLineForTheErrorOneForThePlaceAndOnePerTrailLine)
{
    Exception exception(7006, "Insertion Cancelled", "housekeeping/src/CompositeCommand", 142);
    EXPECT_EQ(log_of(exception),
        "Error 7006: Insertion Cancelled\n"
        "Thrown in housekeeping/src/CompositeCommand, line 142\n");
    exception.caught_here("housekeeping/src/AbstractCommand", 223);
    exception.caught_here("host", 1);
    EXPECT_EQ(log_of(exception),
        "Error 7006: Insertion Cancelled\n"
        "Thrown in housekeeping/src/CompositeCommand, line 142\n"
        "Caught in housekeeping/src/AbstractCommand, line 223\n"
        "Caught in host, line 1\n");
}

TEST(Exception, LogsNumbersPlainlyWhateverTheStreamIsSetTo)
{
    std::ostringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new GroupedNumbers));
    stream << std::hex << std::showbase;
    stream << Exception(7006, "m", "f", 1234);
    EXPECT_EQ(stream.str(), "Error 7006: m\nThrown in f, line 1234\n");
}

TEST(Exception, CaughtHereTakesANullFile)
{
    Exception exception(1, "m", "f", 2);
    exception.caught_here(nullptr, 3);
    EXPECT_THAT(exception.trail(), ElementsAre("Caught in , line 3"));
}

TEST(Exception, TransferAppendsTheHistoryOfTheReplacedOne)
{
    Exception caught(3, "disk full", "io", 30);
    caught.caught_here("reader", 31);
    Exception replacement(7006, "Insertion Cancelled", "composite", 142);
    replacement.caught_here("before", 1);
    replacement.catch_and_transfer(caught);
    EXPECT_THAT(replacement.trail(),
        ElementsAre("Caught in before, line 1", "Replaces Error 3: disk full", "Thrown in io, line 30",
            "Caught in reader, line 31"));
    EXPECT_EQ(replacement.code(), 7006u);
    EXPECT_EQ(replacement.message(), "Insertion Cancelled");
    EXPECT_THAT(caught.trail(), ElementsAre("Caught in reader, line 31"));
}

TEST(Exception, TransferOfItselfDoublesItsHistory)
{
    Exception exception(3, "m", "f", 4);
    exception.caught_here("g", 5);
    exception.catch_and_transfer(exception);
    EXPECT_THAT(exception.trail(),
        ElementsAre(
            "Caught in g, line 5", "Replaces Error 3: m", "Thrown in f, line 4", "Caught in g, line 5"));
}

TEST(Exception, CopiesAreIndependent)
{
    Exception original(1, "m", "f", 2);
    original.caught_here("g", 3);
    Exception copy(original);
    copy.caught_here("h", 4);
    EXPECT_EQ(original.trail().size(), 1u);
    EXPECT_EQ(copy.trail().size(), 2u);
    original = copy;
    EXPECT_EQ(log_of(original), log_of(copy));
    Exception& same = original;
    original = same;
    EXPECT_EQ(log_of(original), log_of(copy));
}

TEST(Exception, KeepsItsTrailWhenItIsPassedOn)
{
    std::string log;
    try {
        try {
            throw Exception(1, "m", "f", 2);
        } catch (Exception& e) {
            e.caught_here("g", 3);
            throw;
        }
    } catch (const Exception& e) {
        log = log_of(e);
    }
    EXPECT_EQ(log, "Error 1: m\nThrown in f, line 2\nCaught in g, line 3\n");
}

TEST(Exception, StreamOperatorWritesWhatTheDerivedClassLogs)
{
    const Detailed detailed;
    const Exception& exception = detailed;
    std::ostringstream stream;
    stream << exception;
    EXPECT_EQ(stream.str(), "Error 5: text\nThrown in file, line 6\ndetail\n");
}

TEST(ExceptionTemplate, MakesDistinctTypesThatAreCaughtAsTheirBase)
{
    EXPECT_THROW(throw FirstException(1, "m", "f", 2), FirstException);
    EXPECT_THROW(throw FirstException(1, "m", "f", 2), Exception);
    bool as_second = false;
    try {
        throw FirstException(1, QString("m"), "f", 2);
    } catch (const SecondException&) {
        as_second = true;
    } catch (const Exception&) { }
    EXPECT_FALSE(as_second);
}

TEST(ExceptionTemplate, LogsExactlyAsItsBase)
{
    const FirstException first(1, std::string("m"), "f", 2);
    EXPECT_EQ(log_of(first), log_of(Exception(1, "m", "f", 2)));
    EXPECT_STREQ(first.what(), "m");
}

TEST(ExceptionTemplate, MadeFromItsBaseKeepsEverything)
{
    Exception base(1, "m", "f", 2);
    base.caught_here("g", 3);
    EXPECT_EQ(log_of(Renamed(base)), log_of(base));
}

TEST(ExceptionTemplate, IsOneTypeInTheLibraryAndHere)
{
    ASSERT_EQ(setenv("TMPDIR", "/dev/null", 1), 0);
    EXPECT_THROW(
        tarqa::utilities::TemporaryDirectory("vista"), tarqa::utilities::TemporaryDirectoryException);
}
