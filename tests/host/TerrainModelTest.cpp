#include "documents/TerrainModel.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"

#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <gtest/gtest.h>

using namespace host_test;
using terrain::TerrainDocument;
using terrain::TerrainModel;

TEST(TerrainModel, IsRegisteredAsTerrain)
{
    EXPECT_TRUE(
        boost::dynamic_pointer_cast<TerrainModel>(housekeeping::AbstractModelFactory::create("Terrain")));
}

TEST(TerrainModel, AnswersForItsDocument)
{
    TerrainDocument& document = make_document(make_raster(3, 2, {1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(document.empty());
    EXPECT_EQ(document.size(), 6u);
    EXPECT_EQ(document.document_type(), "Terrain");
    EXPECT_EQ(&TerrainModel::of(document.id()), &document.terrain());
    EXPECT_EQ(&document.terrain().parent_document(), &document);
    document.setupDatabase("somewhere");
    document.mergeDatabase("somewhere");
    EXPECT_EQ(document.getDatabasePath(), QString());
    document.clear();
    EXPECT_TRUE(document.empty());
    EXPECT_EQ(document.size(), 0u);
}

TEST(TerrainModel, OfAnUnknownDocumentThrows)
{
    EXPECT_THROW(TerrainModel::of(housekeeping::DocumentId::build(99)), housekeeping::HousekeepingException);
}

TEST(TerrainDocument, ClosesUnlessACommandRunsOnIt)
{
    const housekeeping::DocumentId id = make_document(make_raster(1, 1, {1})).id();
    auto& manager = housekeeping::DocumentManager::instance();
    manager.document_busy(id, true);
    EXPECT_FALSE(manager.destroy_document(id, false, false, false, housekeeping::DocumentId::null()));
    manager.document_busy(id, false);
    EXPECT_TRUE(manager.destroy_document(id, false, false, false, housekeeping::DocumentId::null()));
    EXPECT_FALSE(manager.document_exists(id));
}
