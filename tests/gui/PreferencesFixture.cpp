#include "PreferencesFixture.h"

#include "support/Kept.h"

#include <QtWidgets/QStackedWidget>

namespace preferences_test {

using support::journal;

FakePage::FakePage(const std::string& name, int page_weight)
    : m_name(name)
{
    label(QString::fromStdString(name));
    weight(page_weight);
}

FakePage::~FakePage()
{
    journal().add(m_name + ".destroyed");
}

/// With a copy of the action, which may end the page.
void FakePage::step(const std::string& entry, Step action)
{
    journal().add(m_name + "." + entry);
    if (action) {
        action();
    }
}

bool FakePage::isValidPanel()
{
    step("isValidPanel", on_is_valid);
    return valid;
}

void FakePage::accept()
{
    step("accept", on_accept);
}

void FakePage::aboutToShow()
{
    step("aboutToShow", on_about_to_show);
}

void FakePage::showEvent(QShowEvent* p_event)
{
    journal().add(m_name + ".shown");
    AbstractPreferences::showEvent(p_event);
}

FakePageFactory::FakePageFactory(const std::string& name, int weight, bool is_default)
    : AbstractPreferencesFactory(name, is_default)
    , m_name(name)
    , m_weight(weight)
{ }

boost::shared_ptr<gui::AbstractPreferences> FakePageFactory::create_product()
{
    return boost::shared_ptr<gui::AbstractPreferences>(create_unmanaged_product());
}

gui::AbstractPreferences* FakePageFactory::create_unmanaged_product()
{
    journal().add(m_name + ".made");
    if (makes) {
        return makes();
    }
    newest = new FakePage(m_name, m_weight);
    newest->valid = valid;
    if (on_created) {
        on_created(*newest);
    }
    return newest;
}

FakePageFactory& register_page(const std::string& name, int weight, bool is_default)
{
    return support::kept(new FakePageFactory(name, weight, is_default));
}

PreferencesFixture::PreferencesFixture() = default;

PreferencesFixture::~PreferencesFixture() = default;

gui::PreferencesDialog& PreferencesFixture::dialog()
{
    if (!m_dialog) {
        m_dialog = std::make_unique<gui::PreferencesDialog>(&m_parent);
    }
    return *m_dialog;
}

std::vector<std::string> PreferencesFixture::labels()
{
    std::vector<std::string> labels;
    for (int i = 0; i < tabs().count(); ++i) {
        labels.push_back(tabs().tabText(i).toStdString());
    }
    return labels;
}

std::vector<std::string> PreferencesFixture::steps()
{
    std::vector<std::string> entries = journal().entries();
    journal().clear();
    return entries;
}

int PreferencesFixture::page_widgets()
{
    const auto* const p_stack = tabs().findChild<QStackedWidget*>();
    return p_stack->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size();
}

void PreferencesFixture::show()
{
    dialog().show();
    QApplication::setActiveWindow(&dialog());
    ASSERT_EQ(QApplication::activeWindow(), &dialog());
}

} // namespace preferences_test
