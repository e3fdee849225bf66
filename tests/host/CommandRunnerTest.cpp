#include "commands/CommandRunner.h"
#include "BusyHook.h"
#include "CommandFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/Controllers.h"
#include "support/EmptyRegistry.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

// Others' code that throws when a run begins and ends: subscribers, views, slots, a factory without products.

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::CommandRunner;
using terrain::ScaleCommand;
using terrain::TerrainDocument;

namespace {

class CommandRunnerWithFaults : public testing::Test
{
protected:
    CommandRunnerWithFaults()
    {
        support::init_controllers();
        QObject::connect(&runner, &CommandRunner::finished,
            [this](CommandRunner::Outcome outcome) { outcomes.push_back(outcome); });
    }

    bool start() { return runner.start(boost::make_shared<ScaleCommand>(document().id(), 2)); }
    TerrainDocument& document()
    {
        if (!m_p_document) {
            m_p_document = &make_document(make_raster(2, 1, {1, 2}));
        }
        return *m_p_document;
    }

    /// One run, and another after it.
    void expect_two_runs()
    {
        EXPECT_TRUE(start());
        runner.wait();
        EXPECT_FALSE(runner.is_running());
        EXPECT_FALSE(DocumentManager::instance().documents_busy());
        EXPECT_FALSE(document().is_busy());
        EXPECT_EQ(bits(document()), bits({2, 4}));
        EXPECT_TRUE(start());
        runner.wait();
        EXPECT_EQ(bits(document()), bits({4, 8}));
        const std::vector<CommandRunner::Outcome> twice(2, CommandRunner::Outcome::Done);
        EXPECT_EQ(outcomes, twice);
    }

    const support::StartedApplication started{false};
    CommandRunner runner;
    std::vector<CommandRunner::Outcome> outcomes;

private:
    TerrainDocument* m_p_document = nullptr; // not owned
};

} // namespace

TEST_F(CommandRunnerWithFaults, RunsAlthoughASubscriberOfTheBusyMarkThrows)
{
    int calls = 0;
    const BusyHook hook([&calls] {
        if (++calls == 1) {
            throw std::runtime_error("subscriber");
        }
    });
    support::LogCapture log;
    expect_two_runs();
    EXPECT_TRUE(log.take("STD EXCEPTION THROWN:subscriber"));
}

TEST_F(CommandRunnerWithFaults, RunsAlthoughAViewOfTheProgressThrows)
{
    const auto sp_bars = housekeeping::ControllerManager::instance().controller("ProgressBarsController");
    support::FakeView view("bars");
    view.register_controller(sp_bars.get());
    int calls = 0;
    view.on_update = [&calls] {
        if (++calls == 1) {
            throw std::runtime_error("view");
        }
    };
    support::LogCapture log;
    expect_two_runs();
    EXPECT_TRUE(log.take("STD EXCEPTION THROWN:view"));
    view.unregister();
}

TEST_F(CommandRunnerWithFaults, WaitingEndsAlthoughASlotThrowsAtTheEnd)
{
    bool has_waited_on = false;
    QTimer timer;
    int shots = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++shots == 100) { // long after the end; gets everybody out of the loop
            has_waited_on = true;
            QCoreApplication::exit();
        }
    });
    int calls = 0;
    // Made before anybody waits, so it is called first.
    QObject::connect(&runner, &CommandRunner::finished, [&] {
        if (++calls == 1) {
            timer.start();
            throw std::runtime_error("slot");
        }
    });
    support::LogCapture log;
    EXPECT_TRUE(start());
    runner.wait();
    timer.stop();
    EXPECT_FALSE(has_waited_on);
    EXPECT_FALSE(runner.is_running());
    EXPECT_EQ(bits(document()), bits({2, 4}));
    EXPECT_EQ(outcomes, std::vector<CommandRunner::Outcome>{CommandRunner::Outcome::Done});
    EXPECT_TRUE(log.take("STD EXCEPTION THROWN:slot"));
}

namespace {

class ModelFactoryWithoutProducts : public housekeeping::AbstractModelFactory
{
public:
    ModelFactoryWithoutProducts()
        : AbstractModelFactory(terrain::TerrainModel::product_name, true)
    { }
    boost::shared_ptr<housekeeping::AbstractModel> create_product() override { return {}; }
    housekeeping::AbstractModel* create_unmanaged_product() override { return nullptr; }
};

} // namespace

TEST(TerrainDocument, WithoutAModelThereIsNone)
{
    support::init_controllers();
    {
        const support::EmptyRegistry<housekeeping::AbstractModelFactory> registry;
        ModelFactoryWithoutProducts factory;
        EXPECT_THROW(DocumentManager::instance().create_document(), housekeeping::HousekeepingException);
        EXPECT_EQ(DocumentManager::instance().num_documents(), 0u);
    }
    DocumentManager::instance().create_document();
    EXPECT_EQ(DocumentManager::instance().num_documents(), 1u);
}
