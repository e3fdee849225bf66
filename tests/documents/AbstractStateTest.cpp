#include "support/Fakes.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/weak_ptr.hpp>
#include <gtest/gtest.h>

using namespace tarqa::housekeeping;
using support::FakeDocument;

TEST(AbstractState, KnowsItsOwnerDocumentAndController)
{
    FakeDocument document;
    AbstractState state(document, DocumentId::build(77), "alpha");
    const AbstractState& const_state = state;
    EXPECT_EQ(&document, &state.owner());
    EXPECT_EQ(&document, &const_state.owner());
    EXPECT_EQ(DocumentId::build(77), state.document_id()); // as given
    EXPECT_EQ("alpha", state.controller_name());
}

TEST(AbstractState, CopyReportsTheSame)
{
    FakeDocument document;
    const support::FakeState original(document, document.id(), "alpha");
    const support::FakeState copy(original);
    EXPECT_EQ(&document, &copy.owner());
    EXPECT_EQ(document.id(), copy.document_id());
    EXPECT_EQ("alpha", copy.controller_name());
}

TEST(AbstractState, LivesAsLongAsItsDocumentOrSomebodyElseHoldsIt)
{
    support::register_controller("alpha");
    support::register_controller("beta");
    FakeDocument& document = support::create_document();
    const boost::weak_ptr<AbstractState> alpha = document.state("alpha");
    const boost::weak_ptr<AbstractState> weak_beta = document.state("beta");
    boost::shared_ptr<AbstractState> beta = weak_beta.lock();
    EXPECT_FALSE(alpha.expired());
    EXPECT_EQ(beta, DocumentManager::instance().current_state("beta"));
    DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null());
    EXPECT_TRUE(alpha.expired());
    EXPECT_FALSE(weak_beta.expired());
    EXPECT_EQ("beta", beta->controller_name());
    beta.reset();
    EXPECT_TRUE(weak_beta.expired());
}
