#include "interface/Interface.h"

#include <tarqa/housekeeping/MouseWheelDelta.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

// What the library offers for the quick help: sections, entries, their manager and the filter of a document.

using namespace tarqa::housekeeping;

namespace {

// Numbers

static_assert(std::is_same_v<QuickHelpEntryId, unsigned long long>);
static_assert(std::is_same_v<std::underlying_type_t<QuickHelpSection>, unsigned int>);
static_assert(sizeof(QuickHelpSection) == 4);
static_assert(QuickHelpSection(0) == QuickHelpSection::CurrentTool);
static_assert(QuickHelpSection(1) == QuickHelpSection::View);
static_assert(QuickHelpSection(2) == QuickHelpSection::Navigator);
static_assert(QuickHelpSection(3) == QuickHelpSection::Selection);
static_assert(QuickHelpSection(4) == QuickHelpSection::Visibility);
static_assert(QuickHelpSection(5) == QuickHelpSection::Tools);
static_assert(QuickHelpSection(6) == QuickHelpSection::Editing);
static_assert(QuickHelpSection(7) == QuickHelpSection::File);
static_assert(QuickHelpSection(8) == QuickHelpSection::NoSection);
static_assert(sizeof(MouseWheelDelta) == 4);
static_assert(WheelEither == 0 && WheelUp == 1 && WheelDown == 2);

// Entries

static_assert(std::is_base_of_v<QObject, AbstractQuickHelpEntry>);
static_assert(std::is_abstract_v<AbstractQuickHelpEntry>);
static_assert(std::has_virtual_destructor_v<AbstractQuickHelpEntry>);
INTERFACE_HAS(AbstractQuickHelpEntry::id, QuickHelpEntryId (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::documentId, const DocumentId& (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::attached, bool (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::visible, bool (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::description, const QString& (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::section, const QuickHelpSection& (AbstractQuickHelpEntry::*)() const);
INTERFACE_HAS(AbstractQuickHelpEntry::setAttached, bool (AbstractQuickHelpEntry::*)(bool));
INTERFACE_HAS(AbstractQuickHelpEntry::setVisible, void (AbstractQuickHelpEntry::*)(bool));
INTERFACE_HAS(AbstractQuickHelpEntry::setDescription, bool (AbstractQuickHelpEntry::*)(const QString&));
INTERFACE_HAS(AbstractQuickHelpEntry::setSection, bool (AbstractQuickHelpEntry::*)(const QuickHelpSection&));
INTERFACE_HAS(AbstractQuickHelpEntry::attachedChanged, void (AbstractQuickHelpEntry::*)(bool));
INTERFACE_HAS(AbstractQuickHelpEntry::entryChanged, void (AbstractQuickHelpEntry::*)(QuickHelpEntryId));
INTERFACE_HAS(AbstractQuickHelpEntry::descriptionChanged, void (AbstractQuickHelpEntry::*)(const QString&));
INTERFACE_HAS(AbstractQuickHelpEntry::visibleChanged, void (AbstractQuickHelpEntry::*)(bool));
INTERFACE_HIDES(AbstractQuickHelpEntry, attach);
INTERFACE_HIDES(AbstractQuickHelpEntry, detach);

/// Opens what is protected.
class OpenEntry : public AbstractQuickHelpEntry
{
public:
    using AbstractQuickHelpEntry::AbstractQuickHelpEntry;
    using AbstractQuickHelpEntry::attach;
    using AbstractQuickHelpEntry::detach;
    using AbstractQuickHelpEntry::disconnectNotify;
    virtual void next() { }
};

INTERFACE_HAS(OpenEntry::attach, bool (AbstractQuickHelpEntry::*)());
INTERFACE_HAS(OpenEntry::detach, bool (AbstractQuickHelpEntry::*)());

/// Leaves nothing but the two pure operations of entries to be defined.
class WholeEntry : public AbstractQuickHelpEntry
{
public:
    using AbstractQuickHelpEntry::AbstractQuickHelpEntry;

protected:
    bool attach() override { return false; }
    bool detach() override { return false; }
};

static_assert(!std::is_abstract_v<WholeEntry>);
static_assert(std::is_constructible_v<WholeEntry, QObject*, const DocumentId&, const QString&,
    const QuickHelpSection&>);
static_assert(!std::is_copy_constructible_v<WholeEntry>);
static_assert(!std::is_copy_assignable_v<WholeEntry>);

// Entries in lists

static_assert(std::is_base_of_v<AbstractQuickHelpEntry, AbstractQuickHelpInputEntry>);
static_assert(std::is_abstract_v<AbstractQuickHelpInputEntry>);
INTERFACE_HAS(AbstractQuickHelpInputEntry::input, QString (AbstractQuickHelpInputEntry::*)() const);
INTERFACE_HIDES(AbstractQuickHelpInputEntry, attach);
INTERFACE_HIDES(AbstractQuickHelpInputEntry, detach);
INTERFACE_HIDES(AbstractQuickHelpInputEntry, take_out);
INTERFACE_HIDES(AbstractQuickHelpInputEntry, modifier_prefix);

class OpenInputEntry : public AbstractQuickHelpInputEntry
{
public:
    using AbstractQuickHelpInputEntry::AbstractQuickHelpInputEntry;
    using AbstractQuickHelpInputEntry::attach;
    using AbstractQuickHelpInputEntry::detach;
    using AbstractQuickHelpInputEntry::modifier_prefix;
    using AbstractQuickHelpInputEntry::take_out;
    QString input() const override { return {}; }
    virtual void next() { }
};

static_assert(!std::is_abstract_v<OpenInputEntry>, "input() is the only operation that is left");
static_assert(std::is_constructible_v<OpenInputEntry, QObject*, const DocumentId&, const QString&,
    const QuickHelpSection&>);
static_assert(std::is_same_v<decltype(&OpenInputEntry::attach), bool (AbstractQuickHelpInputEntry::*)()>);
static_assert(std::is_same_v<decltype(&OpenInputEntry::detach), bool (AbstractQuickHelpInputEntry::*)()>);
INTERFACE_HAS(OpenInputEntry::take_out, void (AbstractQuickHelpInputEntry::*)());
INTERFACE_HAS(OpenInputEntry::modifier_prefix, QString (*)(Qt::KeyboardModifiers));

/// Whether an entry is made of what an input is, the text and the section.
template <class Entry, class... Input>
constexpr bool is_made_of
    = std::is_constructible_v<Entry, QObject*, const DocumentId&, Input..., const QString&,
          const QuickHelpSection&> && !std::is_default_constructible_v<Entry> && !std::is_copy_constructible_v<Entry> && !std::is_copy_assignable_v<Entry> && !std::is_abstract_v<Entry>;

static_assert(std::is_base_of_v<AbstractQuickHelpInputEntry, QuickHelpKeySequenceEntry>);
static_assert(is_made_of<QuickHelpKeySequenceEntry, const QKeySequence&>);
static_assert(!is_made_of<QuickHelpKeySequenceEntry>);
INTERFACE_HAS(
    QuickHelpKeySequenceEntry::keySequence, const QKeySequence& (QuickHelpKeySequenceEntry::*)() const);
static_assert(std::is_same_v<decltype(&QuickHelpKeySequenceEntry::input),
    QString (QuickHelpKeySequenceEntry::*)() const>);

static_assert(std::is_base_of_v<AbstractQuickHelpInputEntry, QuickHelpMouseButtonEntry>);
static_assert(is_made_of<QuickHelpMouseButtonEntry, Qt::MouseButton>);
static_assert(is_made_of<QuickHelpMouseButtonEntry, Qt::MouseButton, Qt::KeyboardModifiers>);
INTERFACE_HAS(QuickHelpMouseButtonEntry::mouseButton, Qt::MouseButton (QuickHelpMouseButtonEntry::*)() const);
INTERFACE_HAS(
    QuickHelpMouseButtonEntry::modifiers, Qt::KeyboardModifiers (QuickHelpMouseButtonEntry::*)() const);
static_assert(std::is_same_v<decltype(&QuickHelpMouseButtonEntry::input),
    QString (QuickHelpMouseButtonEntry::*)() const>);

static_assert(std::is_base_of_v<AbstractQuickHelpInputEntry, QuickHelpMouseWheelEntry>);
static_assert(is_made_of<QuickHelpMouseWheelEntry, MouseWheelDelta>);
static_assert(is_made_of<QuickHelpMouseWheelEntry, MouseWheelDelta, Qt::KeyboardModifiers>);
INTERFACE_HAS(QuickHelpMouseWheelEntry::wheelDelta, MouseWheelDelta (QuickHelpMouseWheelEntry::*)() const);
INTERFACE_HAS(
    QuickHelpMouseWheelEntry::modifiers, Qt::KeyboardModifiers (QuickHelpMouseWheelEntry::*)() const);
static_assert(std::is_same_v<decltype(&QuickHelpMouseWheelEntry::input),
    QString (QuickHelpMouseWheelEntry::*)() const>);

// Titles and descriptions

/// Whether an entry is made of its text alone and lives in no list.
template <class Entry>
constexpr bool is_a_text
    = std::is_constructible_v<Entry, QObject*, const DocumentId&,
          const QString&>&& std::is_base_of_v<AbstractQuickHelpEntry,
          Entry> && !std::is_base_of_v<AbstractQuickHelpInputEntry, Entry> && !std::is_default_constructible_v<Entry> && !std::is_copy_constructible_v<Entry> && !std::is_copy_assignable_v<Entry> && !std::is_abstract_v<Entry>;

static_assert(is_a_text<QuickHelpTitleEntry>);
static_assert(is_a_text<QuickHelpDescriptionEntry>);
INTERFACE_HIDES(QuickHelpTitleEntry, attach);
INTERFACE_HIDES(QuickHelpTitleEntry, detach);
INTERFACE_HIDES(QuickHelpDescriptionEntry, attach);
INTERFACE_HIDES(QuickHelpDescriptionEntry, detach);

// The manager

static_assert(std::is_base_of_v<QObject, QuickHelpManager>);
static_assert(!std::is_default_constructible_v<QuickHelpManager>);
static_assert(!std::is_destructible_v<QuickHelpManager>);
static_assert(!std::is_copy_constructible_v<QuickHelpManager>);
static_assert(!std::is_copy_assignable_v<QuickHelpManager>);
static_assert(std::is_same_v<decltype(QuickHelpManager::EMPTY), const QString>);
INTERFACE_HAS(QuickHelpManager::instance, QuickHelpManager& (*)());
INTERFACE_HAS(QuickHelpManager::const_instance, const QuickHelpManager& (*)());
INTERFACE_HAS(QuickHelpManager::createNextId, QuickHelpEntryId (QuickHelpManager::*)());
INTERFACE_HAS(QuickHelpManager::addToModel, bool (QuickHelpManager::*)(AbstractQuickHelpInputEntry*));
INTERFACE_HAS(
    QuickHelpManager::removeFromModel, bool (QuickHelpManager::*)(const QuickHelpSection&, QuickHelpEntryId));
INTERFACE_HAS(
    QuickHelpManager::addTitle, bool (QuickHelpManager::*)(const DocumentId&, QuickHelpTitleEntry*));
INTERFACE_HAS(
    QuickHelpManager::removeTitle, bool (QuickHelpManager::*)(const DocumentId&, QuickHelpTitleEntry*));
INTERFACE_HAS(QuickHelpManager::addDescription,
    bool (QuickHelpManager::*)(const DocumentId&, QuickHelpDescriptionEntry*));
INTERFACE_HAS(QuickHelpManager::removeDescription,
    bool (QuickHelpManager::*)(const DocumentId&, QuickHelpDescriptionEntry*));
INTERFACE_HAS(QuickHelpManager::title, const QString& (QuickHelpManager::*)(const DocumentId&) const);
INTERFACE_HAS(QuickHelpManager::description, const QString& (QuickHelpManager::*)(const DocumentId&) const);
INTERFACE_HAS(
    QuickHelpManager::sectionModel, QAbstractListModel* (QuickHelpManager::*)(const QuickHelpSection&));
INTERFACE_HAS(QuickHelpManager::titleChanged, void (QuickHelpManager::*)(const DocumentId&, const QString&));
INTERFACE_HAS(
    QuickHelpManager::descriptionChanged, void (QuickHelpManager::*)(const DocumentId&, const QString&));
INTERFACE_HIDES(QuickHelpManager, onDescriptionChanged);
INTERFACE_HIDES(QuickHelpManager, get_instance);
INTERFACE_HIDES(QuickHelpManager, destroy_instance);

class DerivedManager : public QuickHelpManager
{ };

static_assert(std::is_default_constructible_v<DerivedManager>, "for classes that derive");
static_assert(std::is_destructible_v<DerivedManager>);

// The filter

static_assert(std::is_base_of_v<QSortFilterProxyModel, QuickHelpInputModelFilter>);
static_assert(std::is_constructible_v<QuickHelpInputModelFilter, const DocumentId&, QObject*>);
static_assert(!std::is_default_constructible_v<QuickHelpInputModelFilter>);
INTERFACE_HAS(QuickHelpInputModelFilter::setDocId, void (QuickHelpInputModelFilter::*)(const DocumentId&));
INTERFACE_HIDES(QuickHelpInputModelFilter, filterAcceptsRow);

class OpenFilter : public QuickHelpInputModelFilter
{
public:
    using QuickHelpInputModelFilter::filterAcceptsRow;
};

static_assert(std::is_same_v<decltype(&OpenFilter::filterAcceptsRow),
    bool (QuickHelpInputModelFilter::*)(int, const QModelIndex&) const>);

QList<QByteArray> parameters(const QMetaObject& meta, const char* signal)
{
    return meta.method(meta.indexOfSignal(signal)).parameterNames();
}

} // namespace

TEST(QuickHelpEntriesInterface, VirtualOperationsFollowThoseOfTheObject)
{
    EXPECT_TRUE(interface::in_a_row(&OpenEntry::disconnectNotify, &AbstractQuickHelpEntry::description,
        &AbstractQuickHelpEntry::section, &AbstractQuickHelpEntry::setDescription,
        &AbstractQuickHelpEntry::setSection, &OpenEntry::attach, &OpenEntry::detach, &OpenEntry::next));
}

TEST(QuickHelpEntriesInterface, InputComesLast)
{
    EXPECT_TRUE(interface::in_a_row(&OpenInputEntry::attach, &OpenInputEntry::detach,
        &AbstractQuickHelpInputEntry::input, &OpenInputEntry::next));
    EXPECT_EQ(interface::slot_of(&OpenEntry::attach), interface::slot_of(&OpenInputEntry::attach));
}

TEST(QuickHelpEntriesInterface, SignalsNameTheirParameters)
{
    const QMetaObject& meta = AbstractQuickHelpEntry::staticMetaObject;
    EXPECT_EQ(parameters(meta, "attachedChanged(bool)"), QList<QByteArray>{"attached"});
    EXPECT_EQ(parameters(meta, "descriptionChanged(QString)"), QList<QByteArray>{"description"});
    EXPECT_EQ(parameters(meta, "visibleChanged(bool)"), QList<QByteArray>{"visible"});
}

TEST(QuickHelpManagerInterface, SignalsNameTheirParameters)
{
    const QMetaObject& meta = QuickHelpManager::staticMetaObject;
    EXPECT_EQ(
        parameters(meta, "titleChanged(DocumentId,QString)"), (QList<QByteArray>{"documentId", "title"}));
    EXPECT_EQ(parameters(meta, "descriptionChanged(DocumentId,QString)"),
        (QList<QByteArray>{"documentId", "description"}));
}
