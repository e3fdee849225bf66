#include "NamedFactoryFixture.h"

#include <stdexcept>
#include <thread>

namespace {

const char* const s_nothing_registered = "Abstract factory has no registered concrete factory classes. "
                                         "Please contact Velmor Stade with a bug-report.";

template <class F>
class NamedFactory : public NamedFactoryFixture<F>
{
protected:
    typedef ConcreteFactory<F> Concrete;

    static std::string unknown_name(const std::string& name)
    {
        return std::string("Abstract factory '") + FactoryName<F>::value
            + "' does not have the required product name '" + name
            + "' registered. Please contact Velmor Stade with a bug-report";
    }

    /// The text of the std::runtime_error that @p operation throws.
    template <class Operation>
    static std::string error_of(Operation operation)
    {
        try {
            operation();
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return "nothing was thrown";
    }
};

TYPED_TEST_SUITE(NamedFactory, Factories, FactoryNames);

TYPED_TEST(NamedFactory, DerivesFromTheCommonBase)
{
    EXPECT_TRUE((std::is_base_of_v<pkBase::pkAbstractFactory, TypeParam>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_TRUE(std::is_copy_constructible_v<ConcreteFactory<TypeParam>>);
    EXPECT_TRUE(std::is_copy_assignable_v<TypeParam>);
    EXPECT_FALSE(std::is_default_constructible_v<pkBase::pkAbstractFactory>);
}

TYPED_TEST(NamedFactory, HasNoDataOfItsOwn)
{
    EXPECT_EQ(sizeof(TypeParam), sizeof(pkBase::pkAbstractFactory));
}

TYPED_TEST(NamedFactory, CreatesTheProductOfThatName)
{
    ConcreteFactory<TypeParam> a("A", false);
    ConcreteFactory<TypeParam> b("B", true);
    EXPECT_EQ(TypeParam::create("A").get(), a.product());
    EXPECT_EQ(TypeParam::create("B").get(), b.product());
    EXPECT_EQ(TypeParam::create_unmanaged("A"), a.product());
    EXPECT_EQ(TypeParam::create_unmanaged("B"), b.product());
    EXPECT_EQ(a.managed, 1);
    EXPECT_EQ(a.unmanaged, 1);
    EXPECT_EQ(b.managed, 1);
    EXPECT_EQ(b.unmanaged, 1);
}

TYPED_TEST(NamedFactory, MakesANewProductAtEveryCall)
{
    ConcreteFactory<TypeParam> a("A", true);
    {
        const auto first = TypeParam::create("A");
        const auto second = TypeParam::create();
        EXPECT_EQ(first.use_count(), 1);
        EXPECT_EQ(second.use_count(), 1);
        EXPECT_EQ(a.managed, 2);
        EXPECT_EQ(a.released, 0);
    }
    EXPECT_EQ(a.released, 2);
    EXPECT_EQ(a.unmanaged, 0);
}

TYPED_TEST(NamedFactory, MatchesNamesExactly)
{
    ConcreteFactory<TypeParam> lower("a", false);
    ConcreteFactory<TypeParam> upper("A", false);
    EXPECT_EQ(TypeParam::create("a").get(), lower.product());
    EXPECT_EQ(TypeParam::create("A").get(), upper.product());
    EXPECT_EQ(this->error_of([] { TypeParam::create("A "); }), this->unknown_name("A "));
    EXPECT_EQ(this->error_of([] { TypeParam::create(""); }), this->unknown_name(""));
}

TYPED_TEST(NamedFactory, TakesTheSmallestNameWithoutADefault)
{
    ConcreteFactory<TypeParam> b("B", false);
    ConcreteFactory<TypeParam> a("A", false);
    EXPECT_EQ(TypeParam::create().get(), a.product());
    EXPECT_EQ(TypeParam::create_unmanaged(), a.product());
    EXPECT_EQ(TypeParam::products(), (std::vector<std::string>{"B", "A"}));
    EXPECT_EQ(b.managed + b.unmanaged, 0);
}

TYPED_TEST(NamedFactory, OrdersNamesByBytes)
{
    ConcreteFactory<TypeParam> umlaut("\xc3\xa4", false);
    ConcreteFactory<TypeParam> lower("a", false);
    ConcreteFactory<TypeParam> upper("Z", false);
    EXPECT_EQ(TypeParam::create().get(), upper.product());
}

TYPED_TEST(NamedFactory, TakesTheDefaultBeforeTheSmallestName)
{
    ConcreteFactory<TypeParam> a("A", false);
    ConcreteFactory<TypeParam> b("B", true);
    ConcreteFactory<TypeParam> c("C", false);
    EXPECT_EQ(TypeParam::create().get(), b.product());
    EXPECT_EQ(TypeParam::create_unmanaged(), b.product());
}

TYPED_TEST(NamedFactory, LastDefaultWins)
{
    ConcreteFactory<TypeParam> a("A", true);
    ConcreteFactory<TypeParam> b("B", true);
    ConcreteFactory<TypeParam> c("C", false);
    EXPECT_EQ(TypeParam::create().get(), b.product());
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "B");
}

TYPED_TEST(NamedFactory, UnknownNameGivesTheDefault)
{
    ConcreteFactory<TypeParam> a("A", true);
    ConcreteFactory<TypeParam> b("B", false);
    EXPECT_EQ(TypeParam::create("Z").get(), a.product());
    EXPECT_EQ(TypeParam::create_unmanaged("Z"), a.product());
    EXPECT_EQ(b.managed + b.unmanaged, 0);
}

TYPED_TEST(NamedFactory, UnknownNameWithoutADefaultIsAnError)
{
    ConcreteFactory<TypeParam> a("A", false);
    EXPECT_EQ(this->error_of([] { TypeParam::create("Z"); }), this->unknown_name("Z"));
    EXPECT_EQ(this->error_of([] { TypeParam::create_unmanaged("Z"); }), this->unknown_name("Z"));
    const std::string text = this->error_of([] { TypeParam::create("Z"); });
    EXPECT_EQ(text.substr(text.size() - 10), "bug-report"); // no full stop
    EXPECT_EQ(a.managed + a.unmanaged, 0);
}

TYPED_TEST(NamedFactory, UnknownNameWithAMissingDefaultIsAnError)
{
    ConcreteFactory<TypeParam> a("A", false);
    ConcreteFactory<TypeParam>::default_product() = "missing";
    EXPECT_EQ(this->error_of([] { TypeParam::create("Z"); }), this->unknown_name("Z"));
    EXPECT_EQ(this->error_of([] { TypeParam::create_unmanaged("Z"); }), this->unknown_name("Z"));
    EXPECT_EQ(TypeParam::create("A").get(), a.product());
}

TYPED_TEST(NamedFactory, MissingDefaultIsAnErrorOfTheWholeFactory)
{
    ConcreteFactory<TypeParam> a("A", false);
    ConcreteFactory<TypeParam>::default_product() = "missing";
    EXPECT_EQ(this->error_of([] { TypeParam::create(); }), s_nothing_registered);
    EXPECT_EQ(this->error_of([] { TypeParam::create_unmanaged(); }), s_nothing_registered);
    EXPECT_EQ(a.managed + a.unmanaged, 0);
}

TYPED_TEST(NamedFactory, EmptyRegistryIsAnError)
{
    EXPECT_EQ(this->error_of([] { TypeParam::create(); }), s_nothing_registered);
    EXPECT_EQ(this->error_of([] { TypeParam::create("A"); }), s_nothing_registered);
    EXPECT_EQ(this->error_of([] { TypeParam::create_unmanaged(); }), s_nothing_registered);
    EXPECT_EQ(this->error_of([] { TypeParam::create_unmanaged("A"); }), s_nothing_registered);
    EXPECT_TRUE(TypeParam::products().empty());
    EXPECT_TRUE(TypeParam::products_begin() == TypeParam::products_end());
}

TYPED_TEST(NamedFactory, EmptyRegistryIsTestedBeforeTheDefault)
{
    ConcreteFactory<TypeParam>::default_product() = "A";
    EXPECT_EQ(this->error_of([] { TypeParam::create(); }), s_nothing_registered);
    EXPECT_EQ(this->error_of([] { TypeParam::create("A"); }), s_nothing_registered);
}

TYPED_TEST(NamedFactory, ErrorsAreNotTheFrameworksOwnException)
{
    try {
        TypeParam::create();
        FAIL() << "nothing was thrown";
    } catch (const tarqa::Exception&) {
        FAIL() << "a housekeeping exception was thrown";
    } catch (const std::exception&) { }
}

TYPED_TEST(NamedFactory, LooksUpFromAnyThread)
{
    ConcreteFactory<TypeParam> a("A", true);
    const void* p_product = nullptr;
    std::thread([&p_product] { p_product = TypeParam::create("A").get(); }).join();
    EXPECT_EQ(p_product, a.product());
}

TYPED_TEST(NamedFactory, PassesOnAnEmptyProduct)
{
    ConcreteFactory<TypeParam> a("A", true);
    a.gives_nothing = true;
    EXPECT_FALSE(TypeParam::create());
    EXPECT_EQ(TypeParam::create_unmanaged("A"), nullptr);
}

} // namespace
