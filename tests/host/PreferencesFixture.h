#pragma once

#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/gui/AbstractPreferences.h>

#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace host_test {

namespace housekeeping = tarqa::housekeeping;

/// A new page, made as the preferences dialog makes it.
std::unique_ptr<housekeeping::gui::AbstractPreferences> make_page(const std::string& product);
/// The product whose page shows the settings of a group.
std::string product_for_group(const std::string& group);

/// The widget of a setting; fails the test if the page has none.
QWidget* widget_of(const QWidget& page, const std::string& key);
/// What a page shows for a setting, as the text that is stored.
std::string shown(const QWidget& page, const std::string& key);
/// What a user does to have another value there.
void enter(QWidget& page, const std::string& key, const std::string& value);
void restore_defaults(QWidget& page);

/// The program after its start-up, with settings of its own, which a test may store before it.
class PreferencesTest : public testing::Test
{
protected:
    PreferencesTest();
    ~PreferencesTest() override;

    void start();
    housekeeping::ApplicationManager& manager() const { return m_started->manager(); }

    static void store(const std::string& path, const QVariant& value);
    /// The text that is stored; "" if nothing is.
    static std::string stored(const std::string& path);
    /// The paths of all that is stored.
    static std::vector<std::string> stored_paths();

    /// Waits for what the proxy settings start, and takes what that leaves in the log.
    /// @return whether that was anything
    bool took_proxy_report();

private:
    std::optional<support::StartedApplication> m_started;

protected:
    std::optional<support::LogCapture> log; ///< from the end of the start-up on
};

} // namespace host_test
