#pragma once

#include "LoadMessages.h"
#include "LoadPlan.h"
#include "NumbersDocument.h"

#include <array>
#include <vector>

namespace load {

/// Does the steps of one thread's plan; lives in that thread.
class LoadThread
{
public:
    /// @param thread its number, which is also that of its document among all @p documents
    LoadThread(unsigned thread, const std::vector<NumbersDocument*>& documents);

    void run(const Step& step);
    /// The same, but for what does not change the document.
    void replay(const Step& step);

    const MessageCounts& sent() const { return m_sender.sent(); }
    /// How many steps there were, by kind.
    const std::array<unsigned long long, s_kinds>& steps() const { return m_steps; }

private:
    void insert(const Step& step);
    void undo(const Step& step);
    void redo(const Step& step);
    void mark_foreign(const Step& step);

    unsigned m_thread;
    const std::vector<NumbersDocument*>& m_documents;
    NumbersDocument& m_document;
    Sender m_sender;
    std::array<unsigned long long, s_kinds> m_steps = {};
};

} // namespace load
