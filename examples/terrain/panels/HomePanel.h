#pragma once

#include "panels/DocumentFacts.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtWidgets/QWidget>

#include <map>
#include <vector>

class QGroupBox;
class QLabel;
class QListWidget;
class QListWidgetItem;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class FactsText;

/**
 * The panel that is always there: the open documents, where they come from, how large they are and what is
 * special about them, which follows their changes; and all that is known of the current one, to be copied. A
 * click or Enter chooses a document. Main thread.
 */
class HomePanel : public QWidget
{
    Q_OBJECT

public:
    explicit HomePanel(QWidget* p_parent = nullptr);

    /// Lists @p documents, which must be registered; selects @p current.
    void list(
        const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current);

    QListWidget& documents() const { return *m_p_list; }

    FactsText& facts() const { return *m_p_facts; }

    QSize sizeHint() const override;

signals:
    void chosen(const housekeeping::DocumentId& document);

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    void choose(QListWidgetItem* p_item);
    int row_of(const housekeeping::DocumentId& document) const;
    void tell(const housekeeping::DocumentId& id);

    QLabel* m_p_hint; // a child, as the next ones
    QListWidget* m_p_list;
    QGroupBox* m_p_about; // holds the facts
    FactsText* m_p_facts;
    std::vector<housekeeping::DocumentId> m_documents; // in the order of the items
    housekeeping::DocumentId m_current = housekeeping::DocumentId::null();
    std::map<housekeeping::DocumentId, RasterFacts> m_rasters; // as they were when nobody could change them
};

} // namespace terrain
