#pragma once

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDataInformationFactory.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/utilities/Exception.h>

#include <gtest/gtest.h>

#include <boost/shared_ptr.hpp>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace housekeeping = tarqa::housekeeping;

/// The seven abstract factories, which must behave alike.
typedef testing::Types<housekeeping::AbstractControllerFactory, housekeeping::AbstractDataInformationFactory,
    housekeeping::AbstractDocumentFactory, housekeeping::AbstractModelFactory,
    housekeeping::gui::AbstractPreferencesFactory, housekeeping::gui::AbstractPresentationFactory,
    housekeeping::gui::HelpLauncherFactory>
    Factories;

/// The names that the messages must quote, written out independently of the factories.
template <class F>
struct FactoryName;
template <>
struct FactoryName<housekeeping::AbstractControllerFactory>
{
    static constexpr const char* value = "AbstractControllerFactory";
};
template <>
struct FactoryName<housekeeping::AbstractDataInformationFactory>
{
    static constexpr const char* value = "AbstractDataInformationFactory";
};
template <>
struct FactoryName<housekeeping::AbstractDocumentFactory>
{
    static constexpr const char* value = "AbstractDocumentFactory";
};
template <>
struct FactoryName<housekeeping::AbstractModelFactory>
{
    static constexpr const char* value = "AbstractModelFactory";
};
template <>
struct FactoryName<housekeeping::gui::AbstractPreferencesFactory>
{
    static constexpr const char* value = "AbstractPreferencesFactory";
};
template <>
struct FactoryName<housekeeping::gui::AbstractPresentationFactory>
{
    static constexpr const char* value = "AbstractPresentationFactory";
};
template <>
struct FactoryName<housekeeping::gui::HelpLauncherFactory>
{
    static constexpr const char* value = "HelpLauncherFactory";
};

struct FactoryNames
{
    template <class F>
    static std::string GetName(int)
    {
        return FactoryName<F>::value;
    }
};

/// A concrete factory whose products are addresses only: the registry never looks into them.
template <class F>
class ConcreteFactory : public F
{
public:
    typedef std::remove_pointer_t<decltype(std::declval<F&>().create_unmanaged_product())> Product;

    ConcreteFactory(const std::string& name, bool is_default)
        : F(name, is_default)
    { }

    using F::default_product;
    using F::registry;
    using F::registry_str;

    boost::shared_ptr<Product> create_product() override
    {
        ++managed;
        if (gives_nothing) {
            return {};
        }
        return boost::shared_ptr<Product>(product(), [this](Product*) { ++released; });
    }
    Product* create_unmanaged_product() override
    {
        ++unmanaged;
        return gives_nothing ? nullptr : product();
    }
    Product* product() { return reinterpret_cast<Product*>(&m_marker); }

    int managed = 0; ///< shared products made
    int unmanaged = 0; ///< products made for the caller to own
    int released = 0; ///< shared products whose last pointer went
    bool gives_nothing = false;

private:
    alignas(64) char m_marker[64] = {};
};

/// Takes what is registered already out of the way while a test runs.
template <class F>
class NamedFactoryFixture : public testing::Test
{
protected:
    NamedFactoryFixture()
    {
        m_registry.swap(ConcreteFactory<F>::registry());
        m_names.swap(ConcreteFactory<F>::registry_str());
        m_default.swap(ConcreteFactory<F>::default_product());
    }
    ~NamedFactoryFixture() override
    {
        m_registry.swap(ConcreteFactory<F>::registry());
        m_names.swap(ConcreteFactory<F>::registry_str());
        m_default.swap(ConcreteFactory<F>::default_product());
    }

private:
    std::remove_reference_t<decltype(ConcreteFactory<F>::registry())> m_registry;
    std::vector<std::string> m_names;
    std::string m_default;
};
