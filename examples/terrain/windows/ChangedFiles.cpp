#include "windows/ChangedFiles.h"

#include "documents/TerrainDocument.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolBar>

#include <algorithm>

namespace terrain {

namespace {

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

const TerrainDocument& document_of(const housekeeping::DocumentId& id)
{
    return dynamic_cast<const TerrainDocument&>(documents().document_from_id(id));
}

} // namespace

ChangedFiles::ChangedFiles(QMainWindow* p_window)
    : QObject(p_window)
    , m_p_window(p_window)
{
    p_window->installEventFilter(this);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

bool ChangedFiles::eventFilter(QObject* p_receiver, QEvent* p_event)
{
    if (p_receiver == m_p_window && p_event->type() == QEvent::WindowActivate) {
        look();
    }
    return QObject::eventFilter(p_receiver, p_event);
}

void ChangedFiles::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.doc_change_type() == housekeeping::DocumentMessage::Destroyed) {
        m_kept.erase(message.id());
        if (m_shown == message.id()) {
            m_shown = housekeeping::DocumentId::null();
            m_p_bar->hide(); // the next one is told when the window is next active
        }
    }
}

bool ChangedFiles::is_to_be_told(const housekeeping::DocumentId& id) const
{
    const TerrainDocument& document = document_of(id);
    const FileStamp now = file_stamp(document.source_file());
    const auto kept = m_kept.find(id);
    return now.exists && now != document.source_stamp() && (kept == m_kept.end() || now != kept->second);
}

void ChangedFiles::look()
{
    const std::vector<housekeeping::DocumentId> list = documents().current_documents();
    const auto found = std::find_if(
        list.begin(), list.end(), [this](const housekeeping::DocumentId& id) { return is_to_be_told(id); });
    m_shown = found == list.end() ? housekeeping::DocumentId::null() : *found;
    if (found == list.end()) {
        if (m_p_bar) {
            m_p_bar->hide();
        }
        return;
    }
    if (!m_p_bar) {
        make_bar();
    }
    const TerrainDocument& document = document_of(*found);
    const QString text
        = tr("\"%1\" has changed on disk.").arg(QString::fromStdString(document.source_file()));
    m_p_text->setText(document.is_modified() ? tr("%1 Reloading loses your changes.").arg(text) : text);
    m_p_bar->show();
}

void ChangedFiles::make_bar()
{
    m_p_window->addToolBarBreak();
    m_p_bar = m_p_window->addToolBar(tr("Changed File"));
    m_p_bar->setMovable(false);
    m_p_bar->toggleViewAction()->setVisible(false); // it comes and goes by itself
    m_p_text = new QLabel;
    m_p_text->setTextFormat(Qt::PlainText);
    m_p_text->setContentsMargins(6, 0, 12, 0);
    auto* const p_reload = new QPushButton(icon("reload"), tr("Reload"));
    auto* const p_keep = new QPushButton(icon("keep"), tr("Keep Mine"));
    connect(p_reload, &QPushButton::clicked, this, [this] {
        const housekeeping::DocumentId document = m_shown; // which changes when the document goes
        emit reload_asked(document);
    });
    connect(p_keep, &QPushButton::clicked, this, &ChangedFiles::keep);
    for (QWidget* const p_widget : std::initializer_list<QWidget*>{m_p_text, p_reload, p_keep}) {
        m_p_bar->addWidget(p_widget);
    }
}

/// Does not speak of this state of the file again. Saving over it still asks.
void ChangedFiles::keep()
{
    m_kept[m_shown] = file_stamp(document_of(m_shown).source_file());
    look();
}

} // namespace terrain
