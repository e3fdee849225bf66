#include "QuickHelpFixture.h"

#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <memory>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpTitleEntry;
using tarqa::housekeeping::TestAccess;

TEST(QuickHelpTitleEntry, KeepsWhatItIsGiven)
{
    QObject parent;
    const auto* const p_entry = new QuickHelpTitleEntry(&parent, doc(7), "text");
    EXPECT_EQ(p_entry->parent(), &parent);
    EXPECT_TRUE(p_entry->documentId() == 7);
    EXPECT_EQ(p_entry->description(), "text");
    EXPECT_EQ(p_entry->section(), QuickHelpSection::CurrentTool);
    EXPECT_FALSE(p_entry->attached());
    EXPECT_TRUE(p_entry->visible());
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), ""); // does not register itself
}

TEST(QuickHelpTitleEntry, AttachesAndDetaches)
{
    QuickHelpTitleEntry entry(nullptr, doc(7), "text");
    EntryLog entry_log(entry);
    ManagerLog log;
    EXPECT_TRUE(entry.setAttached(true));
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "text");
    EXPECT_EQ(QuickHelpManager::instance().title(doc(8)), "");
    EXPECT_EQ(log.take(), Lines{"title 7 text"});
    EXPECT_TRUE(entry.setAttached(false));
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "");
    EXPECT_EQ(log.take(), Lines{"title 7 "});
    EXPECT_EQ(entry_log.take(), (Lines{"attached", "detached"}));
}

TEST(QuickHelpTitleEntry, IsInNoList)
{
    QuickHelpTitleEntry entry(nullptr, doc(7), "text");
    EXPECT_TRUE(entry.setAttached(true));
    for (unsigned int section = 0; section < 8; ++section) {
        EXPECT_EQ(list(static_cast<QuickHelpSection>(section)).rowCount(), 0);
    }
}

TEST(QuickHelpTitleEntry, DestructionTakesItOut)
{
    ManagerLog log;
    QuickHelpTitleEntry older(nullptr, doc(7), "older");
    older.setAttached(true);
    auto newer = std::make_unique<QuickHelpTitleEntry>(nullptr, doc(7), "newer");
    newer->setAttached(true);
    EntryLog entry_log(*newer);
    log.take();
    newer.reset();
    EXPECT_TRUE(entry_log.take().empty()); // no attachedChanged
    EXPECT_EQ(log.take(), Lines{"title 7 older"});
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "older");
}

TEST(QuickHelpTitleEntry, GoesWithItsParent)
{
    ManagerLog log;
    {
        QObject parent;
        (new QuickHelpTitleEntry(&parent, doc(7), "text"))->setAttached(true);
    }
    EXPECT_EQ(log.take(), (Lines{"title 7 text", "title 7 "}));
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "");
}

TEST(QuickHelpTitleEntry, DestructionOfADetachedOneSignalsNothing)
{
    ManagerLog log;
    {
        const QuickHelpTitleEntry never(nullptr, doc(7), "never");
        QuickHelpTitleEntry detached(nullptr, doc(7), "detached");
        detached.setAttached(true);
        detached.setAttached(false);
        log.take();
    }
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpTitleEntry, DestructionAfterDirectRegistrationTakesItOut)
{
    auto entry = std::make_unique<QuickHelpTitleEntry>(nullptr, doc(7), "text");
    EXPECT_TRUE(QuickHelpManager::instance().addTitle(doc(7), entry.get()));
    EXPECT_FALSE(entry->attached());
    entry.reset();
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "");
}

TEST(QuickHelpTitleEntry, OutlivesTheManagerWithoutBringingItBack)
{
    auto entry = std::make_unique<QuickHelpTitleEntry>(nullptr, doc(7), "text");
    EXPECT_TRUE(entry->setAttached(true));
    ASSERT_NE(TestAccess::peek<QuickHelpManager>(), nullptr);
    pkBase::pkDestructor::run();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
    entry->setDescription("new");
    entry->setVisible(false);
    entry.reset();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
}

TEST(QuickHelpTitleEntry, VisibilityIsNotConsulted)
{
    QuickHelpTitleEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    ManagerLog log;
    entry.setVisible(false);
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "text");
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpTitleEntry, NewTextCountsAtOnceButIsNotAnnounced)
{
    QuickHelpTitleEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    ManagerLog log;
    entry.setDescription("new");
    EXPECT_EQ(QuickHelpManager::instance().title(doc(7)), "new");
    EXPECT_TRUE(log.take().empty());
}

} // namespace
