#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/utilities/TemporaryDirectory.h>
#include <tarqa/utilities/UserName.h>

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QDateTime>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <type_traits>

using namespace tarqa::housekeeping;
using support::FakeDocument;
using support::journal;
using tarqa::utilities::TemporaryDirectory;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace {

const char* const s_source = "housekeeping/src/AbstractDocument";
const char* const s_no_model = "!utilities::null_pointer(m_model)";

void add_records(FakeDocument& document, int first, int last)
{
    for (int number = first; number <= last; ++number) {
        document.add_history("program", std::to_string(number), "user", "name", "date");
    }
}

std::vector<int> record_numbers(const FakeDocument& document)
{
    std::vector<int> numbers;
    for (auto record = document.history_begin(); record != document.history_end(); ++record) {
        numbers.push_back(std::stoi(record->version()));
    }
    return numbers;
}

std::vector<int> first_and_last_49_of(int count)
{
    std::vector<int> numbers = {1};
    for (int number = count - 48; number <= count; ++number) {
        numbers.push_back(number);
    }
    return numbers;
}

/// A deleter that tells.
template <class T>
std::function<void(T*)> goodbye(const std::string& name)
{
    return [name](T* p_object) {
        journal().add(name);
        delete p_object;
    };
}

/// A controller whose states tell when they go.
class TellingController : public support::FakeController
{
public:
    using FakeController::FakeController;

protected:
    boost::shared_ptr<AbstractState> create_state(AbstractDocument& document) override
    {
        return boost::shared_ptr<AbstractState>(
            new support::FakeState(document, document.id(), "alpha"), goodbye<AbstractState>("state"));
    }
};

class TellingControllerFactory : public support::FakeControllerFactory
{
public:
    using FakeControllerFactory::FakeControllerFactory;
    AbstractController* create_unmanaged_product() override { return new TellingController("alpha"); }
};

/// A document that could be copied if its base could.
class PlainDocument : public AbstractDocument
{
public:
    void buildModel() override { }
    void set_busy(bool) override { }
    bool is_busy() const override { return false; }
    bool request_close(bool, bool) override { return true; }
    void set_modified(bool) override { }
    void document_created() override { }
    void title_changed() override { }
};

} // namespace

TEST(AbstractDocument, NewDocumentHasNothingAndAllFlagsFalse)
{
    FakeDocument document;
    EXPECT_NE(DocumentId::null(), document.id());
    EXPECT_FALSE(document.is_closing());
    EXPECT_FALSE(document.is_transforming());
    EXPECT_FALSE(document.linked_to_petrel());
    EXPECT_FALSE(document.beingRendered());
    EXPECT_FALSE(document.inTime());
    EXPECT_FALSE(document.datasource());
    EXPECT_FALSE(document.dataExport());
    EXPECT_TRUE(document.work_directories().empty());
    EXPECT_TRUE(document.history_begin() == document.history_end());
    EXPECT_TRUE(document.document_history().empty());
    const FakeDocument& const_document = document;
    EXPECT_EQ(&document.document_history(), &const_document.document_history());
}

TEST(AbstractDocument, IsNotCopied)
{
    EXPECT_TRUE(std::is_default_constructible_v<PlainDocument>);
    EXPECT_FALSE(std::is_copy_constructible_v<PlainDocument>);
    EXPECT_FALSE(std::is_copy_assignable_v<PlainDocument>);
}

TEST(AbstractDocument, IdsAreFreshAndAscending)
{
    const FakeDocument first;
    const FakeDocument second;
    EXPECT_LT(first.id(), second.id());
}

TEST(AbstractDocument, ClosingIsForEver)
{
    FakeDocument document;
    document.set_closing();
    EXPECT_TRUE(document.is_closing());
    document.set_closing();
    EXPECT_TRUE(document.is_closing());
}

TEST(AbstractDocument, TransformingAndPetrelLinkAreSetAndCleared)
{
    FakeDocument document;
    document.set_transforming(true);
    EXPECT_TRUE(document.is_transforming());
    document.set_transforming(false);
    EXPECT_FALSE(document.is_transforming());
    document.linked_to_petrel(true);
    EXPECT_TRUE(document.linked_to_petrel());
    document.linked_to_petrel(false);
    EXPECT_FALSE(document.linked_to_petrel());
}

// The model

