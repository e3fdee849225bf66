#include "NumberCommand.h"

#include "LoadTexts.h"
#include "NumbersDocument.h"

#include <tarqa/housekeeping/CompositeCommand.h>

#include <boost/make_shared.hpp>

#include <atomic>
#include <thread>

namespace load {

namespace {

std::atomic<unsigned long long> s_overlaps{0};

/// A run; counts if there is another one.
class OnlyRun
{
public:
    OnlyRun()
    {
        if (s_running.fetch_add(1) != 0) {
            ++s_overlaps;
        }
    }
    ~OnlyRun() { --s_running; }
    OnlyRun(const OnlyRun&) = delete;
    OnlyRun& operator=(const OnlyRun&) = delete;

private:
    static std::atomic<int> s_running;
};

std::atomic<int> OnlyRun::s_running{0};

} // namespace

NumberCommand::NumberCommand(NumbersDocument& document, Kind kind, const std::string& name, unsigned value)
    : AbstractCommand(document.id(), name)
    , m_document(document)
    , m_kind(kind)
    , m_values(1, value)
{
    setDescription(command_description(1));
    m_valid_undo = kind != Kind::Passing;
    m_set_document_busy = kind != Kind::Unmarked;
    m_stack_identical = kind == Kind::Merging;
    m_clear_redo_when_undoing = kind == Kind::ClearsRedo;
    if (kind == Kind::Cancelled) {
        setProgress(&m_progress);
        request_cancel();
    }
}

unsigned long long NumberCommand::overlaps()
{
    return s_overlaps;
}

void NumberCommand::remember()
{
    m_added = 0;
}

void NumberCommand::do_command()
{
    const OnlyRun run;
    if (m_kind == Kind::Passing) {
        m_document.sum += m_values.front();
        return;
    }
    m_document.numbers.insert(m_document.numbers.end(), m_values.begin(), m_values.end());
    m_added = m_values.size();
    std::this_thread::yield(); // whoever need not wait comes in between
    progress(50);
    if (m_kind == Kind::Failing) {
        throw failure_of(name());
    }
}

void NumberCommand::undo_command()
{
    const OnlyRun run;
    take_back();
}

void NumberCommand::rollback()
{
    const OnlyRun run;
    take_back();
}

void NumberCommand::take_back()
{
    m_document.numbers.resize(m_document.numbers.size() - m_added);
    m_added = 0;
}

bool NumberCommand::stackWith(boost::shared_ptr<AbstractCommand> newer)
{
    const auto* const p_newer = dynamic_cast<const NumberCommand*>(newer.get());
    if (!p_newer || m_values.size() == s_merged) {
        return false;
    }
    m_values.push_back(p_newer->m_values.front());
    ++m_added; // by the newer one, which runs next
    setDescription(command_description(m_values.size()));
    return true;
}

boost::shared_ptr<housekeeping::AbstractCommand> make_command(
    NumbersDocument& document, unsigned thread, const Step& step)
{
    const std::string name = command_name(thread, step);
    if (step.kind != Kind::Composite) {
        return boost::make_shared<NumberCommand>(document, step.kind, name, step.value);
    }
    const auto composite = boost::make_shared<housekeeping::CompositeCommand>(document.id(), name, false);
    for (const Kind kind : children_of(step)) {
        composite->push_back(boost::make_shared<NumberCommand>(
            document, kind, child_name(name, composite->commands().size()), step.value));
    }
    return composite;
}

} // namespace load
