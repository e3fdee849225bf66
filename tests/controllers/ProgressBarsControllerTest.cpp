#include "support/Fakes.h"

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ProgressBarsController.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace tarqa::housekeeping;
using support::FakeDocument;

namespace {

const std::string s_name = "ProgressBarsController";

CommandId command(unsigned long long number)
{
    return CommandId::build(number);
}

DocumentId document(unsigned long long number)
{
    return DocumentId::build(number);
}

} // namespace

// The product

TEST(ProgressBarsController, IsRegisteredByTheLibrary)
{
    const std::vector<std::string> products = AbstractControllerFactory::products();
    EXPECT_EQ(1, std::count(products.begin(), products.end(), s_name));
    EXPECT_TRUE(
        boost::dynamic_pointer_cast<ProgressBarsController>(AbstractControllerFactory::create(s_name)));
}

TEST(ProgressBarsController, IsNotTheDefaultProduct)
{
    EXPECT_THROW(AbstractControllerFactory::create("unknown"), std::runtime_error);
}

TEST(ProgressBarsController, UnmanagedOneIsTheCallers)
{
    const std::unique_ptr<AbstractController> product(AbstractControllerFactory::create_unmanaged(s_name));
    EXPECT_TRUE(dynamic_cast<ProgressBarsController*>(product.get()));
}

TEST(ProgressBarsController, EveryProductIsANewOne)
{
    EXPECT_NE(AbstractControllerFactory::create(s_name), AbstractControllerFactory::create(s_name));
}

TEST(ProgressBarsController, SecondFactoryOfThatNameIsAnError)
{
    try {
        const support::FakeControllerFactory second(s_name);
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ("Two products with name 'ProgressBarsController' are attempting to register with "
                     "abstract factory 'AbstractControllerFactory'. Please contact Velmor Stade with a "
                     "bug-report.",
            error.what());
    }
}

TEST(ProgressBarsController, ControllerManagerMakesIt)
{
    ControllerManager::instance().init();
    const boost::shared_ptr<AbstractController> sp_controller
        = ControllerManager::instance().controller(s_name);
    ASSERT_TRUE(boost::dynamic_pointer_cast<ProgressBarsController>(sp_controller));
    EXPECT_EQ(s_name, sp_controller->controller_name());
    ControllerManager::instance().post_init(); // and nothing is logged
}

// What it has of the base

TEST(ProgressBarsController, HasNoStatesInDocuments)
{
    const FakeDocument& document = support::create_document();
    EXPECT_FALSE(document.state(s_name)); // known and empty: nothing is logged
    EXPECT_FALSE(ControllerManager::instance().controller(s_name)->state_exists());
}

TEST(ProgressBarsController, StateFlagIsThatOfTheBase)
{
    FakeDocument document;
    ProgressBarsController controller;
    EXPECT_FALSE(controller.state_exists());
    controller.update_associated_state(boost::make_shared<AbstractState>(document, document.id(), s_name));
    EXPECT_TRUE(controller.state_exists());
    controller.update_associated_state(boost::shared_ptr<AbstractState>());
    EXPECT_FALSE(controller.state_exists());
}

TEST(ProgressBarsController, RedrawsItsViewsWhenAChangeIsFinished)
{
    ProgressBarsController controller;
    support::FakeView view("bars");
    view.register_controller(&controller);
    {
        ControllerLocker locker(controller);
        controller.command_started(command(1), document(1));
        EXPECT_EQ(0, support::journal().count("bars.update"));
        locker.finished();
    }
    EXPECT_EQ(1, support::journal().count("bars.update"));
}

// What is running

TEST(ProgressBarsController, BeginsEmpty)
{
    const ProgressBarsController controller;
    EXPECT_EQ(0u, controller.percentage(command(1)));
    EXPECT_EQ(DocumentId::null(), controller.document(command(1)));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
    EXPECT_EQ(0u, controller.running_commands(DocumentId::null()));
}

TEST(ProgressBarsController, StartedCommandRunsAtZero)
{
    ProgressBarsController controller;
    controller.command_started(command(7), document(3));
    EXPECT_EQ(0u, controller.percentage(command(7)));
    EXPECT_EQ(document(3), controller.document(command(7)));
    EXPECT_EQ(1u, controller.running_commands(document(3)));
    EXPECT_EQ(DocumentId::null(), controller.document(command(8)));
    EXPECT_EQ(0u, controller.running_commands(document(7)));
}

TEST(ProgressBarsController, ProgressIsTheLastThatWasReported)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    for (const unsigned long long percentage : {1ull, 50ull, 100ull, 99ull, 0ull}) {
        controller.command_progress(command(1), percentage);
        EXPECT_EQ(percentage, controller.percentage(command(1)));
    }
}

TEST(ProgressBarsController, MoreThanAHundredCountsAsAHundred)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    for (const unsigned long long percentage : {101ull, std::numeric_limits<unsigned long long>::max()}) {
        controller.command_progress(command(1), 3);
        controller.command_progress(command(1), percentage);
        EXPECT_EQ(100u, controller.percentage(command(1)));
    }
}

