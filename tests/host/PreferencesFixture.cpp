#include "PreferencesFixture.h"

#include "preferences/AnimationPreferences.h"
#include "preferences/ColourButton.h"
#include "preferences/GeneralPreferences.h"
#include "preferences/PerformancePreferences.h"
#include "preferences/ProgramChooser.h"
#include "preferences/ViewerPreferences.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtCore/QThreadPool>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <map>

namespace host_test {

using housekeeping::gui::AbstractPreferences;
using housekeeping::gui::AbstractPreferencesFactory;

std::unique_ptr<AbstractPreferences> make_page(const std::string& product)
{
    return std::unique_ptr<AbstractPreferences>(AbstractPreferencesFactory::create_unmanaged(product));
}

std::string product_for_group(const std::string& group)
{
    static const std::map<std::string, std::string> s_products = {
        {"application", terrain::GeneralPreferences::product_name},
        {"viewer_options", terrain::ViewerPreferences::product_name},
        {"performance_options", terrain::PerformancePreferences::product_name},
        {"animation_tool", terrain::AnimationPreferences::product_name},
    };
    return s_products.at(group);
}

QWidget* widget_of(const QWidget& page, const std::string& key)
{
    auto* const p_widget = page.findChild<QWidget*>(QString::fromStdString(key));
    EXPECT_TRUE(p_widget) << key;
    return p_widget;
}

std::string shown(const QWidget& page, const std::string& key)
{
    QWidget* const p_widget = widget_of(page, key);
    if (const auto* p_box = qobject_cast<QCheckBox*>(p_widget)) {
        return p_box->isChecked() ? "true" : "false";
    }
    if (const auto* p_choice = qobject_cast<QComboBox*>(p_widget)) {
        return p_choice->currentData().toString().toStdString();
    }
    if (const auto* p_button = qobject_cast<terrain::ColourButton*>(p_widget)) {
        return p_button->colour().name().toStdString();
    }
    if (const auto* p_chooser = qobject_cast<terrain::ProgramChooser*>(p_widget)) {
        return p_chooser->path().toStdString();
    }
    ADD_FAILURE() << key << " has a widget of another kind";
    return {};
}

void enter(QWidget& page, const std::string& key, const std::string& value)
{
    QWidget* const p_widget = widget_of(page, key);
    const QString text = QString::fromStdString(value);
    if (auto* p_box = qobject_cast<QCheckBox*>(p_widget)) {
        EXPECT_NE(p_box->isChecked(), value == "true");
        p_box->click();
    } else if (auto* p_choice = qobject_cast<QComboBox*>(p_widget)) {
        const int index = p_choice->findData(text.toInt());
        EXPECT_GE(index, 0) << key << " offers no " << value;
        p_choice->setCurrentIndex(index);
    } else if (auto* p_button = qobject_cast<terrain::ColourButton*>(p_widget)) {
        p_button->set_colour(QColor(text));
    } else if (auto* p_chooser = qobject_cast<terrain::ProgramChooser*>(p_widget)) {
        p_chooser->findChild<QLineEdit*>()->setText(text);
    } else {
        ADD_FAILURE() << key << " has a widget of another kind";
    }
}

void restore_defaults(QWidget& page)
{
    dynamic_cast<QPushButton&>(*widget_of(page, "restore_defaults")).click();
}

PreferencesTest::PreferencesTest()
{
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("tarq-terrain");
    // Without what the environment of the tests says about proxies.
    for (const char* name : {"http_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "ALL_PROXY", "NO_PROXY"}) {
        qunsetenv(name);
    }
}

PreferencesTest::~PreferencesTest()
{
    log.reset();
}

void PreferencesTest::start()
{
    m_started.emplace();
    log.emplace();
}

void PreferencesTest::store(const std::string& path, const QVariant& value)
{
    QSettings().setValue(QString::fromStdString(path), value);
}

std::string PreferencesTest::stored(const std::string& path)
{
    return QSettings().value(QString::fromStdString(path)).toString().toStdString();
}

std::vector<std::string> PreferencesTest::stored_paths()
{
    std::vector<std::string> paths;
    for (const QString& path : QSettings().allKeys()) {
        paths.push_back(path.toStdString());
    }
    return paths;
}

bool PreferencesTest::took_proxy_report()
{
    QThreadPool::globalInstance()->waitForDone();
    return log->take("No system proxy configuration found.");
}

} // namespace host_test
