#include "QuickHelpFixture.h"

#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QStringListModel>

#include <dlfcn.h>
#include <memory>

namespace {

using namespace quickhelp_test;

QAbstractListModel& model()
{
    return list(QuickHelpSection::View);
}

bool add(const AbstractQuickHelpInputEntry* p_entry)
{
    bool added = false;
    EXPECT_TRUE(QMetaObject::invokeMethod(
        &model(), "addInput", Q_RETURN_ARG(bool, added), Q_ARG(const AbstractQuickHelpInputEntry*, p_entry)));
    return added;
}

bool call(const char* slot, QuickHelpEntryId id)
{
    bool result = false;
    EXPECT_TRUE(
        QMetaObject::invokeMethod(&model(), slot, Q_RETURN_ARG(bool, result), Q_ARG(QuickHelpEntryId, id)));
    return result;
}

/// Entries with the ids 0 to 9 whose texts are their ids.
std::vector<std::unique_ptr<Binding>> ten_entries()
{
    std::vector<std::unique_ptr<Binding>> entries;
    for (int id = 0; id < 10; ++id) {
        entries.push_back(std::make_unique<Binding>(7, std::to_string(id).c_str()));
    }
    return entries;
}

TEST(QuickHelpInputModel, MetaObjectListsTheSlotsInOrder)
{
    const QMetaObject& meta = *model().metaObject();
    EXPECT_STREQ(meta.className(), "tarqa::housekeeping::QuickHelpInputModel");
    EXPECT_EQ(meta.superClass(), &QAbstractListModel::staticMetaObject);
    EXPECT_EQ(methods(meta, QMetaMethod::Slot),
        (Lines{"bool addInput(const AbstractQuickHelpInputEntry*)", "bool updateInput(QuickHelpEntryId)",
            "bool removeInput(QuickHelpEntryId)"}));
    EXPECT_TRUE(methods(meta, QMetaMethod::Signal).empty());
}

TEST(QuickHelpInputModel, IsNotExportedButItsFilterIs)
{
    const auto is_exported = [](const char* symbol) { return dlsym(RTLD_DEFAULT, symbol) != nullptr; };
    EXPECT_FALSE(is_exported("_ZN5tarqa12housekeeping19QuickHelpInputModel16staticMetaObjectE"));
    EXPECT_TRUE(is_exported("_ZN5tarqa12housekeeping25QuickHelpInputModelFilter16staticMetaObjectE"));
}

TEST(QuickHelpInputModel, PublishesItsRoles)
{
    const QMetaObject& meta = *model().metaObject();
    const QMetaEnum roles = meta.enumerator(meta.indexOfEnumerator("CommandModelRoles"));
    ASSERT_EQ(roles.keyCount(), 4);
    const std::pair<const char*, int> expected[]
        = {{"Command", 0}, {"Description", 256}, {"Visible", 257}, {"DocId", 258}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_STREQ(roles.key(i), expected[i].first);
        EXPECT_EQ(roles.value(i), expected[i].second);
    }
}

TEST(QuickHelpInputModel, RoleNamesAreTheBasesWithFourSet)
{
    QHash<int, QByteArray> expected = QStringListModel().roleNames();
    EXPECT_EQ(expected.value(0), "display");
    expected[0] = "command";
    expected[256] = "description";
    expected[257] = "visible";
    expected[258] = "docId";
    EXPECT_EQ(model().roleNames(), expected);
}

TEST(QuickHelpInputModel, RowsAreInTheOrderOfTheIds)
{
    const auto entries = ten_entries();
    ModelLog log(model());
    EXPECT_TRUE(add(entries[5].get()));
    EXPECT_EQ(log.take(), (Lines{"inserting 0 0", "inserted 0 0"}));
    EXPECT_TRUE(add(entries[2].get()));
    EXPECT_EQ(log.take(), (Lines{"inserting 0 0", "inserted 0 0"}));
    EXPECT_TRUE(add(entries[9].get()));
    EXPECT_EQ(log.take(), (Lines{"inserting 2 2", "inserted 2 2"}));
    EXPECT_TRUE(add(entries[3].get()));
    EXPECT_EQ(log.take(), (Lines{"inserting 1 1", "inserted 1 1"}));
    EXPECT_EQ(texts(model()), (Lines{"2", "3", "5", "9"}));
}

TEST(QuickHelpInputModel, AddsNeitherNullNorTheSameIdTwice)
{
    const auto entries = ten_entries();
    EXPECT_TRUE(add(entries[5].get()));
    ModelLog log(model());
    EXPECT_FALSE(add(entries[5].get()));
    EXPECT_FALSE(add(nullptr));
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(model().rowCount(), 1);
    entries[5]->setVisible(false); // heard once, not twice
    EXPECT_EQ(log.take(), Lines{"changed 0 0 0"});
}

TEST(QuickHelpInputModel, UpdatesOneRowWithAllRoles)
{
    const auto entries = ten_entries();
    for (const int id : {2, 5, 9}) {
        add(entries[static_cast<std::size_t>(id)].get());
    }
    ModelLog log(model());
    EXPECT_TRUE(call("updateInput", 9));
    EXPECT_EQ(log.take(), Lines{"changed 2 2 0"});
    EXPECT_FALSE(call("updateInput", 3));
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpInputModel, EachChangeOfAnEntryUpdatesItsRowOnce)
{
    const auto entries = ten_entries();
    for (const int id : {2, 5, 9}) {
        add(entries[static_cast<std::size_t>(id)].get());
    }
    ModelLog log(model());
    entries[5]->setVisible(false);
    EXPECT_EQ(log.take(), Lines{"changed 1 1 0"});
    EXPECT_EQ(model().index(1, 0).data(Visible), QVariant(false));
    entries[9]->setDescription("nine");
    EXPECT_EQ(log.take(), Lines{"changed 2 2 0"});
    EXPECT_EQ(texts(model()), (Lines{"2", "5", "nine"}));
    entries[3]->setVisible(false); // not in the list
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpInputModel, RemovesTheRowAndListensNoMore)
{
    const auto entries = ten_entries();
    for (const int id : {2, 5, 9}) {
        add(entries[static_cast<std::size_t>(id)].get());
    }
    ModelLog log(model());
    EXPECT_FALSE(call("removeInput", 3));
    EXPECT_TRUE(log.take().empty());
    EXPECT_TRUE(call("removeInput", 5));
    EXPECT_EQ(log.take(), (Lines{"removing 1 1", "removed 1 1"}));
    EXPECT_EQ(texts(model()), (Lines{"2", "9"}));
    entries[5]->setVisible(false);
    EXPECT_FALSE(call("removeInput", 5));
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpInputModel, EntryThatComesBackIsHeardOnce)
{
    const auto entries = ten_entries();
    for (int time = 0; time < 3; ++time) {
        EXPECT_TRUE(add(entries[5].get()));
        ModelLog log(model());
        entries[5]->setDescription(QString::number(time));
        EXPECT_EQ(log.take(), Lines{"changed 0 0 0"});
        EXPECT_TRUE(call("removeInput", 5));
    }
}

TEST(QuickHelpInputModel, RowsComeAndGoBetweenTheTwoAnnouncements)
{
    const auto entries = ten_entries();
    std::vector<int> counts;
    QObject context;
    const auto note = [&counts] { counts.push_back(model().rowCount()); };
    QObject::connect(&model(), &QAbstractItemModel::rowsAboutToBeInserted, &context, note);
    QObject::connect(&model(), &QAbstractItemModel::rowsInserted, &context, note);
    QObject::connect(&model(), &QAbstractItemModel::rowsAboutToBeRemoved, &context, note);
    QObject::connect(&model(), &QAbstractItemModel::rowsRemoved, &context, note);
    add(entries[2].get());
    add(entries[1].get());
    call("removeInput", 2);
    EXPECT_EQ(counts, (std::vector<int>{0, 1, 1, 2, 2, 1}));
}

TEST(QuickHelpInputModel, RowOfAnEntryThatIsGoingIsNotRemovedTwice)
{
    /// Leaves the clearing up to the base class, which can no longer ask it for its texts.
    class Gesture : public AbstractQuickHelpInputEntry
    {
    public:
        Gesture()
            : AbstractQuickHelpInputEntry(nullptr, doc(7), "text", QuickHelpSection::View)
        { }
        QString input() const override { return "Pinch"; }
    };
    auto entry = std::make_unique<Gesture>();
    add(entry.get());
    std::vector<bool> results;
    QObject context;
    QObject::connect(&model(), &QAbstractItemModel::rowsAboutToBeRemoved, &context,
        [&results] { results.push_back(call("removeInput", 0)); });
    entry.reset();
    EXPECT_EQ(results, std::vector<bool>{false});
    EXPECT_EQ(model().rowCount(), 0);
}

TEST(QuickHelpInputModel, RowsAreEmptyOnlyWhileTheirEntriesGo)
{
    /// Leaves the clearing up to the base class, which can no longer ask it for its texts.
    class Gesture : public AbstractQuickHelpInputEntry
    {
    public:
        Gesture()
            : AbstractQuickHelpInputEntry(nullptr, doc(7), "text", QuickHelpSection::View)
        { }
        QString input() const override { return "Pinch"; }
    };
    auto first = std::make_unique<Gesture>();
    auto second = std::make_unique<Gesture>();
    const Gesture third;
    add(first.get());
    add(second.get());
    add(&third);
    std::vector<Lines> seen;
    QObject context;
    QObject::connect(&model(), &QAbstractItemModel::rowsAboutToBeRemoved, &context, [&] {
        second.reset(); // the second goes while the first does
        seen.push_back(texts(model(), Command));
    });
    first.reset();
    EXPECT_EQ(seen, (std::vector<Lines>{{"", "", "Pinch"}, {"", "Pinch"}}));
    EXPECT_EQ(texts(model(), Command), Lines{"Pinch"});
}

TEST(QuickHelpInputModel, EntryThatAViewAttachesMeanwhileIsInTheListOnce)
{
    const auto entries = ten_entries();
    add(entries[5].get());
    bool told = false;
    QObject context;
    QObject::connect(&model(), &QAbstractItemModel::rowsAboutToBeInserted, &context, [&] {
        if (!told) {
            told = true;
            EXPECT_TRUE(add(entries[2].get()));
            EXPECT_TRUE(add(entries[7].get()));
        }
    });
    EXPECT_TRUE(add(entries[7].get()));
    EXPECT_EQ(texts(model()), (Lines{"2", "5", "7"}));
}

TEST(QuickHelpInputModel, HasIndexesOfItsRowsInOneColumnOnly)
{
    const auto entries = ten_entries();
    add(entries[5].get());
    add(entries[2].get());
    const QModelIndex second = model().index(1, 0);
    ASSERT_TRUE(second.isValid());
    EXPECT_EQ(second.row(), 1);
    EXPECT_EQ(second.column(), 0);
    EXPECT_EQ(second.model(), &model());
    EXPECT_EQ(second.internalId(), 0u);
    EXPECT_TRUE(model().hasIndex(1, 0));
    for (const auto& place : {std::pair<int, int>{-1, 0}, {2, 0}, {0, -1}, {0, 1}}) {
        EXPECT_FALSE(model().index(place.first, place.second).isValid()) << place.first << place.second;
    }
    EXPECT_FALSE(model().index(0, 0, second).isValid());
}

TEST(QuickHelpInputModel, AnswersTheFourRoles)
{
    const unsigned long long big = (1ull << 63) + 5;
    tarqa::housekeeping::QuickHelpMouseButtonEntry entry(
        nullptr, doc(big), Qt::LeftButton, Qt::ControlModifier, "Rotate", QuickHelpSection::View);
    entry.setAttached(true);
    const QModelIndex index = model().index(0, 0);
    EXPECT_EQ(index.data(Command), QVariant("Ctrl+LMB"));
    EXPECT_EQ(index.data(Description), QVariant("Rotate"));
    EXPECT_EQ(index.data(Visible), QVariant(true));
    EXPECT_EQ(index.data(DocId), QVariant(big));
    EXPECT_EQ(index.data(Visible).type(), QVariant::Bool);
    EXPECT_EQ(index.data(DocId).type(), QVariant::ULongLong);
}

TEST(QuickHelpInputModel, AnswersEveryOtherRoleLikeTheCommand)
{
    Binding entry(7, "text");
    entry.setAttached(true);
    for (const int role : {-1, 1, 2, 13, 255, 259, 100000}) {
        EXPECT_EQ(model().index(0, 0).data(role), QVariant("F5")) << role;
    }
}

TEST(QuickHelpInputModel, HasNothingForRowsOutside)
{
    Binding entry(7, "text");
    entry.setAttached(true);
    QStringListModel longer(QStringList{"a", "b", "c"});
    EXPECT_TRUE(model().data(longer.index(0, 0), Description).isValid()); // only the row is looked at
    EXPECT_FALSE(model().data(longer.index(1, 0), Description).isValid());
    EXPECT_FALSE(model().data(longer.index(2, 0), Description).isValid());
    EXPECT_FALSE(model().data(QModelIndex(), Description).isValid());
}

TEST(QuickHelpInputModel, CountsItsRowsWhateverTheParent)
{
    Binding first(7, "first");
    Binding second(8, "second");
    EXPECT_EQ(model().rowCount(), 0);
    first.setAttached(true);
    second.setAttached(true);
    EXPECT_EQ(model().rowCount(), 2);
    EXPECT_EQ(model().rowCount(model().index(0, 0)), 2);
}

TEST(QuickHelpInputModel, HeaderIsAlwaysTheName)
{
    QAbstractListModel& navigator = list(QuickHelpSection::Navigator);
    for (const int section : {-1, 0, 1, 1000}) {
        for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            for (const int role : {0, 1, 256, 258}) {
                EXPECT_EQ(navigator.headerData(section, orientation, role), QVariant("Navigator"));
            }
        }
    }
}

} // namespace
