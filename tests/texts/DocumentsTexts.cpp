#include "texts/Failures.h"
#include "texts/Texts.h"

#include "support/Fakes.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QSettings>

#include <boost/make_shared.hpp>

#include <cstdlib>
#include <filesystem>
#include <sstream>

// What documents, their manager, data sources and the recent documents show, log, throw and store.

namespace {

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDataInformation;
using support::FakeDocument;
using texts::assertion_in;
using texts::Row;
using texts::thrown_by;

typedef std::vector<Row> Rows;

DocumentManager& manager()
{
    return DocumentManager::instance();
}

boost::shared_ptr<DataSource> source(const std::string& file)
{
    const auto information = boost::make_shared<FakeDataInformation>("fake");
    information->settings = "comma";
    return boost::make_shared<DataSource>(file, information);
}

// Models and documents

std::string model_without_id()
{
    support::FakeModel model;
    TestAccess::model_id(model, DocumentId::null());
    return assertion_in([&model] { model.parent_document(); }, "AbstractModel::parent_document");
}

/// What a document without a model says to an operation.
template <class Operation>
std::string without_model(Operation operation)
{
    FakeDocument document;
    document.remove_model();
    return assertion_in([&] { operation(document); });
}

std::string title_of_the_second()
{
    create_document().datasource(source("/data/a.dat"));
    FakeDocument& second = create_document();
    second.datasource(source("/data/a.dat"));
    return second.title();
}

std::string short_title_when_linked()
{
    FakeDocument document;
    document.linked_to_petrel(true);
    return document.short_title();
}

/// The beginning of the name of a document's temporary directory.
std::string kind_of_the_work_directory()
{
    FakeDocument document;
    const std::string name = std::filesystem::path(document.work_dir()->path()).filename().string();
    return name.substr(0, name.find_first_not_of("abcdefghijklmnopqrstuvwxyz"));
}

std::string unknown_state()
{
    const FakeDocument document;
    return assertion_in([&document] { document.state("alpha"); });
}

std::string second_state()
{
    support::register_controller("alpha");
    ControllerManager::instance().init();
    FakeDocument document;
    TestAccess::create_states(document);
    return assertion_in([&document] { TestAccess::create_states(document); });
}

std::string state_of_a_missing_controller()
{
    support::register_controller("alpha");
    FakeDocument document;
    return assertion_in(
        [&document] { TestAccess::create_states(document); }, "AbstractDocument::create_states");
}

Rows rows_of_documents()
{
    const std::string no_model = "housekeeping/src/AbstractDocument: !utilities::null_pointer(m_model)";
    const std::string no_source = "housekeeping/src/AbstractDocument: utilities::valid_pointer(ds)";
    return {
        {"ModelWithoutId", "housekeeping/src/AbstractModel: m_id != DocumentId::null()", model_without_id},
        {"FirstTitle", "Document 1", [] { return FakeDocument().title(); }},
        {"TitleOfTheSecondOfAFile", "/data/a.dat 2", title_of_the_second},
        {"ShortTitleWhenLinked", "Document 1 (Linked to Petrel)", short_title_when_linked},
        {"WorkDirectory", "vista", kind_of_the_work_directory},
        {"Description", "Terrain 12 on 2021-3-7 9:5:12 by anna",
            [] {
                return DocumentHistory("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12").description();
            }},
        {"MissingModel", "7006 Attempt to get invalid model from document",
            [] {
                FakeDocument document;
                document.remove_model();
                return thrown_by([&document] { document.model(); });
            }},
        {"EmptyWithoutModel", no_model, [] { return without_model([](auto& it) { it.empty(); }); }},
        {"SizeWithoutModel", no_model, [] { return without_model([](auto& it) { it.size(); }); }},
        {"TypeWithoutModel", no_model, [] { return without_model([](auto& it) { it.document_type(); }); }},
        {"ClearWithoutModel", no_model, [] { return without_model([](auto& it) { it.clear(); }); }},
        {"SetupWithoutModel", no_model,
            [] { return without_model([](auto& it) { it.setupDatabase("a"); }); }},
        {"MergeWithoutModel", no_model,
            [] { return without_model([](auto& it) { it.mergeDatabase("a"); }); }},
        {"PathWithoutModel", no_model, [] { return without_model([](auto& it) { it.getDatabasePath(); }); }},
        {"NullDataSource", no_source, [] { return without_model([](auto& it) { it.datasource(nullptr); }); }},
        {"NullDataExport", no_source, [] { return without_model([](auto& it) { it.dataExport(nullptr); }); }},
        {"UnknownState", "housekeeping/src/AbstractDocument: iter != m_states.end()", unknown_state},
        {"SecondState", "housekeeping/src/AbstractDocument: true == inserted", second_state},
        {"StateOfAMissingController", "housekeeping/src/AbstractDocument: !utilities::null_pointer( sp_ac )",
            state_of_a_missing_controller},
    };
}

// The document manager

std::string creation_without_product()
{
    support::register_documents().gives_nothing = true;
    return assertion_in([] { manager().create_document(); });
}

std::string creation_of_a_registered_document()
{
    support::FakeDocumentFactory& factory = support::register_documents();
    factory.keeps_products = true;
    manager().create_document();
    factory.repeats_first = true;
    return assertion_in([] { manager().create_document(); }, "DocumentManager::create_document");
}

DocumentId register_null_document()
{
    create_document();
    const DocumentId empty = manager().createId();
    TestAccess::register_null_document(manager(), empty);
    return empty;
}

/// What an operation says when a controller is registered that was not made.
template <class Operation>
std::string without_controller(const std::string& name, Operation operation)
{
    const DocumentId id = create_document().id();
    support::register_controller("late");
    return assertion_in([&] { operation(id); }, "DocumentManager::" + name + "(");
}

std::string destruction_of_an_unknown_document()
{
    return assertion_in(
        [] { manager().destroy_document(DocumentId::build(77), true, false, false, DocumentId::null()); });
}

/// The variable of the environment that links the first document, out of those that might.
std::string linking_variable()
{
    for (const char* name : {"PETREL", "petrel_port", "PETRELPORT", "PETREL_LINK", "TARQ_PETREL_PORT"}) {
        qputenv(name, "4711");
    }
    if (create_document().linked_to_petrel()) {
        return "another one";
    }
    TestAccess::destroy<DocumentManager>();
    qputenv("PETREL_PORT", "4711");
    return create_document().linked_to_petrel() ? "PETREL_PORT" : "none of them";
}

std::string public_slot()
{
    const QMetaObject& meta_object = DocumentManager::staticMetaObject;
    for (int i = meta_object.methodOffset(); i < meta_object.methodCount(); ++i) {
        if (meta_object.method(i).access() == QMetaMethod::Public) {
            return meta_object.method(i).methodSignature().toStdString();
        }
    }
    return "none";
}

Rows rows_of_the_manager()
{
    const std::string source = "housekeeping/src/DocumentManager: ";
    const std::string no_document = source + "!utilities::null_pointer( sp_ad )";
    const std::string no_controller = source + "!utilities::null_pointer( sp_ac )";
    return {
        {"CreationWithoutProduct", no_document, creation_without_product},
        {"CreationOfARegisteredDocument", source + "inserted", creation_of_a_registered_document},
        {"EmptyRegistryEntry", no_document,
            [] {
                const DocumentId empty = register_null_document();
                return assertion_in([empty] { manager().document_from_id(empty); });
            }},
        {"EmptyRegistryEntryBecomesCurrent", source + "m_current_document",
            [] {
                const DocumentId empty = register_null_document();
                return assertion_in([empty] { manager().current_document(empty); });
            }},
        {"EmptyRegistryEntryIsNext", no_document,
            [] {
                register_null_document();
                const DocumentId id = manager().current_document_id();
                return assertion_in(
                    [id] { manager().destroy_document(id, true, false, false, DocumentId::null()); });
            }},
        {"MissingCurrentDocument", source + "m_current_document",
            [] { return assertion_in([] { manager().current_document(); }); }},
        {"UnknownDocument", "1014 Document does not exist",
            [] { return thrown_by([] { manager().document_from_id(DocumentId::build(77)); }); }},
        {"BusyMarkOfAnUnknownDocument", "1014 Document does not exist",
            [] { return thrown_by([] { manager().document_busy(DocumentId::build(77), true); }); }},
        {"DestructionOfAnUnknownDocument", source + "iter != m_document_registry.end()",
            destruction_of_an_unknown_document},
        {"MissingControllerOfANewDocument", no_controller,
            [] {
                return without_controller(
                    "create_document", [](const DocumentId&) { manager().create_document(); });
            }},
        {"MissingControllerOfTheCurrentDocument", no_controller,
            [] {
                return without_controller(
                    "current_document", [](const DocumentId& id) { manager().current_document(id); });
            }},
        {"MissingControllerOfTheLastDocument", no_controller,
            [] {
                return without_controller("destroy_document", [](const DocumentId& id) {
                    manager().destroy_document(id, true, false, false, DocumentId::null());
                });
            }},
        {"LinkingVariable", "PETREL_PORT", linking_variable},
        {"PublicSlot", "cleanupInvalidDocuments()", public_slot},
        {"ManagersClass", "tarqa::housekeeping::DocumentManager",
            [] { return DocumentManager::staticMetaObject.className(); }},
    };
}

// Data sources

std::string units_text(int number)
{
    DataSource source;
    source.z_units(static_cast<DataSource::Units>(number));
    return source.z_units_string().toStdString();
}

/// The canonical text of what is read as units.
std::string units_read_from(const std::string& text)
{
    DataSource source;
    source.z_units(QString::fromStdString(text));
    return source.z_units_string().toStdString();
}

std::string sign_text(int number)
{
    DataSource source;
    source.z_sign(static_cast<DataSource::Sign>(number));
    return source.z_sign_string().toStdString();
}

std::string text_form()
{
    std::ostringstream stream;
    stream << *source("file:///data/a.dat");
    return stream.str();
}

std::string list_form()
{
    return source("file:///data/a.dat")->info().join('|').toStdString();
}

Rows rows_of_data_sources()
{
    Rows rows = {
        {"SignDepth", "depth", [] { return sign_text(128); }},
        {"SignElevation", "elevation", [] { return sign_text(64); }},
        {"UnknownUnits", "housekeeping/src/DataSource: units_found",
            [] { return assertion_in([] { DataSource::unitsFromString("yards"); }); }},
        {"DataSourceAsText", "file:///data/a.dat\nfake\ncomma\n", text_form},
        {"DataSourceAsList", "file:///data/a.dat|fake|elevation|metres|comma", list_form},
    };
    const std::vector<std::string> canonical = {"inches", "metres", "feet", "miles", "metres", "kilometres",
        "seconds", "milliseconds", "metres", "decimetres"};
    for (int number = 0; number < static_cast<int>(canonical.size()); ++number) {
        rows.push_back({"Units" + std::to_string(number), canonical[static_cast<std::size_t>(number)],
            [number] { return units_text(number); }});
    }
    const std::vector<std::pair<std::string, std::vector<std::string>>> spellings
        = {{"metres", {"METRES", "METRE", "M"}}, {"decimetres", {"DECIMETRES", "DECIMETRE", "DM"}},
            {"kilometres", {"KILOMETRES", "KILOMETRE", "KILO", "KM", "KMS"}},
            {"inches", {"INCHES", "INCH", "IN"}}, {"feet", {"FEET", "FOOT", "FT"}},
            {"miles", {"MILES", "MILE", "ML"}}, {"seconds", {"SECONDS", "SECOND", "SEC"}},
            {"milliseconds", {"MILLISECONDS", "MILLISECOND", "MSEC"}}};
    for (const auto& [expected, texts] : spellings) {
        for (const std::string& text : texts) {
            rows.push_back(
                {"UnitsReadFrom" + text, expected, [text = text] { return units_read_from(text); }});
        }
    }
    return rows;
}

// Recent documents

/// Saves a list of two documents. @return the settings, opened where they were stored
std::unique_ptr<QSettings> saved_settings()
{
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    queue.load();
    queue.push(source("file:///data/a.dat"));
    queue.push(source("file:///data/b.dat"));
    queue.save();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(std::getenv("XDG_CONFIG_HOME"))) {
        if (entry.is_regular_file()) {
            return std::make_unique<QSettings>(
                QString::fromStdString(entry.path().string()), QSettings::NativeFormat);
        }
    }
    return std::make_unique<QSettings>();
}

