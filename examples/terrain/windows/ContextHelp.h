#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>

class QAction;
class QWidget;

namespace terrain {

/**
 * Lets F1 open the page about the map or panel that has the keyboard, and the table of contents elsewhere: it
 * tells the library's help manager what "Contents" is to open. Main thread.
 */
class ContextHelp : public QObject
{
    Q_OBJECT

public:
    /// Follows the keyboard from now on.
    explicit ContextHelp(QObject* p_parent = nullptr);

    /// The actions of the Help menu that have keys. @param window whose menu it is; its menus must be filled
    static QList<QAction*> key_actions(const QWidget& window);

private:
    static void follow(QWidget* p_before, QWidget* p_now);
};

} // namespace terrain
