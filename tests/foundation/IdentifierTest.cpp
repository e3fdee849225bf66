#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using tarqa::housekeeping::CommandId;
using tarqa::housekeeping::DocumentId;

const unsigned long long s_largest = std::numeric_limits<unsigned long long>::max();

template <class Left, class Right, class = void>
struct Comparable : std::false_type
{ };
template <class Left, class Right>
struct Comparable<Left, Right, std::void_t<decltype(std::declval<Left>() == std::declval<Right>())>>
    : std::true_type
{ };

/// Runs every test for both identifiers.
template <class Id>
class Identifier : public testing::Test
{ };

struct Names
{
    template <class Id>
    static std::string GetName(int)
    {
        return std::is_same_v<Id, DocumentId> ? "DocumentId" : "CommandId";
    }
};

typedef testing::Types<DocumentId, CommandId> Ids;
TYPED_TEST_SUITE(Identifier, Ids, Names);

TYPED_TEST(Identifier, NullHoldsZero)
{
    EXPECT_EQ(TypeParam::null().getId(), 0ULL);
    EXPECT_TRUE(TypeParam::null() == 0);
    EXPECT_TRUE(TypeParam::build(0) == TypeParam::null());
}

TYPED_TEST(Identifier, IsMadeFromANumberByBuildOnly)
{
    EXPECT_EQ(TypeParam::build(7).getId(), 7ULL);
    EXPECT_EQ(TypeParam::build(s_largest).getId(), s_largest);
    EXPECT_FALSE((std::is_constructible_v<TypeParam, unsigned long long>));
    EXPECT_FALSE((std::is_constructible_v<TypeParam, int>));
    EXPECT_FALSE((std::is_convertible_v<unsigned long long, TypeParam>));
    EXPECT_FALSE(std::is_default_constructible_v<TypeParam>);
    EXPECT_FALSE((std::is_convertible_v<TypeParam, unsigned long long>));
}

TYPED_TEST(Identifier, HoldsOneUnsigned64BitNumberOnly)
{
    EXPECT_EQ(sizeof(TypeParam), sizeof(unsigned long long));
    EXPECT_EQ(sizeof(unsigned long long), 8u);
    EXPECT_TRUE((std::is_same_v<decltype(TypeParam::null().getId()), unsigned long long>));
    EXPECT_TRUE((std::is_same_v<decltype(TypeParam::null().getString()), std::string>));
    EXPECT_TRUE((std::is_same_v<decltype(TypeParam::null()), TypeParam>));
    EXPECT_TRUE((std::is_same_v<decltype(TypeParam::build(1)), TypeParam>));
    EXPECT_TRUE(std::is_trivially_destructible_v<TypeParam>);
}

TYPED_TEST(Identifier, CopiesTheNumber)
{
    const TypeParam original = TypeParam::build(12);
    const TypeParam copy(original);
    TypeParam assigned = TypeParam::null();
    assigned = original;
    EXPECT_EQ(copy.getId(), 12ULL);
    EXPECT_EQ(assigned.getId(), 12ULL);
    EXPECT_EQ(original.getId(), 12ULL);
}

TYPED_TEST(Identifier, StringHasAllDigitsOfTheLargestNumber)
{
    EXPECT_EQ(TypeParam::build(s_largest).getString(), "18446744073709551615");
    EXPECT_EQ(TypeParam::null().getString(), "0");
    EXPECT_EQ(TypeParam::build(1234567).getString(), "1234567");
}

TYPED_TEST(Identifier, ComparesWithAnotherIdentifier)
{
    const TypeParam small = TypeParam::build(3);
    const TypeParam same = TypeParam::build(3);
    const TypeParam large = TypeParam::build(4);

    EXPECT_TRUE(small == same);
    EXPECT_FALSE(small == large);
    EXPECT_TRUE(small != large);
    EXPECT_FALSE(small != same);
    EXPECT_TRUE(small < large);
    EXPECT_FALSE(small < same);
    EXPECT_FALSE(large < small);
    EXPECT_TRUE(small <= same);
    EXPECT_TRUE(small <= large);
    EXPECT_FALSE(large <= small);
    EXPECT_TRUE(large > small);
    EXPECT_FALSE(small > same);
    EXPECT_FALSE(small > large);
    EXPECT_TRUE(small >= same);
    EXPECT_TRUE(large >= small);
    EXPECT_FALSE(small >= large);
}

