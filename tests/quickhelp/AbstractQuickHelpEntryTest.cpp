#include "QuickHelpFixture.h"

#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>
#include <tarqa/housekeeping/MouseWheelDelta.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <QtCore/QMetaProperty>

#include <type_traits>

namespace {

using namespace quickhelp_test;

/// An entry whose attaching and detaching is watched and may fail.
class Probe : public AbstractQuickHelpEntry
{
public:
    explicit Probe(QObject* parent = nullptr)
        : AbstractQuickHelpEntry(parent, doc(7), "text", QuickHelpSection::Selection)
    { }

    Lines m_calls;
    bool m_works = true;

protected:
    bool attach() override
    {
        m_calls.push_back(attached() ? "attach while attached" : "attach while detached");
        return m_works;
    }
    bool detach() override
    {
        m_calls.push_back(attached() ? "detach while attached" : "detach while detached");
        return m_works;
    }
};

TEST(AbstractQuickHelpEntry, StartsDetachedAndVisibleWithWhatItIsGiven)
{
    QObject parent;
    auto* const p_entry = new Probe(&parent);
    EXPECT_EQ(p_entry->parent(), &parent);
    EXPECT_EQ(p_entry->id(), 0u);
    EXPECT_TRUE(p_entry->documentId() == 7);
    EXPECT_FALSE(p_entry->attached());
    EXPECT_TRUE(p_entry->visible());
    EXPECT_EQ(p_entry->description(), "text");
    EXPECT_EQ(p_entry->section(), QuickHelpSection::Selection);
    EXPECT_TRUE(p_entry->m_calls.empty());
}

TEST(AbstractQuickHelpEntry, IdsCountFromZeroAndAreNeverReused)
{
    const Probe first;
    {
        const Probe second;
        EXPECT_EQ(second.id(), 1u);
    }
    const Probe third;
    EXPECT_EQ(first.id(), 0u);
    EXPECT_EQ(third.id(), 2u);
    static_assert(std::is_same_v<QuickHelpEntryId, unsigned long long>);
}

TEST(AbstractQuickHelpEntry, AttachingStoresThenAttachesThenAnnounces)
{
    Probe entry;
    EntryLog log(entry);
    QObject::connect(&entry, &AbstractQuickHelpEntry::attachedChanged, &entry,
        [&entry] { entry.m_calls.push_back("announced"); });
    EXPECT_TRUE(entry.setAttached(true));
    EXPECT_TRUE(entry.attached());
    EXPECT_EQ(entry.m_calls, (Lines{"attach while attached", "announced"}));
    EXPECT_EQ(log.take(), Lines{"attached"});
    entry.m_calls.clear();
    EXPECT_TRUE(entry.setAttached(false));
    EXPECT_FALSE(entry.attached());
    EXPECT_EQ(entry.m_calls, (Lines{"detach while detached", "announced"}));
    EXPECT_EQ(log.take(), Lines{"detached"});
}

TEST(AbstractQuickHelpEntry, AttachingAgainDoesNothing)
{
    Probe entry;
    EntryLog log(entry);
    EXPECT_FALSE(entry.setAttached(false));
    EXPECT_TRUE(entry.m_calls.empty());
    EXPECT_TRUE(entry.setAttached(true));
    log.take();
    EXPECT_FALSE(entry.setAttached(true));
    EXPECT_EQ(entry.m_calls.size(), 1u);
    EXPECT_TRUE(log.take().empty());
}

TEST(AbstractQuickHelpEntry, FailedAttachingIsReturnedButKeepsTheFlagAndAnnounces)
{
    Probe entry;
    EntryLog log(entry);
    entry.m_works = false;
    EXPECT_FALSE(entry.setAttached(true));
    EXPECT_TRUE(entry.attached());
    EXPECT_FALSE(entry.setAttached(false));
    EXPECT_FALSE(entry.attached());
    EXPECT_EQ(log.take(), (Lines{"attached", "detached"}));
}

TEST(AbstractQuickHelpEntry, HidingAnnouncesVisibilityThenTheEntry)
{
    const Probe first;
    Probe entry;
    EntryLog log(entry);
    entry.setVisible(true);
    EXPECT_TRUE(log.take().empty());
    entry.setVisible(false);
    EXPECT_FALSE(entry.visible());
    EXPECT_EQ(log.take(), (Lines{"hidden", "entry 1"}));
    entry.setVisible(false);
    EXPECT_TRUE(log.take().empty());
    entry.setVisible(true);
    EXPECT_EQ(log.take(), (Lines{"visible", "entry 1"}));
}

TEST(AbstractQuickHelpEntry, NewDescriptionAnnouncesTextThenTheEntry)
{
    Probe entry;
    EntryLog log(entry);
    EXPECT_FALSE(entry.setDescription("text"));
    EXPECT_TRUE(log.take().empty());
    EXPECT_TRUE(entry.setDescription("Text")); // case counts
    EXPECT_EQ(entry.description(), "Text");
    EXPECT_EQ(log.take(), (Lines{"description Text", "entry 0"}));
    EXPECT_TRUE(entry.setDescription(QString()));
    EXPECT_EQ(log.take(), (Lines{"description ", "entry 0"}));
}

TEST(AbstractQuickHelpEntry, NewSectionAnnouncesTheEntryOnly)
{
    Probe entry;
    EntryLog log(entry);
    EXPECT_FALSE(entry.setSection(QuickHelpSection::Selection));
    EXPECT_TRUE(log.take().empty());
    EXPECT_TRUE(entry.setSection(QuickHelpSection::File));
    EXPECT_EQ(entry.section(), QuickHelpSection::File);
    EXPECT_EQ(log.take(), Lines{"entry 0"});
}

TEST(AbstractQuickHelpEntry, ValuesAreStoredBeforeTheyAreAnnounced)
{
    Probe entry;
    int announced = 0;
    QObject::connect(&entry, &AbstractQuickHelpEntry::visibleChanged, &entry, [&](bool visible) {
        ++announced;
        EXPECT_EQ(entry.visible(), visible);
    });
    QObject::connect(&entry, &AbstractQuickHelpEntry::descriptionChanged, &entry, [&](const QString& text) {
        ++announced;
        EXPECT_EQ(entry.description(), text);
    });
    QObject::connect(&entry, &AbstractQuickHelpEntry::attachedChanged, &entry, [&](bool attached) {
        ++announced;
        EXPECT_EQ(entry.attached(), attached);
    });
    entry.setVisible(false);
    entry.setDescription("new");
    entry.setAttached(true);
    EXPECT_EQ(announced, 3);
    QuickHelpSection seen = QuickHelpSection::NoSection;
    QObject::connect(&entry, &AbstractQuickHelpEntry::entryChanged, &entry, [&] { seen = entry.section(); });
    entry.setSection(QuickHelpSection::File);
    EXPECT_EQ(seen, QuickHelpSection::File);
}

TEST(AbstractQuickHelpEntry, TextAndSectionAreGivenByReference)
{
    static_assert(std::is_same_v<decltype(std::declval<const Probe&>().description()), const QString&>);
    static_assert(std::is_same_v<decltype(std::declval<const Probe&>().section()), const QuickHelpSection&>);
    Probe entry;
    const QString& text = entry.description();
    const QuickHelpSection& section = entry.section();
    entry.setDescription("new");
    entry.setSection(QuickHelpSection::File);
    EXPECT_EQ(text, "new");
    EXPECT_EQ(section, QuickHelpSection::File);
}

TEST(AbstractQuickHelpEntry, MetaObjectListsSignalsAndSlotsInOrder)
{
    const QMetaObject& meta = AbstractQuickHelpEntry::staticMetaObject;
    EXPECT_STREQ(meta.className(), "tarqa::housekeeping::AbstractQuickHelpEntry");
    EXPECT_EQ(methods(meta, QMetaMethod::Signal),
        (Lines{"void attachedChanged(bool)", "void entryChanged(QuickHelpEntryId)",
            "void descriptionChanged(QString)", "void visibleChanged(bool)"}));
    EXPECT_EQ(methods(meta, QMetaMethod::Slot),
        (Lines{"bool setAttached(bool)", "void setVisible(bool)", "bool setDescription(QString)",
            "bool setSection(QuickHelpSection)"}));
}

TEST(AbstractQuickHelpEntry, MetaObjectHasTwoWritableProperties)
{
    const QMetaObject& meta = AbstractQuickHelpEntry::staticMetaObject;
    ASSERT_EQ(meta.propertyCount() - meta.propertyOffset(), 2);
    EXPECT_STREQ(meta.property(meta.propertyOffset()).name(), "description");
    EXPECT_STREQ(meta.property(meta.propertyOffset() + 1).name(), "visible");
    Probe entry;
    EntryLog log(entry);
    EXPECT_EQ(entry.property("description"), QVariant("text"));
    EXPECT_TRUE(entry.setProperty("description", "new"));
    EXPECT_EQ(entry.description(), "new");
    EXPECT_EQ(entry.property("visible"), QVariant(true));
    EXPECT_TRUE(entry.setProperty("visible", false));
    EXPECT_FALSE(entry.visible());
    EXPECT_EQ(log.take(), (Lines{"description new", "entry 0", "hidden", "entry 0"}));
}

TEST(AbstractQuickHelpEntry, SlotsAreInvokableByName)
{
    Probe entry;
    bool changed = false;
    EXPECT_TRUE(
        QMetaObject::invokeMethod(&entry, "setAttached", Q_RETURN_ARG(bool, changed), Q_ARG(bool, true)));
    EXPECT_TRUE(changed);
    EXPECT_TRUE(entry.attached());
    EXPECT_TRUE(QMetaObject::invokeMethod(&entry, "setVisible", Q_ARG(bool, false)));
    EXPECT_FALSE(entry.visible());
    EXPECT_TRUE(QMetaObject::invokeMethod(&entry, "setSection", Q_RETURN_ARG(bool, changed),
        Q_ARG(QuickHelpSection, QuickHelpSection::Selection)));
    EXPECT_FALSE(changed);
    EXPECT_TRUE(QMetaObject::invokeMethod(
        &entry, "setDescription", Q_RETURN_ARG(bool, changed), Q_ARG(QString, "new")));
    EXPECT_TRUE(changed);
}

TEST(AbstractQuickHelpEntry, ClassTreeIsTheMetaObjectsToo)
{
    using namespace tarqa::housekeeping;
    const QMetaObject* const p_entry = &AbstractQuickHelpEntry::staticMetaObject;
    const QMetaObject* const p_input = &AbstractQuickHelpInputEntry::staticMetaObject;
    EXPECT_EQ(p_entry->superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(p_input->superClass(), p_entry);
    EXPECT_EQ(QuickHelpKeySequenceEntry::staticMetaObject.superClass(), p_input);
    EXPECT_EQ(QuickHelpMouseButtonEntry::staticMetaObject.superClass(), p_input);
    EXPECT_EQ(QuickHelpMouseWheelEntry::staticMetaObject.superClass(), p_input);
    EXPECT_EQ(QuickHelpTitleEntry::staticMetaObject.superClass(), p_entry);
    EXPECT_EQ(QuickHelpDescriptionEntry::staticMetaObject.superClass(), p_entry);
}

TEST(AbstractQuickHelpEntry, IsAbstractAndNotCopied)
{
    static_assert(std::is_abstract_v<AbstractQuickHelpEntry>);
    static_assert(std::is_abstract_v<AbstractQuickHelpInputEntry>);
    static_assert(!std::is_copy_constructible_v<Probe> && !std::is_copy_assignable_v<Probe>);
    static_assert(!std::is_copy_constructible_v<QuickHelpKeySequenceEntry>);
    // Two of them, so that a copy, if there were one, would share an id.
    EXPECT_NE(Probe().id(), Probe().id());
}

TEST(QuickHelpSection, HasItsNumbers)
{
    static_assert(std::is_same_v<std::underlying_type_t<QuickHelpSection>, unsigned int>);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::CurrentTool), 0u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::View), 1u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::Navigator), 2u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::Selection), 3u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::Visibility), 4u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::Tools), 5u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::Editing), 6u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::File), 7u);
    EXPECT_EQ(static_cast<unsigned int>(QuickHelpSection::NoSection), 8u);
}

TEST(MouseWheelDelta, HasItsNumbers)
{
    EXPECT_EQ(sizeof(tarqa::housekeeping::MouseWheelDelta), 4u);
    EXPECT_EQ(static_cast<int>(tarqa::housekeeping::WheelEither), 0);
    EXPECT_EQ(static_cast<int>(tarqa::housekeeping::WheelUp), 1);
    EXPECT_EQ(static_cast<int>(tarqa::housekeeping::WheelDown), 2);
}

} // namespace
