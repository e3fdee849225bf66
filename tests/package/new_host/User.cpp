// What a user does with the host that `tq-hk-new host survey` has written, in the program itself: linked with
// its main.cpp, this begins by itself when the main loop does. It uses menus and keys, and prints what is
// seen.

#include "MainWindow.h"
#include "SurveyView.h"

#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/testkit/DialogDriver.h>

#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>

#include <iostream>

namespace {

namespace gui = tarqa::housekeeping::gui;
using tarqa::housekeeping::testkit::DialogDriver;

host::MainWindow& window()
{
    return dynamic_cast<host::MainWindow&>(*host::MainWindow::instance());
}

void print(const QString& text)
{
    std::cout << text.toStdString() << std::endl;
}

QStringList texts_of(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* const p_action : actions) {
        texts.append(p_action->isSeparator() ? "-" : p_action->text());
    }
    return texts;
}

QAction* entry(const QString& text)
{
    for (QMenu* const p_menu : window().findChildren<QMenu*>()) {
        for (QAction* const p_action : p_menu->actions()) {
            if (p_action->text() == text) {
                return p_action;
            }
        }
    }
    qFatal("there is no entry %s", qPrintable(text));
}

/// In the window, to the widget that has the keyboard.
void press(Qt::Key key)
{
    window().activateWindow(); // which a dialog was, where there is no window manager
    if (!QTest::qWaitForWindowActive(&window()) || !window().focusWidget()) {
        qFatal("the window does not get the keyboard");
    }
    QTest::keyClick(window().focusWidget(), key, Qt::ControlModifier);
}

void look(const char* when)
{
    const auto* const p_history = window().findChild<QLabel*>();
    const QString text = window().view()->toPlainText();
    print(QString("%1: %2, %3 steps")
              .arg(when, text.isEmpty() ? "no text" : text, p_history->text().section(' ', -1)));
}

void list_entries()
{
    for (const QAction* const p_entry : window().menuBar()->actions()) {
        print(p_entry->text() + ": " + texts_of(p_entry->menu()->actions()).join(", "));
    }
    print("tool bar: " + texts_of(window().findChild<QToolBar*>()->actions()).join(", "));
}

void use()
{
    list_entries();
    look("started");
    DialogDriver dialogs;
    dialogs.enter("north").enter("south");
    entry("&Change Text…")->trigger();
    look("changed");
    press(Qt::Key_T);
    look("changed");
    press(Qt::Key_Z);
    look("undone");
    press(Qt::Key_Y);
    look("redone");
    entry("Wells View")->trigger();
    print("status bar: " + window().statusBar()->currentMessage());
    for (const std::string& problem : dialogs.problems()) {
        print("dialog: " + QString::fromStdString(problem));
    }
    entry("&Preferences…")->trigger();
    const auto* const p_preferences = window().findChild<gui::PreferencesDialog*>();
    if (p_preferences && p_preferences->isVisible()) {
        print("preferences: " + p_preferences->findChild<QTabWidget*>()->tabText(0));
    }
    entry("&Quit")->trigger();
}

/// Events are also handled while the window is being shown, when the program cannot be left yet.
void use_in_main_loop()
{
    if (QThread::currentThread()->loopLevel() == 0) {
        QTimer::singleShot(0, qApp, &use_in_main_loop);
    } else {
        use();
    }
}

void begin()
{
    QTimer::singleShot(0, qApp, &use_in_main_loop);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(begin)
