#include "windows/DocumentBox.h"

#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QSignalBlocker>

#include <algorithm>

namespace terrain {

DocumentBox::DocumentBox(QWidget* p_parent)
    : QComboBox(p_parent)
{
    setSizeAdjustPolicy(AdjustToContents);
    setMinimumContentsLength(18);
    setFocusPolicy(Qt::ClickFocus);
    setToolTip(tr("The open documents"));
    setAccessibleName(tr("Document"));
    setEnabled(false);
    connect(this, QOverload<int>::of(&QComboBox::activated), this,
        [this](int index) { emit chosen(m_documents[static_cast<std::size_t>(index)]); });
}

void DocumentBox::list(
    const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current)
{
    const QSignalBlocker blocker(this);
    clear();
    m_documents = documents;
    const auto& manager = housekeeping::DocumentManager::const_instance();
    QStringList names;
    QStringList titles;
    for (const housekeeping::DocumentId& id : documents) {
        const housekeeping::AbstractDocument& document = manager.document_from_id(id);
        names.append(QString::fromStdString(document.short_title()));
        titles.append(QString::fromStdString(document.title()));
    }
    for (int i = 0; i < names.size(); ++i) {
        addItem(names.count(names[i]) == 1 ? names[i] : titles[i]);
        setItemData(i, plain_tool_tip(titles[i]), Qt::ToolTipRole);
    }
    const auto found = std::find(m_documents.begin(), m_documents.end(), current);
    setCurrentIndex(found == m_documents.end() ? -1 : static_cast<int>(found - m_documents.begin()));
    setEnabled(!m_documents.empty());
}

housekeeping::DocumentId DocumentBox::neighbour(int places) const
{
    const int documents = static_cast<int>(m_documents.size());
    if (documents == 0 || currentIndex() < 0) {
        return housekeeping::DocumentId::null();
    }
    const int index = ((currentIndex() + places) % documents + documents) % documents;
    return m_documents[static_cast<std::size_t>(index)];
}

} // namespace terrain
