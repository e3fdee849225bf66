#pragma once

#include "support/App.h"
#include "support/Controllers.h"
#include "support/Fakes.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace undo_redo_test {

using support::FakeCommand;
using support::FakeDocument;
using support::journal;
using tarqa::housekeeping::CommandManager;
using tarqa::housekeeping::ControllerManager;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::DocumentManager;
using tarqa::housekeeping::TestAccess;
using tarqa::housekeeping::UndoRedoController;
using tarqa::housekeeping::gui::PresentationManager;
using tarqa::housekeeping::gui::UndoRedoPresentation;

typedef std::vector<std::string> Lines;

inline QIcon icon(Qt::GlobalColor colour)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(colour);
    return QIcon(pixmap);
}

inline UndoRedoController& controller()
{
    return dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller("UndoRedoController"));
}

/// A new command, done.
inline boost::shared_ptr<FakeCommand> run(const FakeDocument& document, const std::string& name,
    const std::string& description = "", const QIcon& icon = QIcon())
{
    const boost::shared_ptr<FakeCommand> command = support::make_command(document.id(), name);
    command->setDescription(description);
    command->setIcon(icon);
    CommandManager::instance().insert(command, false);
    return command;
}

/// The commands "1" to "count", done.
inline void run_many(const FakeDocument& document, int count)
{
    for (int number = 1; number <= count; ++number) {
        run(document, std::to_string(number));
    }
}

inline void close_document(const FakeDocument& document)
{
    DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null());
}

/// Whether another thread could lock the controller now.
inline bool free_for_others()
{
    bool locked = false;
    QMutex& mutex = TestAccess::mutex(controller());
    std::thread([&locked, &mutex] {
        locked = mutex.tryLock();
        if (locked) {
            mutex.unlock();
        }
    }).join();
    return locked;
}

/// What a list holds: "[ ] Rotate (1)" for each entry with its data, an x in the box if it is checked, "----"
/// for a separator, and no box for entries that cannot be checked.
inline Lines lines(const QMenu& list)
{
    Lines lines;
    for (const QAction* p_entry : list.actions()) {
        if (p_entry->isSeparator()) {
            lines.push_back("----");
            continue;
        }
        const std::string box = p_entry->isChecked() ? "[x] " : "[ ] ";
        lines.push_back((p_entry->isCheckable() ? box : "") + p_entry->text().toStdString() + " ("
            + p_entry->data().toString().toStdString() + ")");
    }
    return lines;
}

/// The same for a list that holds @p labels, the first @p checked of them checked.
inline Lines expected_lines(const std::string& word, const Lines& labels, std::size_t checked = 0)
{
    Lines lines;
    for (std::size_t position = 1; position <= labels.size(); ++position) {
        lines.push_back((position <= checked ? "[x] " : "[ ] ") + labels[position - 1] + " ("
            + std::to_string(position) + ")");
    }
    lines.push_back("----");
    lines.push_back(word + " " + std::to_string(checked) + (checked == 1 ? " Action" : " Actions") + " ("
        + std::to_string(labels.size()) + ")");
    return lines;
}

/// The list of a tool bar's action as the user finds it.
inline Lines opened(const QAction* p_action)
{
    if (!p_action->menu()) {
        return {"no list"};
    }
    emit p_action->menu()->aboutToShow();
    return lines(*p_action->menu());
}

/// The library's presentation, initialised and built by the manager.
class UndoRedoFixture : public testing::Test
{
protected:
    UndoRedoFixture()
    {
        support::init_controllers();
        PresentationManager::instance().init();
    }
    ~UndoRedoFixture() override { TestAccess::destroy<PresentationManager>(); }

    static UndoRedoPresentation& presentation() { return *UndoRedoPresentation::instance(); }
    static QAction& undo_action() { return *presentation().undo_action(); }
    static QAction& redo_action() { return *presentation().redo_action(); }
    static QAction& undo_tool() { return *presentation().undo_tool_bar_action(); }
    static QAction& redo_tool() { return *presentation().redo_tool_bar_action(); }

    /// The texts of the two menu actions. Both actions of a direction have the same tool tip, and those of
    /// the tool bar always the plain text.
    static Lines texts()
    {
        EXPECT_EQ(undo_action().toolTip(), undo_tool().toolTip());
        EXPECT_EQ(redo_action().toolTip(), redo_tool().toolTip());
        EXPECT_EQ("&Undo", undo_tool().text());
        EXPECT_EQ("&Redo", redo_tool().text());
        return {undo_action().text().toStdString(), redo_action().text().toStdString()};
    }

    static Lines tool_tips()
    {
        return {undo_tool().toolTip().toStdString(), redo_tool().toolTip().toStdString()};
    }

    support::App app;
};

} // namespace undo_redo_test
