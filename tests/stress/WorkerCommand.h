#pragma once

#include "NumbersDocument.h"
#include "Waits.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <pkBase/AbstractProgress.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <vector>

namespace load {

/// A command that does what it is told, for as long as that takes.
class WorkerCommand : public housekeeping::AbstractCommand
{
public:
    typedef std::function<void(WorkerCommand&)> Work;

    WorkerCommand(const housekeeping::DocumentId& document, const std::string& name, Work work);

    void rollback() override { rolled_back = true; }

    /// Reports progress, and notes when it began to.
    void report(unsigned percentage);
    using AbstractCommand::progress_text;

    std::vector<Clock::time_point> reports; ///< begun; belongs to the thread of the run
    bool rolled_back = false;

protected:
    void remember() override { }
    void do_command() override { m_work(*this); }
    void undo_command() override { }

private:
    Work m_work;
};

/// Hands progress over to the main thread, as a sink does that draws.
class ProgressRelay : public QObject, public pkBase::AbstractProgress
{
    Q_OBJECT

public:
    ProgressRelay();

    void open_run(unsigned int start) override { emit percentage(start); }
    void set_percentage(unsigned int value) override { emit percentage(value); }
    void set_text(const QString& value) override { emit text(value); }
    void close_run() override { emit percentage(100); }

    /// What was last shown; main thread.
    unsigned shown_percentage = 0;
    QString shown_text;
    unsigned long long shown = 0;

signals:
    void percentage(unsigned value);
    void text(const QString& value);

private slots:
    void show_percentage(unsigned value);
    void show_text(const QString& value) { shown_text = value; }
};

/// A call that the main thread may make while a worker's run is on.
struct GuiCall
{
    const char* name;
    std::function<void()> call;
};

/// All of them, on the document of the run and on others; the undo and redo presentation must be there.
std::vector<GuiCall> gui_calls(const std::vector<NumbersDocument*>& documents);

} // namespace load
