#pragma once

class QUrl;

namespace terrain {

class HelpPages;

/**
 * Opens a page of the help in the system's web browser. The page of the shortcuts is a list that only the
 * program knows, so a filled copy of it is made in the user's cache folder, and that is opened. Main thread.
 * @return false if there is no such page, or no browser, which is logged
 */
bool open_help_outside(const HelpPages& pages, const QUrl& address);

} // namespace terrain
