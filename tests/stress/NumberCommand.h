#pragma once

#include "LoadPlan.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <pkBase/AbstractProgress.h>

#include <string>
#include <vector>

namespace load {

class NumbersDocument;

namespace housekeeping = tarqa::housekeeping;

/// Adds a number to a document, in the way of its kind; undo takes it back.
class NumberCommand : public housekeeping::AbstractCommand
{
public:
    NumberCommand(NumbersDocument& document, Kind kind, const std::string& name, unsigned value);

    void rollback() override;
    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;

    /// How many runs found another one going on; there must be none.
    static unsigned long long overlaps();

    static constexpr std::size_t s_merged = 5; ///< the most that one command holds

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;

private:
    /// Progress goes nowhere; without a sink there would be no cancelling.
    class NoProgress : public pkBase::AbstractProgress
    {
        void open_run(unsigned int) override { }
        void set_percentage(unsigned int) override { }
        void set_text(const QString&) override { }
        void close_run() override { }
    };

    void take_back();

    NumbersDocument& m_document;
    Kind m_kind;
    std::vector<unsigned> m_values;
    std::size_t m_added = 0; // to the document, and not taken back
    NoProgress m_progress;
};

/// The command of a step of thread @p thread.
boost::shared_ptr<housekeeping::AbstractCommand> make_command(
    NumbersDocument& document, unsigned thread, const Step& step);

} // namespace load
