#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QToolBar>

#include <iostream>

// Linked into the programs of the guides, which are shown as they are: uses the window as somebody would who
// follows the guide, prints what can be seen, and closes it.

namespace {

QMainWindow* visible_window()
{
    for (QWidget* const p_widget : QApplication::topLevelWidgets()) {
        auto* const p_window = qobject_cast<QMainWindow*>(p_widget);
        if (p_window && p_window->isVisible()) {
            return p_window;
        }
    }
    return nullptr;
}

void use(QMainWindow& window)
{
    const auto* const p_list = window.findChild<QListWidget*>();
    const auto* const p_bar = window.findChild<QToolBar*>();
    if (!p_list || !p_bar) {
        std::cout << "a window" << std::endl;
        return;
    }
    const QList<QAction*> actions = p_bar->actions(); // add, undo, redo
    for (const int action : {0, 0, 1, 2}) {
        actions.at(action)->trigger();
        std::cout << p_list->count() << " in the panel, then \"" << actions.at(1)->toolTip().toStdString()
                  << "\"" << std::endl;
    }
}

void drive()
{
    QTimer::singleShot(0, qApp, [] {
        QMainWindow* const p_window = visible_window();
        // Events are handled before the main loop, too, which must not miss that the window is closed.
        if (p_window && QThread::currentThread()->loopLevel() > 0) {
            use(*p_window);
            p_window->close();
        } else {
            drive();
        }
    });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(drive)
