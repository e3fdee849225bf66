#include "interface/Interface.h"

#include "support/Fakes.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentHistory.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/IdCreator.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <istream>
#include <ostream>

// What the library offers for documents, their models and states, data sources and the recent documents.

using namespace tarqa::housekeeping;
using tarqa::utilities::TemporaryDirectory;

namespace {

typedef std::string Text;
typedef boost::shared_ptr<AbstractDataInformation> InformationPointer;
typedef boost::shared_ptr<DataSource> SourcePointer;

// Models

static_assert(std::is_abstract_v<AbstractModel>);
static_assert(std::has_virtual_destructor_v<AbstractModel>);
static_assert(!std::is_copy_constructible_v<support::FakeModel>);
static_assert(!std::is_copy_assignable_v<support::FakeModel>);
INTERFACE_HAS(AbstractModel::empty, bool (AbstractModel::*)() const);
INTERFACE_HAS(AbstractModel::size, unsigned long long (AbstractModel::*)() const);
INTERFACE_HAS(AbstractModel::clear, void (AbstractModel::*)());
INTERFACE_HAS(AbstractModel::close, void (AbstractModel::*)());
INTERFACE_HAS(AbstractModel::set_parent_document, void (AbstractModel::*)(AbstractDocument&));
INTERFACE_HAS(AbstractModel::document_type, const Text& (AbstractModel::*)() const);
INTERFACE_HAS(AbstractModel::setupDatabase, void (AbstractModel::*)(const QString&));
INTERFACE_HAS(AbstractModel::mergeDatabase, void (AbstractModel::*)(const QString&));
INTERFACE_HAS(AbstractModel::getDatabasePath, QString (AbstractModel::*)());
INTERFACE_HAS(AbstractModel::id, const DocumentId& (AbstractModel::*)() const);
INTERFACE_HAS(AbstractModel::parent_document, AbstractDocument& (AbstractModel::*)() const);
INTERFACE_HAS(AbstractModel::parent_document_exists, bool (AbstractModel::*)() const);

// What models define
// clang-format off
template <class B> struct ModelEmpty : B { bool empty() const override { return true; } };
template <class B> struct ModelSize : B { unsigned long long size() const override { return 0; } };
template <class B> struct ModelClear : B { void clear() override { } };
template <class B> struct ModelType : B { const Text& document_type() const override; };
template <class B> struct ModelSetup : B { void setupDatabase(const QString&) override { } };
template <class B> struct ModelMerge : B { void mergeDatabase(const QString&) override { } };
template <class B> struct ModelPath : B { QString getDatabasePath() override { return {}; } };
// clang-format on
static_assert(interface::are_the_pure_ones<AbstractModel, ModelEmpty, ModelSize, ModelClear, ModelType,
    ModelSetup, ModelMerge, ModelPath>);

class NextModel : public AbstractModel
{
public:
    virtual void next() { }
};

// States

static_assert(!std::is_abstract_v<AbstractState>);
static_assert(std::has_virtual_destructor_v<AbstractState>);
static_assert(std::is_constructible_v<AbstractState, AbstractDocument&, DocumentId, Text>);
static_assert(!std::is_default_constructible_v<AbstractState>);
static_assert(std::is_copy_constructible_v<AbstractState>);
INTERFACE_HAS(AbstractState::owner, AbstractDocument& (AbstractState::*)());
INTERFACE_HAS(AbstractState::owner, const AbstractDocument& (AbstractState::*)() const);
INTERFACE_HAS(AbstractState::document_id, const DocumentId& (AbstractState::*)() const);
INTERFACE_HAS(AbstractState::controller_name, const Text& (AbstractState::*)() const);

class NextState : public AbstractState
{
public:
    virtual void next() { }
};

// Records of runs

static_assert(std::is_constructible_v<DocumentHistory, const Text&, const Text&, const Text&, const Text&,
    const Text&>);
static_assert(!std::is_default_constructible_v<DocumentHistory>);
static_assert(std::is_copy_constructible_v<DocumentHistory>);
static_assert(
    std::is_same_v<decltype(std::declval<DocumentHistory&>() = std::declval<const DocumentHistory&>()),
        DocumentHistory&>);
static_assert(!std::is_polymorphic_v<DocumentHistory>);
static_assert(sizeof(DocumentHistory) == 5 * sizeof(Text), "five texts and nothing else");
INTERFACE_HAS(DocumentHistory::program, const Text& (DocumentHistory::*)() const);
INTERFACE_HAS(DocumentHistory::version, const Text& (DocumentHistory::*)() const);
INTERFACE_HAS(DocumentHistory::user, const Text& (DocumentHistory::*)() const);
INTERFACE_HAS(DocumentHistory::name, const Text& (DocumentHistory::*)() const);
INTERFACE_HAS(DocumentHistory::date, const Text& (DocumentHistory::*)() const);
INTERFACE_HAS(DocumentHistory::description, Text (DocumentHistory::*)() const);

// Documents

static_assert(std::is_abstract_v<AbstractDocument>);
static_assert(std::has_virtual_destructor_v<AbstractDocument>);
static_assert(!std::is_copy_constructible_v<support::FakeDocument>);
static_assert(!std::is_copy_assignable_v<support::FakeDocument>);
INTERFACE_HAS(AbstractDocument::empty, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::size, unsigned long long (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::document_type, const Text& (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::clear, void (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::buildModel, void (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::set_busy, void (AbstractDocument::*)(bool));
INTERFACE_HAS(AbstractDocument::is_busy, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::beingRendered, bool (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::is_closing, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::set_closing, void (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::is_transforming, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::set_transforming, void (AbstractDocument::*)(bool));
INTERFACE_HAS(AbstractDocument::request_close, bool (AbstractDocument::*)(bool, bool));
INTERFACE_HAS(AbstractDocument::set_modified, void (AbstractDocument::*)(bool));
INTERFACE_HAS(AbstractDocument::setupDatabase, void (AbstractDocument::*)(const QString&));
INTERFACE_HAS(AbstractDocument::mergeDatabase, void (AbstractDocument::*)(const QString&));
INTERFACE_HAS(AbstractDocument::getDatabasePath, QString (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::document_created, void (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::title_changed, void (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::id, const DocumentId& (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::title, const Text& (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::short_title, Text (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::model, AbstractModel& (AbstractDocument::*)() const);
INTERFACE_HAS(
    AbstractDocument::state, boost::shared_ptr<AbstractState> (AbstractDocument::*)(const Text&) const);
INTERFACE_HAS(AbstractDocument::document_history, AbstractDocumentHistory& (AbstractDocument::*)());
INTERFACE_HAS(
    AbstractDocument::document_history, const AbstractDocumentHistory& (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::datasource, SourcePointer (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::datasource, void (AbstractDocument::*)(SourcePointer));
INTERFACE_HAS(AbstractDocument::dataExport, SourcePointer (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::dataExport, void (AbstractDocument::*)(SourcePointer));
INTERFACE_HAS(AbstractDocument::inTime, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::linked_to_petrel, bool (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::linked_to_petrel, void (AbstractDocument::*)(bool));
INTERFACE_HAS(AbstractDocument::work_dir, boost::shared_ptr<TemporaryDirectory> (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::work_dir, void (AbstractDocument::*)(boost::shared_ptr<TemporaryDirectory>));
INTERFACE_HAS(AbstractDocument::work_directories,
    const std::vector<boost::shared_ptr<TemporaryDirectory>>& (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::add_history, Text (AbstractDocument::*)());
INTERFACE_HAS(AbstractDocument::add_history,
    void (AbstractDocument::*)(const Text&, const Text&, const Text&, const Text&, const Text&));
INTERFACE_HAS(AbstractDocument::history_begin,
    std::vector<DocumentHistory>::const_iterator (AbstractDocument::*)() const);
INTERFACE_HAS(AbstractDocument::history_end,
    std::vector<DocumentHistory>::const_iterator (AbstractDocument::*)() const);

// What documents define
// clang-format off
template <class B> struct DocumentBuild : B { void buildModel() override { } };
template <class B> struct DocumentSetBusy : B { void set_busy(bool) override { } };
template <class B> struct DocumentIsBusy : B { bool is_busy() const override { return false; } };
template <class B> struct DocumentRequest : B { bool request_close(bool, bool) override { return true; } };
template <class B> struct DocumentModified : B { void set_modified(bool) override { } };
template <class B> struct DocumentCreated : B { void document_created() override { } };
template <class B> struct DocumentTitle : B { void title_changed() override { } };
// clang-format on
static_assert(interface::are_the_pure_ones<AbstractDocument, DocumentBuild, DocumentSetBusy, DocumentIsBusy,
    DocumentRequest, DocumentModified, DocumentCreated, DocumentTitle>);

/// Whether anybody may set the title, or make the states.
template <class X, class = void>
struct SetsTitle : std::false_type
{ };
template <class X>
struct SetsTitle<X, std::void_t<decltype(std::declval<X&>().title(std::declval<const Text&>()))>>
    : std::true_type
{ };
template <class X, class = void>
struct CreatesStates : std::false_type
{ };
template <class X>
struct CreatesStates<X, std::void_t<decltype(std::declval<X&>().create_states())>> : std::true_type
{ };
static_assert(!SetsTitle<AbstractDocument>::value);
static_assert(!CreatesStates<AbstractDocument>::value);

/// The model, and the first entry behind the document's own.
class NextDocument : public AbstractDocument
{
public:
    using AbstractDocument::m_model;
    virtual void next() { }
};

static_assert(std::is_same_v<decltype(NextDocument::m_model), boost::shared_ptr<AbstractModel>>);

// The document manager

static_assert(!interface::is_destroyed_by_anybody<DocumentManager>);
static_assert(std::is_base_of_v<QObject, DocumentManager>);
static_assert(std::is_base_of_v<tarqa::utilities::IdCreator, DocumentManager>);
static_assert(!std::is_default_constructible_v<DocumentManager>);
static_assert(!std::is_copy_constructible_v<DocumentManager>);
INTERFACE_HAS(DocumentManager::instance, DocumentManager& (*)());
INTERFACE_HAS(DocumentManager::const_instance, const DocumentManager& (*)());
INTERFACE_HAS(DocumentManager::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(DocumentManager::createId, DocumentId (DocumentManager::*)());
INTERFACE_HAS(DocumentManager::createNextId, unsigned long long (DocumentManager::*)());
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // Qt's own word on trUtf8
INTERFACE_HAS(DocumentManager::trUtf8, QString (*)(const char*, const char*, int));
#pragma GCC diagnostic pop
INTERFACE_HAS(DocumentManager::metaObject, const QMetaObject* (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::qt_metacast, void* (DocumentManager::*)(const char*));
INTERFACE_HAS(DocumentManager::qt_metacall, int (DocumentManager::*)(QMetaObject::Call, int, void**));
INTERFACE_HAS(DocumentManager::create_document, AbstractDocument& (DocumentManager::*)());
INTERFACE_HAS(DocumentManager::current_document, AbstractDocument& (DocumentManager::*)());
INTERFACE_HAS(DocumentManager::current_document, const AbstractDocument& (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::current_document, void (DocumentManager::*)(const DocumentId&));
INTERFACE_HAS(DocumentManager::current_document_id, DocumentId (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::current_documents, std::vector<DocumentId> (DocumentManager::*)() const);
INTERFACE_HAS(
    DocumentManager::current_state, boost::shared_ptr<AbstractState> (DocumentManager::*)(const Text&) const);
INTERFACE_HAS(DocumentManager::document_exists, bool (DocumentManager::*)(const DocumentId&) const);
INTERFACE_HAS(DocumentManager::document_from_id, AbstractDocument& (DocumentManager::*)(const DocumentId&));
INTERFACE_HAS(
    DocumentManager::document_from_id, const AbstractDocument& (DocumentManager::*)(const DocumentId&) const);
INTERFACE_HAS(DocumentManager::num_documents, unsigned long long (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::first_id, DocumentId (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::destroy_document,
    bool (DocumentManager::*)(const DocumentId&, bool, bool, bool, DocumentId));
INTERFACE_HAS(DocumentManager::document_busy, bool (DocumentManager::*)(const DocumentId&, bool));
INTERFACE_HAS(DocumentManager::document_busy, bool (DocumentManager::*)(const DocumentId&) const);
INTERFACE_HAS(DocumentManager::documents_busy, bool (DocumentManager::*)() const);
INTERFACE_HAS(DocumentManager::set_document_as_closing, bool (DocumentManager::*)(const DocumentId&));
INTERFACE_HAS(DocumentManager::cleanupInvalidDocuments, void (DocumentManager::*)());

// Settings of readers

static_assert(!std::is_default_constructible_v<AbstractDataInformation>);
static_assert(std::has_virtual_destructor_v<AbstractDataInformation>);
static_assert(!std::is_copy_constructible_v<support::FakeDataInformation>);
static_assert(!std::is_copy_assignable_v<support::FakeDataInformation>);
static_assert(
    std::is_same_v<decltype(std::declval<std::istream&>() >> std::declval<AbstractDataInformation&>()),
        std::istream&>);
static_assert(
    std::is_same_v<decltype(std::declval<std::ostream&>() << std::declval<const AbstractDataInformation&>()),
        std::ostream&>);
INTERFACE_HAS(AbstractDataInformation::is_complete, bool (AbstractDataInformation::*)() const);
INTERFACE_HAS(AbstractDataInformation::ascii_import_mode, int (AbstractDataInformation::*)() const);
INTERFACE_HAS(AbstractDataInformation::set_ascii_import_mode, void (AbstractDataInformation::*)(int));
INTERFACE_HAS(AbstractDataInformation::key, const Text& (AbstractDataInformation::*)() const);

/// Made with a key, as concrete ones are; what is protected, and the first entry behind the base's own.
class NextInformation : public AbstractDataInformation
{
public:
    explicit NextInformation(const Text& key)
        : AbstractDataInformation(key)
    { }
    using AbstractDataInformation::serialise;
    virtual void next() { }
};

typedef void (AbstractDataInformation::*InformationReader)(const QStringList&, int);
typedef QStringList (AbstractDataInformation::*InformationGetter)();
typedef std::istream& (NextInformation::*StreamReader)(std::istream&);
typedef std::ostream& (NextInformation::*StreamWriter)(std::ostream&) const;
INTERFACE_HAS(AbstractDataInformation::info, InformationReader);
INTERFACE_HAS(AbstractDataInformation::info, InformationGetter);
INTERFACE_HAS(AbstractDataInformation::attaching_image_to_geoId,
    unsigned long long (AbstractDataInformation::*)() const);
INTERFACE_HAS(AbstractDataInformation::image_name, Text (AbstractDataInformation::*)());
INTERFACE_HAS(NextInformation::serialise, StreamReader);
INTERFACE_HAS(NextInformation::serialise, StreamWriter);

// Data sources

static_assert(std::is_default_constructible_v<DataSource>);
static_assert(std::is_constructible_v<DataSource, const Text&, InformationPointer>);
static_assert(std::is_constructible_v<DataSource, const std::vector<Text>&, InformationPointer>);
static_assert(sizeof(DataSource::Units) == 4 && sizeof(DataSource::Sign) == 4);
static_assert(DataSource::Inches == 0 && DataSource::Metres == 1 && DataSource::Feet == 2);
static_assert(DataSource::Miles == 3 && DataSource::Kilometres == 5 && DataSource::Seconds == 6);
static_assert(DataSource::Milliseconds == 7 && DataSource::Decimetres == 9);
static_assert(DataSource::Elevation == 64 && DataSource::Depth == 128);
static_assert(
    std::is_same_v<decltype(std::declval<std::istream&>() >> std::declval<DataSource&>()), std::istream&>);
static_assert(std::is_same_v<decltype(std::declval<std::ostream&>() << std::declval<const DataSource&>()),
    std::ostream&>);
INTERFACE_HAS(DataSource::data_information, InformationPointer (DataSource::*)() const);
INTERFACE_HAS(DataSource::url, const Text& (DataSource::*)() const);
INTERFACE_HAS(DataSource::urls, const std::vector<Text>& (DataSource::*)() const);
INTERFACE_HAS(DataSource::key, Text (DataSource::*)() const);
INTERFACE_HAS(DataSource::ds_key, const Text& (DataSource::*)() const);
INTERFACE_HAS(DataSource::ds_key, void (DataSource::*)(const Text&));
INTERFACE_HAS(DataSource::z_sign, DataSource::Sign (DataSource::*)() const);
INTERFACE_HAS(DataSource::z_sign, void (DataSource::*)(DataSource::Sign));
INTERFACE_HAS(DataSource::z_units, DataSource::Units (DataSource::*)() const);
INTERFACE_HAS(DataSource::z_units, void (DataSource::*)(DataSource::Units));
INTERFACE_HAS(DataSource::z_units, void (DataSource::*)(const QString&));
INTERFACE_HAS(DataSource::z_sign_string, QString (DataSource::*)() const);
INTERFACE_HAS(DataSource::z_units_string, QString (DataSource::*)() const);
INTERFACE_HAS(DataSource::signFromString, DataSource::Sign (*)(const QString&));
INTERFACE_HAS(DataSource::unitsFromString, DataSource::Units (*)(const QString&));
INTERFACE_HAS(DataSource::inTime, bool (DataSource::*)() const);
INTERFACE_HAS(DataSource::info, void (DataSource::*)(const QStringList&));
INTERFACE_HAS(DataSource::info, QStringList (DataSource::*)() const);

// Recent documents

static_assert(std::has_virtual_destructor_v<RecentDocumentsQueue>);
static_assert(!std::is_default_constructible_v<RecentDocumentsQueue>);
static_assert(!interface::is_destroyed_by_anybody<RecentDocumentsQueue>);
INTERFACE_HAS(RecentDocumentsQueue::instance, RecentDocumentsQueue& (*)());
INTERFACE_HAS(RecentDocumentsQueue::const_instance, const RecentDocumentsQueue& (*)());
INTERFACE_HAS(RecentDocumentsQueue::push, bool (RecentDocumentsQueue::*)(SourcePointer));
INTERFACE_HAS(RecentDocumentsQueue::at, SourcePointer (RecentDocumentsQueue::*)(unsigned long long) const);
INTERFACE_HAS(
    RecentDocumentsQueue::begin, std::deque<SourcePointer>::const_iterator (RecentDocumentsQueue::*)() const);
INTERFACE_HAS(
    RecentDocumentsQueue::end, std::deque<SourcePointer>::const_iterator (RecentDocumentsQueue::*)() const);
INTERFACE_HAS(RecentDocumentsQueue::size, unsigned long long (RecentDocumentsQueue::*)() const);
INTERFACE_HAS(RecentDocumentsQueue::max_size, void (RecentDocumentsQueue::*)(unsigned long long));
INTERFACE_HAS(RecentDocumentsQueue::load, void (RecentDocumentsQueue::*)());
INTERFACE_HAS(RecentDocumentsQueue::save, void (RecentDocumentsQueue::*)() const);

const std::size_t s_after_destructor = 2; // which has two entries

QMetaMethod slot_named(const char* signature)
{
    const QMetaObject& meta_object = DocumentManager::staticMetaObject;
    return meta_object.method(meta_object.indexOfSlot(signature));
}

} // namespace

TEST(AbstractModelInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&AbstractModel::empty));
    EXPECT_TRUE(interface::in_a_row(&AbstractModel::empty, &AbstractModel::size, &AbstractModel::clear,
        &AbstractModel::close, &AbstractModel::set_parent_document, &AbstractModel::document_type,
        &AbstractModel::setupDatabase, &AbstractModel::mergeDatabase, &AbstractModel::getDatabasePath,
        &NextModel::next));
}

TEST(AbstractStateInterface, DestructorIsTheOnlyVirtualOperation)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&NextState::next));
}

TEST(AbstractDocumentInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&AbstractDocument::empty));
    EXPECT_TRUE(interface::in_a_row(&AbstractDocument::empty, &AbstractDocument::size));
    EXPECT_LT(
        interface::slot_of(&AbstractDocument::size), interface::slot_of(&AbstractDocument::document_type));
    EXPECT_TRUE(interface::in_a_row(&AbstractDocument::document_type, &AbstractDocument::clear));
    EXPECT_LT(interface::slot_of(&AbstractDocument::clear), interface::slot_of(&AbstractDocument::set_busy));
    EXPECT_TRUE(interface::in_a_row(&AbstractDocument::set_busy, &AbstractDocument::is_busy,
        &AbstractDocument::beingRendered, &AbstractDocument::is_closing, &AbstractDocument::set_closing,
        &AbstractDocument::is_transforming, &AbstractDocument::set_transforming,
        &AbstractDocument::request_close));
    EXPECT_LT(interface::slot_of(&AbstractDocument::request_close),
        interface::slot_of(&AbstractDocument::set_modified));
    EXPECT_LT(interface::slot_of(&AbstractDocument::set_modified),
        interface::slot_of(&AbstractDocument::setupDatabase));
    EXPECT_TRUE(interface::in_a_row(&AbstractDocument::setupDatabase, &AbstractDocument::mergeDatabase,
        &AbstractDocument::getDatabasePath, &AbstractDocument::document_created,
        &AbstractDocument::title_changed, &NextDocument::next));
}

TEST(AbstractDataInformationInterface, VirtualOperationsAreInTheirOrder)
{
    const InformationReader reader = &AbstractDataInformation::info;
    const InformationGetter getter = &AbstractDataInformation::info;
    const StreamReader stream_reader = &NextInformation::serialise;
    const StreamWriter stream_writer = &NextInformation::serialise;
    EXPECT_EQ(s_after_destructor, interface::slot_of(reader));
    EXPECT_TRUE(interface::in_a_row(reader, getter, &AbstractDataInformation::attaching_image_to_geoId,
        &AbstractDataInformation::image_name, stream_reader, stream_writer, &NextInformation::next));
}

TEST(DocumentManagerInterface, SlotsAreKnownByTheirSignatures)
{
    EXPECT_EQ(QMetaMethod::Public, slot_named("cleanupInvalidDocuments()").access());
    EXPECT_EQ(QMetaMethod::Private, slot_named("handle_message(housekeeping::CommandMessage&)").access());
    EXPECT_STREQ("tarqa::housekeeping::DocumentManager", DocumentManager::staticMetaObject.className());
}
