#include "help/TerrainHelpLauncher.h"

#include "help/HelpWindow.h"
#include "help/OutsideHelp.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;

const char* const TerrainHelpLauncher::product_name = "TarqTerrain";

namespace {

class TerrainHelpLauncherFactory : public gui::HelpLauncherFactory
{
public:
    TerrainHelpLauncherFactory()
        : HelpLauncherFactory(TerrainHelpLauncher::product_name, true)
    { }
    boost::shared_ptr<gui::HelpLauncher> create_product() override
    {
        return boost::make_shared<TerrainHelpLauncher>();
    }
    gui::HelpLauncher* create_unmanaged_product() override { return new TerrainHelpLauncher; }
};

const TerrainHelpLauncherFactory s_factory; // registers itself

} // namespace

TerrainHelpLauncher::TerrainHelpLauncher(const HelpPages& pages)
    : m_pages(pages)
{ }

TerrainHelpLauncher::~TerrainHelpLauncher() = default;

void TerrainHelpLauncher::show_page(const QString& page, bool external)
{
    const bool outside
        = external || housekeeping::ApplicationManager::const_instance().useExternalHelpViewer();
    if (outside && open_help_outside(m_pages, m_pages.address(page))) {
        return;
    }
    if (!m_window) {
        m_window = std::make_unique<HelpWindow>(m_pages);
    }
    m_window->show_page(page);
}

} // namespace terrain
