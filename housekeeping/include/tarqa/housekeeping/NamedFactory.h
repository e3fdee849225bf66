#pragma once

#include <pkBase/pkAbstractFactory.h>

#include <boost/shared_ptr.hpp>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarqa::housekeeping {

/**
 * The mechanism of the seven abstract factories: concrete factories register themselves by name, and the
 * framework asks for a product by name or for the default product.
 *
 * @p Product is the product's base class, @p Factory the abstract factory, which derives from this template
 * and has a static `factory_name()` for the messages.
 *
 * A concrete factory derives from the abstract factory, hands its product name and default flag to the
 * constructor and implements the two creating operations. Exactly one object of it is defined at namespace
 * scope: its construction registers it, its destruction leaves the entry in place, and copying never
 * registers. Everything here works before `main` and touches neither Qt nor the log.
 *
 * No locks: registration is single-threaded, during static initialisation; look-ups may run on any thread
 * afterwards.
 *
 * Errors are std::runtime_error, deliberately not the framework's own exception.
 */
template <class Product, class Factory>
class NamedFactory : public pkBase::pkAbstractFactory
{
public:
    /// The factories by the names of their products. Not owned: they are objects at namespace scope.
    typedef std::map<std::string, Factory*> Registry;

    ~NamedFactory() override = default;

    /// A new product; called on the concrete factory.
    virtual boost::shared_ptr<Product> create_product() = 0;
    /// A new product that the caller owns and deletes.
    virtual Product* create_unmanaged_product() = 0;

    /// The product registered under @p name (exact match), else the default product.
    /// @throws std::runtime_error if nothing is registered, or if the name is unknown and there is no usable
    /// default
    static boost::shared_ptr<Product> create(const std::string& name) { return find(name).create_product(); }
    /// The default product, else that of the first name in byte-wise order.
    /// @throws std::runtime_error if nothing is registered, or if the default product is not
    static boost::shared_ptr<Product> create() { return find().create_product(); }
    /// As create(), for a product that the caller owns.
    static Product* create_unmanaged(const std::string& name)
    {
        return find(name).create_unmanaged_product();
    }
    static Product* create_unmanaged() { return find().create_unmanaged_product(); }

    /// The registered names in the order of registration, which is that of static construction.
    static std::vector<std::string> products() { return registry_str(); }
    /// The first of these names. Valid as long as nothing registers.
    static std::vector<std::string>::const_iterator products_begin() { return registry_str().begin(); }
    /// The end of these names.
    static std::vector<std::string>::const_iterator products_end() { return registry_str().end(); }

protected:
    /// Registers this factory, which is @p p_this. @throws std::runtime_error if the name is taken; nothing
    /// has changed then
    NamedFactory(const std::string& name, bool is_default, Factory* p_this)
    {
        if (!registry().insert(std::make_pair(name, p_this)).second) {
            throw std::runtime_error("Two products with name '" + name
                + "' are attempting to register with abstract factory '" + Factory::factory_name()
                + "'. Please contact Velmor Stade with a bug-report.");
        }
        registry_str().push_back(name);
        if (is_default) {
            default_product() = name; // the last default to be constructed wins
        }
    }
    NamedFactory(const NamedFactory&) = default;
    NamedFactory& operator=(const NamedFactory&) = default;

    // The next three are made at first use and leaked: they work from every static constructor and
    // destructor.

    /// All factories of this family.
    static Registry& registry()
    {
        static Registry* const s_p_registry = new Registry;
        return *s_p_registry;
    }
    /// The names of their products in the order of registration.
    static std::vector<std::string>& registry_str()
    {
        static std::vector<std::string>* const s_p_names = new std::vector<std::string>;
        return *s_p_names;
    }
    /// The name of the default product; empty if nobody registered as such.
    static std::string& default_product()
    {
        static std::string* const s_p_name = new std::string;
        return *s_p_name;
    }

private:
    static Factory& find(const std::string& name)
    {
        throw_if_empty();
        typename Registry::const_iterator iter = registry().find(name);
        if (iter == registry().end() && !default_product().empty()) {
            iter = registry().find(default_product());
        }
        if (iter == registry().end()) {
            // Unlike the other messages this one deliberately ends without a full stop.
            throw std::runtime_error(std::string("Abstract factory '") + Factory::factory_name()
                + "' does not have the required product name '" + name
                + "' registered. Please contact Velmor Stade with a bug-report");
        }
        return *iter->second;
    }

    static Factory& find()
    {
        throw_if_empty();
        if (default_product().empty()) {
            return *registry().begin()->second;
        }
        const typename Registry::const_iterator iter = registry().find(default_product());
        if (iter == registry().end()) {
            throw_nothing_registered();
        }
        return *iter->second;
    }

    static void throw_if_empty()
    {
        if (registry().empty()) {
            throw_nothing_registered();
        }
    }

    [[noreturn]] static void throw_nothing_registered()
    {
        throw std::runtime_error("Abstract factory has no registered concrete factory classes. "
                                 "Please contact Velmor Stade with a bug-report.");
    }
};

} // namespace tarqa::housekeeping
