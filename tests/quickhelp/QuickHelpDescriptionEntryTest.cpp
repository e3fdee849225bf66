#include "QuickHelpFixture.h"

#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>

#include <memory>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpDescriptionEntry;
using tarqa::housekeeping::TestAccess;

TEST(QuickHelpDescriptionEntry, KeepsWhatItIsGiven)
{
    QObject parent;
    const auto* const p_entry = new QuickHelpDescriptionEntry(&parent, doc(7), "text");
    EXPECT_EQ(p_entry->parent(), &parent);
    EXPECT_TRUE(p_entry->documentId() == 7);
    EXPECT_EQ(p_entry->description(), "text");
    EXPECT_EQ(p_entry->section(), QuickHelpSection::NoSection);
    EXPECT_FALSE(p_entry->attached());
    EXPECT_TRUE(p_entry->visible());
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), ""); // does not register itself
}

TEST(QuickHelpDescriptionEntry, AttachesAndDetaches)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    EntryLog entry_log(entry);
    ManagerLog log;
    EXPECT_TRUE(entry.setAttached(true));
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "text");
    EXPECT_EQ(QuickHelpManager::instance().description(doc(8)), "");
    EXPECT_EQ(log.take(), Lines{"description 7 text"});
    EXPECT_TRUE(entry.setAttached(false));
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "");
    EXPECT_EQ(log.take(), Lines{"description 7 "});
    EXPECT_EQ(entry_log.take(), (Lines{"attached", "detached"}));
}

TEST(QuickHelpDescriptionEntry, IsInNoList)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    EXPECT_TRUE(entry.setAttached(true));
    for (unsigned int section = 0; section < 8; ++section) {
        EXPECT_EQ(list(static_cast<QuickHelpSection>(section)).rowCount(), 0);
    }
}

TEST(QuickHelpDescriptionEntry, DestructionTakesItOut)
{
    ManagerLog log;
    QuickHelpDescriptionEntry older(nullptr, doc(7), "older");
    older.setAttached(true);
    auto newer = std::make_unique<QuickHelpDescriptionEntry>(nullptr, doc(7), "newer");
    newer->setAttached(true);
    EntryLog entry_log(*newer);
    log.take();
    newer.reset();
    EXPECT_TRUE(entry_log.take().empty()); // no attachedChanged
    EXPECT_EQ(log.take(), Lines{"description 7 older"});
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "older");
}

TEST(QuickHelpDescriptionEntry, GoesWithItsParent)
{
    ManagerLog log;
    {
        QObject parent;
        (new QuickHelpDescriptionEntry(&parent, doc(7), "text"))->setAttached(true);
    }
    EXPECT_EQ(log.take(), (Lines{"description 7 text", "description 7 "}));
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "");
}

TEST(QuickHelpDescriptionEntry, DestructionOfADetachedOneSignalsNothing)
{
    ManagerLog log;
    {
        const QuickHelpDescriptionEntry never(nullptr, doc(7), "never");
        QuickHelpDescriptionEntry detached(nullptr, doc(7), "detached");
        detached.setAttached(true);
        detached.setAttached(false);
        log.take();
    }
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpDescriptionEntry, DestructionAfterDirectRegistrationTakesItOut)
{
    auto entry = std::make_unique<QuickHelpDescriptionEntry>(nullptr, doc(7), "text");
    EXPECT_TRUE(QuickHelpManager::instance().addDescription(doc(7), entry.get()));
    EXPECT_FALSE(entry->attached());
    entry.reset();
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "");
}

TEST(QuickHelpDescriptionEntry, OutlivesTheManagerWithoutBringingItBack)
{
    auto entry = std::make_unique<QuickHelpDescriptionEntry>(nullptr, doc(7), "text");
    EXPECT_TRUE(entry->setAttached(true));
    ASSERT_NE(TestAccess::peek<QuickHelpManager>(), nullptr);
    pkBase::pkDestructor::run();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
    entry->setDescription("new");
    entry->setVisible(false);
    entry.reset();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
}

TEST(QuickHelpDescriptionEntry, NewTextIsAnnounced)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    ManagerLog log;
    entry.setDescription("new");
    EXPECT_EQ(log.take(), Lines{"description 7 new"});
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "new");
}

TEST(QuickHelpDescriptionEntry, NewTextOfAnOlderOneAnnouncesTheNewest)
{
    QuickHelpDescriptionEntry older(nullptr, doc(7), "older");
    QuickHelpDescriptionEntry newer(nullptr, doc(7), "newer");
    older.setAttached(true);
    newer.setAttached(true);
    ManagerLog log;
    older.setDescription("changed");
    EXPECT_EQ(log.take(), Lines{"description 7 newer"});
}

TEST(QuickHelpDescriptionEntry, HidingTheNewestEmptiesAlthoughAnOlderIsVisible)
{
    QuickHelpDescriptionEntry older(nullptr, doc(7), "older");
    QuickHelpDescriptionEntry newer(nullptr, doc(7), "newer");
    older.setAttached(true);
    newer.setAttached(true);
    const QuickHelpManager& manager = QuickHelpManager::const_instance();
    EXPECT_EQ(manager.description(doc(7)), "newer");
    ManagerLog log;
    newer.setVisible(false);
    EXPECT_EQ(log.take(), Lines{"description 7 "});
    EXPECT_EQ(&manager.description(doc(7)), &QuickHelpManager::EMPTY);
    EXPECT_TRUE(older.visible());
    newer.setVisible(true);
    EXPECT_EQ(log.take(), Lines{"description 7 newer"});
    EXPECT_EQ(manager.description(doc(7)), "newer");
}

TEST(QuickHelpDescriptionEntry, HidingAnOlderOneChangesNothing)
{
    QuickHelpDescriptionEntry older(nullptr, doc(7), "older");
    QuickHelpDescriptionEntry newer(nullptr, doc(7), "newer");
    older.setAttached(true);
    newer.setAttached(true);
    ManagerLog log;
    older.setVisible(false);
    EXPECT_EQ(log.take(), Lines{"description 7 newer"});
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "newer");
}

TEST(QuickHelpDescriptionEntry, AttachedInvisiblyAnnouncesItsOwnTextAllTheSame)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    entry.setVisible(false);
    ManagerLog log;
    EXPECT_TRUE(entry.setAttached(true));
    EXPECT_EQ(log.take(), Lines{"description 7 text"});
    EXPECT_EQ(QuickHelpManager::instance().description(doc(7)), "");
}

TEST(QuickHelpDescriptionEntry, NewSectionIsNotAnnounced)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    ManagerLog log;
    EXPECT_TRUE(entry.setSection(QuickHelpSection::View));
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
}

TEST(QuickHelpDescriptionEntry, IsNotHeardAfterDetaching)
{
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    entry.setAttached(false);
    ManagerLog log;
    entry.setDescription("new");
    entry.setVisible(false);
    EXPECT_TRUE(log.take().empty());
}

} // namespace
