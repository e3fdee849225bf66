#include "QuickHelpFixture.h"

#include "support/App.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>

#include <QtWidgets/QListView>

#include <memory>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpInputModelFilter;
using tarqa::housekeeping::QuickHelpMouseButtonEntry;
using tarqa::housekeeping::QuickHelpMouseWheelEntry;
using tarqa::housekeeping::TestAccess;

/// A host's own kind of input, which leaves the clearing up to the base class.
class Gesture : public AbstractQuickHelpInputEntry
{
public:
    Gesture(const char* description, QuickHelpSection section)
        : AbstractQuickHelpInputEntry(nullptr, doc(7), description, section)
    { }
    QString input() const override { return "Pinch"; }
};

std::vector<std::unique_ptr<AbstractQuickHelpInputEntry>> one_of_each(QuickHelpSection section)
{
    std::vector<std::unique_ptr<AbstractQuickHelpInputEntry>> entries;
    entries.push_back(std::make_unique<QuickHelpKeySequenceEntry>(
        nullptr, doc(7), QKeySequence(Qt::Key_A), "key", section));
    entries.push_back(
        std::make_unique<QuickHelpMouseButtonEntry>(nullptr, doc(7), Qt::LeftButton, "button", section));
    entries.push_back(std::make_unique<QuickHelpMouseWheelEntry>(
        nullptr, doc(7), tarqa::housekeeping::WheelUp, "wheel", section));
    entries.push_back(std::make_unique<Gesture>("gesture", section));
    return entries;
}

TEST(AbstractQuickHelpInputEntry, AttachesToTheListOfItsSectionOnly)
{
    for (unsigned int number = 0; number < 8; ++number) {
        const auto section = static_cast<QuickHelpSection>(number);
        Binding entry(7, "text", section);
        EXPECT_EQ(list(section).rowCount(), 0);
        EXPECT_TRUE(entry.setAttached(true));
        for (unsigned int other = 0; other < 8; ++other) {
            EXPECT_EQ(list(static_cast<QuickHelpSection>(other)).rowCount(), other == number ? 1 : 0);
        }
        EXPECT_TRUE(entry.setAttached(false));
        EXPECT_EQ(list(section).rowCount(), 0);
    }
}

TEST(AbstractQuickHelpInputEntry, AttachingWithoutSectionFails)
{
    Gesture entry("text", QuickHelpSection::NoSection);
    EntryLog log(entry);
    EXPECT_FALSE(QuickHelpManager::instance().addToModel(&entry));
    EXPECT_FALSE(entry.setAttached(true));
    EXPECT_TRUE(entry.attached());
    EXPECT_FALSE(entry.setAttached(false));
    EXPECT_EQ(log.take(), (Lines{"attached", "detached"}));
}

TEST(AbstractQuickHelpInputEntry, NewSectionDoesNotMoveAnAttachedEntry)
{
    Binding entry(7, "text", QuickHelpSection::View);
    entry.setAttached(true);
    ModelLog view(list(QuickHelpSection::View));
    ModelLog file(list(QuickHelpSection::File));
    EXPECT_TRUE(entry.setSection(QuickHelpSection::File));
    EXPECT_EQ(view.take(), Lines{"changed 0 0 0"});
    EXPECT_TRUE(file.take().empty());
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 1);
}

TEST(AbstractQuickHelpInputEntry, MovesWhenDetachedAndAttachedAgain)
{
    Binding entry(7, "text", QuickHelpSection::View);
    entry.setAttached(true);
    EXPECT_TRUE(entry.setAttached(false));
    EXPECT_TRUE(entry.setSection(QuickHelpSection::File));
    EXPECT_TRUE(entry.setAttached(true));
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
    EXPECT_EQ(texts(list(QuickHelpSection::File)), Lines{"text"});
}

TEST(AbstractQuickHelpInputEntry, DestructionOfEachKindRemovesItsRow)
{
    auto entries = one_of_each(QuickHelpSection::Tools);
    for (const auto& entry : entries) {
        EXPECT_TRUE(entry->setAttached(true));
    }
    EXPECT_EQ(texts(list(QuickHelpSection::Tools)), (Lines{"key", "button", "wheel", "gesture"}));
    ModelLog log(list(QuickHelpSection::Tools));
    while (!entries.empty()) {
        EntryLog entry_log(*entries.front());
        entries.erase(entries.begin());
        EXPECT_EQ(log.take(), (Lines{"removing 0 0", "removed 0 0"}));
        EXPECT_TRUE(entry_log.take().empty()); // no attachedChanged
        EXPECT_EQ(list(QuickHelpSection::Tools).rowCount(), static_cast<int>(entries.size()));
    }
}

TEST(AbstractQuickHelpInputEntry, GoesWithItsParent)
{
    {
        QObject parent;
        auto* const p_entry = new Binding(7, "text", QuickHelpSection::View, &parent);
        p_entry->setAttached(true);
        EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 1);
    }
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
}

TEST(AbstractQuickHelpInputEntry, RowCanStillBeReadWhileItsEntryDies)
{
    auto entries = one_of_each(QuickHelpSection::Tools);
    entries.pop_back(); // a kind of this test, which does not take itself out
    for (const auto& entry : entries) {
        entry->setAttached(true);
    }
    const QAbstractListModel& model = list(QuickHelpSection::Tools);
    Lines read;
    QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, [&](const QModelIndex&, int row) {
        read.push_back(model.index(row, 0).data(Description).toString().toStdString());
        EXPECT_FALSE(model.index(row, 0).data(Qt::DisplayRole).toString().isEmpty());
    });
    while (!entries.empty()) {
        entries.erase(entries.begin());
    }
    EXPECT_EQ(read, (Lines{"key", "button", "wheel"}));
}

