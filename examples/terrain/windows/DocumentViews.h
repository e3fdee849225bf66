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
class TerrainView;

/// The maps of the open documents, one on top, or a page that says how to open one. Main thread.
class DocumentViews : public QStackedWidget
{
    Q_OBJECT

public:
    /// @param recent for the page; must outlive the object
    explicit DocumentViews(const RecentFiles& recent, QWidget* p_parent = nullptr);

    /// Lets the map on top carry out the deeds that move a map, or change what it shows.
    void obey(const Deeds& deeds);

    /// Makes a document's map and puts it on top.
    /// @throws housekeeping::HousekeepingException if the document cannot be drawn
    TerrainView& add(const housekeeping::DocumentId& document);
    void remove(const housekeeping::DocumentId& document);
    /// Puts a document's map on top; the start page for a document without one.
    void show_document(const housekeeping::DocumentId& document);

    /// Draws a document's cells as they are now, if it has a map.
    void refresh(const housekeeping::DocumentId& document);

    /// The map on top; null for the start page.
    TerrainView* current() const;

    StartPage& start_page() const { return *m_p_start_page; }

private:
    void obey_switches(const Deeds& deeds);
    void show_switches() const;

    std::map<QAction*, bool MapLayers::*> m_switches; // not owned; each with its layer
    StartPage* m_p_start_page; // a child
    std::map<housekeeping::DocumentId, TerrainView*> m_views; // children
};

} // namespace terrain
