#pragma once

#include "help/Bindings.h"
#include "windows/Panels.h"

#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <QtCore/QList>

#include <map>
#include <memory>
#include <vector>

class QSplitter;
class QToolBar;

namespace tarqa::housekeeping::gui {
class PreferencesDialog;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class Closing;
class Deeds;
class DocumentBox;
class DocumentFiles;
class DocumentViews;
class MapStatus;
class RecentMenu;
class TerrainDocument;
class TerrainQuickHelp;
class TerrainView;

/**
 * The main window: the map of the current document, the panels at its left, the menus that the presentations
 * and the window itself fill. It follows the document manager, whoever opens, chooses and closes documents;
 * closing the window closes them all, after asking about what is not saved.
 *
 * Made by the program when the controllers exist; then come the presentations, then build_menus(). Deleted by
 * the program before the documents and the quick-help manager go. Main thread.
 */
class MainWindow : public housekeeping::gui::AbstractMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    /// Abandons a command that is still running.
    ~MainWindow() override;

    /// Fills menu bar and tool bar with what the presentations and the window itself have to offer. Once,
    /// after the presentations were made.
    void build_menus();

    /// Opens a raster as the current document. A failure is shown in a box. @return whether it was opened
    bool open(const QString& path);
    void open(const QStringList& paths);
    /// Writes the current document's raster. A failure is shown in a box. @return whether it was written
    bool write_export(const QString& path);

    QAction& action(Deed deed) const;
    /// The map that is shown; null if no document is open.
    TerrainView* view() const;
    DocumentViews& views() const { return *m_p_views; }
    DocumentBox& document_box() const { return *m_p_document_box; }
    RecentMenu& recent_menu() const { return *m_p_recent; }
    /// Null until it is first shown.
    housekeeping::gui::PreferencesDialog* preferences() const { return m_p_preferences; }
    HomePanel& home() const { return m_p_panels->home(); }
    QuickHelpPanel& quick_help() const { return m_p_panels->quick_help(); }
    HistoryPanel& history() const { return m_p_panels->history(); }
    StatisticsPanel& statistics() const { return m_p_panels->statistics(); }
    LayersPanel& layers() const { return m_p_panels->layers(); }
    QTabBar& panel_tabs() const { return *m_panelTabBar; }
    QToolBar& tool_bar() const { return *m_p_tool_bar; }
    /// What the status bar says about the place under the pointer.
    QString reading() const;

    /// Puts a panel in front, docked or floating.
    void show_panel(QWidget& panel);

    // As the base, and size and place of the window.
    void readSettings() override;
    void writeSettings() override;

    /// Cancels the running command and waits for it, then asks about each document that has unsaved changes.
    bool may_close() override;
    /// Lets their shortcuts work in the maps and panels.
    void take_undo_redo_actions(QAction* p_undo, QAction* p_redo) override;

public slots:
    /// Closes the current document, unless it is busy or the user wants to keep it.
    void close_document();
    /// Shows the preferences with the values as they are now, or brings them to the front.
    void show_preferences();

protected:
    void closeEvent(QCloseEvent* p_event) override;
    void dragEnterEvent(QDragEnterEvent* p_event) override;
    void dropEvent(QDropEvent* p_event) override;

private slots:
    void handle_message(housekeeping::DocumentMessage& message);
    void handle_message(housekeeping::DocumentHistoryMsg& message);
    void handle_message(housekeeping::FilesInsertMessage& message);

private:
    void make_panel_area();
    void make_tool_bar();
    void connect_deeds();
    void connect_help();
    void add_edit_actions(QWidget& widget) const;

    void show_new_document(const TerrainDocument& document);
    /// The cells of a document have changed, or may have.
    void show_changes();
    /// Shows what is current, as if @p gone were no document any more.
    void show_current_document(const housekeeping::DocumentId& gone);
    void show_written(const QString& path);
    void show_title(const housekeeping::DocumentId& current);

    // Children.
    Deeds* m_p_deeds;
    DocumentFiles* m_p_files;
    Closing* m_p_closing;
    RecentMenu* m_p_recent;
    DocumentViews* m_p_views;
    DocumentBox* m_p_document_box;
    MapStatus* m_p_map_status;
    Panels* m_p_panels;
    QSplitter* m_p_splitter = nullptr;
    QToolBar* m_p_tool_bar = nullptr;
    housekeeping::gui::PreferencesDialog* m_p_preferences = nullptr;

    QList<QAction*> m_edit_actions; // the undo/redo presentation's
    std::unique_ptr<TerrainQuickHelp> m_general_help;
    std::map<housekeeping::DocumentId, std::unique_ptr<TerrainQuickHelp>> m_document_help;
};

} // namespace terrain
