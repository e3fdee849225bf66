#include "support/App.h"
#include "support/Fakes.h"

#include <pkBase/AbstractProgress.h>
#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/CommandManager.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <utility>

// docs/commands.md

namespace commands_guide {

namespace housekeeping = tarqa::housekeeping;

//! [box]
/// A box with a bar and a Cancel button, for the runs of one command in the main thread. It appears when a
/// run is going to take longer than half a second, and goes with the end of the run.
class ProgressBox : public pkBase::AbstractProgress
{
public:
    explicit ProgressBox(housekeeping::AbstractCommand& command)
        : m_command(command)
    { }
    ~ProgressBox() override { delete m_p_box; }

    void open_run(unsigned int) override { m_text = QString::fromStdString(m_command.name()); }
    void set_percentage(unsigned int percentage) override
    {
        if (!m_p_box) {
            make_box();
        }
        m_p_box->setValue(static_cast<int>(percentage)); // once the box is visible this handles events, too
    }
    void set_text(const QString& text) override
    {
        m_text = text;
        if (m_p_box) {
            m_p_box->setLabelText(text);
        }
    }
    void close_run() override { delete m_p_box; } // which makes the pointer null

private:
    void make_box()
    {
        m_p_box = new QProgressDialog(m_text, QObject::tr("Cancel"), 0, 100, QApplication::activeWindow());
        m_p_box->setWindowModality(Qt::ApplicationModal); // the user reaches nothing but this box
        m_p_box->setMinimumDuration(500); // milliseconds
        m_p_box->setAutoReset(false); // it stays until close_run()
        QObject::connect(m_p_box, &QProgressDialog::canceled, [this] { m_command.request_cancel(); });
        m_p_box->setValue(0); // the half second begins
    }

    housekeeping::AbstractCommand& m_command; // has this as a member
    QString m_text;
    QPointer<QProgressDialog> m_p_box; // null between runs
};

/// A command that has a box. The box belongs to the command, so a redo has one as well.
template <class Command>
class WithBox : public Command
{
public:
    template <class... Arguments>
    explicit WithBox(Arguments&&... arguments)
        : Command(std::forward<Arguments>(arguments)...)
    {
        this->setProgress(&m_box);
    }
    WithBox(const WithBox&) = delete; // the copy would report to the box of the other one

protected:
    void finished(bool succeeded) override
    {
        Command::finished(succeeded);
        this->m_cancelled = false; // a click that came after the last report
    }

private:
    ProgressBox m_box{*this};
};
//! [box]

/// A host's command.
class SmoothCommand : public support::FakeCommand
{
public:
    SmoothCommand(const housekeeping::AbstractDocument& document, int radius)
        : FakeCommand(document.id(), "Smooth " + std::to_string(radius))
    { }
};

boost::shared_ptr<WithBox<SmoothCommand>> command_with_box(housekeeping::AbstractDocument& document)
{
    return boost::make_shared<WithBox<SmoothCommand>>(document, 3);
}

QProgressDialog* visible_box()
{
    return qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
}

/// The user clicks when events are handled next.
void click_cancel()
{
    QMetaObject::invokeMethod(
        qApp, [] { visible_box()->findChild<QPushButton*>()->click(); }, Qt::QueuedConnection);
}

/// Reports until there is a box.
void report_until_visible(const support::FakeCommand& command)
{
    for (unsigned int percentage = 1; !visible_box(); percentage = 3 - percentage) { // Qt wants a change
        command.progress(percentage);
    }
}

} // namespace commands_guide

using commands_guide::click_cancel;
using commands_guide::command_with_box;
using commands_guide::report_until_visible;
using commands_guide::visible_box;
using tarqa::housekeeping::CommandManager;

TEST(CommandsGuide, InsertsACommandThatHasABox)
{
    using namespace commands_guide;
    auto& document = support::create_document();
    //! [insert with box]
    housekeeping::CommandManager::instance().insert(
        boost::make_shared<WithBox<SmoothCommand>>(document, 3), false);
    //! [insert with box]
    EXPECT_EQ(support::journal().count("Smooth 3.do"), 1);
}

TEST(CommandsGuide, CancelButtonEndsTheRun)
{
    const support::App app;
    auto& document = support::create_document();
    const auto sp_command = command_with_box(document);
    sp_command->on_do = [&sp_command] {
        report_until_visible(*sp_command);
        EXPECT_EQ(visible_box()->labelText(), "Smooth 3");
        click_cancel();
        for (unsigned int percentage = 1;; percentage = 3 - percentage) {
            sp_command->progress(percentage);
        }
    };
    CommandManager::instance().insert(sp_command, false);
    EXPECT_EQ(support::journal().count("Smooth 3.rollback"), 1);
    EXPECT_EQ(visible_box(), nullptr);
}

TEST(CommandsGuide, LateClickDoesNotCancelTheRedo)
{
    const support::App app;
    auto& document = support::create_document();
    const auto sp_command = command_with_box(document);
    sp_command->on_do = [&sp_command] {
        report_until_visible(*sp_command);
        click_cancel();
        sp_command->progress(100);
        EXPECT_EQ(visible_box(), nullptr); // it was clicked
    };
    CommandManager::instance().insert(sp_command, false);
    CommandManager::instance().undo(document.id());
    int reports = 0;
    sp_command->on_do = [&sp_command, &reports] {
        sp_command->progress_text("Rows");
        report_until_visible(*sp_command);
        EXPECT_EQ(visible_box()->labelText(), "Rows");
        sp_command->progress(100);
        ++reports;
    };
    CommandManager::instance().redo(document.id());
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(support::journal().count("Smooth 3.rollback"), 0);
}
