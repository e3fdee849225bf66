#include "batch/Script.h"
#include "batch/BatchProgress.h"

#include <gtest/gtest.h>

#include <sstream>

using terrain::count_of;
using terrain::number_of;
using terrain::place_of;
using terrain::ScriptError;
using terrain::words_of;

typedef std::vector<std::string> Words;

TEST(Script, BlanksAndTabsSeparateWords)
{
    EXPECT_EQ(words_of("clamp 1 2"), (Words{"clamp", "1", "2"}));
    EXPECT_EQ(words_of(" \tclamp  1\t2 \r"), (Words{"clamp", "1", "2"}));
}

TEST(Script, EmptyLinesAndCommentsHaveNoWords)
{
    EXPECT_EQ(words_of(""), Words());
    EXPECT_EQ(words_of("   \t\r"), Words());
    EXPECT_EQ(words_of("# smooth 2"), Words());
    EXPECT_EQ(words_of("  # smooth 2"), Words());
    EXPECT_EQ(words_of("smooth 2 # or 3"), (Words{"smooth", "2"}));
}

TEST(Script, QuotesKeepBlanksAndHashesInAWord)
{
    EXPECT_EQ(words_of("open \"a b #c.tif\""), (Words{"open", "a b #c.tif"}));
    EXPECT_EQ(words_of("open a\" b\"c"), (Words{"open", "a bc"}));
    EXPECT_EQ(words_of("open \"\""), (Words{"open", ""}));
    EXPECT_EQ(words_of("open a#b.tif"), (Words{"open", "a#b.tif"}));
}

TEST(Script, AQuoteMustBeClosed)
{
    EXPECT_THROW(words_of("open \"a b"), ScriptError);
    EXPECT_THROW(words_of("open a\""), ScriptError);
}

TEST(Script, NumbersAreTakenStrictly)
{
    EXPECT_EQ(number_of("1.5"), 1.5);
    EXPECT_EQ(number_of("-2e3"), -2000);
    EXPECT_EQ(number_of(".5"), 0.5);
    EXPECT_EQ(number_of("0"), 0);
    for (const char* wrong : {"", "x", "1.5x", "1,5", " 1", "1 ", "+1", "nan", "inf", "-inf", "1e999", "0x10",
             "1.5.2", "--1", "infinity"}) {
        EXPECT_THROW(number_of(wrong), ScriptError) << wrong;
    }
}

TEST(Script, CountsAreWholeNumbersFromOneOn)
{
    EXPECT_EQ(count_of("1"), 1);
    EXPECT_EQ(count_of("2147483647"), 2147483647);
    for (const char* wrong : {"", "0", "-1", "1.0", "2x", "x", " 2", "2147483648", "99999999999999999999"}) {
        EXPECT_THROW(count_of(wrong), ScriptError) << wrong;
    }
}

TEST(Script, PlacesAreWholeNumbersFromNoughtOn)
{
    EXPECT_EQ(place_of("0"), 0);
    EXPECT_EQ(place_of("2147483647"), 2147483647);
    for (const char* wrong : {"", "-1", "1.0", "2x", "x", " 2", "2147483648"}) {
        EXPECT_THROW(place_of(wrong), ScriptError) << wrong;
    }
}

TEST(BatchProgress, ShowsPercentagesOnATerminalAndClearsThem)
{
    std::ostringstream terminal;
    terrain::BatchProgress progress(&terminal);
    progress.open_run(0);
    progress.set_percentage(0);
    progress.set_percentage(40);
    progress.set_percentage(40);
    progress.close_run();
    EXPECT_EQ(terminal.str(), "\r0 %\r40 %\r      \r");
}

TEST(BatchProgress, ShowsNothingWithoutATerminal)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    terrain::BatchProgress progress(nullptr);
    progress.open_run(0);
    progress.set_percentage(40);
    progress.set_text("text");
    progress.close_run();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
