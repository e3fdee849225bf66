#pragma once

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QSettings>
#include <QtCore/QString>

#include <functional>
#include <type_traits>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// One of the application's settings as a page shows it.
template <class Value>
struct Setting
{
    QString key; ///< under which it is stored; its widget is named so too
    Value initial; ///< until the user changes it
    /// The value as it is now. @param stored the stored settings, in the page's group
    std::function<Value(const QSettings& stored)> current;
    std::function<void(const Value&)> change;
};

/// A setting that the application manager tells and stores.
/// @tparam Shown what the page shows it as, for example int for an enumeration
template <class Shown, class Value, class Argument>
Setting<Shown> make_setting(const char* key, Shown initial,
    Value (housekeeping::ApplicationManager::*get)() const,
    void (housekeeping::ApplicationManager::*set)(Argument))
{
    using Manager = housekeeping::ApplicationManager;
    return {key, initial,
        [get](const QSettings&) { return static_cast<Shown>((Manager::const_instance().*get)()); },
        [set](
            const Shown& value) { (Manager::instance().*set)(static_cast<std::decay_t<Argument>>(value)); }};
}

} // namespace terrain
