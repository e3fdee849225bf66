#pragma once

#include "help/Bindings.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtWidgets/QMainWindow>

#include <map>
#include <memory>
#include <vector>

class QLabel;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class Deeds;
class DocumentBox;
class DocumentViews;
class QuickHelpPanel;
class TerrainDocument;
class TerrainQuickHelp;
class TerrainView;

/**
 * The main window: the map of the current document, the menus, and the quick help at its side. It follows the
 * document manager, whoever opens, chooses and closes documents; closing the window closes them all.
 *
 * Made and deleted by the program, before the documents and the quick-help manager go. Main thread.
 */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// Opens a raster as the current document. A failure is shown in a box. @return whether it was opened
    bool open(const QString& path);
    void open(const QStringList& paths);
    /// Writes the current document's raster. A failure is shown in a box. @return whether it was written
    bool write_export(const QString& path);

    QAction& action(Deed deed) const;
    /// The map that is shown; null if no document is open.
    TerrainView* view() const;
    DocumentBox& document_box() const { return *m_p_document_box; }
    QuickHelpPanel& quick_help() const { return *m_p_quick_help; }
    /// What the status bar says about the place under the pointer.
    QString reading() const;

public slots:
    void ask_and_open();
    void ask_and_export();
    /// Closes the current document, unless it is busy.
    void close_document();

protected:
    void closeEvent(QCloseEvent* p_event) override;
    void dragEnterEvent(QDragEnterEvent* p_event) override;
    void dropEvent(QDropEvent* p_event) override;

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    void make_panels();
    void make_menus();
    void make_tool_bar();
    void make_status_bar();
    void connect_deeds();

    void show_new_document(const TerrainDocument& document);
    /// Shows what is current, as if @p gone were no document any more.
    void show_current_document(const housekeeping::DocumentId& gone);
    bool current_document_is_free(const QString& title);
    static std::vector<housekeeping::DocumentId> open_documents();

    // All but the last two are children.
    Deeds* m_p_deeds;
    DocumentViews* m_p_views;
    DocumentBox* m_p_document_box;
    QuickHelpPanel* m_p_quick_help = nullptr;
    QLabel* m_p_reading = nullptr;
    QLabel* m_p_scale = nullptr;
    std::unique_ptr<TerrainQuickHelp> m_general_help;
    std::map<housekeeping::DocumentId, std::unique_ptr<TerrainQuickHelp>> m_document_help;
};

} // namespace terrain
