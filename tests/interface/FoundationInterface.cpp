#include "interface/Interface.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDataInformationFactory.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/InvalidPath.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>

#include <gtest/gtest.h>

#include <istream>
#include <map>
#include <ostream>
#include <string>
#include <vector>

// What the library offers for identifiers, exceptions and the factories of the host's classes.

using namespace tarqa::housekeeping;
using tarqa::Exception;
using tarqa::ExceptionTemplate;

namespace {

typedef std::string Text;

const std::size_t s_after_destructor = 2; // which has two entries

// Identifiers

template <class Left, class Right>
constexpr bool compare = std::is_same_v<decltype(std::declval<Left>() == std::declval<Right>()), bool>&&
    std::is_same_v<decltype(std::declval<Left>() != std::declval<Right>()), bool>&&
        std::is_same_v<decltype(std::declval<Left>() < std::declval<Right>()), bool>&&
            std::is_same_v<decltype(std::declval<Left>() <= std::declval<Right>()), bool>&&
                std::is_same_v<decltype(std::declval<Left>() > std::declval<Right>()), bool>&&
                    std::is_same_v<decltype(std::declval<Left>() >= std::declval<Right>()), bool>;

template <class Id>
struct IdentifierTable
{
    INTERFACE_HAS(Id::null, Id (*)());
    INTERFACE_HAS(Id::build, Id (*)(unsigned long long));
    INTERFACE_HAS(Id::getId, unsigned long long (Id::*)() const);
    INTERFACE_HAS(Id::getString, Text (Id::*)() const);
    static_assert(compare<const Id&, const Id&>);
    static_assert(compare<const Id&, unsigned long long>);
    static_assert(std::is_copy_constructible_v<Id> && std::is_copy_assignable_v<Id>);
    static_assert(std::is_trivially_destructible_v<Id>);
    static_assert(!std::is_constructible_v<Id, unsigned long long>);
    static_assert(!std::is_polymorphic_v<Id> && sizeof(Id) == 8);
    static_assert(
        std::is_same_v<decltype(std::declval<std::ostream&>() << std::declval<const Id&>()), std::ostream&>);
    static_assert(
        std::is_same_v<decltype(std::declval<std::istream&>() >> std::declval<Id&>()), std::istream&>);
    static_assert(
        std::is_same_v<decltype(std::declval<QVariant&>() << std::declval<const Id&>()), QVariant&>);
    static_assert(std::is_same_v<decltype(std::declval<QVariant&>() >> std::declval<Id&>()), QVariant&>);
};
template struct IdentifierTable<DocumentId>;
template struct IdentifierTable<CommandId>;

static_assert(!std::is_convertible_v<DocumentId, CommandId> && !std::is_convertible_v<CommandId, DocumentId>);

// Exceptions

INTERFACE_HAS(Exception::code, unsigned int (Exception::*)() const);
INTERFACE_HAS(Exception::message, const Text& (Exception::*)() const);
INTERFACE_HAS(Exception::file, const Text& (Exception::*)() const);
INTERFACE_HAS(Exception::line, unsigned int (Exception::*)() const);
INTERFACE_HAS(Exception::trail, const std::vector<Text>& (Exception::*)() const);
INTERFACE_HAS(Exception::caught_here, void (Exception::*)(const char*, unsigned int));
INTERFACE_HAS(Exception::catch_and_transfer, void (Exception::*)(const Exception&));
INTERFACE_HAS(Exception::log_information, void (Exception::*)(std::ostream&) const);
INTERFACE_HAS(Exception::what, const char* (Exception::*)() const);
static_assert(std::is_same_v<decltype(std::declval<std::ostream&>() << std::declval<const Exception&>()),
    std::ostream&>);

template <class E, class Base>
struct ExceptionTable
{
    static_assert(std::is_base_of_v<Base, E> && std::has_virtual_destructor_v<E>);
    static_assert(std::is_copy_constructible_v<E>);
    static_assert(std::is_same_v<decltype(std::declval<E&>() = std::declval<const E&>()), E&>);
    INTERFACE_HAS(E::log_information, void (E::*)(std::ostream&) const);
    INTERFACE_HAS(E::what, const char* (E::*)() const);
};

/// Made from a code, a message, the source file and line, and @p More.
template <class E, class... More>
constexpr bool is_made_where_thrown
    = std::is_constructible_v<E, unsigned int, Text, const char*, unsigned int, More...>&&
        std::is_constructible_v<E, unsigned int, QString, const char*, unsigned int, More...>&&
            std::is_constructible_v<E, unsigned int, const char*, const char*, unsigned int, More...>;

typedef ExceptionTemplate<HousekeepingException, HousekeepingExceptionTag> TaggedException;

template struct ExceptionTable<HousekeepingException, Exception>;
template struct ExceptionTable<InvalidPath, HousekeepingException>;
template struct ExceptionTable<TaggedException, HousekeepingException>;
template struct ExceptionTable<CancelCommandException, TaggedException>;
template struct ExceptionTable<FailedCommandException, HousekeepingException>;

static_assert(std::is_same_v<HousekeepingException, ExceptionTemplate<Exception, HousekeepingTag>>);
static_assert(!std::is_base_of_v<std::exception, Exception>);
static_assert(is_made_where_thrown<Exception>);
static_assert(is_made_where_thrown<HousekeepingException>);
static_assert(is_made_where_thrown<InvalidPath, Text> && !is_made_where_thrown<InvalidPath>);
static_assert(is_made_where_thrown<TaggedException>);
static_assert(is_made_where_thrown<FailedCommandException>);
static_assert(!is_made_where_thrown<CancelCommandException>);
static_assert(std::is_constructible_v<CancelCommandException, const HousekeepingException&>);
INTERFACE_HAS(InvalidPath::path, const Text& (InvalidPath::*)() const);

// Factories

template <class Factory>
class Opened : public Factory
{
public:
    Opened(const Text& name, bool is_default)
        : Factory(name, is_default)
    { }
    using Factory::default_product;
    using Factory::registry;
    using Factory::registry_str;
};

template <class Factory, class Product>
struct FactoryTable
{
    typedef boost::shared_ptr<Product> Pointer;
    typedef std::vector<Text> Names;

