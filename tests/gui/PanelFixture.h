#pragma once

#include "PanelWindow.h"
#include "support/App.h"

#include <gtest/gtest.h>

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

/// How gtest shows values of Qt.
void PrintTo(const QPoint& point, std::ostream* p_stream);
void PrintTo(const QString& text, std::ostream* p_stream);
void PrintTo(const QStringList& texts, std::ostream* p_stream);

/// Deletes what is to be deleted later, and handles what else waits.
void settle();

/// A main window with settings that were never written before.
class Panels
{
public:
    Panels();
    ~Panels();
    Panels(const Panels&) = delete;
    Panels& operator=(const Panels&) = delete;

    /// A new panel: a label and a stretch.
    static QWidget* make_panel(const QString& title);
    /// A new panel, added to the window.
    QWidget* add(const QString& title);
    /// The same, and torn off.
    QWidget* add_floating(const QString& title);
    /// The floating window of a panel; fails the test if it does not float.
    PanelWindow::ChildDockWidget& float_of(QWidget* p_panel);

    /// Another window over the same settings, as after a restart. The old one goes with its panels.
    void restart();

    // Values in the group of the panels.
    static QVariant stored(const QString& key);
    static void store(const QString& key, const QVariant& value);
    /// All keys, sorted.
    static QStringList stored_keys();

    support::App m_app;
    std::unique_ptr<PanelWindow> m_window;
};

class PanelFixture : public testing::Test, public Panels
{ };
