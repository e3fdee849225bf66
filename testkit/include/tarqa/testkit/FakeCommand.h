#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <boost/shared_ptr.hpp>

#include <string>
#include <utility>

namespace tarqa::housekeeping::testkit {

class FakeDocument;

/**
 * A command that sets one value of a FakeDocument, reports its progress, and can be cancelled and merged: for
 * tests of histories, progress bars and views that need some command, and an example of one that keeps what
 * every command promises. Made with boost::make_shared.
 */
class TQ_HK_TESTKIT_EXPORT FakeCommand : public AbstractCommand
{
public:
    /// @param document owns the command, once it was inserted
    /// @param name of the value; the command is called "Set NAME"
    /// @param value what the value is to be
    /// @param merges whether a newer one that sets the same value is merged into it
    FakeCommand(
        FakeDocument& document, const std::string& name, const std::string& value, bool merges = false);
    ~FakeCommand() override;

    void rollback() override;
    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;
    void finished(bool succeeded) override;

private:
    /// A value, or that there is none of that name.
    typedef std::pair<bool, std::string> Value;

    Value current() const;
    void put(const Value& value);

    FakeDocument& m_document; // owns it
    std::string m_name;
    Value m_new;
    Value m_old;
    FakeCommand* m_p_older = nullptr; // into which this one goes when it has run; in the history until then
};

} // namespace tarqa::housekeeping::testkit
