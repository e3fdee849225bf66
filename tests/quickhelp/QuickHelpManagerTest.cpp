#include "QuickHelpFixture.h"

#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <QtCore/QPointer>

#include <type_traits>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpDescriptionEntry;
using tarqa::housekeeping::QuickHelpTitleEntry;
using tarqa::housekeeping::TestAccess;

TEST(QuickHelpManager, IsMadeOnFirstUse)
{
    EXPECT_EQ(TestAccess::peek<QuickHelpManager>(), nullptr);
    const QuickHelpManager& manager = QuickHelpManager::const_instance();
    EXPECT_EQ(&manager, &QuickHelpManager::instance());
    EXPECT_EQ(&manager, TestAccess::peek<QuickHelpManager>());
    static_assert(!std::is_default_constructible_v<QuickHelpManager>);
    static_assert(!std::is_destructible_v<QuickHelpManager>);
    static_assert(!std::is_copy_constructible_v<QuickHelpManager>);
    static_assert(!std::is_copy_assignable_v<QuickHelpManager>);
}

bool s_alive_in_phase_3 = false;
bool s_alive_in_phase_5 = true;

TEST(QuickHelpManager, GoesInPhaseFourWithItsModels)
{
    using pkBase::pkDestructionPhase;
    pkBase::pkDestructor(
        pkDestructionPhase(3), [] { s_alive_in_phase_3 = TestAccess::peek<QuickHelpManager>() != nullptr; });
    const QPointer<QObject> manager(&QuickHelpManager::instance());
    const QPointer<QObject> model(&list(QuickHelpSection::View));
    EXPECT_EQ(model->parent(), manager.data());
    pkBase::pkDestructor(
        pkDestructionPhase(5), [] { s_alive_in_phase_5 = TestAccess::peek<QuickHelpManager>() != nullptr; });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(s_alive_in_phase_3);
    EXPECT_FALSE(s_alive_in_phase_5);
    EXPECT_TRUE(manager.isNull());
    EXPECT_TRUE(model.isNull());
}

TEST(QuickHelpManager, HolderIsEmptyBeforeTheManagerGoes)
{
    bool empty = false;
    QObject::connect(&QuickHelpManager::instance(), &QObject::destroyed, &QuickHelpManager::instance(),
        [&empty] { empty = TestAccess::peek<QuickHelpManager>() == nullptr; });
    TestAccess::destroy<QuickHelpManager>();
    EXPECT_TRUE(empty);
}

TEST(QuickHelpManager, CountsIdsFromZero)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    EXPECT_EQ(manager.createNextId(), 0u);
    EXPECT_EQ(manager.createNextId(), 1u);
    EXPECT_EQ(Binding(7, "text").id(), 2u);
    EXPECT_EQ(manager.createNextId(), 3u);
}

TEST(QuickHelpManager, HasEightModelsWithTheNamesOfTheSections)
{
    const char* const names[]
        = {"Current Tool", "View", "Navigator", "Selection", "Visibility", "Tools", "Editing", "File"};
    QuickHelpManager& manager = QuickHelpManager::instance();
    QList<QAbstractListModel*> models;
    for (unsigned int number = 0; number < 8; ++number) {
        models.append(manager.sectionModel(static_cast<QuickHelpSection>(number)));
        ASSERT_NE(models.back(), nullptr);
        EXPECT_EQ(models.back()->headerData(0, Qt::Horizontal).toString(), names[number]);
    }
    EXPECT_EQ(manager.findChildren<QAbstractListModel*>(), models); // made in the order of the sections
}

TEST(QuickHelpManager, HasNoModelBeyondTheSections)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    EXPECT_EQ(manager.sectionModel(QuickHelpSection::NoSection), nullptr);
    EXPECT_EQ(manager.sectionModel(static_cast<QuickHelpSection>(9)), nullptr);
    EXPECT_EQ(manager.sectionModel(static_cast<QuickHelpSection>(0xffffffffu)), nullptr);
}

