#include "support/App.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// docs/documents.md

namespace housekeeping = tarqa::housekeeping;

namespace {

void remember(housekeeping::AbstractDocument& document)
{
    //! [recent]
    housekeeping::RecentDocumentsQueue& recent = housekeeping::RecentDocumentsQueue::instance();
    recent.load(); // at start-up, and before a push, to keep what another running program has saved
    recent.push(document.datasource()); // after each document that was opened or written
    recent.save();
    //! [recent]
}

} // namespace

TEST(DocumentsGuide, KeepsADocumentInTheRecentOnes)
{
    const support::App app;
    housekeeping::AbstractDocument& document = support::create_document();
    document.datasource(boost::make_shared<housekeeping::DataSource>("file:///valley.tif", nullptr));
    remember(document);
    const auto& recent = housekeeping::RecentDocumentsQueue::const_instance();
    ASSERT_EQ(recent.size(), 1U);
    EXPECT_EQ(recent.at(0), document.datasource());
}
