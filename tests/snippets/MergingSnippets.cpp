#include <tarqa/testkit/FakeController.h>
#include <tarqa/testkit/FakeDocument.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <tarqa/housekeeping/AbstractCommand.h>

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>
#include <gtest/gtest.h>

#include <string>

// docs/commands.md

namespace merging_guide {

using namespace tarqa::housekeeping;
using namespace tarqa::housekeeping::testkit;

class SetDepth : public AbstractCommand
{
public:
    SetDepth(FakeDocument& document, const std::string& depth)
        : AbstractCommand(document.id(), "Set depth")
        , m_document(document)
        , m_new(depth)
        , m_old(document.values()["depth"])
    {
        m_stack_identical = true;
        setDescription(depth);
    }

    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;
    void rollback() override { undo_command(); }

protected:
    void remember() override { m_old = m_document.values()["depth"]; }
    void do_command() override
    {
        progress(0);
        m_document.values()["depth"] = m_new;
        progress(100);
    }
    void undo_command() override { m_document.values()["depth"] = m_old; }
    void finished(bool succeeded) override;

private:
    FakeDocument& m_document; // owns it
    std::string m_new;
    std::string m_old;
    SetDepth* m_p_older = nullptr; // on top of the history while this one runs
};

//! [merging]
bool SetDepth::stackWith(boost::shared_ptr<AbstractCommand> newer)
{
    const auto p_newer = boost::dynamic_pointer_cast<SetDepth>(newer);
    if (!p_newer) {
        return false;
    }
    p_newer->m_p_older = this; // it has yet to run, and may be cancelled
    return true;
}

void SetDepth::finished(bool succeeded)
{
    if (succeeded && m_p_older) {
        m_p_older->m_new = m_new; // what it goes back to is what was there before both
        m_p_older->setDescription(m_new);
    }
    m_p_older = nullptr;
}
//! [merging]

TEST(CommandsGuide, MergingKeepsItsPromises)
{
    FakeController::make_controllers();
    RoundTripProof proof(
        []() -> AbstractDocument& {
            FakeDocument& document = FakeDocument::create();
            document.values()["depth"] = "12.3";
            return document;
        },
        [](AbstractDocument& document) { return FakeDocument::of(document).text(); });
    for (const std::string depth : {"45.6", "78.9"}) {
        proof.command("Set depth to " + depth, [depth](AbstractDocument& document) {
            return boost::make_shared<SetDepth>(FakeDocument::of(document), depth);
        });
    }
    EXPECT_EQ(text_of(proof.run()), "");
}

} // namespace merging_guide
