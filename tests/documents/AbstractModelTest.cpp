#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace tarqa::housekeeping;
using support::FakeDocument;
using support::FakeModel;

namespace {

/// The code of the housekeeping exception that asking for the parent throws; 0 if it throws none.
unsigned int parent_failure(const AbstractModel& model)
{
    try {
        model.parent_document();
    } catch (HousekeepingException& exception) {
        EXPECT_EQ("Document does not exist", exception.message());
        return exception.code();
    }
    return 0;
}

} // namespace

TEST(AbstractModel, NewModelHasAFreshIdOfNoDocument)
{
    const FakeModel first;
    const FakeModel second;
    EXPECT_NE(DocumentId::null(), first.id());
    EXPECT_NE(first.id(), second.id());
    EXPECT_FALSE(first.parent_document_exists());
    EXPECT_EQ(1014u, parent_failure(first));
}

TEST(AbstractModel, UsesUpANumberOfTheDocuments)
{
    const DocumentId before = DocumentManager::instance().createId();
    const FakeModel model;
    const DocumentId after = DocumentManager::instance().createId();
    EXPECT_GT(model.id(), before);
    EXPECT_LT(model.id(), after);
}

TEST(AbstractModel, TakesOverTheIdOfItsDocument)
{
    FakeDocument& document = support::create_document();
    FakeModel model;
    model.set_parent_document(document);
    EXPECT_EQ(document.id(), model.id());
    EXPECT_TRUE(model.parent_document_exists());
    EXPECT_EQ(&document, &model.parent_document());
}

TEST(AbstractModel, DocumentThatIsNotRegisteredIsNoParent)
{
    FakeDocument document; // made without the document manager
    EXPECT_EQ(document.id(), document.fake_model().id());
    EXPECT_FALSE(document.fake_model().parent_document_exists());
    EXPECT_EQ(1014u, parent_failure(document.fake_model()));
}

TEST(AbstractModel, LosesItsParentWithTheDocument)
{
    FakeDocument& document = support::create_document();
    FakeModel model;
    model.set_parent_document(document);
    ASSERT_TRUE(
        DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null()));
    EXPECT_FALSE(model.parent_document_exists());
    EXPECT_EQ(1014u, parent_failure(model));
}

TEST(AbstractModel, NullIdIsLoggedAndThrows)
{
    FakeModel model;
    TestAccess::model_id(model, DocumentId::null());
    EXPECT_FALSE(model.parent_document_exists()); // silently
    support::LogCapture log;
    EXPECT_EQ(1014u, parent_failure(model));
    EXPECT_TRUE(log.took_assert(
        "m_id != DocumentId::null()", "AbstractModel::parent_document", "housekeeping/src/AbstractModel"));
}

TEST(AbstractModel, CloseDoesNothing)
{
    FakeDocument document;
    document.fake_model().items = 3;
    const DocumentId id = document.fake_model().id();
    document.fake_model().close();
    EXPECT_EQ(3u, document.fake_model().size());
    EXPECT_EQ(id, document.fake_model().id());
}

TEST(AbstractModel, IsMadeByItsFactory)
{
    static support::FakeModelFactory factory;
    const boost::shared_ptr<AbstractModel> model = AbstractModelFactory::create();
    ASSERT_TRUE(model);
    EXPECT_EQ("fake type", model->document_type());
}

TEST(AbstractModel, IsNotCopied)
{
    EXPECT_TRUE(std::is_default_constructible_v<FakeModel>); // all its own members could be copied
    EXPECT_FALSE(std::is_copy_constructible_v<FakeModel>);
    EXPECT_FALSE(std::is_copy_assignable_v<FakeModel>);
}