TEST(QuickHelpManager, AddsToTheModelOnce)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    Binding entry(7, "text", QuickHelpSection::Navigator);
    EXPECT_FALSE(manager.addToModel(nullptr));
    EXPECT_TRUE(manager.addToModel(&entry));
    EXPECT_FALSE(manager.addToModel(&entry));
    EXPECT_EQ(texts(list(QuickHelpSection::Navigator)), Lines{"text"});
}

TEST(QuickHelpManager, AddsNothingWithoutSection)
{
    Binding none(7, "text", QuickHelpSection::NoSection);
    Binding beyond(7, "text", static_cast<QuickHelpSection>(9));
    EXPECT_FALSE(QuickHelpManager::instance().addToModel(&none));
    EXPECT_FALSE(QuickHelpManager::instance().addToModel(&beyond));
}

TEST(QuickHelpManager, RemovesFromTheModelByIdAndSection)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    Binding entry(7, "text", QuickHelpSection::Navigator);
    manager.addToModel(&entry);
    EXPECT_FALSE(manager.removeFromModel(QuickHelpSection::NoSection, entry.id()));
    EXPECT_FALSE(manager.removeFromModel(static_cast<QuickHelpSection>(9), entry.id()));
    EXPECT_FALSE(manager.removeFromModel(QuickHelpSection::View, entry.id()));
    EXPECT_FALSE(manager.removeFromModel(QuickHelpSection::Navigator, entry.id() + 1));
    EXPECT_EQ(list(QuickHelpSection::Navigator).rowCount(), 1);
    EXPECT_TRUE(manager.removeFromModel(QuickHelpSection::Navigator, entry.id()));
    EXPECT_EQ(list(QuickHelpSection::Navigator).rowCount(), 0);
    EXPECT_FALSE(manager.removeFromModel(QuickHelpSection::Navigator, entry.id()));
}

TEST(QuickHelpManager, WithoutTextsGivesTheSharedEmptyOne)
{
    const QuickHelpManager& manager = QuickHelpManager::const_instance();
    EXPECT_EQ(QuickHelpManager::EMPTY, QString());
    EXPECT_EQ(&manager.title(doc(7)), &QuickHelpManager::EMPTY);
    EXPECT_EQ(&manager.description(doc(7)), &QuickHelpManager::EMPTY);
}

TEST(QuickHelpManager, NullIsNeitherTitleNorDescription)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    ManagerLog log;
    EXPECT_FALSE(manager.addTitle(doc(7), nullptr));
    EXPECT_FALSE(manager.addDescription(doc(7), nullptr));
    EXPECT_FALSE(manager.removeTitle(doc(7), nullptr));
    EXPECT_FALSE(manager.removeDescription(doc(7), nullptr));
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpManager, NewestTitleCounts)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    ManagerLog log;
    QuickHelpTitleEntry first(nullptr, doc(7), "first");
    QuickHelpTitleEntry second(nullptr, doc(7), "second");
    QuickHelpTitleEntry third(nullptr, doc(7), "third");
    // The order of adding counts, not that of making.
    EXPECT_TRUE(manager.addTitle(doc(7), &second));
    EXPECT_TRUE(manager.addTitle(doc(7), &third));
    EXPECT_TRUE(manager.addTitle(doc(7), &first));
    EXPECT_EQ(&manager.title(doc(7)), &first.description());
    EXPECT_EQ(log.take(), (Lines{"title 7 second", "title 7 third", "title 7 first"}));
    EXPECT_TRUE(manager.removeTitle(doc(7), &third));
    EXPECT_EQ(log.take(), Lines{"title 7 first"});
    EXPECT_TRUE(manager.removeTitle(doc(7), &first));
    EXPECT_EQ(log.take(), Lines{"title 7 second"});
    EXPECT_TRUE(manager.removeTitle(doc(7), &second));
    EXPECT_EQ(log.take(), Lines{"title 7 "});
}