std::string file_of_the_queue()
{
    const std::string file = saved_settings()->fileName().toStdString();
    const std::filesystem::path path = file;
    return path.parent_path().filename().string() + '/' + path.filename().string();
}

std::string keys_of_the_queue()
{
    return saved_settings()->allKeys().join('|').toStdString();
}

std::string stored_value()
{
    const std::unique_ptr<QSettings> settings = saved_settings();
    return settings->value(settings->allKeys().first()).toStringList().join('|').toStdString();
}

Rows rows_of_the_queue()
{
    return {
        {"IndexBehindTheQueue", "invalid deque<T> subscript",
            [] { return thrown_by([] { RecentDocumentsQueue::instance().at(0); }); }},
        {"FileOfTheQueue", "Tarqa/TarqAllVersions.conf", file_of_the_queue},
        {"KeysOfTheQueue", "RecentFileList/recently_viewed_doc0|RecentFileList/recently_viewed_doc1",
            keys_of_the_queue},
        {"StoredValue", "file:///data/a.dat|fake|elevation|metres|comma", stored_value},
    };
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Documents, Texts, testing::ValuesIn(rows_of_documents()), texts::name_of);
INSTANTIATE_TEST_SUITE_P(DocumentManager, Texts, testing::ValuesIn(rows_of_the_manager()), texts::name_of);
INSTANTIATE_TEST_SUITE_P(DataSources, Texts, testing::ValuesIn(rows_of_data_sources()), texts::name_of);
INSTANTIATE_TEST_SUITE_P(RecentDocuments, Texts, testing::ValuesIn(rows_of_the_queue()), texts::name_of);
