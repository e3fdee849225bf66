#pragma once

#include "support/App.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/gui/AbstractPreferences.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtTest/QTest>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>

#include <boost/shared_ptr.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace preferences_test {

namespace gui = tarqa::housekeeping::gui;

/// A page that journals as its label: "a.isValidPanel", "a.accept", "a.aboutToShow", "a.shown",
/// "a.destroyed".
class FakePage : public gui::AbstractPreferences
{
public:
    typedef std::function<void()> Step;

    FakePage(const std::string& name, int page_weight);
    ~FakePage() override;

    bool isValidPanel() override;
    void accept() override;
    void aboutToShow() override;

    bool valid = true;
    // Called after the entry was made.
    Step on_is_valid;
    Step on_accept;
    Step on_about_to_show;

protected:
    void showEvent(QShowEvent* p_event) override;

private:
    void step(const std::string& entry, Step action);

    std::string m_name;
};

/// Makes FakePages, or what the test says. Registered until the process ends.
class FakePageFactory : public gui::AbstractPreferencesFactory
{
public:
    FakePageFactory(const std::string& name, int weight, bool is_default = false);
    boost::shared_ptr<gui::AbstractPreferences> create_product() override;
    gui::AbstractPreferences* create_unmanaged_product() override;

    bool valid = true;
    std::function<void(FakePage&)> on_created; // called for each page
    std::function<gui::AbstractPreferences*()> makes; // in place of a FakePage
    FakePage* newest = nullptr; // may be gone; not owned

private:
    std::string m_name;
    int m_weight;
};

/// Registers a factory of pages that are called like the product.
FakePageFactory& register_page(const std::string& name, int weight = 0, bool is_default = false);

/// The dialog of one test, with a parent. Pages are registered before it is made.
class PreferencesFixture : public testing::Test
{
protected:
    PreferencesFixture();
    ~PreferencesFixture() override;

    /// Makes the dialog at first use.
    gui::PreferencesDialog& dialog();
    void close_for_good() { m_dialog.reset(); }

    QTabWidget& tabs() { return *dialog().findChild<QTabWidget*>("m_tab"); }
    QPushButton& apply_button() { return *dialog().findChild<QPushButton*>("m_okButton"); }
    QPushButton& close_button() { return *dialog().findChild<QPushButton*>("m_cancelButton"); }
    /// The texts of the tabs, in order.
    std::vector<std::string> labels();
    /// What the pages journaled since the last time.
    static std::vector<std::string> steps();
    /// How many widgets the tab widget has for pages, also those that are no tab.
    int page_widgets();
    /// Shows the dialog as the active window.
    void show();

    support::App m_app;
    QWidget m_parent;
    std::unique_ptr<gui::PreferencesDialog> m_dialog;
};

} // namespace preferences_test
