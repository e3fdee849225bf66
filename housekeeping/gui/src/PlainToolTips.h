#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>

class QAction;

namespace tarqa::housekeeping::gui {

/**
 * Shows the tool tips of some actions as they are, wherever the actions have a button. They name commands and
 * what the commands work on, and Qt takes a text that looks like HTML for HTML. Main thread.
 */
class PlainToolTips : public QObject
{
public:
    /// @param actions not owned; live as long as this
    PlainToolTips(const QList<QAction*>& actions, QObject* p_parent);

    bool eventFilter(QObject* p_receiver, QEvent* p_event) override;

private:
    QList<QAction*> m_actions;
};

} // namespace tarqa::housekeeping::gui
