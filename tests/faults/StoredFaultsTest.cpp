#include "../application/LogFiles.h"
#include "faults/FaultRounds.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// What is stored when the system refuses the calls that store it.

namespace {

namespace fs = std::filesystem;
using namespace tarqa::housekeeping;
using faults::Call;
using faults::Fault;
using faults::FaultRounds;
using faults::Manner;
using support::LogCapture;

/// The file of a maker of its own for each round, since Qt remembers what it could not write. It holds
/// something before each round.
class StoredUnderFaults : public testing::Test
{
protected:
    static std::string directory(const std::string& maker)
    {
        return std::getenv("XDG_CONFIG_HOME") + ("/" + maker);
    }
    std::string maker() const { return "Maker" + m_application + std::to_string(m_round); }
    std::string file() const { return directory(maker()) + "/" + m_application + ".conf"; }
    std::string kept() const { return file() + ".kept"; }
    std::string content() const { return log_files::read(file()); }

    void begin_round()
    {
        ++m_round;
        fs::create_directories(directory(maker()));
        std::ofstream(file(), std::ios::binary) << m_old;
    }

    /// Checks that the file is the old or the new one, and tells which.
    bool has_new_content(const Fault& fault)
    {
        if (m_new.empty()) {
            m_new = content();
            EXPECT_NE(m_new, m_old);
        }
        // Where the file cannot be looked at either, the old one is kept until it can.
        EXPECT_TRUE(content() == m_old || content() == m_new || log_files::read(kept()) == m_old)
            << content();
        for (const auto& entry : fs::directory_iterator(directory(maker()))) {
            // What could not be put in its place, or a lock, can perhaps not be removed either.
            EXPECT_TRUE(entry.path() == file() || entry.path() == kept() || fault.manner == Manner::FromThenOn
                || has_stale_lock())
                << entry.path();
        }
        return content() == m_new;
    }

    /// Whether Qt's lock could not be removed, which it takes over after half a minute.
    bool has_stale_lock() const { return fs::exists(file() + ".lock"); }

    std::string m_application;
    const std::string m_old = "[Other]\nkey=something that was stored before\n";
    std::string m_new;

private:
    int m_round = 0;
};

} // namespace

TEST_F(StoredUnderFaults, RecentDocumentsAreTheOldOrTheNewOnes)
{
    LogCapture log;
    support::register_data_information("fake");
    m_application = "TarqAllVersions";
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    for (const char* const url : {"file:///first", "file:///second"}) {
        queue.push(
            boost::make_shared<DataSource>(url, boost::make_shared<support::FakeDataInformation>("fake")));
    }
    FaultRounds rounds("StoredRecentDocuments", "/MakerTarq");
    rounds.prepare = [&] {
        begin_round();
        pkBase::pkProductInfo::instance().organization_name(maker());
        queue.load(); // nothing yet, but from now on the queue knows the maker
    };
    rounds.act = [&] { queue.save(); };
    rounds.check = [&](const Fault& fault) {
        if (!has_new_content(fault)) {
            EXPECT_TRUE(log.take("The recent documents could not be stored in " + file())) << log.text();
        }
        EXPECT_EQ(queue.size(), 2u);
        if (!has_stale_lock()) {
            queue.save();
            EXPECT_EQ(content(), m_new);
            EXPECT_FALSE(fs::exists(kept()));
        }
        log.take_all();
    };
    rounds.run();
}

TEST_F(StoredUnderFaults, PreferencesAreTheOldOrTheNewOnes)
{
    LogCapture log;
    m_application = "Faulty";
    ApplicationManager& manager = ApplicationManager::instance();
    QCoreApplication::setApplicationName("Faulty");
    FaultRounds rounds("StoredPreferences", "/MakerFaulty");
    rounds.prepare = [&] {
        begin_round();
        QCoreApplication::setOrganizationName(QString::fromStdString(maker()));
    };
    rounds.act = [&] { manager.setUse3DViewByDefault(false); };
    rounds.check = [&](const Fault& fault) {
        EXPECT_FALSE(manager.use3DViewByDefault());
        if (!has_new_content(fault)) {
            EXPECT_TRUE(log.take("could not be stored in " + file())) << log.text();
        }
        // Qt remembers what it could not read.
        if (!has_stale_lock() && !(rounds.point() && rounds.point()->call == Call::Read)) {
            manager.setUse3DViewByDefault(false);
            EXPECT_EQ(content(), m_new);
            EXPECT_FALSE(fs::exists(kept()));
        }
        log.take_all();
    };
    rounds.run();
}

TEST_F(StoredUnderFaults, KilledProcessLeavesWhatWasKept)
{
    m_application = "TarqAllVersions";
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    for (const std::string& cut : {std::string(), std::string("[Other]\nkey=somet")}) {
        begin_round();
        fs::rename(file(), kept());
        std::ofstream(file(), std::ios::binary) << cut;
        pkBase::pkProductInfo::instance().organization_name(maker());
        queue.load();
        EXPECT_EQ(content(), m_old);
        EXPECT_FALSE(fs::exists(kept()));
    }
}

TEST_F(StoredUnderFaults, KilledProcessCostsNoNewerFile)
{
    m_application = "TarqAllVersions";
    begin_round();
    std::ofstream(file() + ".kept", std::ios::binary) << "[Other]\nkey=older\n";
    pkBase::pkProductInfo::instance().organization_name(maker());
    RecentDocumentsQueue::instance().load();
    EXPECT_EQ(content(), m_old);
    EXPECT_FALSE(fs::exists(kept()));
}