TEST(ProgressBarsController, FullProgressIsNotTheEnd)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_progress(command(1), 100);
    EXPECT_EQ(1u, controller.running_commands(document(1)));
    EXPECT_EQ(document(1), controller.document(command(1)));
}

TEST(ProgressBarsController, FinishedCommandLeavesNothing)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_progress(command(1), 60);
    controller.command_finished(command(1));
    EXPECT_EQ(0u, controller.percentage(command(1)));
    EXPECT_EQ(DocumentId::null(), controller.document(command(1)));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
}

TEST(ProgressBarsController, CountsTheCommandsOfEachDocument)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_started(command(2), document(2));
    controller.command_started(command(3), document(1));
    controller.command_progress(command(1), 10);
    controller.command_progress(command(3), 30);
    EXPECT_EQ(2u, controller.running_commands(document(1)));
    EXPECT_EQ(1u, controller.running_commands(document(2)));
    controller.command_finished(command(1));
    EXPECT_EQ(1u, controller.running_commands(document(1)));
    EXPECT_EQ(1u, controller.running_commands(document(2)));
    EXPECT_EQ(30u, controller.percentage(command(3)));
    EXPECT_EQ(0u, controller.percentage(command(2)));
    controller.command_finished(command(3));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
    EXPECT_EQ(document(2), controller.document(command(2)));
}

TEST(ProgressBarsController, CommandThatRunsAlreadyBeginsAnew)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_progress(command(1), 70);
    controller.command_started(command(1), document(1));
    EXPECT_EQ(0u, controller.percentage(command(1)));
    EXPECT_EQ(1u, controller.running_commands(document(1)));
    controller.command_finished(command(1));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
}

TEST(ProgressBarsController, CommandThatBeginsAnewMayChangeItsDocument)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_started(command(1), document(2));
    EXPECT_EQ(document(2), controller.document(command(1)));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
    EXPECT_EQ(1u, controller.running_commands(document(2)));
    controller.command_finished(command(1));
    EXPECT_EQ(0u, controller.running_commands(document(2)));
}

TEST(ProgressBarsController, FinishedCommandMayRunAgain)
{
    ProgressBarsController controller;
    for (int run = 0; run < 3; ++run) {
        controller.command_started(command(1), document(1));
        EXPECT_EQ(0u, controller.percentage(command(1)));
        EXPECT_EQ(1u, controller.running_commands(document(1)));
        controller.command_progress(command(1), 90);
        controller.command_finished(command(1));
    }
}

TEST(ProgressBarsController, WhatDoesNotRunIsIgnored)
{
    ProgressBarsController controller;
    controller.command_started(command(1), document(1));
    controller.command_progress(command(2), 50);
    controller.command_finished(command(2));
    EXPECT_EQ(0u, controller.percentage(command(2)));
    EXPECT_EQ(1u, controller.running_commands(document(1)));

    controller.command_finished(command(1));
    controller.command_finished(command(1));
    controller.command_progress(command(1), 50);
    EXPECT_EQ(0u, controller.percentage(command(1)));
    EXPECT_EQ(0u, controller.running_commands(document(1)));
    controller.command_started(command(3), document(1));
    EXPECT_EQ(1u, controller.running_commands(document(1)));
}

TEST(ProgressBarsController, KeysAndValuesHaveEightBytes)
{
    ProgressBarsController controller;
    const auto largest = std::numeric_limits<unsigned long long>::max();
    controller.command_started(command(largest), document(largest - 1));
    controller.command_started(command(0xffffffffull), document(0xffffffffull));
    EXPECT_EQ(document(largest - 1), controller.document(command(largest)));
    EXPECT_EQ(document(0xffffffffull), controller.document(command(0xffffffffull)));
    EXPECT_EQ(1u, controller.running_commands(document(largest - 1)));
}

TEST(ProgressBarsController, OneDoesNotShareWithAnother)
{
    ProgressBarsController controller;
    const ProgressBarsController other;
    controller.command_started(command(1), document(1));
    EXPECT_EQ(0u, other.running_commands(document(1)));
    EXPECT_EQ(DocumentId::null(), other.document(command(1)));
}

TEST(ProgressBarsController, SeveralThreadsReportUnderItsLock)
{
    const unsigned long long runs = 200;
    ProgressBarsController controller;
    std::vector<std::thread> threads;
    for (unsigned long long number = 1; number <= 4; ++number) {
        threads.emplace_back([&controller, number] {
            for (unsigned long long run = 0; run < runs; ++run) {
                const CommandId id = command(number * 1000 + run);
                {
                    const ControllerLocker locker(controller);
                    controller.command_started(id, document(run % 2));
                }
                const ControllerLocker locker(controller);
                controller.command_progress(id, number);
                if (run + 1 < runs) {
                    controller.command_finished(id);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(0u, controller.running_commands(document(0)));
    EXPECT_EQ(4u, controller.running_commands(document(1)));
    for (unsigned long long number = 1; number <= 4; ++number) {
        EXPECT_EQ(number, controller.percentage(command(number * 1000 + runs - 1)));
    }
}
