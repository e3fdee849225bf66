#pragma once

#include "support/App.h"
#include "support/LogCapture.h"
#include "windows/MainWindow.h"

#include <boost/shared_ptr.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <string>

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
    void SetUp() override;
    void TearDown() override;

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

    support::App application;
    support::LogCapture log;
    std::unique_ptr<terrain::MainWindow> window;

private:
    void make_window();
};

} // namespace host_test