TEST(AbstractDocument, ContentOperationsForwardToTheModel)
{
    FakeDocument document;
    EXPECT_TRUE(document.empty());
    document.fake_model().items = 5;
    document.fake_model().database = "/data/b.db";
    EXPECT_FALSE(document.empty());
    EXPECT_EQ(5u, document.size());
    EXPECT_EQ(&document.fake_model().type, &document.document_type());
    document.setupDatabase("/data/b.db");
    document.mergeDatabase("/data/c.db");
    EXPECT_EQ("/data/b.db", document.getDatabasePath());
    EXPECT_THAT(journal().entries(),
        ElementsAre("model.setupDatabase(/data/b.db)", "model.mergeDatabase(/data/c.db)"));
    document.clear();
    EXPECT_TRUE(document.empty());
}

TEST(AbstractDocument, ContentOperationsWithoutAModelAreLogged)
{
    FakeDocument document;
    document.remove_model();
    support::LogCapture log;
    const auto logs = [&log](const char* operation) {
        const std::string function = std::string("AbstractDocument::") + operation + "(";
        return log.took_assert(s_no_model, function, s_source) && log.lines().empty();
    };
    EXPECT_TRUE(document.empty());
    EXPECT_TRUE(logs("empty"));
    EXPECT_EQ(0u, document.size());
    EXPECT_TRUE(logs("size"));
    EXPECT_EQ("", document.document_type());
    EXPECT_TRUE(logs("document_type"));
    document.clear();
    EXPECT_TRUE(logs("clear"));
    document.setupDatabase("a");
    EXPECT_TRUE(logs("setupDatabase"));
    document.mergeDatabase("a");
    EXPECT_TRUE(logs("mergeDatabase"));
    EXPECT_EQ("", document.getDatabasePath());
    EXPECT_TRUE(logs("getDatabasePath"));
}

TEST(AbstractDocument, ModelIsHandedOut)
{
    const FakeDocument document;
    EXPECT_EQ(document.id(), document.model().id());
}

TEST(AbstractDocument, AskingForAMissingModelThrows)
{
    FakeDocument document;
    document.remove_model();
    try {
        document.model();
        FAIL() << "nothing was thrown";
    } catch (HousekeepingException& exception) {
        EXPECT_EQ(7006u, exception.code());
        EXPECT_EQ("Attempt to get invalid model from document", exception.message());
        EXPECT_EQ(s_source, exception.file());
        EXPECT_EQ(81u, exception.line());
    }
}

// States

TEST(AbstractDocument, UnknownStateIsLoggedAndEmpty)
{
    const FakeDocument document;
    support::LogCapture log;
    EXPECT_FALSE(document.state("alpha"));
    EXPECT_TRUE(log.took_assert("iter != m_states.end()", "AbstractDocument::state", s_source));
}

TEST(AbstractDocument, HasOneStatePerControllerInTheOrderOfRegistration)
{
    support::register_controller("beta");
    support::register_controller("alpha");
    ControllerManager::instance().init();
    FakeDocument document;
    journal().clear();
    TestAccess::create_states(document);
    EXPECT_THAT(
        journal().entries(), ElementsAre("beta.create_state(Document 1)", "alpha.create_state(Document 1)"));
    EXPECT_EQ("alpha", document.state("alpha")->controller_name());
    EXPECT_EQ("beta", document.state("beta")->controller_name());
    EXPECT_EQ(&document, &document.state("beta")->owner());
    EXPECT_EQ(document.id(), document.state("beta")->document_id());
}

TEST(AbstractDocument, KeepsTheFirstStateOfAController)
{
    support::register_controller("alpha");
    ControllerManager::instance().init();
    FakeDocument document;
    TestAccess::create_states(document);
    const boost::shared_ptr<AbstractState> first = document.state("alpha");
    support::LogCapture log;
    TestAccess::create_states(document);
    for (std::size_t i = 0; i < AbstractControllerFactory::products().size(); ++i) {
        EXPECT_TRUE(log.took_assert("true == inserted", "AbstractDocument::create_states", s_source));
    }
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(first, document.state("alpha"));
}

TEST(AbstractDocument, MissingControllerIsLoggedAndHasNoState)
{
    support::register_controller("alpha");
    ControllerManager::instance().init();
    support::register_controller("late");
    FakeDocument document;
    support::LogCapture log;
    TestAccess::create_states(document);
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ac )", "AbstractDocument::create_states", s_source));
    EXPECT_TRUE(log.take("iter != m_controller_map.end()")); // the controller manager's
    EXPECT_TRUE(log.lines().empty());
    EXPECT_TRUE(document.state("alpha"));
    EXPECT_FALSE(document.state("late"));
    EXPECT_TRUE(log.take("iter != m_states.end()"));
}

