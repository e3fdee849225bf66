#include <tarqa/housekeeping/CommandDetails.h>

#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

#include "support/App.h"

#include <gtest/gtest.h>

using tarqa::housekeeping::CommandDetails;

TEST(CommandDetails, StartsEmpty)
{
    const CommandDetails details;
    EXPECT_EQ("", details.name());
    EXPECT_EQ("", details.description());
    EXPECT_TRUE(details.icon().isNull());
}

TEST(CommandDetails, KeepsWhatItIsGiven)
{
    const support::App app;
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    const CommandDetails details("Rotate", "3 faults", QIcon(pixmap));
    EXPECT_EQ("Rotate", details.name());
    EXPECT_EQ("3 faults", details.description());
    EXPECT_FALSE(details.icon().isNull());
}

TEST(CommandDetails, IsSetCopiedAndAssigned)
{
    const support::App app;
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    CommandDetails details;
    details.setName("Rotate");
    details.setDescription("3 faults");
    details.setIcon(QIcon(pixmap));

    const CommandDetails copy(details);
    CommandDetails assigned("Move", "", QIcon());
    assigned = details;
    details.setName("changed");
    for (const CommandDetails* other : {&copy, static_cast<const CommandDetails*>(&assigned)}) {
        EXPECT_EQ("Rotate", other->name());
        EXPECT_EQ("3 faults", other->description());
        EXPECT_EQ(details.icon().cacheKey(), other->icon().cacheKey());
    }
}
