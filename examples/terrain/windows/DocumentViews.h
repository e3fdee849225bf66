#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtWidgets/QStackedWidget>

#include <map>

class QAction;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

struct MapLayers;

class Deeds;
class RecentFiles;
class StartPage;
class DocumentPage;
class MapTools;
class SceneView;
class TerrainView;

enum class ViewMode;

/**
 * The views of the open documents, those of one on top, or a page that says how to open one. Each document
 * has a map; a view in three dimensions is made when it is first wanted. A new document has both from the
 * beginning if the user prefers that and there is OpenGL. Main thread.
 */
class DocumentViews : public QStackedWidget
{
    Q_OBJECT

public:
    /// @param recent for the page; must outlive the object
    explicit DocumentViews(const RecentFiles& recent, QWidget* p_parent = nullptr);

    /// Lets the views on top carry out the deeds that choose and move a view, or change what it shows.
    void obey(const Deeds& deeds);

    /// Makes a document's map and puts it on top.
    /// @throws housekeeping::HousekeepingException if the document cannot be drawn
    TerrainView& add(const housekeeping::DocumentId& document);
    void remove(const housekeeping::DocumentId& document);
    /// Puts a document's map on top; the start page for a document without one.
    void show_document(const housekeeping::DocumentId& document);

    /// The map of the document on top, whether it is seen or not; null for the start page.
    TerrainView* current() const;
    /// All views of that document; null for the start page.
    DocumentPage* current_page() const;

    /// What is drawn with on the map of the document on top.
    MapTools& tools() const { return *m_p_tools; }

    StartPage& start_page() const { return *m_p_start_page; }

signals:
    /// A view in three dimensions was made.
    void scene_made(terrain::SceneView& scene);

private:
    void obey_moves(const Deeds& deeds);
    void obey_switches(const Deeds& deeds);
    void obey_modes(const Deeds& deeds);
    void obey_scene(const Deeds& deeds);
    void show_switches() const;
    void show_modes() const;

    const Deeds* m_p_deeds = nullptr; // not owned
    std::map<QAction*, bool MapLayers::*> m_switches; // not owned; each with its layer
    StartPage* m_p_start_page; // a child
    MapTools* m_p_tools; // a child
    std::map<housekeeping::DocumentId, DocumentPage*> m_pages; // children
};

} // namespace terrain