    static_assert(std::is_base_of_v<pkBase::pkAbstractFactory, Factory>);
    static_assert(std::is_abstract_v<Factory> && std::has_virtual_destructor_v<Factory>);
    static_assert(std::is_copy_assignable_v<Factory>);
    static_assert(std::is_same_v<typename Factory::Registry, std::map<Text, Factory*>>);
    INTERFACE_HAS(Factory::create, Pointer (*)(const Text&));
    INTERFACE_HAS(Factory::create, Pointer (*)());
    INTERFACE_HAS(Factory::create_unmanaged, Product* (*)(const Text&));
    INTERFACE_HAS(Factory::create_unmanaged, Product* (*)());
    INTERFACE_HAS(Factory::products, Names (*)());
    INTERFACE_HAS(Factory::products_begin, Names::const_iterator (*)());
    INTERFACE_HAS(Factory::products_end, Names::const_iterator (*)());
    INTERFACE_HAS(Factory::create_product, Pointer (Factory::*)());
    INTERFACE_HAS(Factory::create_unmanaged_product, Product* (Factory::*)());
    INTERFACE_HAS(Opened<Factory>::registry, std::map<Text, Factory*>& (*)());
    INTERFACE_HAS(Opened<Factory>::registry_str, Names& (*)());
    INTERFACE_HAS(Opened<Factory>::default_product, Text& (*)());

    // What concrete factories define
    template <class B>
    struct Managed : B
    {
        Pointer create_product() override { return {}; }
    };
    template <class B>
    struct Unmanaged : B
    {
        Product* create_unmanaged_product() override { return nullptr; }
    };
    static_assert(interface::are_the_pure_ones<Factory, Managed, Unmanaged>);
};
template struct FactoryTable<AbstractControllerFactory, AbstractController>;
template struct FactoryTable<AbstractDataInformationFactory, AbstractDataInformation>;
template struct FactoryTable<AbstractDocumentFactory, AbstractDocument>;
template struct FactoryTable<AbstractModelFactory, AbstractModel>;
template struct FactoryTable<gui::AbstractPreferencesFactory, gui::AbstractPreferences>;
template struct FactoryTable<gui::AbstractPresentationFactory, gui::AbstractPresentation>;
template struct FactoryTable<gui::HelpLauncherFactory, gui::HelpLauncher>;

INTERFACE_HAS(AbstractControllerFactory::factory_name, const char* (*)());
INTERFACE_HAS(AbstractDataInformationFactory::factory_name, const char* (*)());
INTERFACE_HAS(AbstractDocumentFactory::factory_name, const char* (*)());
INTERFACE_HAS(AbstractModelFactory::factory_name, const char* (*)());
INTERFACE_HAS(gui::AbstractPreferencesFactory::factory_name, const char* (*)());
INTERFACE_HAS(gui::AbstractPresentationFactory::factory_name, const char* (*)());
INTERFACE_HAS(gui::HelpLauncherFactory::factory_name, const char* (*)());

} // namespace

/// Every class of the exceptions.
template <class E>
class ExceptionsInterface : public testing::Test
{ };

typedef testing::Types<Exception, HousekeepingException, TaggedException, InvalidPath, CancelCommandException,
    FailedCommandException>
    AllExceptions;
TYPED_TEST_SUITE(ExceptionsInterface, AllExceptions, );

TYPED_TEST(ExceptionsInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_EQ(s_after_destructor, interface::slot_of(&TypeParam::log_information));
    EXPECT_TRUE(interface::in_a_row(&TypeParam::log_information, &TypeParam::what));
}

/// Every abstract factory.
template <class Factory>
class FactoriesInterface : public testing::Test
{ };

typedef testing::Types<AbstractControllerFactory, AbstractDataInformationFactory, AbstractDocumentFactory,
    AbstractModelFactory, gui::AbstractPreferencesFactory, gui::AbstractPresentationFactory,
    gui::HelpLauncherFactory>
    AllFactories;
TYPED_TEST_SUITE(FactoriesInterface, AllFactories, );

TYPED_TEST(FactoriesInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&TypeParam::create_product));
    EXPECT_TRUE(interface::in_a_row(&TypeParam::create_product, &TypeParam::create_unmanaged_product));
}
