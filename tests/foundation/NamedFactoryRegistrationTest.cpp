#include "NamedFactoryFixture.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace {

// Registered before main, as hosts do.
ConcreteFactory<housekeeping::AbstractModelFactory> s_model_factory("registered before main", false);

/// Looks up the default document while the process exits, after everything that main made has gone, and ends
/// the process with 42 if that is right.
class LastLookUp
{
public:
    ~LastLookUp()
    {
        if (!m_name.empty()) {
            const bool right = housekeeping::AbstractDocumentFactory::create_unmanaged() == m_p_product
                && housekeeping::AbstractDocumentFactory::create_unmanaged("unknown") == m_p_product
                && housekeeping::AbstractDocumentFactory::products() == std::vector<std::string>{m_name};
            std::_Exit(right ? 42 : 1);
        }
    }
    void expect(const std::string& name, const void* p_product)
    {
        m_name = name;
        m_p_product = p_product;
    }

private:
    std::string m_name;
    const void* m_p_product = nullptr;
};

LastLookUp s_last_look_up; // made before the first use of that registry

template <class F>
class NamedFactoryRegistration : public NamedFactoryFixture<F>
{
protected:
    /// The text of the error of a registration under @p name; empty if there was none.
    static std::string error_of_registering(const std::string& name, bool is_default)
    {
        try {
            const ConcreteFactory<F> factory(name, is_default);
        } catch (const std::runtime_error& e) {
            return e.what();
        }
        return {};
    }
};

TYPED_TEST_SUITE(NamedFactoryRegistration, Factories, FactoryNames);

TYPED_TEST(NamedFactoryRegistration, ListsNamesInTheOrderOfRegistration)
{
    ConcreteFactory<TypeParam> b("B", false);
    ConcreteFactory<TypeParam> c("C", true);
    ConcreteFactory<TypeParam> a("A", false);
    const std::vector<std::string> expected = {"B", "C", "A"};
    EXPECT_EQ(TypeParam::products(), expected);
    EXPECT_EQ(std::vector<std::string>(TypeParam::products_begin(), TypeParam::products_end()), expected);
}

TYPED_TEST(NamedFactoryRegistration, ListIsACopy)
{
    ConcreteFactory<TypeParam> a("A", false);
    std::vector<std::string> names = TypeParam::products();
    names.push_back("B");
    EXPECT_EQ(TypeParam::products(), std::vector<std::string>{"A"});
}

TYPED_TEST(NamedFactoryRegistration, IteratesWithoutCopying)
{
    ConcreteFactory<TypeParam> a("A", false);
    EXPECT_EQ(&*TypeParam::products_begin(), &ConcreteFactory<TypeParam>::registry_str().front());
}

TYPED_TEST(NamedFactoryRegistration, SecondOneOfANameIsAnError)
{
    ConcreteFactory<TypeParam> first("A", false);
    EXPECT_EQ(this->error_of_registering("A", false),
        std::string("Two products with name 'A' are attempting to register with abstract factory '")
            + FactoryName<TypeParam>::value + "'. Please contact Velmor Stade with a bug-report.");
}

TYPED_TEST(NamedFactoryRegistration, SecondOneOfANameChangesNothing)
{
    ConcreteFactory<TypeParam> first("A", false);
    ConcreteFactory<TypeParam> other("B", true);
    EXPECT_NE(this->error_of_registering("A", true), "");
    EXPECT_EQ(TypeParam::create("A").get(), first.product());
    EXPECT_EQ(TypeParam::products(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "B");
    EXPECT_EQ(ConcreteFactory<TypeParam>::registry().size(), 2u);
}

TYPED_TEST(NamedFactoryRegistration, NamesThatDifferInCaseAreTwo)
{
    ConcreteFactory<TypeParam> upper("A", false);
    EXPECT_EQ(this->error_of_registering("a", false), "");
}

TYPED_TEST(NamedFactoryRegistration, FlagAloneChoosesTheDefault)
{
    ConcreteFactory<TypeParam> a("A", false);
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "");
    ConcreteFactory<TypeParam> b("B", true);
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "B");
    ConcreteFactory<TypeParam> c("C", false);
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "B");
}

