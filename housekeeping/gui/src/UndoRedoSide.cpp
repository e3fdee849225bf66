#include "UndoRedoSide.h"

#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtGui/QIcon>

#include <limits>

namespace tarqa::housekeeping::gui {

namespace {

const int s_longest_description = 60;
const int s_cut_after = 55; // at the first comma from here on

QString label_of(const CommandDetails& details)
{
    const QString name = QString::fromStdString(details.name());
    QString description = QString::fromStdString(details.description());
    if (description.isEmpty()) {
        return name;
    }
    if (description.length() > s_longest_description) {
        const int comma = description.indexOf(',', s_cut_after);
        if (comma >= 0) {
            description = description.left(comma + 1) + " ...";
        }
    }
    return QString("%1: %2").arg(name, description);
}

} // namespace

UndoRedoSide::UndoRedoSide(
    QObject* p_owner, const Texts& texts, const QString& icon, const QKeySequence& shortcut)
    : m_texts(texts)
    , m_p_menu_action(new QAction(QIcon(icon), texts.menu, p_owner))
    , m_p_tool_bar_action(new QAction(QIcon(icon), texts.menu, p_owner))
{
    m_p_menu_action->setStatusTip(texts.status_tip);
    m_p_menu_action->setShortcut(shortcut);
    m_p_menu_action->setShortcutContext(Qt::WidgetShortcut);
}

void UndoRedoSide::detach_list()
{
    m_p_tool_bar_action->setMenu(nullptr);
}

void UndoRedoSide::close_detached_list()
{
    if (!m_p_tool_bar_action->menu()) {
        m_list.hide();
    }
}

unsigned long long UndoRedoSide::wanted() const
{
    // One more than are listed at once tells that there are too many.
    return m_list.isVisible() ? std::numeric_limits<unsigned long long>::max() : at_once + 1;
}

void UndoRedoSide::set_items(const std::vector<CommandDetails>& details)
{
    m_waits = false;
    if (details.empty()) {
        m_p_menu_action->setText(m_texts.menu);
        m_p_menu_action->setToolTip(m_texts.word);
        m_p_tool_bar_action->setToolTip(m_texts.word);
        return;
    }
    const CommandDetails& first = details.front();
    const QString tool_tip = m_texts.word + ' ' + label_of(first);
    m_p_menu_action->setToolTip(tool_tip);
    m_p_tool_bar_action->setToolTip(tool_tip);
    m_p_menu_action->setText(m_texts.menu + ' ' + QString::fromStdString(first.name()));
    if (details.size() < 2) {
        return;
    }
    m_waits = details.size() > at_once && !m_list.isVisible();
    if (!m_waits) {
        fill_list(details);
    }
    m_p_tool_bar_action->setMenu(&m_list);
}

void UndoRedoSide::fill_list(const std::vector<CommandDetails>& details)
{
    m_waits = false;
    const int count = static_cast<int>(details.size());
    // Entries are kept and filled anew: making them is what costs.
    shrink_list(count);
    const QList<QAction*> kept = m_list.actions();
    for (int i = 0; i < count; ++i) {
        QAction* const p_entry = i < kept.size() ? kept.at(i) : m_list.addAction(QString());
        fill_entry(p_entry, details[static_cast<std::size_t>(i)], i + 1);
    }
    m_list.addSeparator();
    m_list.addAction(count_text(0))->setData(static_cast<qulonglong>(details.size()));
}

/// Takes out the separator and the last entry, and all entries beyond @p count. They are deleted later: the
/// user may have chosen one of them just now.
void UndoRedoSide::shrink_list(int count)
{
    const QList<QAction*> actions = m_list.actions();
    for (int i = actions.size() - 1; i >= 0 && (i >= count || i >= actions.size() - 2); --i) {
        m_list.removeAction(actions.at(i));
        actions.at(i)->deleteLater();
    }
}

void UndoRedoSide::fill_entry(QAction* p_entry, const CommandDetails& details, int position)
{
    p_entry->setText(label_of(details));
    p_entry->setIcon(details.icon());
    p_entry->setData(static_cast<qulonglong>(position));
    p_entry->setCheckable(true);
    p_entry->setChecked(false);
}

void UndoRedoSide::hover(unsigned long long n)
{
    const QList<QAction*> actions = m_list.actions();
    if (actions.isEmpty()) {
        return;
    }
    const int entries = actions.size() - 2; // without the separator and the last one
    for (int i = 0; i < entries; ++i) {
        actions.at(i)->setChecked(static_cast<unsigned long long>(i) < n);
    }
    actions.last()->setText(count_text(n));
}

QString UndoRedoSide::count_text(unsigned long long n) const
{
    return m_texts.word + ' ' + QString::number(n)
        + (n == 1 ? UndoRedoPresentation::tr(" Action") : UndoRedoPresentation::tr(" Actions"));
}

} // namespace tarqa::housekeeping::gui
