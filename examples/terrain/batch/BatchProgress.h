#pragma once

#include <pkBase/AbstractProgress.h>

#include <ostream>

namespace terrain {

/// Shows the progress of the running command on a terminal, and passes Ctrl-C on to the command.
class BatchProgress : public pkBase::AbstractProgress
{
public:
    /// @param p_terminal where to show the progress; null for nowhere. Not owned.
    explicit BatchProgress(std::ostream* p_terminal);

    void open_run(unsigned int start) override;
    void set_percentage(unsigned int percentage) override;
    void set_text(const QString& text) override;
    void close_run() override;

private:
    void show(unsigned int percentage);

    std::ostream* m_p_terminal; // not owned
    unsigned int m_shown = 0; // per cent
};

} // namespace terrain
