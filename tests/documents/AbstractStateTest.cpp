#include "support/Fakes.h"

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
