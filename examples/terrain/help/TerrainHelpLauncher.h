#pragma once

#include "help/HelpPages.h"

#include <tarqa/housekeeping/gui/HelpLauncher.h>

#include <memory>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class HelpWindow;

/**
 * Shows the program's help, in a window of its own or in the system's web browser, which the user may prefer.
 * Registered under the name of the product; the library's help manager makes it, and keeps it until the
 * ordered destruction. Main thread.
 */
class TerrainHelpLauncher : public housekeeping::gui::HelpLauncher
{
    Q_OBJECT

public:
    static const char* const product_name;

    explicit TerrainHelpLauncher(const HelpPages& pages = HelpPages());
    ~TerrainHelpLauncher() override;

    /// A page that does not open outside is shown in the window all the same, and one that there is none of
    /// is named there.
    void show_page(const QString& page, bool external) override;

    /// Null before the first page that it shows.
    HelpWindow* window() const { return m_window.get(); }

private:
    HelpPages m_pages;
    std::unique_ptr<HelpWindow> m_window;
};

} // namespace terrain
