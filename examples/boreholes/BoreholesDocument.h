#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>

namespace boreholes {

namespace housekeeping = tarqa::housekeeping;

class BoreholesModel;

/// An open file of boreholes. The document manager makes, owns and destroys it; its factory is in the source
/// file.
class BoreholesDocument : public housekeeping::AbstractDocument
{
public:
    BoreholesDocument();

    // What the framework asks, and tells.
    void buildModel() override;
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    /// Refuses while a command runs. Whether the user wants to lose changes is asked by the window, before.
    bool request_close(bool first, bool second) override;
    /// The framework calls it when a command is about to be done, and this host's commands when they are
    /// undone.
    void set_modified(bool modified) override { m_modified = modified; }
    void document_created() override { }
    void title_changed() override { }

    bool is_modified() const { return m_modified; }
    /// The file that the document was read from or saved to last; empty for a new one.
    const QString& file() const { return m_file; }
    void file(const QString& path) { m_file = path; }
    BoreholesModel& boreholes() const;

private:
    // This host runs its commands in the main thread; with a worker thread these two would be atomic.
    bool m_busy = false;
    bool m_modified = false;
    QString m_file;
};

} // namespace boreholes