TEST(QuickHelpManager, AddingATitleAgainOnlySignals)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpTitleEntry older(nullptr, doc(7), "older");
    QuickHelpTitleEntry newer(nullptr, doc(7), "newer");
    manager.addTitle(doc(7), &older);
    manager.addTitle(doc(7), &newer);
    ManagerLog log;
    EXPECT_TRUE(manager.addTitle(doc(7), &older));
    EXPECT_EQ(log.take(), Lines{"title 7 older"}); // its own, though it is not the first
    EXPECT_EQ(manager.title(doc(7)), "newer");
    EXPECT_TRUE(manager.removeTitle(doc(7), &older));
    EXPECT_FALSE(manager.removeTitle(doc(7), &older));
    EXPECT_EQ(manager.title(doc(7)), "newer");
}

TEST(QuickHelpManager, RemovingAnUnknownTitleSignalsNothing)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpTitleEntry entry(nullptr, doc(7), "text");
    ManagerLog log;
    EXPECT_FALSE(manager.removeTitle(doc(7), &entry));
    manager.addTitle(doc(7), &entry);
    log.take();
    EXPECT_FALSE(manager.removeTitle(doc(8), &entry));
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(manager.title(doc(7)), "text");
}

TEST(QuickHelpManager, TitlesOfDocumentsAreApart)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    const unsigned long long big = (1ull << 32) + 7;
    QuickHelpTitleEntry small_one(nullptr, doc(7), "small");
    QuickHelpTitleEntry big_one(nullptr, doc(big), "big");
    QuickHelpTitleEntry null_one(nullptr, DocumentId::null(), "null");
    for (QuickHelpTitleEntry* const p_entry : {&small_one, &big_one, &null_one}) {
        EXPECT_TRUE(p_entry->setAttached(true));
    }
    EXPECT_EQ(manager.title(doc(7)), "small");
    EXPECT_EQ(manager.title(doc(big)), "big");
    EXPECT_EQ(manager.title(DocumentId::null()), "null");
    EXPECT_EQ(manager.title(doc(8)), ""); // the null document's is no fallback
}

TEST(QuickHelpManager, NewestDescriptionCounts)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    ManagerLog log;
    QuickHelpDescriptionEntry first(nullptr, doc(7), "first");
    QuickHelpDescriptionEntry second(nullptr, doc(7), "second");
    EXPECT_TRUE(manager.addDescription(doc(7), &second));
    EXPECT_TRUE(manager.addDescription(doc(7), &first));
    EXPECT_EQ(&manager.description(doc(7)), &first.description());
    EXPECT_EQ(manager.description(doc(8)), "");
    EXPECT_TRUE(manager.removeDescription(doc(7), &first));
    EXPECT_TRUE(manager.removeDescription(doc(7), &second));
    EXPECT_EQ(log.take(),
        (Lines{"description 7 second", "description 7 first", "description 7 second", "description 7 "}));
}

TEST(QuickHelpManager, AddingADescriptionAgainOnlySignals)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    ManagerLog log;
    EXPECT_TRUE(manager.addDescription(doc(7), &entry));
    EXPECT_TRUE(manager.addDescription(doc(7), &entry));
    EXPECT_EQ(log.take(), (Lines{"description 7 text", "description 7 text"}));
    entry.setDescription("new"); // heard once, not twice
    EXPECT_EQ(log.take(), Lines{"description 7 new"});
    EXPECT_TRUE(manager.removeDescription(doc(7), &entry));
    EXPECT_FALSE(manager.removeDescription(doc(7), &entry));
    EXPECT_EQ(log.take(), Lines{"description 7 "});
}

TEST(QuickHelpManager, RemovingAnUnknownDescriptionSignalsNothing)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    ManagerLog log;
    EXPECT_FALSE(manager.removeDescription(doc(7), &entry));
    manager.addDescription(doc(7), &entry);
    log.take();
    EXPECT_FALSE(manager.removeDescription(doc(8), &entry));
    EXPECT_TRUE(log.take().empty());
    entry.setDescription("new"); // still heard
    EXPECT_EQ(log.take(), Lines{"description 7 new"});
}

