#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtWidgets/QComboBox>

#include <vector>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// Lists documents by name, and lets the user choose one. Main thread.
class DocumentBox : public QComboBox
{
    Q_OBJECT

public:
    explicit DocumentBox(QWidget* p_parent = nullptr);

    /// Lists @p documents, which must be registered; selects @p current.
    void list(
        const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current);

    /// The document that stands a number of places after the selected one, going round; null if there is
    /// none.
    housekeeping::DocumentId neighbour(int places) const;

signals:
    void chosen(const housekeeping::DocumentId& document);

private:
    std::vector<housekeeping::DocumentId> m_documents; // in the order of the entries
};

} // namespace terrain
