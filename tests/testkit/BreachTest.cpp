#include <tarqa/testkit/Breach.h>
#include <tarqa/testkit/Promise.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace tarqa::housekeeping::testkit;

TEST(FirstDifference, IsEmptyForEqualTexts)
{
    EXPECT_EQ(first_difference("", ""), "");
    EXPECT_EQ(first_difference("a\nb\n", "a\nb\n"), "");
}

TEST(FirstDifference, NamesTheLineAndBothTexts)
{
    EXPECT_EQ(first_difference("a\nb\nc", "a\nx\nc"), "line 2 is \"x\", not \"b\"");
    EXPECT_EQ(first_difference("same\nabc\n", "same\nabd\n"), "line 2 is \"abd\", not \"abc\"");
}

TEST(FirstDifference, SaysWhereATextEnds)
{
    EXPECT_EQ(first_difference("a\nb\n", "a\n"), "line 2 is the end, not \"b\"");
    EXPECT_EQ(first_difference("a\n", "a\nb\n"), "line 2 is \"b\", not the end");
    EXPECT_EQ(first_difference("a\nb", "a\n"), "line 2 is the end, not \"b\"");
    EXPECT_EQ(first_difference("ab\nc", "a"), "line 1 is \"a\", not \"ab\"");
}

TEST(FirstDifference, SaysAnEmptyTextAsSuch)
{
    EXPECT_EQ(first_difference("a", ""), "line 1 is \"\", not \"a\"");
}

TEST(FirstDifference, CutsLongLinesAroundThePlace)
{
    const std::string before(100, 'a');
    const std::string after(100, 'b');
    EXPECT_EQ(first_difference(before + "1" + after, before + "2" + after),
        "line 1 is \"..." + std::string(30, 'a') + "2" + std::string(49, 'b') + "...\", not \"..."
            + std::string(30, 'a') + "1" + std::string(49, 'b') + "...\"");
}

TEST(FirstDifference, ShowsBytesThatCannotBePrinted)
{
    EXPECT_EQ(first_difference(std::string("a\0b", 3), "a\x1f"), "line 1 is \"a\\x1f\", not \"a\\x00b\"");
}

TEST(Breach, IsOneLine)
{
    const Breach breach
        = {Promise::UndoRestores, "Rotate", "do and undo, undo 2", "line 3 is \"b\", not \"a\""};
    EXPECT_EQ(breach.text(), "UndoRestores: Rotate, do and undo, undo 2: line 3 is \"b\", not \"a\"");
    EXPECT_EQ((Breach{Promise::IsMade, "Rotate", "", ""}).text(), "IsMade: Rotate");
    EXPECT_EQ((Breach{Promise::DigestIsStable, "", "fresh documents", ""}).text(),
        "DigestIsStable: fresh documents");
}

TEST(Breach, SeveralAreSeveralLines)
{
    EXPECT_EQ(text_of({}), "");
    EXPECT_EQ(text_of({{Promise::IsMade, "a", "", ""}, {Promise::DoChanges, "b", "", ""}}),
        "IsMade: a\nDoChanges: b\n");
}

TEST(Promise, EachHasANameAndASentenceOfItsOwn)
{
    std::set<std::string> names;
    std::set<std::string> sentences;
    const int last = static_cast<int>(Promise::ThrowsNothing);
    for (int i = 0; i <= last; ++i) {
        names.insert(name_of(static_cast<Promise>(i)));
        sentences.insert(sentence_of(static_cast<Promise>(i)));
    }
    EXPECT_EQ(names.size(), static_cast<std::size_t>(last) + 1);
    EXPECT_EQ(sentences.size(), names.size());
    EXPECT_EQ(names.count("Promise"), 0U);
    EXPECT_EQ(name_of(Promise::UndoRestores), "UndoRestores");
}
