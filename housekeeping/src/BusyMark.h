#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include "LoggingExceptions.h"

namespace tarqa::housekeeping {

/// The busy mark of a run: it is taken away on every way out.
class BusyMark
{
public:
    /// @param wanted false for a run that asks for no mark
    BusyMark(const DocumentId& id, bool wanted)
        : m_id(id)
        , m_wanted(wanted)
    { }
    ~BusyMark()
    {
        logging_exceptions(
            "An unknown exception was thrown while a document became idle", [this] { clear(); });
    }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

    /// @return false if the document refuses, which it never does: marks nest
    bool set()
    {
        m_set = m_wanted; // before the call: a document that does not exist is marked all the same
        return !m_wanted || DocumentManager::instance().document_busy(m_id, true);
    }

    void clear()
    {
        if (m_set) {
            m_set = false;
            DocumentManager::instance().document_busy(m_id, false);
        }
    }

    /// Forgets the mark without taking it away: it belongs to somebody else.
    void leave() { m_set = false; }

private:
    DocumentId m_id;
    bool m_wanted;
    bool m_set = false;
};

} // namespace tarqa::housekeeping