TYPED_TEST(Identifier, ComparesWithANumber)
{
    const TypeParam id = TypeParam::build(3);

    EXPECT_TRUE(id == 3ULL);
    EXPECT_FALSE(id == 4ULL);
    EXPECT_TRUE(id != 4ULL);
    EXPECT_FALSE(id != 3ULL);
    EXPECT_TRUE(id < 4ULL);
    EXPECT_FALSE(id < 3ULL);
    EXPECT_TRUE(id <= 3ULL);
    EXPECT_FALSE(id <= 2ULL);
    EXPECT_TRUE(id > 2ULL);
    EXPECT_FALSE(id > 3ULL);
    EXPECT_TRUE(id >= 3ULL);
    EXPECT_FALSE(id >= 4ULL);
}

TYPED_TEST(Identifier, ComparesWithoutASign)
{
    EXPECT_TRUE(TypeParam::build(s_largest) > TypeParam::build(1));
    EXPECT_TRUE(TypeParam::build(s_largest) > 1ULL);
    EXPECT_TRUE(TypeParam::null() < s_largest);
}

TYPED_TEST(Identifier, ComparesConstants)
{
    const TypeParam id = TypeParam::build(3);
    EXPECT_EQ(id.getString(), "3");
    EXPECT_TRUE(id == id);
    EXPECT_TRUE(std::as_const(id) < TypeParam::build(4));
}

TYPED_TEST(Identifier, StreamsAllSixtyFourBits)
{
    std::ostringstream out;
    std::ostream& returned = out << TypeParam::build(s_largest) << ' ' << TypeParam::null();
    EXPECT_EQ(&returned, &out);
    EXPECT_EQ(out.str(), "18446744073709551615 0");

    std::istringstream in("18446744073709551615 17");
    TypeParam first = TypeParam::null();
    TypeParam second = TypeParam::null();
    std::istream& read = in >> first >> second;
    EXPECT_EQ(&read, &in);
    EXPECT_EQ(first.getId(), s_largest);
    EXPECT_EQ(second.getId(), 17ULL);
}

TYPED_TEST(Identifier, StreamThatHoldsNoNumberFailsAndLeavesTheIdentifier)
{
    std::istringstream in("none");
    TypeParam id = TypeParam::build(5);
    in >> id;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(id.getId(), 5ULL);
}

TYPED_TEST(Identifier, VariantGetsTheLowThirtyTwoBits)
{
    QVariant variant;
    QVariant& written = variant << TypeParam::build(4294967301ULL);
    EXPECT_EQ(&written, &variant);
    EXPECT_EQ(variant.type(), QVariant::Int);
    EXPECT_EQ(variant.toInt(), 5);

    TypeParam id = TypeParam::null();
    QVariant& read = variant >> id;
    EXPECT_EQ(&read, &variant);
    EXPECT_EQ(id.getId(), 5ULL);
}

TYPED_TEST(Identifier, VariantKeepsNumbersUpToTheLargestInt)
{
    QVariant variant;
    variant << TypeParam::build(2147483647ULL);
    TypeParam id = TypeParam::null();
    variant >> id;
    EXPECT_EQ(id.getId(), 2147483647ULL);
}

TYPED_TEST(Identifier, VariantWrapsNumbersAboveTheLargestInt)
{
    QVariant variant;
    variant << TypeParam::build(4294967295ULL);
    EXPECT_EQ(variant.toInt(), -1);
    TypeParam id = TypeParam::null();
    variant >> id;
    EXPECT_EQ(id.getId(), s_largest);
}

TYPED_TEST(Identifier, VariantWithoutANumberReadsAsZero)
{
    TypeParam id = TypeParam::build(9);
    QVariant text("not a number");
    text >> id;
    EXPECT_EQ(id.getId(), 0ULL);

    id = TypeParam::build(9);
    QVariant invalid;
    invalid >> id;
    EXPECT_EQ(id.getId(), 0ULL);
}

TYPED_TEST(Identifier, VariantTextOfANumberIsRead)
{
    TypeParam id = TypeParam::null();
    QVariant text("42");
    text >> id;
    EXPECT_EQ(id.getId(), 42ULL);
}

TEST(IdentifierKinds, NeitherConvertNorCompare)
{
    EXPECT_FALSE((std::is_convertible_v<DocumentId, CommandId>));
    EXPECT_FALSE((std::is_convertible_v<CommandId, DocumentId>));
    EXPECT_FALSE((std::is_constructible_v<DocumentId, CommandId>));
    EXPECT_FALSE((std::is_constructible_v<CommandId, DocumentId>));
    EXPECT_FALSE((std::is_assignable_v<DocumentId&, CommandId>));
    EXPECT_FALSE((Comparable<DocumentId, CommandId>::value));
    EXPECT_TRUE((Comparable<DocumentId, DocumentId>::value));
}

} // namespace