TEST(AbstractDocument, EmptyStateOfAControllerIsKept)
{
    support::register_controller("stateless").has_states = false;
    ControllerManager::instance().init();
    FakeDocument document;
    TestAccess::create_states(document);
    EXPECT_FALSE(document.state("stateless")); // and nothing is logged
}

// Where data goes

TEST(AbstractDocument, DataExportIsStoredAndChangesNothingElse)
{
    FakeDocument document;
    const auto source = boost::make_shared<DataSource>(
        "/data/a.dat", boost::make_shared<support::FakeDataInformation>("fake"));
    document.dataExport(source);
    EXPECT_EQ(source, document.dataExport());
    EXPECT_FALSE(document.datasource());
    EXPECT_EQ("Document 1", document.title());
    EXPECT_EQ(0, journal().count("Document 1.title_changed"));
}

TEST(AbstractDocument, EmptyDataExportIsLoggedAndStored)
{
    FakeDocument document;
    document.dataExport(boost::make_shared<DataSource>());
    support::LogCapture log;
    document.dataExport(nullptr);
    EXPECT_TRUE(log.took_assert("utilities::valid_pointer(ds)", "AbstractDocument::dataExport", s_source));
    EXPECT_FALSE(document.dataExport());
}

TEST(AbstractDocument, IsInTimeWhenItsDataSourceIs)
{
    FakeDocument document;
    const auto source = boost::make_shared<DataSource>();
    document.datasource(source);
    EXPECT_FALSE(document.inTime());
    source->z_units(DataSource::Seconds);
    EXPECT_TRUE(document.inTime());
    source->z_units(DataSource::Milliseconds);
    EXPECT_TRUE(document.inTime());
    source->z_units(DataSource::Feet);
    EXPECT_FALSE(document.inTime());
}

// Work directories

TEST(AbstractDocument, WorkDirectoryIsMadeOnce)
{
    FakeDocument document;
    const boost::shared_ptr<TemporaryDirectory> first = document.work_dir();
    ASSERT_TRUE(first);
    EXPECT_TRUE(std::filesystem::is_directory(first->path()));
    EXPECT_EQ(0u, std::filesystem::path(first->path()).filename().string().find("vista"));
    EXPECT_EQ(first, document.work_dir());
    EXPECT_EQ(1u, document.work_directories().size());
}

TEST(AbstractDocument, WorkDirectoryIsTheFirstThatWasGiven)
{
    FakeDocument document;
    const auto first = boost::make_shared<TemporaryDirectory>("first");
    const auto second = boost::make_shared<TemporaryDirectory>("second");
    document.work_dir(first);
    document.work_dir(second);
    EXPECT_EQ(first, document.work_dir());
    EXPECT_THAT(document.work_directories(), ElementsAre(first, second));
}

