#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtWidgets/QWidget>

#include <map>
#include <vector>

class QLabel;
class QListWidget;
class QListWidgetItem;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/// The panel that is always there: the open documents, where they come from and how large they are, which
/// follows their changes. A click chooses one. Main thread.
class HomePanel : public QWidget
{
    Q_OBJECT

public:
    explicit HomePanel(QWidget* p_parent = nullptr);

    /// Lists @p documents, which must be registered; selects @p current.
    void list(
        const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current);

    QListWidget& documents() const { return *m_p_list; }

    QSize sizeHint() const override;

signals:
    void chosen(const housekeeping::DocumentId& document);

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    QListWidgetItem* make_item(const TerrainDocument& document);
    QString text_of(const TerrainDocument& document);

    QLabel* m_p_hint; // a child
    QListWidget* m_p_list; // a child
    std::vector<housekeeping::DocumentId> m_documents; // in the order of the items
    std::map<housekeeping::DocumentId, QString> m_sizes; // as they were when nobody could change them
};

} // namespace terrain