TYPED_TEST(NamedFactoryRegistration, CopyingNeverRegisters)
{
    ConcreteFactory<TypeParam> original("A", false);
    ConcreteFactory<TypeParam> other("B", false);
    ConcreteFactory<TypeParam> copy(original);
    other = copy;
    EXPECT_EQ(TypeParam::products(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(TypeParam::create("A").get(), original.product());
    EXPECT_EQ(TypeParam::create("B").get(), other.product());
}

TYPED_TEST(NamedFactoryRegistration, DestructionLeavesTheEntry)
{
    auto doomed = std::make_unique<ConcreteFactory<TypeParam>>("A", true);
    doomed.reset();
    EXPECT_EQ(ConcreteFactory<TypeParam>::registry().count("A"), 1u);
    EXPECT_EQ(TypeParam::products(), std::vector<std::string>{"A"});
    EXPECT_EQ(ConcreteFactory<TypeParam>::default_product(), "A");
    EXPECT_NE(this->error_of_registering("A", false), "");
}

TEST(NamedFactoryFamilies, StaticInstanceIsRegisteredBeforeMain)
{
    EXPECT_EQ(
        housekeeping::AbstractModelFactory::products(), std::vector<std::string>{"registered before main"});
    EXPECT_EQ(housekeeping::AbstractModelFactory::create().get(), s_model_factory.product());
    EXPECT_EQ(housekeeping::AbstractModelFactory::create("registered before main").get(),
        s_model_factory.product());
}

TEST(NamedFactoryFamilies, DefaultIsFoundWhileTheProcessExits)
{
    const auto exit = [] {
        const std::string name(200, 'n');
        static ConcreteFactory<housekeeping::AbstractDocumentFactory>* const s_p_factory
            = new ConcreteFactory<housekeeping::AbstractDocumentFactory>(name, true);
        s_last_look_up.expect(name, s_p_factory->product());
        std::exit(0);
    };
    EXPECT_EXIT(exit(), testing::ExitedWithCode(42), "");
}

TEST(NamedFactoryFamilies, LibraryRegistersNoProductsOfTheHost)
{
    EXPECT_TRUE(housekeeping::AbstractDataInformationFactory::products().empty());
    EXPECT_TRUE(housekeeping::AbstractDocumentFactory::products().empty());
    EXPECT_TRUE(housekeeping::gui::AbstractPreferencesFactory::products().empty());
    EXPECT_TRUE(housekeeping::gui::HelpLauncherFactory::products().empty());
}

TEST(NamedFactoryFamilies, LibraryRegistersTwoControllersAndOnePresentation)
{
    std::vector<std::string> controllers = housekeeping::AbstractControllerFactory::products();
    std::sort(controllers.begin(), controllers.end()); // in the order of linking
    EXPECT_EQ(controllers, (std::vector<std::string>{"ProgressBarsController", "UndoRedoController"}));
    EXPECT_EQ(housekeeping::gui::AbstractPresentationFactory::products(),
        std::vector<std::string>{"UndoRedoPresentation"});
}

TEST(NamedFactoryFamilies, LibraryChoosesNoDefault)
{
    EXPECT_EQ(ConcreteFactory<housekeeping::AbstractControllerFactory>::default_product(), "");
    EXPECT_EQ(ConcreteFactory<housekeeping::gui::AbstractPresentationFactory>::default_product(), "");
}

TEST(NamedFactoryFamilies, HaveARegistryEach)
{
    const std::vector<std::string> models = housekeeping::AbstractModelFactory::products();
    const ConcreteFactory<housekeeping::AbstractDocumentFactory> documents("only a document", true);
    EXPECT_EQ(housekeeping::AbstractDocumentFactory::products(), std::vector<std::string>{"only a document"});
    EXPECT_EQ(housekeeping::AbstractModelFactory::products(), models);
    EXPECT_TRUE(housekeeping::gui::HelpLauncherFactory::products().empty());
}

} // namespace
