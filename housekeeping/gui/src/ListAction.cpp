#include "ListAction.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QActionEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <typeinfo>

namespace tarqa::housekeeping::gui {

namespace {

QEvent::Type look_event()
{
    static const int s_type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(s_type);
}

/// Exactly Qt's class: a derived one may do more with a change than Qt does.
bool is_plain(const QWidget& widget)
{
    return typeid(widget) == typeid(QToolButton) || typeid(widget) == typeid(QToolBar);
}

} // namespace

ListAction::ListAction(const QIcon& icon, const QString& text, const QString& tool_tip, QObject* p_parent)
    : QAction(icon, text, p_parent)
{
    setToolTip(tool_tip);
}

/// Stands around one change of show().
class ListAction::Change
{
public:
    /// An action does not tell when it is added to a widget, so the widgets are looked up at each change.
    explicit Change(ListAction& action)
        : m_action(action)
    {
        m_action.m_expects_change = true;
        if (!m_action.m_must_look) {
            m_action.m_had_list = m_action.menu() != nullptr;
        }
        const QList<QWidget*> widgets = m_action.associatedWidgets();
        for (QWidget* const p_widget : widgets) {
            if (is_plain(*p_widget)) {
                p_widget->installEventFilter(&m_action);
            }
        }
    }
    ~Change()
    {
        m_action.m_expects_change = false;
        m_action.m_p_change = nullptr;
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    ListAction& m_action;
};

void ListAction::show(const QString& tool_tip, QMenu* p_list)
{
    if (tool_tip != toolTip()) {
        const Change change(*this);
        setToolTip(tool_tip);
    }
    if (p_list != menu()) {
        const Change change(*this);
        setMenu(p_list);
    }
}

bool ListAction::eventFilter(QObject* p_receiver, QEvent* p_event)
{
    if (p_event->type() == QEvent::Paint) {
        m_drawn_meanwhile = true;
        return false;
    }
    if (p_event->type() == QEvent::ActionChanged && static_cast<QActionEvent*>(p_event)->action() == this) {
        return put_off(p_receiver, p_event);
    }
    return false;
}

/// @return whether the receiver is not to be told now
bool ListAction::put_off(QObject* p_receiver, QEvent* p_event)
{
    if (m_expects_change) {
        // All widgets get this one event. Others that come before the last has got it are of changes that
        // somebody else makes because of this one.
        m_expects_change = false;
        m_p_change = p_event;
    }
    if (p_event != m_p_change) {
        return false;
    }
    if (auto* const p_button = qobject_cast<QToolButton*>(p_receiver)) {
        if (p_button->defaultAction() != this) {
            return false;
        }
        p_button->setToolTip(toolTip());
    }
    if (!m_must_look) {
        m_must_look = true;
        m_drawn_meanwhile = false;
        // Before what is posted to lay out and to draw.
        QCoreApplication::postEvent(this, new QEvent(look_event()), Qt::HighEventPriority);
    }
    return true;
}

bool ListAction::event(QEvent* p_event)
{
    if (p_event->type() != look_event()) {
        return QAction::event(p_event);
    }
    m_must_look = false;
    if (m_had_list != (menu() != nullptr) || m_drawn_meanwhile) {
        tell_widgets();
    }
    return true;
}

void ListAction::tell_widgets()
{
    const QList<QWidget*> widgets = associatedWidgets();
    for (QWidget* const p_widget : widgets) {
        if (is_plain(*p_widget)) {
            QActionEvent event(QEvent::ActionChanged, this);
            QCoreApplication::sendEvent(p_widget, &event);
        }
    }
}

} // namespace tarqa::housekeeping::gui
