#include "PlainToolTips.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAction>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QToolTip>

namespace tarqa::housekeeping::gui {

PlainToolTips::PlainToolTips(const QList<QAction*>& actions, QObject* p_parent)
    : QObject(p_parent)
    , m_actions(actions)
{
    // Of the application, since an action does not tell which widgets it is added to.
    QCoreApplication::instance()->installEventFilter(this);
}

bool PlainToolTips::eventFilter(QObject* p_receiver, QEvent* p_event)
{
    if (p_event->type() != QEvent::ToolTip) {
        return false;
    }
    auto* const p_button = qobject_cast<QToolButton*>(p_receiver);
    if (!p_button || !m_actions.contains(p_button->defaultAction())
        || !Qt::mightBeRichText(p_button->toolTip())) {
        return false;
    }
    QToolTip::showText(static_cast<QHelpEvent*>(p_event)->globalPos(),
        Qt::convertFromPlainText(p_button->toolTip(), Qt::WhiteSpaceNormal), p_button);
    return true;
}

} // namespace tarqa::housekeeping::gui
