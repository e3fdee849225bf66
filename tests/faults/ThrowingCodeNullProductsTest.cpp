#include "faults/FaultRuns.h"

#include "support/App.h"
#include "support/EmptyRegistry.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/housekeeping/gui/AbstractPreferences.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QSettings>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

// A host all of whose factories give nothing. Everybody who asks one says so in the log and goes on; only
// create_document(), which owes its caller a document, throws.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using support::EmptyRegistry;

namespace {

const char* const s_name = "nothing";

template <class Family, class Product>
class NullFactory : public Family
{
public:
    NullFactory()
        : Family(s_name, true)
    { }
    boost::shared_ptr<Product> create_product() override { return {}; }
    Product* create_unmanaged_product() override { return nullptr; }
};

/// A family with one factory, which gives nothing.
template <class Family, class Product>
struct NullFamily
{
    EmptyRegistry<Family> registry;
    NullFactory<Family, Product> factory;
};

class NullProducts : public testing::Test
{
protected:
    ~NullProducts() override { drop_everything(); }

    const support::App app;
    support::LogCapture log;
    NullFamily<AbstractControllerFactory, AbstractController> controllers;
    NullFamily<AbstractDataInformationFactory, AbstractDataInformation> informations;
    NullFamily<AbstractDocumentFactory, AbstractDocument> documents;
    NullFamily<AbstractModelFactory, AbstractModel> models;
    NullFamily<gui::AbstractPreferencesFactory, gui::AbstractPreferences> preferences;
    NullFamily<gui::AbstractPresentationFactory, gui::AbstractPresentation> presentations;
    NullFamily<gui::HelpLauncherFactory, gui::HelpLauncher> launchers;
};

} // namespace

TEST_F(NullProducts, ControllersAreMissingForEverybody)
{
    ControllerManager& manager = ControllerManager::instance();
    manager.init();
    manager.post_init();
    EXPECT_EQ(0u, TestAccess::controllers(manager));
    EXPECT_EQ(1, log.count("!utilities::null_pointer( sp_ac )"));
    log.take_all();

    EXPECT_FALSE(manager.controller(s_name));
    EXPECT_EQ(2, log.count("ASSERT FAILED"));
    log.take_all();

    // The life of a document, with nobody who keeps a state in it.
    const EmptyRegistry<AbstractDocumentFactory> registry;
    FaultyDocumentFactory factory;
    DocumentManager& all = DocumentManager::instance();
    const DocumentId first = all.create_document().id();
    const DocumentId second = all.create_document().id();
    all.current_document(first);
    EXPECT_EQ(first, all.current_document_id());
    EXPECT_FALSE(all.current_state(s_name));
    EXPECT_TRUE(all.destroy_document(first, false, false, false, second));
    EXPECT_TRUE(all.destroy_document(second, false, false, false, DocumentId::null()));
    EXPECT_EQ(0u, all.num_documents());
    EXPECT_GT(log.count("!utilities::null_pointer( sp_ac )"), 0);
    log.take_all();
}

TEST_F(NullProducts, DocumentsAreRefused)
{
    EXPECT_EQ(Kind::Housekeeping, thrown_by([] { DocumentManager::instance().create_document(); }));
    EXPECT_EQ(1, log.count("!utilities::null_pointer( sp_ad )"));
    EXPECT_EQ(0u, DocumentManager::instance().num_documents());
    QMutex& registry = TestAccess::registry_mutex(DocumentManager::instance());
    ASSERT_TRUE(registry.tryLock()); // it was held for the whole creation
    registry.unlock();
    log.take_all();
}

TEST_F(NullProducts, ModelsAreTheCallersBusiness)
{
    EXPECT_FALSE(AbstractModelFactory::create());
    EXPECT_FALSE(AbstractModelFactory::create(s_name));
    EXPECT_EQ(nullptr, AbstractModelFactory::create_unmanaged());
    EXPECT_EQ(nullptr, AbstractModelFactory::create_unmanaged(s_name));
}

TEST_F(NullProducts, SourcesAreReadWithoutTheirInformation)
{
    DataSource source;
    source.info(QStringList{"file:///hill.asc", s_name, "depth", "feet", "settings"});
    EXPECT_EQ("file:///hill.asc", source.url());
    EXPECT_FALSE(source.data_information());
    EXPECT_EQ(DataSource::Feet, source.z_units());
    std::istringstream stream(std::string("file:///lake.asc\n") + s_name + "\nsettings\n");
    stream >> source;
    EXPECT_EQ("file:///lake.asc", source.url());
    EXPECT_FALSE(source.data_information());
    std::string rest;
    EXPECT_TRUE(std::getline(stream, rest));
    EXPECT_EQ("settings", rest);
}

TEST_F(NullProducts, RecentDocumentsKeepTheirPlaces)
{
    const std::string path = support::PrivateHome::scratch_directory() + "/hill.asc";
    std::ofstream(path) << "data";
    const std::string url = tarqa::utilities::filesystem_to_url(path);
    QSettings("Tarqa", "TarqAllVersions")
        .setValue("RecentFileList/recently_viewed_doc0",
            QStringList{QString::fromStdString(url), s_name, "elevation", "metres"});
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    queue.load();
    ASSERT_EQ(1u, queue.size());
    EXPECT_EQ(url, queue.at(0)->url());
    EXPECT_FALSE(queue.at(0)->data_information());
}

TEST_F(NullProducts, PreferencesHaveNoPages)
{
    gui::PreferencesDialog dialog(nullptr);
    dialog.pre_show_dialog();
    dialog.show();
    EXPECT_EQ(1, log.count("page"));
    dialog.close();
    log.take_all();
}

TEST_F(NullProducts, PresentationsAreMissingForEverybody)
{
    gui::PresentationManager::instance().init();
    EXPECT_EQ(3, log.count("!utilities::null_pointer( sp_presentation )"));
    EXPECT_FALSE(gui::PresentationManager::instance().presentation(s_name));
    EXPECT_FALSE(gui::UndoRedoPresentation::instance());
    log.take_all();
}

TEST_F(NullProducts, HelpHasANoticeInstead)
{
    gui::HelpManager& help = gui::HelpManager::instance();
    help.onShowPage("PAGE");
    EXPECT_TRUE(log.take("This program has no help that could show the page \"PAGE\"."));
    QWidget* const p_notice = QApplication::topLevelWidgets().value(0);
    ASSERT_TRUE(p_notice);
    delete p_notice;
    TestAccess::destroy<gui::HelpManager>();
}
