#include <tarqa/testkit/FakeCommand.h>

#include <tarqa/testkit/FakeDocument.h>

#include <boost/pointer_cast.hpp>

namespace tarqa::housekeeping::testkit {

FakeCommand::FakeCommand(
    FakeDocument& document, const std::string& name, const std::string& value, bool merges)
    : AbstractCommand(document.id(), "Set " + name)
    , m_document(document)
    , m_name(name)
    , m_new(true, value)
{
    m_stack_identical = merges;
    setDescription(value);
    m_old = current(); // for an undo of a run that did not happen
}

FakeCommand::~FakeCommand() = default;

void FakeCommand::remember()
{
    m_old = current();
}

void FakeCommand::do_command()
{
    progress(0);
    put(m_new);
    progress(100);
}

void FakeCommand::undo_command()
{
    put(m_old);
}

void FakeCommand::rollback()
{
    put(m_old);
}

bool FakeCommand::stackWith(boost::shared_ptr<AbstractCommand> newer)
{
    const auto p_newer = boost::dynamic_pointer_cast<FakeCommand>(newer);
    if (!p_newer || p_newer->m_name != m_name) {
        return false;
    }
    p_newer->m_p_older = this; // it may still be cancelled
    return true;
}

void FakeCommand::finished(bool succeeded)
{
    if (succeeded && m_p_older) {
        m_p_older->m_new = m_new; // its own undo takes back both
        m_p_older->setDescription(m_new.second);
    }
    m_p_older = nullptr;
}

FakeCommand::Value FakeCommand::current() const
{
    const auto found = m_document.values().find(m_name);
    return found == m_document.values().end() ? Value(false, std::string()) : Value(true, found->second);
}

void FakeCommand::put(const Value& value)
{
    if (value.first) {
        m_document.values()[m_name] = value.second;
    } else {
        m_document.values().erase(m_name);
    }
}

} // namespace tarqa::housekeeping::testkit