TEST(AbstractQuickHelpInputEntry, DestructionOfADetachedOneSignalsNothing)
{
    ModelLog log(list(QuickHelpSection::View));
    {
        Binding never(7, "never");
        Binding detached(7, "detached");
        detached.setAttached(true);
        detached.setAttached(false);
        log.take();
    }
    EXPECT_TRUE(log.take().empty());
}

TEST(AbstractQuickHelpInputEntry, DestructionAfterANewSectionLeavesNothing)
{
    for (auto& entry : one_of_each(QuickHelpSection::View)) {
        entry->setAttached(true);
        entry->setSection(QuickHelpSection::File);
        entry.reset();
        EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
    }
}

TEST(AbstractQuickHelpInputEntry, DestructionAfterDetachingWithANewSectionLeavesNothing)
{
    for (auto& entry : one_of_each(QuickHelpSection::View)) {
        entry->setAttached(true);
        entry->setSection(QuickHelpSection::File);
        EXPECT_FALSE(entry->setAttached(false)); // looks in the new section
        EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 1);
        entry.reset();
        EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
    }
}

TEST(AbstractQuickHelpInputEntry, DestructionInTwoListsLeavesNothing)
{
    auto entry = std::make_unique<Binding>(7, "text", QuickHelpSection::View);
    EXPECT_TRUE(entry->setAttached(true));
    EXPECT_TRUE(entry->setSection(QuickHelpSection::File));
    EXPECT_TRUE(QuickHelpManager::instance().addToModel(entry.get()));
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 1);
    EXPECT_EQ(list(QuickHelpSection::File).rowCount(), 1);
    entry.reset();
    EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
    EXPECT_EQ(list(QuickHelpSection::File).rowCount(), 0);
}

TEST(AbstractQuickHelpInputEntry, DestructionAfterDirectRegistrationLeavesNothing)
{
    for (auto& entry : one_of_each(QuickHelpSection::View)) {
        EXPECT_TRUE(QuickHelpManager::instance().addToModel(entry.get()));
        EXPECT_FALSE(entry->attached());
        entry.reset();
        EXPECT_EQ(list(QuickHelpSection::View).rowCount(), 0);
    }
}

TEST(AbstractQuickHelpInputEntry, RowStillHasItsTextsWhileItGoes)
{
    auto entry = std::make_unique<Binding>(7, "text");
    entry->setAttached(true);
    QAbstractListModel& model = list(QuickHelpSection::View);
    Lines seen;
    const auto connection = QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, &model, [&] {
        seen = {texts(model, Command).at(0), texts(model, Description).at(0)};
    });
    entry.reset();
    QObject::disconnect(connection);
    EXPECT_EQ(seen, (Lines{"F5", "text"}));
}

TEST(AbstractQuickHelpInputEntry, HostsOwnKindHasAnEmptyRowWhileItGoes)
{
    auto entry = std::make_unique<Gesture>("text", QuickHelpSection::View);
    entry->setAttached(true);
    QAbstractListModel& model = list(QuickHelpSection::View);
    EXPECT_EQ(texts(model, Command), Lines{"Pinch"});
    int asked = 0;
    const auto connection = QObject::connect(
        &model, &QAbstractItemModel::rowsAboutToBeRemoved, &model, [&](const QModelIndex&, int row) {
            ++asked;
            for (const int role : {Command, Description, Visible, DocId}) {
                EXPECT_FALSE(model.index(row, 0).data(role).isValid());
            }
        });
    entry.reset();
    QObject::disconnect(connection);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(AbstractQuickHelpInputEntry, DiesUnderAListViewAndAFilter)
{
    support::App app;
    QAbstractListModel& model = list(QuickHelpSection::Editing);
    QuickHelpInputModelFilter filter(doc(7), nullptr);
    filter.setSourceModel(&model);
    QListView plain;
    plain.setModel(&model);
    QListView filtered;
    filtered.setModel(&filter);
    plain.show();
    filtered.show();
    auto entries = one_of_each(QuickHelpSection::Editing);
    for (const auto& entry : entries) {
        entry->setAttached(true);
    }
    app.application().processEvents();
    while (!entries.empty()) {
        // The current row goes: the view looks for another one and asks for its data.
        plain.setCurrentIndex(model.index(static_cast<int>(entries.size()) - 1, 0));
        filtered.setCurrentIndex(filter.index(static_cast<int>(entries.size()) - 1, 0));
        entries.pop_back();
        EXPECT_EQ(model.rowCount(), static_cast<int>(entries.size()));
        EXPECT_EQ(filter.rowCount(), static_cast<int>(entries.size()));
        app.application().processEvents();
    }
}

TEST(AbstractQuickHelpInputEntry, OutlivesTheManagerWithoutBringingItBack)
{
    auto entries = one_of_each(QuickHelpSection::View);
    for (const auto& entry : entries) {
        EXPECT_TRUE(entry->setAttached(true));
    }
    ASSERT_NE(TestAccess::peek<QuickHelpManager>(), nullptr);
    pkBase::pkDestructor::run();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
    for (const auto& entry : entries) {
        entry->setVisible(false); // nobody listens any more
    }
    entries.clear();
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
}

TEST(AbstractQuickHelpInputEntry, OneOfAFormerManagerLeavesTheNewOnesAlone)
{
    auto former = std::make_unique<Binding>(7, "former");
    former->setAttached(true);
    TestAccess::destroy<QuickHelpManager>();
    Binding present(7, "present");
    EXPECT_EQ(present.id(), former->id());
    EXPECT_TRUE(present.setAttached(true));
    former.reset();
    EXPECT_EQ(texts(list(QuickHelpSection::View)), Lines{"present"});
}

} // namespace
