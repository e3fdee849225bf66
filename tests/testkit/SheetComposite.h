#pragma once

#include "SheetCommand.h"

#include <pkBase/AbstractProgress.h>
#include <tarqa/housekeeping/CompositeCommand.h>

#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

namespace sheet {

/// A composite whose children report to it, so that it can be cancelled as a whole. It rolls back as its base
/// does: right for children that have no cell in common.
class SheetComposite : public housekeeping::CompositeCommand
{
public:
    SheetComposite(SheetDocument& document, const std::string& name)
        : CompositeCommand(document.id(), name, false)
    { }

    void add(const boost::shared_ptr<AbstractCommand>& sp_child)
    {
        m_sinks.push_back(std::make_unique<Part>(*this, m_sinks.size()));
        sp_child->setProgress(m_sinks.back().get());
        push_back(sp_child);
    }

protected:
    void do_command() override
    {
        CompositeCommand::do_command();
        progress(100); // a request ended one child; here it ends the whole
    }

private:
    /// The progress of one child as a part of the whole.
    class Part : public pkBase::AbstractProgress
    {
    public:
        Part(const SheetComposite& whole, std::size_t position)
            : m_whole(whole)
            , m_position(position)
        { }
        void open_run(unsigned int) override { }
        void set_percentage(unsigned int percentage) override
        {
            m_whole.progress(
                static_cast<unsigned int>((100 * m_position + percentage) / m_whole.commands().size()));
        }
        void set_text(const QString&) override { }
        void close_run() override { }

    private:
        const SheetComposite& m_whole;
        std::size_t m_position;
    };

    std::vector<std::unique_ptr<Part>> m_sinks; // one for each child
};

} // namespace sheet
