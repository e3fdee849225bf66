// The proof finds each seeded mistake, says which promise it breaks and where, and is silent on what is
// right.

#include "RightCommands.h"
#include "SheetProof.h"
#include "WrongCommands.h"
#include "support/App.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using sheet::RightCommand;
using sheet::WrongCommand;
using tarqa::housekeeping::testkit::Breach;
using tarqa::housekeeping::testkit::Promise;

std::set<std::string> names(const std::vector<Promise>& promises)
{
    std::set<std::string> names;
    for (const Promise promise : promises) {
        names.insert(name_of(promise));
    }
    return names;
}

class Catches : public testing::Test
{
public:
    explicit Catches(const WrongCommand& wrong)
        : m_wrong(wrong)
    { }
    void TestBody() override
    {
        const support::App app; // composites may ask
        const std::vector<Breach> breaches = sheet::breaches_of(m_wrong);
        SCOPED_TRACE(text_of(breaches));
        const Breach* const p_breach = sheet::breach_of(breaches, m_wrong.promise);
        ASSERT_TRUE(p_breach) << name_of(m_wrong.promise) << " counts as kept";
        EXPECT_THAT(p_breach->command, testing::HasSubstr(m_wrong.name));
        EXPECT_THAT(p_breach->where, testing::HasSubstr(m_wrong.where));
        EXPECT_NE(p_breach->difference, "");

        std::vector<Promise> expected = m_wrong.also;
        expected.push_back(m_wrong.promise);
        std::vector<Promise> broken;
        for (const Breach& breach : breaches) {
            broken.push_back(breach.promise);
        }
        EXPECT_EQ(names(broken), names(expected)) << "blames the command for something else";
    }

private:
    const WrongCommand& m_wrong;
};

class IsSilentOn : public testing::Test
{
public:
    explicit IsSilentOn(const RightCommand& right)
        : m_right(right)
    { }
    void TestBody() override
    {
        const support::App app;
        int reports = 0;
        EXPECT_EQ(text_of(sheet::breaches_of(m_right, reports)), "");
        EXPECT_EQ(reports > 0, m_right.reports);
    }

private:
    const RightCommand& m_right;
};

/// A test for each command, named like it.
bool register_tests()
{
    for (const WrongCommand& wrong : sheet::wrong_commands()) {
        testing::RegisterTest("ProofCatches", wrong.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
            [&wrong]() -> testing::Test* { return new Catches(wrong); });
    }
    for (const RightCommand& right : sheet::right_commands()) {
        testing::RegisterTest("ProofIsSilentOn", right.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
            [&right]() -> testing::Test* { return new IsSilentOn(right); });
    }
    return true;
}

const bool s_registered = register_tests(); // before main() looks what there is

} // namespace
