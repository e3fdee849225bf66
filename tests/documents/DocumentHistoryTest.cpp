#include <tarqa/housekeeping/DocumentHistory.h>

#include <gtest/gtest.h>

using tarqa::housekeeping::DocumentHistory;

TEST(DocumentHistory, KeepsTheFiveTextsInOrder)
{
    const DocumentHistory record("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12");
    EXPECT_EQ("Terrain", record.program());
    EXPECT_EQ("12", record.version());
    EXPECT_EQ("anna", record.user());
    EXPECT_EQ("Anna B", record.name());
    EXPECT_EQ("2021-3-7 9:5:12", record.date());
}

TEST(DocumentHistory, DescriptionNamesProgramVersionDateAndUser)
{
    const DocumentHistory record("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12");
    EXPECT_EQ("Terrain 12 on 2021-3-7 9:5:12 by anna", record.description());
}

TEST(DocumentHistory, DescriptionOfEmptyTextsKeepsTheFixedParts)
{
    EXPECT_EQ("  on  by ", DocumentHistory("", "", "", "", "").description());
}

TEST(DocumentHistory, IsCopiedAndAssigned)
{
    const DocumentHistory record("Terrain", "12", "anna", "Anna B", "2021-3-7 9:5:12");
    const DocumentHistory copy(record);
    EXPECT_EQ(record.description(), copy.description());
    EXPECT_EQ("Anna B", copy.name());

    DocumentHistory assigned("", "", "", "", "");
    assigned = record;
    EXPECT_EQ(record.description(), assigned.description());
    EXPECT_EQ("Anna B", assigned.name());
}
