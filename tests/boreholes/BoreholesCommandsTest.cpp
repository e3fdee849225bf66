#include "AddBorehole.h"
#include "BoreholesDocument.h"
#include "BoreholesModel.h"
#include "DeleteBorehole.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// The commands of the host with boreholes.

namespace housekeeping = tarqa::housekeeping;
namespace testkit = tarqa::housekeeping::testkit;

using boreholes::AddBorehole;
using boreholes::BoreholesDocument;
using boreholes::DeleteBorehole;

namespace {

BoreholesDocument& of(housekeeping::AbstractDocument& document)
{
    return dynamic_cast<BoreholesDocument&>(document);
}

/// A document with two boreholes.
housekeeping::AbstractDocument& make_document()
{
    housekeeping::AbstractDocument& document = housekeeping::DocumentManager::instance().create_document();
    of(document).boreholes().boreholes({{"Mill", 10, 20, 30}, {"Ford", 11, 21, 31}});
    return document;
}

std::string names(housekeeping::AbstractDocument& document)
{
    std::string text;
    for (const boreholes::Borehole& borehole : of(document).boreholes().boreholes()) {
        text += borehole.name.toStdString() + ' ' + std::to_string(borehole.depth) + '\n';
    }
    return text;
}

} // namespace

class BoreholesCommands : public testing::Test
{
protected:
    BoreholesCommands()
    {
        housekeeping::ControllerManager::instance().init();
        housekeeping::ControllerManager::instance().post_init();
    }
};

TEST_F(BoreholesCommands, KeepTheirPromises)
{
    testkit::RoundTripProof proof(&make_document, &names);
    proof.modified([](housekeeping::AbstractDocument& document) { return of(document).is_modified(); });
    proof.command("Add", [](housekeeping::AbstractDocument& document) {
        return boost::make_shared<AddBorehole>(of(document), boreholes::Borehole{"Oak", 1, 2, 3});
    });
    proof.command("Delete",
        [](housekeeping::AbstractDocument& document) -> boost::shared_ptr<housekeeping::AbstractCommand> {
            if (of(document).boreholes().empty()) {
                return nullptr;
            }
            return boost::make_shared<DeleteBorehole>(of(document), 0);
        });
    EXPECT_EQ(text_of(proof.run()), "");
    EXPECT_GT(proof.experiments(), 0);
}

TEST_F(BoreholesCommands, AddRefusesANameThatIsThere)
{
    auto& commands = housekeeping::CommandManager::instance();
    housekeeping::AbstractDocument& document = make_document();
    const std::string before = names(document);
    support::LogCapture log;
    commands.insert(
        boost::make_shared<AddBorehole>(of(document), boreholes::Borehole{"Ford", 1, 2, 3}), false);
    EXPECT_EQ(names(document), before);
    commands.undo(document.id()); // of what was not done
    EXPECT_EQ(names(document), before);
    EXPECT_TRUE(log.take("TARQA EXCEPTION THROWN:"));
    EXPECT_TRUE(log.take("Error 1: There is a borehole \"Ford\" already."));
    EXPECT_TRUE(log.take("AddBorehole.cpp, line"));
}

TEST_F(BoreholesCommands, UndoAfterSavingLeavesADocumentThatIsNotSaved)
{
    auto& commands = housekeeping::CommandManager::instance();
    housekeeping::AbstractDocument& document = make_document();
    commands.insert(boost::make_shared<DeleteBorehole>(of(document), 1), false);
    EXPECT_TRUE(of(document).is_modified());
    of(document).set_modified(false);
    commands.undo(document.id());
    EXPECT_TRUE(of(document).is_modified());
}
