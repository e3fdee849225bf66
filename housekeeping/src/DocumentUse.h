#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>

#include <boost/shared_ptr.hpp>

#include <utility>

namespace tarqa::housekeeping {

/// Keeps a document alive while others' code runs, which may destroy it. In the thread that destroys the
/// documents it takes no share of the document, but is left one by who destroys it.
class DocumentUse
{
public:
    /// @param p_last the thread's innermost use, null if there is none
    DocumentUse(DocumentUse*& p_last, AbstractDocument& document)
        : m_p_last(p_last)
        , m_document(document)
    { }
    /// For a thread that does not destroy documents itself.
    DocumentUse(DocumentUse*& p_last, boost::shared_ptr<AbstractDocument> sp_document)
        : m_p_last(p_last)
        , m_document(*sp_document)
        , m_sp_document(std::move(sp_document))
    { }
    ~DocumentUse() { m_p_last = m_p_outer; }
    DocumentUse(const DocumentUse&) = delete;
    DocumentUse& operator=(const DocumentUse&) = delete;

    AbstractDocument& document() const { return m_document; }

    /// Leaves the share to the outermost use of the document in the thread of @p p_last, if there is one.
    static void leave(DocumentUse* p_last, boost::shared_ptr<AbstractDocument>& sp_document)
    {
        DocumentUse* p_outermost = nullptr;
        for (DocumentUse* p_use = p_last; p_use; p_use = p_use->m_p_outer) {
            if (&p_use->m_document == sp_document.get()) {
                p_outermost = p_use;
            }
        }
        if (p_outermost) {
            p_outermost->m_sp_document = std::move(sp_document);
        }
    }

private:
    DocumentUse*& m_p_last;
    DocumentUse* const m_p_outer = std::exchange(m_p_last, this);
    AbstractDocument& m_document;
    boost::shared_ptr<AbstractDocument> m_sp_document; // mostly empty
};

} // namespace tarqa::housekeeping
