#include "panels/HomePanel.h"

#include "documents/Raster.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "panels/FactsText.h"
#include "windows/Icons.h"
#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace terrain {

namespace {

// This very text says that the panel never floats, so it is not translated.
const char* const s_title = "Home";
const int s_margin = 8;
const int s_spacing = 2;

} // namespace

HomePanel::HomePanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_hint(new QLabel(tr("No document is open.")))
    , m_p_list(new QListWidget)
    , m_p_about(new QGroupBox(tr("Current document")))
    , m_p_facts(new FactsText)
{
    setWindowTitle(s_title);
    m_p_hint->setAlignment(Qt::AlignCenter);
    m_p_list->setAccessibleName(tr("The open documents"));
    m_p_list->setFrameShape(QFrame::NoFrame);
    m_p_list->setSpacing(s_spacing);
    m_p_list->setTextElideMode(Qt::ElideMiddle);
    m_p_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_p_facts->setAccessibleName(tr("About the current document"));
    auto* const p_inside = new QVBoxLayout(m_p_about);
    p_inside->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_inside->addWidget(m_p_facts);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_hint);
    p_layout->addWidget(m_p_list, 1);
    p_layout->addWidget(m_p_about);
    connect(m_p_list, &QListWidget::itemClicked, this, &HomePanel::choose);
    connect(m_p_list, &QListWidget::itemActivated, this, &HomePanel::choose); // Enter
    list({}, housekeeping::DocumentId::null());
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

void HomePanel::list(
    const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current)
{
    if (documents != m_documents) {
        m_documents = documents;
        m_p_list->clear();
        for (std::size_t i = 0; i < documents.size(); ++i) {
            m_p_list->addItem(new QListWidgetItem(icon("document"), QString()));
        }
    }
    m_current = current;
    for (const housekeeping::DocumentId& id : documents) {
        tell(id);
    }
    m_p_list->setCurrentRow(row_of(current));
    m_p_list->setVisible(!m_documents.empty());
    m_p_hint->setVisible(m_documents.empty());
    m_p_about->setVisible(row_of(current) >= 0);
}

void HomePanel::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    switch (message.doc_change_type()) {
    case DocumentMessage::Destroyed:
        m_rasters.erase(message.id());
        break;
    case DocumentMessage::Busy:
    case DocumentMessage::Idle:
        if (row_of(message.id()) >= 0) {
            tell(message.id());
        }
        break;
    default:
        break;
    }
}

void HomePanel::choose(QListWidgetItem* p_item)
{
    emit chosen(m_documents[static_cast<std::size_t>(m_p_list->row(p_item))]);
}

/// The place of a document in the list; -1 if it is not listed.
int HomePanel::row_of(const housekeeping::DocumentId& document) const
{
    const auto found = std::find(m_documents.begin(), m_documents.end(), document);
    return found == m_documents.end() ? -1 : static_cast<int>(found - m_documents.begin());
}

/// Tells a listed document as it is now.
void HomePanel::tell(const housekeeping::DocumentId& id)
{
    const auto& manager = housekeeping::DocumentManager::const_instance();
    const auto& document = dynamic_cast<const TerrainDocument&>(manager.document_from_id(id));
    RasterFacts& raster = m_rasters[id];
    if (!manager.document_busy(id)) {
        raster = RasterFacts(document.terrain().raster());
    }
    const QString source = source_of(document);
    QStringList lines = {QString::fromStdString(document.short_title()), raster.size, source};
    const QStringList states = states_of(document);
    if (!states.isEmpty()) {
        lines.append(states.join(", "));
    }
    QListWidgetItem& item = *m_p_list->item(row_of(id));
    item.setText(lines.join('\n'));
    item.setToolTip(plain_tool_tip(source));
    if (id == m_current) {
        m_p_facts->show_facts(facts_of(document, raster));
    }
}

QSize HomePanel::sizeHint() const
{
    return {280, 560};
}

} // namespace terrain
