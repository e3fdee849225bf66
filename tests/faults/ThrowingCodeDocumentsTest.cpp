#include "faults/FaultRuns.h"

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

// Documents, controllers, views and subscribers that throw while documents come, go and become current or
// busy. Whatever they throw goes to the caller.
//
// The states that a creation may leave:
//  - the factory or the constructor threw: as before;
//  - anything later threw: the document is registered and current, as far as it came, and may be destroyed.
//
// A destruction:
//  - request_close() or a subscriber of "destroyed" threw: the document is there as before;
//  - a controller or a view threw while it was given the state of the next document: that one is current, the
//    document is still there and may be destroyed again;
//  - anything later threw: the document is gone.
//
// Making a document current: it is current. What was not told yet is told by making another one current and
// then this one.
//
// A busy mark: one that is added stays, whoever threw, and is taken away like any other; one that is taken
// away is gone.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using testing::ElementsAre;

namespace {

DocumentManager& manager()
{
    return DocumentManager::instance();
}

bool destroy(const DocumentId& id, bool skip_consent)
{
    return manager().destroy_document(id, skip_consent, false, false, DocumentId::null());
}

void expect_thrown(const Fault* p_fault, const Outcome& outcome)
{
    EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
    if (p_fault) {
        EXPECT_EQ(p_fault->kind, outcome.thrown);
    }
    EXPECT_EQ(0, outcome.fatal_errors);
}

class Creation : public Scenario
{
public:
    void run() override { manager().create_document(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        const bool is_registered = !p_fault
            || (p_fault->place() != "document factory" && p_fault->place() != "document constructed");
        EXPECT_EQ(is_registered ? 2u : 1u, manager().num_documents());
        EXPECT_EQ(is_registered, manager().current_document_id() != first);
        // Half-made or not, it can be left and destroyed, and others can be made.
        const DocumentId current = manager().current_document_id();
        const DocumentId next = add_document();
        EXPECT_EQ(next, manager().current_document_id());
        if (is_registered) {
            EXPECT_TRUE(destroy(current, false));
            EXPECT_FALSE(manager().document_exists(current));
        }
        EXPECT_TRUE(manager().document_exists(first));
    }

private:
    const DocumentId first = add_document();
};

/// The current one of two goes, or the last one.
template <int Count>
class Destruction : public Scenario
{
public:
    void run() override { destroy(id, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        const std::string place = p_fault ? p_fault->place() : std::string();
        const bool is_as_before = place == "document.request_close" || place == "Destroyed";
        const bool is_there = is_as_before || (Count == 2 && p_fault && place != "CurrentChanged");
        EXPECT_EQ(is_there, manager().document_exists(id));
        if (is_as_before) {
            EXPECT_EQ(id, manager().current_document_id());
        } else {
            EXPECT_EQ(Count == 2 ? other : DocumentId::null(), manager().current_document_id());
        }
        // A second attempt comes to its end.
        EXPECT_TRUE(destroy(id, false));
        EXPECT_FALSE(manager().document_exists(id));
        EXPECT_EQ(Count == 2 ? other : DocumentId::null(), manager().current_document_id());
    }

private:
    const DocumentId other = Count == 2 ? add_document() : DocumentId::null();
    const DocumentId id = add_document();
};

/// Two of three documents are closing.
class Sweep : public Scenario
{
public:
    Sweep()
    {
        manager().set_document_as_closing(first);
        manager().set_document_as_closing(third);
    }
    void run() override { manager().cleanupInvalidDocuments(); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        EXPECT_TRUE(manager().document_exists(second));
        // Whoever stayed goes with the next sweep.
        manager().cleanupInvalidDocuments();
        EXPECT_THAT(manager().current_documents(), ElementsAre(second));
        EXPECT_EQ(second, manager().current_document_id());
    }

private:
    const DocumentId first = add_document();
    const DocumentId second = add_document();
    const DocumentId third = add_document();
};

class MakingCurrent : public Scenario
{
public:
    void run() override { manager().current_document(first); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        EXPECT_EQ(first, manager().current_document_id());
        fault_points().count();
        manager().current_document(second);
        manager().current_document(first);
        EXPECT_THAT(fault_points().stop(), testing::Contains("CurrentChanged #2"));
        EXPECT_EQ(first, manager().current_document_id());
    }

private:
    const DocumentId first = add_document();
    const DocumentId second = add_document();
};

class AddingAMark : public Scenario
{
public:
    void run() override { manager().document_busy(id, true); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        EXPECT_TRUE(manager().document_busy(id));
        const bool has_flag = !p_fault
            || (p_fault->place() != "document.is_busy" && p_fault->place() != "document.set_busy(true)");
        EXPECT_EQ(has_flag, manager().document_from_id(id).is_busy());
    }
    bool leaves_a_mark() const override { return true; }

protected:
    const DocumentId id = add_document();
};

class TakingAMark : public Scenario
{
public:
    TakingAMark() { manager().document_busy(id, true); }
    void run() override { manager().document_busy(id, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        EXPECT_FALSE(manager().document_busy(id));
        EXPECT_FALSE(manager().documents_busy());
    }

private:
    const DocumentId id = add_document();
};

class Title : public Scenario
{
public:
    void run() override
    {
        const auto information = boost::make_shared<support::FakeDataInformation>("kind");
        manager().document_from_id(id).datasource(
            boost::make_shared<DataSource>("file:///places/hill.asc", information));
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        EXPECT_EQ("/places/hill.asc", manager().document_from_id(id).title());
        EXPECT_TRUE(manager().document_from_id(id).datasource());
    }

private:
    const DocumentId id = add_document();
};

/// Two more views of one controller.
class Redraw : public Scenario
{
public:
    void run() override
    {
        const auto sp_controller = ControllerManager::instance().controller("faulty controller");
        ControllerLocker locker(*sp_controller);
        locker.finished();
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        fault_points().count();
        run();
        EXPECT_THAT(fault_points().stop(), ElementsAre("view", "second view", "third view"));
    }

private:
    FaultyView second{"second view", *ControllerManager::instance().controller("faulty controller")};
    FaultyView third{"third view", *ControllerManager::instance().controller("faulty controller")};
};

/// The controllers of a host that starts: no document, nothing made yet.
class Controllers : public Scenario
{
public:
    Controllers()
    {
        drop_everything();
        view.reset();
        other_view.reset();
    }
    void run() override
    {
        ControllerManager::instance().init();
        ControllerManager::instance().post_init();
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        expect_thrown(p_fault, outcome);
        const bool is_made = !p_fault || p_fault->place() == "controller.post_init";
        EXPECT_EQ(is_made, ControllerManager::instance().controller("faulty controller") != nullptr);
        // Those that were made before it are there, and can be looked up.
        EXPECT_TRUE(ControllerManager::instance().controller("UndoRedoController"));
    }
};

} // namespace

TEST(ThrowingCode, CreationOfADocument)
{
    try_every_place<Creation>("create_document");
}

TEST(ThrowingCode, DestructionOfTheCurrentDocument)
{
    try_every_place<Destruction<2>>("destroy_document");
}

TEST(ThrowingCode, DestructionOfTheLastDocument)
{
    try_every_place<Destruction<1>>("destroy_document, the last one");
}

TEST(ThrowingCode, SweepOfDocuments)
{
    try_every_place<Sweep>("cleanup sweep");
}

TEST(ThrowingCode, MakingADocumentCurrent)
{
    try_every_place<MakingCurrent>("make current");
}

TEST(ThrowingCode, AddingABusyMark)
{
    try_every_place<AddingAMark>("add a busy mark");
}

TEST(ThrowingCode, TakingABusyMarkAway)
{
    try_every_place<TakingAMark>("take a busy mark away");
}

TEST(ThrowingCode, TitleOfADocument)
{
    try_every_place<Title>("data source of a document");
}

TEST(ThrowingCode, RedrawingOfViews)
{
    try_every_place<Redraw>("ControllerLocker");
}

TEST(ThrowingCode, MakingOfControllers)
{
    try_every_place<Controllers>("controllers' init and post_init");
}
