#include "interface/Declarations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

// Whether the tables of this folder are whole: what the headers offer is read from the headers themselves.

namespace {

using interface::Declarations;
using interface::declarations_in;

const std::filesystem::path s_root = HK_SOURCE_DIRECTORY;

std::string contents_of(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

std::string contents_of_tables()
{
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(s_root / "tests" / "interface")) {
        const std::string name = entry.path().filename().string();
        if (name.size() > 13 && name.substr(name.size() - 13) == "Interface.cpp") {
            text += contents_of(entry.path());
        }
    }
    return text;
}

/// What the installed headers of all libraries declare.
std::vector<Declarations> all_declarations()
{
    std::vector<Declarations> found;
    for (const char* folder : {"tq_utl/include", "pkBase/include", "pkBaseQt/include", "housekeeping/include",
             "housekeeping/gui/include", "testkit/include"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(s_root / folder)) {
            if (entry.path().extension() == ".h") {
                found.push_back(declarations_in(contents_of(entry.path())));
            }
        }
    }
    return found;
}

std::set<std::string> names_of(const Declarations& declarations)
{
    std::set<std::string> names;
    for (const interface::Operation& operation : declarations.operations) {
        names.insert(operation.class_name + "::" + operation.name);
    }
    return names;
}

/// Whether a table names this, and not only something that begins with it.
bool is_named(const std::string& tables, const std::string& name)
{
    const auto is_part_of_a_name
        = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    for (std::size_t at = tables.find(name); at != std::string::npos; at = tables.find(name, at + 1)) {
        if (!is_part_of_a_name(tables[at + name.size()])) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(PublicOperations, AreReadFromAHeader)
{
    const Declarations found = declarations_in(R"(
        #define MACRO(x) x;
        namespace a::b {
        class Forward;
        /// Comment with class Other { public: void wrong(); };
        class TQ_HK_EXPORT First : public QObject
        {
            Q_DISABLE_COPY(First)
            void hidden_by_default();
        public:
            explicit First(int argument = f());
            ~First() override;
            static const std::vector<int>& list(const char* text = "x;{");
            virtual int body(int n) const { if (n) { return call(n); } return 0; }
            void inherited() override;
            First& operator=(const First&) = delete;
            struct Inner
            {
                int number = 0;
                int with_initialiser{compute()};
                void inside();
            };
            int after() const;
        public slots:
            void slot();
        signals:
            void signal();
        protected:
            template <class T> void made_of(T argument) { use(argument); }
            int m_member = 0;
        private:
            void hidden();
        };
        template <class T>
        class Second
        {
        public:
            void get();
        };
        TQ_HK_EXPORT void free_function(int);
        } // namespace a::b
    )");
    EXPECT_THAT(found.classes, testing::ElementsAre("First"));
    EXPECT_THAT(names_of(found),
        testing::UnorderedElementsAre("First::list", "First::body", "First::Inner::inside", "First::after",
            "First::slot", "First::made_of", "Second::get"));
}

TEST(PublicOperations, AreInTheTables)
{
    const std::string tables = contents_of_tables();
    int count = 0;
    for (const Declarations& declarations : all_declarations()) {
        for (const interface::Operation& operation : declarations.operations) {
            ++count;
            const std::string class_name = operation.in_template ? std::string() : operation.class_name;
            EXPECT_TRUE(is_named(tables, class_name + "::" + operation.name))
                << "no table has " << operation.class_name << "::" << operation.name;
        }
    }
    EXPECT_GT(count, 400) << "the headers were not read";
}

TEST(ExportedClasses, AreThoseOfTheTable)
{
    std::set<std::string> classes;
    for (const Declarations& declarations : all_declarations()) {
        classes.insert(declarations.classes.begin(), declarations.classes.end());
    }
    EXPECT_THAT(classes,
        testing::ElementsAre("AbstractCommand", "AbstractCommand::Execute", "AbstractCommand::UnExecute",
            "AbstractController", "AbstractControllerFactory", "AbstractDataInformation",
            "AbstractDataInformationFactory", "AbstractDocument", "AbstractDocumentFactory",
            "AbstractDocumentHistory", "AbstractMainWindow", "AbstractModel", "AbstractModelFactory",
            "AbstractPreferences", "AbstractPreferencesFactory", "AbstractPresentation",
            "AbstractPresentationFactory", "AbstractProgress", "AbstractQuickHelpEntry",
            "AbstractQuickHelpInputEntry", "AbstractState", "ApplicationManager", "ApplicationMessage",
            "Breach", "CancelCommandException", "ChildDockWidget", "CommandDetails", "CommandId",
            "CommandManager", "CommandMessage", "CompositeCommand", "ControllerLocker", "ControllerManager",
            "DataSource", "DialogDriver", "DocumentHistory", "DocumentHistoryMsg", "DocumentId",
            "DocumentManager", "DocumentMessage", "Environment", "ErrorHandler", "ErrorProtocol",
            "ErrorProtocolOutput", "Exception", "FailedCommandException", "FakeCommand", "FakeController",
            "FakeController::State", "FakeDocument", "FakeModel", "FilesInsertMessage", "GDALErrorHandler",
            "Hardware", "HelpLauncher", "HelpLauncherFactory", "HelpManager", "HousekeepingExceptionTag",
            "HousekeepingTag", "IdCreator", "InvalidPath", "LastWords", "LogCapture", "MainWindowMessage",
            "Message", "MessageHandler", "PreferencesDialog", "PresentationManager", "PrivateHome",
            "ProgressBarsController", "ProgressBarsControllerFactory", "QFinalPolish", "QHelpWebView",
            "QHelpWebViewPage", "QLogFileViewer", "QPKAboutBox", "QPKHelpButton", "QPKProxyStyle",
            "QTarqaApplication", "QmlButtonController", "QuickHelpDescriptionEntry",
            "QuickHelpInputModelFilter", "QuickHelpKeySequenceEntry", "QuickHelpManager",
            "QuickHelpMouseButtonEntry", "QuickHelpMouseWheelEntry", "QuickHelpTitleEntry",
            "RecentDocumentsQueue", "RoundTripProof", "Runnable", "StartedApplication", "SystemPaths",
            "TemporaryDirectory", "TemporaryDirectoryTag", "ThreadLocal", "TimerObject", "Tripwire",
            "UndoRedoController", "UndoRedoController::State", "UndoRedoControllerFactory",
            "UndoRedoPresentation", "UndoRedoPresentationFactory", "Updateable", "pkAbstractFactory",
            "pkDestructor", "pkProductInfo"));
}
