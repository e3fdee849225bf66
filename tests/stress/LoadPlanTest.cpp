#include "LoadPlan.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

using load::Kind;
using load::Mix;
using load::Plan;
using load::Step;

namespace {

std::vector<std::string> steps_of(unsigned long long seed, unsigned thread, const Mix& mix = Mix())
{
    Plan plan(seed, thread, mix);
    std::vector<std::string> steps;
    for (unsigned i = 0; i < 100; ++i) {
        const Step step = plan.next();
        EXPECT_EQ(step.number, i);
        steps.push_back(load::name_of(step.kind) + (' ' + std::to_string(step.value)));
    }
    return steps;
}

std::array<unsigned, load::s_kinds> kinds_of(const Mix& mix)
{
    std::array<unsigned, load::s_kinds> kinds = {};
    Plan plan(1, 0, mix);
    for (unsigned i = 0; i < 1000; ++i) {
        ++kinds[static_cast<std::size_t>(plan.next().kind)];
    }
    return kinds;
}

unsigned count(const Mix& mix, Kind kind)
{
    return kinds_of(mix)[static_cast<std::size_t>(kind)];
}

} // namespace

TEST(LoadPlan, SeedAndThreadTellThePlan)
{
    EXPECT_EQ(steps_of(1, 0), steps_of(1, 0));
    EXPECT_NE(steps_of(1, 0), steps_of(1, 1));
    EXPECT_NE(steps_of(1, 0), steps_of(2, 0));
}

TEST(LoadPlan, HoldsAllKindsButTheOneThatEmptiesTheLog)
{
    const auto kinds = kinds_of(Mix());
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        EXPECT_EQ(kinds[kind] > 0, static_cast<Kind>(kind) != Kind::FatalText) << kind;
    }
}

TEST(LoadPlan, HoldsTheFatalErrorInTheFirstThreadOnly)
{
    Mix mix;
    mix.fatal_text = 42;
    EXPECT_EQ(count(mix, Kind::FatalText), 1u);
    EXPECT_EQ(steps_of(1, 0, mix)[42].rfind("fatal error as text", 0), 0u);
    EXPECT_EQ(steps_of(1, 1, mix), steps_of(1, 1));
}

TEST(LoadPlan, LeavesOutWhatIsNotWanted)
{
    Mix mix;
    mix.undo = false;
    EXPECT_EQ(count(mix, Kind::Undo) + count(mix, Kind::Redo), 0u);
    EXPECT_GT(count(mix, Kind::ForeignMark), 0u);
    mix = Mix();
    mix.foreign_marks = false;
    EXPECT_EQ(count(mix, Kind::ForeignMark), 0u);
    EXPECT_GT(count(mix, Kind::Undo), 0u);
}

TEST(LoadPlan, CompositesHaveFailingChildrenFirstOrLast)
{
    const Step plain = {Kind::Composite, 0, 0};
    EXPECT_EQ(load::children_of(plain), (std::vector<Kind>{Kind::Plain, Kind::Plain}));
    const Step cancelled = {Kind::Composite, 0, 4};
    EXPECT_EQ(load::children_of(cancelled), (std::vector<Kind>{Kind::Cancelled, Kind::Plain, Kind::Plain}));
    const Step passed_over = {Kind::Composite, 0, 6};
    EXPECT_EQ(load::children_of(passed_over), (std::vector<Kind>{Kind::Failing, Kind::Plain}));
    const Step rolled_back = {Kind::Composite, 0, 9};
    EXPECT_EQ(load::children_of(rolled_back), (std::vector<Kind>{Kind::Plain, Kind::Failing}));
}
