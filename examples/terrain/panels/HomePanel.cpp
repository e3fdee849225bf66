#include "panels/HomePanel.h"

#include "documents/Raster.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/utilities/Url.h>

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

QString source_of(const TerrainDocument& document)
{
    return document.datasource()
        ? QString::fromStdString(tarqa::utilities::file_from_url(document.datasource()->url()))
        : QString::fromStdString(document.title());
}

} // namespace

HomePanel::HomePanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_hint(new QLabel(tr("No document is open.")))
    , m_p_list(new QListWidget)
{
    setWindowTitle(s_title);
    m_p_hint->setAlignment(Qt::AlignCenter);
    m_p_list->setAccessibleName(tr("The open documents"));
    m_p_list->setFrameShape(QFrame::NoFrame);
    m_p_list->setSpacing(s_spacing);
    m_p_list->setTextElideMode(Qt::ElideMiddle);
    m_p_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_hint);
    p_layout->addWidget(m_p_list);
    connect(m_p_list, &QListWidget::itemClicked, this, [this](QListWidgetItem* p_item) {
        emit chosen(m_documents[static_cast<std::size_t>(m_p_list->row(p_item))]);
    });
    list({}, housekeeping::DocumentId::null());
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

void HomePanel::list(
    const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current)
{
    m_documents = documents;
    m_p_list->clear();
    const auto& manager = housekeeping::DocumentManager::const_instance();
    for (const housekeeping::DocumentId& id : documents) {
        m_p_list->addItem(make_item(dynamic_cast<const TerrainDocument&>(manager.document_from_id(id))));
    }
    const auto found = std::find(m_documents.begin(), m_documents.end(), current);
    m_p_list->setCurrentRow(found == m_documents.end() ? -1 : static_cast<int>(found - m_documents.begin()));
    m_p_list->setVisible(!m_documents.empty());
    m_p_hint->setVisible(m_documents.empty());
}

void HomePanel::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    if (message.doc_change_type() == DocumentMessage::Destroyed) {
        m_sizes.erase(message.id());
        return;
    }
    const auto found = std::find(m_documents.begin(), m_documents.end(), message.id());
    if (message.doc_change_type() == DocumentMessage::Idle && found != m_documents.end()) {
        const auto& manager = housekeeping::DocumentManager::const_instance();
        m_p_list->item(static_cast<int>(found - m_documents.begin()))
            ->setText(text_of(dynamic_cast<const TerrainDocument&>(manager.document_from_id(message.id()))));
    }
}

QListWidgetItem* HomePanel::make_item(const TerrainDocument& document)
{
    auto* const p_item = new QListWidgetItem(text_of(document));
    p_item->setToolTip(source_of(document));
    return p_item;
}

QString HomePanel::text_of(const TerrainDocument& document)
{
    QString& size = m_sizes[document.id()];
    if (!housekeeping::DocumentManager::const_instance().document_busy(document.id())) {
        const Raster& raster = document.terrain().raster();
        size = tr("%1 × %2 cells").arg(QString::number(raster.columns), QString::number(raster.rows));
    }
    return QString("%1\n%2\n%3")
        .arg(QString::fromStdString(document.short_title()), size, source_of(document));
}

QSize HomePanel::sizeHint() const
{
    return {280, 560};
}

} // namespace terrain
