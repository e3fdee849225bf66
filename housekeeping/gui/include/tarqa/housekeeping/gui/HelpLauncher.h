#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace tarqa::housekeeping::gui {

/**
 * Shows the host's help. The host derives its launcher from it and registers a HelpLauncherFactory under the
 * product's name; HelpManager makes one in its own constructor, and one more each time the about box is asked
 * for, and calls it. Neither constructor nor destructor may ask for HelpManager::instance(). Main thread.
 */
class TQ_HK_EXPORT HelpLauncher : public QObject
{
    Q_OBJECT

public:
    /// @param p_parent null: the launcher is held by a shared pointer
    explicit HelpLauncher(QObject* p_parent = nullptr);
    ~HelpLauncher() override;

    /// Shows the about box over the main window, and returns when it is closed.
    virtual void about();

    /// Shows a page of the help.
    /// @param page a help key ("TARQ_CONTENTS") or the name of a page @param external true for the system's
    /// web browser, false for the program's own
    virtual void show_page(const QString& page, bool external) = 0;
};

} // namespace tarqa::housekeeping::gui
