#include "LoadEntries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

using load::check_log;
using load::ExpectedEntries;
using load::Faults;
using load::Mix;
using load::Plan;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Whether the look at the log would notice anything.

namespace {

typedef std::vector<std::string> Entries;

class LoadLog : public testing::Test
{
protected:
    static ExpectedEntries expected(unsigned thread, const Mix& mix)
    {
        return ExpectedEntries(Plan(1, thread, mix), thread, 60);
    }
    static Entries entries_of(unsigned thread, const Mix& mix)
    {
        ExpectedEntries source = expected(thread, mix);
        Entries entries;
        for (; source.peek(); source.pop()) {
            entries.push_back(*source.peek());
        }
        return entries;
    }
    static std::string joined(const Entries& entries)
    {
        return std::accumulate(entries.begin(), entries.end(), std::string());
    }
    /// The entries of both threads in turn.
    static Entries in_turn(const Entries& first, const Entries& second)
    {
        Entries entries;
        for (std::size_t i = 0; i < first.size() || i < second.size(); ++i) {
            if (i < first.size()) {
                entries.push_back(first[i]);
            }
            if (i < second.size()) {
                entries.push_back(second[i]);
            }
        }
        return entries;
    }

    std::vector<std::string> faults_of(const std::string& log, bool emptied = false)
    {
        std::vector<ExpectedEntries> both = {expected(0, mix), expected(1, mix)};
        Faults faults;
        count = check_log(log, emptied, both, faults);
        return faults.texts();
    }
    Entries good() const { return in_turn(entries_of(0, mix), entries_of(1, mix)); }

    Mix mix;
    unsigned long long count = 0;
};

} // namespace

TEST_F(LoadLog, ThreadsMayTakeTurns)
{
    EXPECT_THAT(faults_of(joined(good())), IsEmpty());
    EXPECT_EQ(count, good().size());
    EXPECT_GT(count, 60u);
    EXPECT_THAT(faults_of(joined(entries_of(0, mix)) + joined(entries_of(1, mix))), IsEmpty());
    EXPECT_EQ(count, good().size());
}

TEST_F(LoadLog, NoticesThatTheLastEntryIsMissing)
{
    Entries entries = good();
    entries.pop_back();
    EXPECT_THAT(faults_of(joined(entries)), ElementsAre(HasSubstr("entries lost of thread ")));
    EXPECT_EQ(count, entries.size());
}

TEST_F(LoadLog, NoticesThatAnEntryInBetweenIsMissing)
{
    Entries entries = good();
    entries.erase(entries.begin() + 20);
    EXPECT_THAT(faults_of(joined(entries)), testing::Contains(HasSubstr("not the next entry of thread ")));
}

TEST_F(LoadLog, NoticesAnEntryTwice)
{
    Entries entries = good();
    entries.insert(entries.begin() + 20, entries[20]);
    entries.push_back(entries.back());
    EXPECT_THAT(faults_of(joined(entries)), Not(IsEmpty()));
}

TEST_F(LoadLog, NoticesAnotherOrder)
{
    Entries entries = good();
    std::swap(entries[20], entries[22]); // of one thread
    EXPECT_NE(entries[20], entries[22]);
    EXPECT_THAT(faults_of(joined(entries)), testing::Contains(HasSubstr("not the next entry of thread ")));
}

TEST_F(LoadLog, NoticesAnEntryInsideAnother)
{
    Entries entries = good();
    entries[20].insert(entries[20].size() / 2, entries[21]);
    entries.erase(entries.begin() + 21);
    EXPECT_THAT(faults_of(joined(entries)), Not(IsEmpty()));
}

TEST_F(LoadLog, NoticesAMissingCharacter)
{
    std::string log = joined(good());
    log.pop_back();
    EXPECT_THAT(faults_of(log), Not(IsEmpty()));
}

TEST_F(LoadLog, NoticesWhatNoThreadWrote)
{
    EXPECT_THAT(faults_of(joined(good()) + "something\n"), ElementsAre(HasSubstr("no entry of a thread")));
    EXPECT_THAT(
        faults_of(joined(good()) + "@7:1@ something\n"), ElementsAre(HasSubstr("no entry of a thread")));
}

TEST_F(LoadLog, EmptiedOneBeginsWithTheFatalError)
{
    mix.undo = false;
    mix.fatal_text = 30;
    Entries first = entries_of(0, mix);
    while (first.front().find("fatal error as text") == std::string::npos) {
        first.erase(first.begin());
    }
    Entries second = entries_of(1, mix);
    second.erase(second.begin(), second.begin() + 10);
    const Entries entries = in_turn(first, second);
    EXPECT_THAT(faults_of(joined(entries), true), IsEmpty());
    EXPECT_EQ(count, entries.size());
    EXPECT_THAT(faults_of(joined(first), true), IsEmpty()); // the other thread had ended
    EXPECT_THAT(faults_of(joined(second) + joined(first), true),
        ElementsAre(HasSubstr("does not begin with the fatal error")));

    first.erase(first.begin() + 3);
    EXPECT_THAT(faults_of(joined(first), true), Not(IsEmpty()));
}
