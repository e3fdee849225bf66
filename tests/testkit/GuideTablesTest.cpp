// The tables of docs/testing-a-host.md are what the proof really says.

#include "RightCommands.h"
#include "SheetProof.h"
#include "WrongCommands.h"
#include "support/App.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <string>

namespace {

using tarqa::housekeeping::testkit::Promise;

/// The rows of the guide's table below a head, without the line of dashes.
std::string table_below(const std::string& head)
{
    std::ifstream guide(TESTING_GUIDE);
    EXPECT_TRUE(guide) << TESTING_GUIDE;
    std::string line;
    while (std::getline(guide, line) && line != head) { }
    EXPECT_TRUE(guide) << "the guide has no table \"" << head << '"';
    std::getline(guide, line);
    std::string rows;
    while (std::getline(guide, line) && !line.empty() && line.front() == '|') {
        rows += line + '\n';
    }
    return rows;
}

std::string code(const std::string& text)
{
    return '`' + text + '`';
}

std::string left_out(const std::vector<Promise>& promises)
{
    std::string text;
    for (const Promise promise : promises) {
        text += (text.empty() ? "" : ", ") + code(name_of(promise));
    }
    return text;
}

/// What the proof says, without what depends on the state of a source, the compiler and the failures before.
std::string lasting(const std::string& text)
{
    static const std::regex s_assertion(":[0-9]+ ASSERT FAILED in .*: ");
    static const std::regex s_number(", the [0-9]+\\. failure");
    return std::regex_replace(std::regex_replace(text, s_assertion, " ASSERT FAILED: "), s_number, "");
}

void expect_table(const std::string& head, const std::string& rows)
{
    EXPECT_EQ(table_below(head), rows) << "the table should have these rows:\n"
                                       << rows << "(end of the rows)";
}

} // namespace

TEST(GuideTables, NameAllPromises)
{
    std::string rows;
    for (int i = 0; i <= static_cast<int>(Promise::ThrowsNothing); ++i) {
        const auto promise = static_cast<Promise>(i);
        rows += "| " + code(name_of(promise)) + " | " + sentence_of(promise) + " |\n";
    }
    expect_table("| promise | |", rows);
}

TEST(GuideTables, SayWhatTheProofSaysOfEachWrongCommand)
{
    const support::App app; // composites may ask
    std::string rows;
    for (const sheet::WrongCommand& wrong : sheet::wrong_commands()) {
        const auto breaches = sheet::breaches_of(wrong);
        const sheet::Breach* const p_breach = sheet::breach_of(breaches, wrong.promise);
        ASSERT_TRUE(p_breach) << wrong.name;
        rows += "| " + code(wrong.name) + " | " + wrong.fault + " | " + code(lasting(p_breach->text()))
            + " |\n";
    }
    expect_table("| wrong command | its mistake | what the proof says first |", rows);
}

TEST(GuideTables, HaveEachRightCommand)
{
    std::string rows;
    for (const sheet::RightCommand& right : sheet::right_commands()) {
        rows += "| " + code(right.name) + " | " + right.manner + " | " + left_out(right.left_out) + " |\n";
    }
    expect_table("| right command | its manner | promises that it does not make |", rows);
}