TEST(AbstractDocument, WorkDirectoriesGoWithTheirLastReference)
{
    std::string own;
    boost::shared_ptr<TemporaryDirectory> shared = boost::make_shared<TemporaryDirectory>("shared");
    {
        FakeDocument document;
        own = document.work_dir()->path();
        document.work_dir(shared);
    }
    EXPECT_FALSE(std::filesystem::exists(own));
    const std::string path = shared->path();
    EXPECT_TRUE(std::filesystem::exists(path));
    shared.reset();
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(AbstractDocument, PartsGoInTheReverseOrderOfDeclaration)
{
    class Parts : public FakeDocument
    {
    public:
        Parts()
        {
            m_model.reset(new support::FakeModel, goodbye<AbstractModel>("model"));
            document_history().insertUndoCommand(boost::shared_ptr<AbstractCommand>(
                new support::FakeCommand(id(), "A"), goodbye<AbstractCommand>("command")));
            datasource(boost::shared_ptr<DataSource>(new DataSource, goodbye<DataSource>("source")));
            dataExport(boost::shared_ptr<DataSource>(new DataSource, goodbye<DataSource>("export")));
            work_dir(boost::shared_ptr<TemporaryDirectory>(
                new TemporaryDirectory("vista"), goodbye<TemporaryDirectory>("directory")));
            TestAccess::create_states(*this);
        }
    };
    static TellingControllerFactory factory("alpha");
    ControllerManager::instance().init();
    std::make_unique<Parts>().reset();
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.destroyed", "directory", "export", "source", "state", "command", "model"));
}

// The record of runs

TEST(AbstractDocument, RecordsTheCurrentRun)
{
    pkBase::pkProductInfo::instance().marketing_name("Tarq Terrain");
    pkBase::pkProductInfo::instance().build_number(4711);
    FakeDocument document;
    const std::string description = document.add_history();
    ASSERT_EQ(1, document.history_end() - document.history_begin());
    const DocumentHistory& record = *document.history_begin();
    EXPECT_EQ("Tarq Terrain", record.program());
    EXPECT_EQ("4711", record.version());
    EXPECT_EQ(tarqa::utilities::user_name(), record.user());
    EXPECT_EQ(tarqa::utilities::user_name(), record.name());
    EXPECT_EQ(record.description(), description);
}

TEST(AbstractDocument, RecordsTheDateWithoutPadding)
{
    FakeDocument document;
    document.add_history();
    EXPECT_THAT(document.history_begin()->date(),
        MatchesRegex("[1-9][0-9]{3}-[1-9][0-9]?-[1-9][0-9]? "
                     "(0|[1-9][0-9]?):(0|[1-9][0-9]?):(0|[1-9][0-9]?)"));
}

TEST(AbstractDocument, RecordsTheLocalTime)
{
    const int offset = 9 * 60 * 60; // seconds
    qputenv("TZ", "TST-9"); // nine hours ahead of Greenwich
    const auto local = [] { return QDateTime::currentDateTimeUtc().addSecs(offset).toSecsSinceEpoch(); };
    FakeDocument document;
    const qint64 before = local();
    document.add_history();
    const qint64 after = local();
    QDateTime date
        = QDateTime::fromString(QString::fromStdString(document.history_begin()->date()), "yyyy-M-d h:m:s");
    ASSERT_TRUE(date.isValid());
    date.setTimeSpec(Qt::UTC);
    EXPECT_LE(before, date.toSecsSinceEpoch());
    EXPECT_GE(after, date.toSecsSinceEpoch());
}

TEST(AbstractDocument, RecordsOfAFileAreTakenAsTheyAre)
{
    FakeDocument document;
    document.add_history("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12");
    document.add_history("Terrain", "13", "bert", "Bert C", "2022-3-7 9:5:12");
    ASSERT_EQ(2, document.history_end() - document.history_begin());
    EXPECT_EQ("Anna B", document.history_begin()->name());
    EXPECT_EQ("Terrain 12 on 2021-3-7 9:5:12 by anna", document.history_begin()->description());
    EXPECT_EQ("Terrain 13 on 2022-3-7 9:5:12 by bert", (document.history_begin() + 1)->description());
}

TEST(AbstractDocument, CurrentRunIsRecordedLast)
{
    FakeDocument document;
    document.add_history("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12");
    const std::string description = document.add_history();
    ASSERT_EQ(2, document.history_end() - document.history_begin());
    EXPECT_EQ("Anna B", document.history_begin()->name());
    EXPECT_EQ((document.history_begin() + 1)->description(), description);
    EXPECT_NE(document.history_begin()->description(), description);
}

TEST(AbstractDocument, FiftyRecordsAreKeptByABuild)
{
    FakeDocument document;
    document.buildModel();
    EXPECT_TRUE(record_numbers(document).empty());
    add_records(document, 1, 50);
    const std::vector<int> before = record_numbers(document);
    document.buildModel();
    EXPECT_EQ(before, record_numbers(document));
}

TEST(AbstractDocument, FiftyOneRecordsLoseTheSecondInABuild)
{
    FakeDocument document;
    add_records(document, 1, 51);
    EXPECT_EQ(51u, record_numbers(document).size()); // only a build trims
    document.buildModel();
    EXPECT_EQ(first_and_last_49_of(51), record_numbers(document));
    document.buildModel();
    EXPECT_EQ(first_and_last_49_of(51), record_numbers(document));
}

TEST(AbstractDocument, ManyRecordsBecomeTheFirstAndTheLast49InABuild)
{
    FakeDocument document;
    add_records(document, 1, 200);
    document.buildModel();
    EXPECT_EQ(first_and_last_49_of(200), record_numbers(document));
    EXPECT_EQ(50u, record_numbers(document).size());
}
