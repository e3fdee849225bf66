#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>

#include <atomic>
#include <vector>

namespace load {

namespace housekeeping = tarqa::housekeeping;

/// A document of numbers. The commands of one thread change them, under the command manager's mutex.
class NumbersDocument : public housekeeping::AbstractDocument
{
public:
    NumbersDocument();
    ~NumbersDocument() override;

    /// A new one of the document manager. Main thread.
    static NumbersDocument& create();

    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    bool request_close(bool, bool) override { return true; }
    void set_modified(bool) override { }
    void document_created() override { }
    void title_changed() override { }

    std::vector<unsigned> numbers; ///< what commands add, and take back
    unsigned long long sum = 0; ///< of what commands add that cannot be undone

private:
    std::atomic<bool> m_busy{false};
};

} // namespace load
