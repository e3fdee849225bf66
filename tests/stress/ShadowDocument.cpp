#include "ShadowDocument.h"

#include "LoadEntries.h"
#include "LoadTexts.h"
#include "NumberCommand.h"

#include <utility>

namespace load {

namespace {

std::string outcome_line(const std::string& name, const std::string& description, bool succeeded)
{
    return name + (description.empty() ? "" : ": ") + description
        + (succeeded ? " - Succeeded.\n" : " - Failed.\n");
}

} // namespace

ShadowDocument::ShadowDocument(unsigned thread)
    : m_thread(thread)
{ }

std::vector<std::string> ShadowDocument::run(const Step& step)
{
    Entries entries;
    switch (step.kind) {
    case Kind::Undo:
        for (unsigned i = 0; i < times_of(step); ++i) {
            undo(entries);
        }
        break;
    case Kind::Redo:
        for (unsigned i = 0; i < times_of(step); ++i) {
            redo(entries);
        }
        break;
    case Kind::Entry:
    case Kind::FatalText:
        entries.push_back(entry_text(m_thread, step));
        break;
    case Kind::ForeignMark:
    case Kind::Dispatch:
    case Kind::Post:
        break;
    default:
        insert(step, entries);
    }
    return entries;
}

HistoryLines ShadowDocument::lines_of(const Stack& stack)
{
    HistoryLines lines;
    for (auto command = stack.rbegin(); command != stack.rend(); ++command) {
        lines.push_back(command->name + ": " + command->description);
    }
    return lines;
}

std::string ShadowDocument::protocol(const char* prefix, const Command& command, bool succeeded)
{
    std::string text = prefix + outcome_line(command.name, command.description, succeeded);
    for (const Command& child : command.children) {
        text += "\t* " + outcome_line(child.name, child.description, child.outcome);
    }
    return text;
}

ShadowDocument::Command ShadowDocument::make(Kind kind, const std::string& name, unsigned value)
{
    Command command;
    command.kind = kind;
    command.name = name;
    command.description = command_description(1);
    command.values.push_back(value);
    command.cancels = kind == Kind::Cancelled;
    return command;
}

void ShadowDocument::insert(const Step& step, Entries& entries)
{
    Command command = make(step.kind, command_name(m_thread, step), step.value);
    if (step.kind == Kind::Composite) {
        command.description.clear();
        for (const Kind kind : children_of(step)) {
            command.children.push_back(
                make(kind, child_name(command.name, command.children.size()), step.value));
        }
    }
    ++history_changes;
    if (command.kind == Kind::Passing) {
        do_run(command, entries);
        return;
    }
    m_redo.clear();
    const bool merged = command.kind == Kind::Merging && merge(command);
    do_run(command, entries);
    if (!merged) {
        m_undo.push_back(std::move(command));
    }
}

bool ShadowDocument::merge(const Command& newer)
{
    if (m_undo.empty() || m_undo.back().kind != Kind::Merging
        || m_undo.back().values.size() == NumberCommand::s_merged) {
        return false;
    }
    Command& last = m_undo.back();
    last.values.push_back(newer.values.front());
    ++last.added;
    last.description = command_description(last.values.size());
    return true;
}

void ShadowDocument::undo(Entries& entries)
{
    if (m_undo.empty()) {
        return;
    }
    Command command = std::move(m_undo.back());
    m_undo.pop_back();
    ++history_changes;
    ++undone;
    times_busy += command.kind == Kind::Unmarked ? 0 : 1;
    take_back(command);
    for (Command& child : command.children) {
        take_back(child);
    }
    entries.push_back(protocol("UNDO>\t", command, true));
    if (command.kind == Kind::ClearsRedo) {
        m_redo.clear();
    } else {
        m_redo.push_back(std::move(command));
    }
}

void ShadowDocument::redo(Entries& entries)
{
    if (m_redo.empty()) {
        return;
    }
    m_undo.push_back(std::move(m_redo.back()));
    m_redo.pop_back();
    ++history_changes;
    do_run(m_undo.back(), entries);
}

void ShadowDocument::do_run(Command& command, Entries& entries)
{
    const bool succeeded
        = command.kind == Kind::Composite ? execute_children(command, entries) : execute(command, entries);
    ++(succeeded ? done : failed);
    times_busy += command.kind == Kind::Unmarked ? 0 : 1;
    entries.push_back(protocol("DO>\t", command, succeeded));
}

bool ShadowDocument::execute(Command& command, Entries& entries)
{
    switch (command.kind) {
    case Kind::Cancelled:
        if (std::exchange(command.cancels, false)) {
            return false;
        }
        break;
    case Kind::Failing:
        entries.push_back("TARQA EXCEPTION THROWN:\n" + written(failure_of(command.name)) + "\n\n");
        return false;
    case Kind::Passing:
        m_sum += command.values.front();
        return true;
    default:
        break;
    }
    add(command);
    return true;
}

bool ShadowDocument::execute_children(Command& command, Entries& entries)
{
    for (Command& child : command.children) {
        child.outcome = true;
        if (child.kind == Kind::Cancelled && std::exchange(child.cancels, false)) {
            child.outcome = false;
            continue;
        }
        add(child);
        if (child.kind != Kind::Failing) {
            continue;
        }
        const std::string message = failure_of(child.name).message();
        if (&child != &command.children.back()) { // off the main thread the answer is to go on
            entries.push_back(message + "\nContinue ?\n");
            continue;
        }
        entries.push_back(message + '\n');
        for (Command& done_child : command.children) {
            take_back(done_child);
        }
        return false;
    }
    return true;
}

void ShadowDocument::add(Command& command)
{
    m_numbers.insert(m_numbers.end(), command.values.begin(), command.values.end());
    command.added = command.values.size();
}

void ShadowDocument::take_back(Command& command)
{
    m_numbers.resize(m_numbers.size() - command.added);
    command.added = 0;
}

} // namespace load
