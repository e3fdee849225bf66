#pragma once

#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

class QMenu;
class QSplitter;

namespace tarqa::housekeeping::gui {
class PreferencesDialog;
}

namespace boreholes {

namespace housekeeping = tarqa::housekeeping; // without it Qt does not find handle_message()

class BoreholesDocument;
class BoreholesMap;
class BoreholesPanel;

/**
 * The main window: the table in a panel at the left, the map at the right, menus and tool bar around them.
 * One document is open at a time; the window asks before it is lost.
 *
 * Made by the program when the controllers exist. Then come the presentations, which bring map and table,
 * then build(). Deleted by the program before the framework's objects. Main thread.
 */
class MainWindow : public housekeeping::gui::AbstractMainWindow
{
    Q_OBJECT

public:
    MainWindow();

    /// For the presentation: takes its widgets over.
    void take_in(BoreholesMap* p_map, BoreholesPanel* p_panel);
    /// Fills menus and tool bar with what all have to offer. Once, after the presentations were made.
    void build();

    /// Opens a file in the place of the current document; an empty path stands for a new document. What goes
    /// wrong is shown in a box. @return whether it is open
    bool open(const QString& path);
    /// @return whether it was saved
    bool save(const QString& path);

    bool may_close() override;
    void take_undo_redo_actions(QAction* p_undo, QAction* p_redo) override;

protected:
    void closeEvent(QCloseEvent* p_event) override;

private slots:
    void handle_message(housekeeping::DocumentMessage& message);
    void handle_message(housekeeping::gui::MainWindowMessage& message);

private:
    void ask_and_open();
    bool ask_and_save();
    void show_preferences();
    void show_title();

    // Children.
    QSplitter* m_p_splitter;
    QMenu* m_p_file;
    QMenu* m_p_edit; // filled by the library's undo and redo, which know it by its title
    housekeeping::gui::PreferencesDialog* m_p_preferences = nullptr;
};

} // namespace boreholes
