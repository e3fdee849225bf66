#pragma once

#include "help/Bindings.h"

#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QObject>

class QMenu;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class Deeds;
class RecentMenu;

/// The window's own part of its menu bar, menus and tool bar. It enters them when the window asks for entries
/// by message, as everybody else does who has something to offer. Main thread.
class MainMenus : public QObject
{
    Q_OBJECT

public:
    /// @param deeds the actions, which must outlive the object @param p_recent a menu for the File menu
    /// @param p_window whose menus these are; becomes the parent
    MainMenus(const Deeds& deeds, RecentMenu* p_recent, QWidget* p_window);

private slots:
    void handle_message(housekeeping::gui::MainWindowMessage& message);

private:
    void fill_file_menu(housekeeping::gui::MainWindowMessage& message) const;
    void fill_tool_bar(housekeeping::gui::MainWindowMessage& message) const;

    const Deeds& m_deeds;
    QWidget* m_p_window; // the parent
    RecentMenu* m_p_recent; // not owned
    // Children of the window.
    QMenu* m_p_file;
    QMenu* m_p_edit; // filled by the library's undo/redo presentation, which knows it by its title
    QMenu* m_p_view;
};

} // namespace terrain
