#include "panels/HistoryPanel.h"

#include "panels/HistoryDelegate.h"
#include "panels/HistoryModel.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/CommandDetails.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QLocale>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <optional>
#include <utility>

namespace terrain {

namespace {

const int s_margin = 8;
const QSize s_icon_size(16, 16);

typedef HistoryLine::Kind Kind;
typedef std::vector<housekeeping::CommandDetails> Details;

const housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::const_instance();
}

HistoryLine line_of(const housekeeping::CommandDetails& details, Kind kind, qulonglong done)
{
    const QString name = QString::fromStdString(details.name());
    const QString description = QString::fromStdString(details.description());
    return {
        kind, description.isEmpty() ? name : QString("%1: %2").arg(name, description), details.icon(), done};
}

/// What is left out of a list of @p shown lines; nothing if it is complete.
std::optional<HistoryLine> remark(qulonglong all, std::size_t shown, const QString& text)
{
    if (all <= shown) {
        return {};
    }
    return HistoryLine{Kind::Remark, text.arg(QLocale().toString(all - shown)), QIcon(), 0};
}

/// How far a document is in its history.
struct Sizes
{
    qulonglong done = 0;
    qulonglong undone = 0;
};

/// All lines, the newest first. @param undone, done the most recent first
std::vector<HistoryLine> lines_of(
    const Details& undone, const Details& done, const Sizes& all, const QIcon& icon_of_file)
{
    std::vector<HistoryLine> lines;
    if (const auto left_out = remark(all.undone, undone.size(), HistoryPanel::tr("%1 more can be redone"))) {
        lines.push_back(*left_out);
    }
    for (std::size_t i = undone.size(); i > 0; --i) {
        lines.push_back(line_of(undone[i - 1], Kind::Undone, all.done + i));
    }
    for (std::size_t i = 0; i < done.size(); ++i) {
        lines.push_back(line_of(done[i], Kind::Done, all.done - i));
    }
    if (const auto left_out
        = remark(all.done, done.size(), HistoryPanel::tr("%1 older commands are not listed"))) {
        lines.push_back(*left_out);
    }
    lines.push_back({Kind::Opened, HistoryPanel::tr("Opened"), icon_of_file, 0});
    return lines;
}

/// The state that a line stands for; nothing if it is none.
std::optional<qulonglong> state_at(const HistoryModel& model, const QModelIndex& index)
{
    if (!index.isValid()) {
        return {};
    }
    const HistoryLine& line = model.lines()[static_cast<std::size_t>(index.row())];
    return line.kind == Kind::Remark ? std::optional<qulonglong>() : line.done;
}

} // namespace

HistoryPanel::HistoryPanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_controller(dynamic_cast<housekeeping::UndoRedoController*>(
          housekeeping::ControllerManager::instance().controller("UndoRedoController").get()))
    , m_p_model(new HistoryModel(this))
    , m_p_list(new QListView)
{
    setWindowTitle(tr("History"));
    m_p_list->setModel(m_p_model);
    m_p_list->setItemDelegate(new HistoryDelegate(m_p_list));
    m_p_list->setAccessibleName(tr("What was done"));
    m_p_list->setFrameShape(QFrame::NoFrame);
    m_p_list->setIconSize(s_icon_size);
    m_p_list->setUniformItemSizes(true);
    m_p_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_p_list->setMouseTracking(true); // for the tips in the status bar
    m_p_list->installEventFilter(this);
    connect(m_p_list, &QListView::clicked, this, &HistoryPanel::choose);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_list);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    if (m_p_controller) {
        register_controller(m_p_controller);
    }
    refresh();
}

HistoryPanel::~HistoryPanel()
{
    unregister(); // the controller outlives the window
}

// --- listing

void HistoryPanel::refresh()
{
    std::vector<HistoryLine> lines;
    Sizes sizes;
    const housekeeping::DocumentId id = documents().current_document_id();
    m_p_model->lock(documents().documents_busy());
    if (m_p_controller) {
        const housekeeping::ControllerLocker locker(*m_p_controller);
        if (m_p_controller->state_exists() && id != housekeeping::DocumentId::null()) {
            const auto& history = documents().document_from_id(id).document_history();
            const Details undone = m_p_controller->getRedoCommandDetails(most_entries);
            const Details done = m_p_controller->getUndoCommandDetails(most_entries);
            // A command that another thread inserts meanwhile is announced when it is in.
            sizes.done = std::max<qulonglong>(history.undoSize(), done.size());
            sizes.undone = std::max<qulonglong>(history.redoSize(), undone.size());
            lines = lines_of(undone, done, sizes, icon("document"));
        }
    }
    show_lines(lines, sizes.done, id);
}

/// Shows other lines where the old ones were: the same one is the first to be seen and the current one. Only
/// when another state has become the present, or another document the current one, that is the current one,
/// and in sight.
void HistoryPanel::show_lines(
    const std::vector<HistoryLine>& lines, qulonglong done, const housekeeping::DocumentId& document)
{
    const bool is_same = std::exchange(m_document, document) == document;
    const auto first = state_at(*m_p_model, m_p_list->indexAt(QPoint(0, 0)));
    const bool is_at_top = m_p_list->verticalScrollBar()->value() == 0;
    const auto present = state_at(*m_p_model, m_p_model->present());
    const auto current = state_at(*m_p_model, m_p_list->currentIndex());
    m_p_model->show(lines, done);
    if (is_same && first && !is_at_top) {
        m_p_list->scrollTo(m_p_model->line_of(*first), QAbstractItemView::PositionAtTop);
    }
    const bool is_kept = is_same && present == done && current && m_p_model->line_of(*current).isValid();
    const QModelIndex now = is_kept ? m_p_model->line_of(*current) : m_p_model->present();
    m_p_list->selectionModel()->setCurrentIndex(now, QItemSelectionModel::ClearAndSelect);
    if (!is_kept) {
        m_p_list->scrollTo(now);
    }
}

void HistoryPanel::update()
{
    refresh();
}

/// The lines are locked, not the list, which would lose the keyboard with each undo.
void HistoryPanel::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    if (message.doc_change_type() == DocumentMessage::Busy
        || message.doc_change_type() == DocumentMessage::Idle) {
        m_p_model->lock(documents().documents_busy());
    }
}

// --- choosing

bool HistoryPanel::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(p_watched, p_event);
    }
    const auto& key = *static_cast<QKeyEvent*>(p_event);
    const bool is_plain = (key.modifiers() & ~Qt::KeypadModifier) == 0;
    if (!is_plain
        || (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter && key.key() != Qt::Key_Space)) {
        return QWidget::eventFilter(p_watched, p_event);
    }
    choose(m_p_list->currentIndex());
    return true;
}

/// Does what the lists of undo and redo do.
void HistoryPanel::choose(const QModelIndex& line)
{
    const auto sp_undo_redo = housekeeping::gui::UndoRedoPresentation::instance();
    const auto state = state_at(*m_p_model, line);
    if (!sp_undo_redo || !state || !(m_p_model->flags(line) & Qt::ItemIsEnabled)) {
        return;
    }
    const qulonglong done = state_at(*m_p_model, m_p_model->present()).value_or(*state);
    if (*state < done) {
        sp_undo_redo->undos_selected(done - *state);
    } else if (*state > done) {
        sp_undo_redo->redos_selected(*state - done);
    }
}

QSize HistoryPanel::sizeHint() const
{
    return {280, 400};
}

} // namespace terrain