TEST(QuickHelpManager, TextsCountAlreadyWhenTheyAreAnnounced)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpTitleEntry title(nullptr, doc(7), "title");
    QuickHelpDescriptionEntry description(nullptr, doc(7), "description");
    Lines seen;
    QObject context;
    QObject::connect(&manager, &QuickHelpManager::titleChanged, &context,
        [&] { seen.push_back("title " + manager.title(doc(7)).toStdString()); });
    QObject::connect(&manager, &QuickHelpManager::descriptionChanged, &context,
        [&] { seen.push_back("description " + manager.description(doc(7)).toStdString()); });
    manager.addTitle(doc(7), &title);
    manager.removeTitle(doc(7), &title);
    manager.addDescription(doc(7), &description);
    description.setVisible(false);
    description.setVisible(true);
    manager.removeDescription(doc(7), &description);
    EXPECT_EQ(seen,
        (Lines{"title title", "title ", "description description", "description ", "description description",
            "description "}));
}

TEST(QuickHelpManager, ChangedDescriptionIsAnnouncedForItsOwnDocument)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpDescriptionEntry own(nullptr, doc(7), "own");
    QuickHelpDescriptionEntry lent(nullptr, doc(7), "lent");
    EXPECT_TRUE(manager.addDescription(doc(7), &own));
    EXPECT_TRUE(manager.addDescription(doc(8), &lent)); // though it belongs to 7
    EXPECT_EQ(manager.description(doc(8)), "lent");
    ManagerLog log;
    lent.setDescription("new");
    EXPECT_EQ(log.take(), Lines{"description 7 own"});
    EXPECT_EQ(manager.description(doc(8)), "new");
    EXPECT_TRUE(manager.removeDescription(doc(8), &lent));
}

TEST(QuickHelpManager, NothingIsNeitherTitleNorDescription)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    ManagerLog log;
    EXPECT_FALSE(manager.addTitle(doc(7), nullptr));
    EXPECT_FALSE(manager.removeTitle(doc(7), nullptr));
    EXPECT_FALSE(manager.addDescription(doc(7), nullptr));
    EXPECT_FALSE(manager.removeDescription(doc(7), nullptr));
    EXPECT_TRUE(log.take().empty());
    EXPECT_EQ(&manager.title(doc(7)), &QuickHelpManager::EMPTY);
    EXPECT_EQ(&manager.description(doc(7)), &QuickHelpManager::EMPTY);
}

TEST(QuickHelpManager, RemovingTheHiddenNewestBringsTheOlderBack)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpDescriptionEntry older(nullptr, doc(7), "older");
    QuickHelpDescriptionEntry newer(nullptr, doc(7), "newer");
    newer.setVisible(false);
    older.setAttached(true);
    newer.setAttached(true);
    EXPECT_EQ(manager.description(doc(7)), "");
    ManagerLog log;
    EXPECT_TRUE(newer.setAttached(false));
    EXPECT_EQ(log.take(), Lines{"description 7 older"});
}

TEST(QuickHelpManager, DescriptionSlotWithoutSenderDoesNothing)
{
    QuickHelpManager& manager = QuickHelpManager::instance();
    QuickHelpDescriptionEntry entry(nullptr, doc(7), "text");
    entry.setAttached(true);
    ManagerLog log;
    EXPECT_TRUE(QMetaObject::invokeMethod(&manager, "onDescriptionChanged"));
    EXPECT_TRUE(log.take().empty());
}

TEST(QuickHelpManager, MetaObjectListsSignalsAndTheSlot)
{
    const QMetaObject& meta = QuickHelpManager::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tarqa::housekeeping::QuickHelpManager");
    EXPECT_EQ(methods(meta, QMetaMethod::Signal),
        (Lines{"void titleChanged(DocumentId,QString)", "void descriptionChanged(DocumentId,QString)"}));
    EXPECT_EQ(methods(meta, QMetaMethod::Slot), Lines{"void onDescriptionChanged()"});
    const QMetaMethod slot = meta.method(meta.indexOfSlot("onDescriptionChanged()"));
    EXPECT_EQ(slot.access(), QMetaMethod::Private);
    const QMetaMethod title = meta.method(meta.indexOfSignal("titleChanged(DocumentId,QString)"));
    EXPECT_EQ(title.parameterNames(), (QList<QByteArray>{"documentId", "title"}));
}

} // namespace
