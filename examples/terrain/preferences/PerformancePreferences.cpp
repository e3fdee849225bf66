#include "preferences/PerformancePreferences.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;
using housekeeping::ApplicationManager;

const char* const PerformancePreferences::product_name = "PerformancePreferences";

namespace {

const int s_weight = 20;

class PerformancePreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    PerformancePreferencesFactory()
        : AbstractPreferencesFactory(PerformancePreferences::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<PerformancePreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new PerformancePreferences; }
};

const PerformancePreferencesFactory s_factory; // registers itself

const char* const s_multithreading = "use_multithreading";
const char* const s_quality = "seismicRenderQuality";
const int s_initial_quality = housekeeping::HIGH_SEISMIC_RENDER_QUALITY;

/// As it is stored: the getter answers for the moment.
Setting<bool> multithreading()
{
    auto setting = make_setting(s_multithreading, true, &ApplicationManager::useMultiThreading,
        &ApplicationManager::setUseMultiThreading);
    setting.current = [](const QSettings& stored) { return stored.value(s_multithreading, true).toBool(); };
    return setting;
}

/// As it is stored: the getter takes the graphics into account.
Setting<int> seismic_quality()
{
    auto setting = make_setting(s_quality, s_initial_quality, &ApplicationManager::seismicRenderQuality,
        &ApplicationManager::setSeismicRenderQuality);
    setting.current = [](const QSettings& stored) {
        bool is_number = false;
        const int number = stored.value(s_quality, s_initial_quality).toString().toInt(&is_number);
        // What cannot be read counts as the default, there as here.
        return is_number && number >= 0 && number <= s_initial_quality ? number : s_initial_quality;
    };
    return setting;
}

} // namespace

PerformancePreferences::PerformancePreferences(QWidget* p_parent)
    : SettingsPage("performance_options", p_parent)
{
    label(tr("Performance"));
    weight(s_weight);
    QFormLayout& computing = add_group(tr("Computing"),
        tr("For components that compute in the background. The commands of this program always run beside "
           "the "
           "window, and do not use this."));
    add_switch(computing, multithreading(), tr("&Compute in the background"),
        tr("Computations may run in the background as long as the computer has room for more of them. "
           "Otherwise the program waits for each."));
    QFormLayout& drawing = add_group(tr("Drawing"),
        tr("For components with 3D views and seismic sections. This program has none and does not use "
           "these."));
    add_switch(drawing,
        make_setting("use_multithreaded_rendering", true, &ApplicationManager::useMultiThreadedRendering,
            &ApplicationManager::setUseMultiThreadedRendering),
        tr("&Draw with several threads"),
        tr("Views are drawn by threads of their own. Switch this off if your graphics has trouble with it."));
    m_p_quality = &add_choice(drawing, seismic_quality(), tr("Seismic &quality:"),
        tr("How finely seismic sections are drawn. Finer takes longer."),
        {{housekeeping::LOW_SEISMIC_RENDER_QUALITY, tr("Low"), {}},
            {housekeeping::MEDIUM_SEISMIC_RENDER_QUALITY, tr("Medium"), {}},
            {housekeeping::HIGH_SEISMIC_RENDER_QUALITY, tr("High"), {}}});
    m_p_quality_in_use = new QLabel;
    m_p_quality_in_use->setObjectName("quality_in_use");
    m_p_quality_in_use->setWordWrap(true);
    drawing.addRow(m_p_quality_in_use);
    finish();
}

void PerformancePreferences::read(const std::string& path)
{
    SettingsPage::read(path);
    tell_quality_in_use();
}

void PerformancePreferences::write(const std::string& path)
{
    SettingsPage::write(path);
    tell_quality_in_use();
}

/// Says where the graphics cannot carry what is set.
void PerformancePreferences::tell_quality_in_use()
{
    const ApplicationManager& application = ApplicationManager::const_instance();
    const int in_use = application.seismicRenderQuality();
    QString text;
    if (in_use < m_p_quality->currentData().toInt()) {
        const QString why = application.useShaderRendering()
            ? tr("the processor does the work of the graphics")
            : tr("drawing with shaders is off, see Viewer");
        text = tr("In use: %1, since %2.").arg(m_p_quality->itemText(m_p_quality->findData(in_use)), why);
    }
    m_p_quality_in_use->setText(text);
    m_p_quality_in_use->setVisible(!text.isEmpty());
}

} // namespace terrain
