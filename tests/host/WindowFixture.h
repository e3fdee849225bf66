#pragma once

#include "support/App.h"
#include "support/LogCapture.h"
#include "windows/MainWindow.h"

#include <boost/shared_ptr.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <string>

class QAction;
class QMenu;

namespace tarqa::housekeeping {
class AbstractCommand;
}

namespace terrain {
class CommandRunner;
class TerrainDocument;
} // namespace terrain

namespace host_test {

namespace housekeeping = tarqa::housekeeping;

/// The main window of the host as the program shows it: with controllers, presentations and menus, and the
/// settings of a program of its own.
class WindowTest : public testing::Test
{
protected:
    WindowTest();
    void SetUp() override;
    void TearDown() override;

    /// The name of the product, which is also that of its help.
    virtual std::string product() const;

    /// Lets a panel float, as dragging its tab away does.
    void tear_off(const QWidget& panel) const;

    /// The menu of the window with a title.
    QMenu& menu(const QString& title) const;
    /// The entry of a menu with a text.
    QAction& entry(const QString& menu, const QString& text) const;
    /// The texts of a widget's actions, "-" for a separator.
    static QStringList texts(const QWidget& widget);

    /// A window as the program makes it, after the one before is gone; it takes what making a second one
    /// leaves in the log.
    void make_window_anew();

    static QString terrain_file(const std::string& name);
    /// Opens such a file and takes what that leaves in the log.
    void open_terrain_file(const std::string& name);

    static int documents();
    static terrain::TerrainDocument& current();

    static terrain::CommandRunner& runner();
    /// Runs a command in the other thread to its end.
    static void run(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command);

    support::App application; // which cannot be started again
    support::LogCapture log;
    std::unique_ptr<terrain::MainWindow> window;

private:
    void make_window();
};

} // namespace host_test
