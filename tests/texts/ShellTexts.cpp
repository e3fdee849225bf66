#include "texts/Texts.h"

#include "gui/PanelWindow.h"
#include "gui/UndoRedoFixture.h"
#include "quickhelp/QuickHelpFixture.h"
#include "support/EmptyRegistry.h"
#include "support/LogCapture.h"
#include "support/Presentations.h"

#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtCore/QTranslator>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

// The texts of the main window with its panels, of the presentations, and of undo and redo.

using namespace tarqa::housekeeping;
using namespace undo_redo_test;
using gui::AbstractMainWindow;
using gui::AbstractPresentationFactory;
using gui::MainWindowMessage;

namespace {

// Assertions

/// The last assertion that @p action fails.
std::string assertion(const std::function<void()>& action)
{
    support::LogCapture log;
    action();
    const std::vector<std::string> lines = log.lines();
    log.take_all();
    return lines.empty() ? std::string() : lines.back();
}

std::string condition(const std::function<void()>& action)
{
    const std::string line = assertion(action);
    const std::size_t end = line.rfind(": ");
    return end == std::string::npos ? line : line.substr(end + 2);
}

std::string source_file(const std::function<void()>& action)
{
    const std::string line = assertion(action);
    return line.substr(0, line.find(':'));
}

// Panels

/// A program with a main window, and settings that were never written before.
class PanelProgram
{
public:
    PanelProgram()
    {
        QCoreApplication::setOrganizationName("Maker");
        QCoreApplication::setApplicationName("Program");
        window = std::make_unique<PanelWindow>();
    }

    QWidget* add(const QString& title)
    {
        auto* const p_panel = new QWidget;
        p_panel->setWindowTitle(title);
        window->addPanel(p_panel, QString());
        return p_panel;
    }
    PanelWindow::ChildDockWidget& add_floating(const QString& title)
    {
        QWidget* const p_panel = add(title);
        window->tear_off(title);
        return *window->window_of(p_panel);
    }

    support::App app;
    std::unique_ptr<PanelWindow> window;
};

void make_two_windows()
{
    const support::App app;
    const PanelWindow first;
    const PanelWindow second;
}

void ask_for_a_window()
{
    AbstractMainWindow::instance();
}

void add_a_panel_without_title()
{
    PanelProgram().add(QString());
}

typedef void (*Use)(PanelProgram&);

void write_docked(PanelProgram& program)
{
    program.add("Panel");
    program.window->writeSettings();
}

void write_floating(PanelProgram& program)
{
    program.add_floating("Panel");
    program.window->writeSettings();
}

void close_floating(PanelProgram& program)
{
    program.add_floating("Panel").close();
}

/// The group that @p use stores into.
std::string group_of(Use use)
{
    PanelProgram program;
    use(program);
    return QSettings().childGroups().join("|").toStdString();
}

/// What @p use stores under the keys of its group whose values are of @p type.
std::string stored_by(Use use, QVariant::Type type, bool keys)
{
    PanelProgram program;
    use(program);
    QSettings settings;
    settings.beginGroup(settings.childGroups().value(0));
    QStringList found;
    for (const QString& key : settings.allKeys()) {
        const QVariant value = settings.value(key);
        if (value.type() == type) {
            found.append(keys ? key : value.toString());
        }
    }
    return found.join("|").toStdString();
}

/// The tabs that nobody can tear off.
std::string tabs_that_stay()
{
    PanelProgram program;
    const QStringList titles = {"House", "Home", "home", "&Home", "Tools"};
    for (const QString& title : titles) {
        program.add(title);
    }
    for (const QString& title : titles) {
        program.window->tear_off(title);
    }
    return program.window->tabs().join("|").toStdString();
}

std::string title_of_the_float(const char* title)
{
    PanelProgram program;
    return program.add_floating(title).windowTitle().toStdString();
}

std::string name_of_the_float(const char* title)
{
    PanelProgram program;
    return program.add_floating(title).objectName().toStdString();
}

std::string tab_of_the_closed_float(const char* title)
{
    PanelProgram program;
    program.add_floating(title).close();
    return program.window->tabs().join("|").toStdString();
}

INSTANTIATE_TEST_SUITE_P(MainWindow, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"AssertionOfASecondWindow", "m_instance == 0", [] { return condition(make_two_windows); }},
        {"AssertionWithoutAWindow", "m_instance", [] { return condition(ask_for_a_window); }},
        {"AssertionOfAPanelWithoutTitle", "!w->windowTitle().isEmpty()",
            [] { return condition(add_a_panel_without_title); }},
        {"SourceOfTheFirst", "housekeeping/gui/src/AbstractMainWindow",
            [] { return source_file(make_two_windows); }},
        {"SourceOfTheSecond", "housekeeping/gui/src/AbstractMainWindow",
            [] { return source_file(ask_for_a_window); }},
        {"SourceOfTheThird", "housekeeping/gui/src/AbstractMainWindow",
            [] { return source_file(add_a_panel_without_title); }},
        {"GroupOfTheSettings", "Q4DAbstractControlPanel", [] { return group_of(write_docked); }},
        {"GroupOfAClosing", "Q4DAbstractControlPanel", [] { return group_of(close_floating); }},
        {"KeyOfTheOrder", "tabOrder", [] { return stored_by(write_docked, QVariant::StringList, true); }},
        {"Order", "Panel",
            [] {
                PanelProgram program;
                write_docked(program);
                return QSettings()
                    .value("Q4DAbstractControlPanel/tabOrder")
                    .toStringList()
                    .join("|")
                    .toStdString();
            }},
        {"KeyOfADockedPanel", "Panel/floating", [] { return stored_by(write_docked, QVariant::Bool, true); }},
        {"FlagOfADockedPanel", "false", [] { return stored_by(write_docked, QVariant::Bool, false); }},
        {"KeyOfAFloatingPanel", "Panel/floating",
            [] { return stored_by(write_floating, QVariant::Bool, true); }},
        {"FlagOfAFloatingPanel", "true", [] { return stored_by(write_floating, QVariant::Bool, false); }},
        {"KeyOfTheGeometry", "Panel/dockSize",
            [] { return stored_by(write_floating, QVariant::ByteArray, true); }},
        // Qt leaves out the slash at the end of "/dockGeom/".
        {"KeyOfTheGeometryOfAClosing", "Panel/dockGeom",
            [] { return stored_by(close_floating, QVariant::ByteArray, true); }},
        {"TabThatNeverFloats", "Home", tabs_that_stay},
        {"TitleOfAFloat", "A & B", [] { return title_of_the_float("A && B"); }},
        {"TitleOfAFloatWithASingleAmpersand", "A & B", [] { return title_of_the_float("A & B"); }},
        {"NameOfAFloat", "A & B", [] { return name_of_the_float("A && B"); }},
        {"TabOfAClosedFloat", "A && B", [] { return tab_of_the_closed_float("A & B"); }},
        {"TabOfAClosedFloatWithADoubledAmpersand", "A && B",
            [] { return tab_of_the_closed_float("A && B"); }},
    }),
    texts::name_of);

// Presentations

/// Initialises the presentations of a registry where one factory gives nothing.
void init_with_a_missing_product()
{
    const support::EmptyRegistry<AbstractPresentationFactory> registry;
    support::register_presentation("alpha", "tool").gives_nothing = true;
    PresentationManager::instance().init();
}

/// The same with a name that is there already.
void init_with_a_name_that_is_listed_twice()
{
    support::register_controller("tool");
    support::init_controllers();
    support::EmptyRegistry<AbstractPresentationFactory> registry;
    support::register_presentation("alpha", "tool");
    registry.list_again("alpha");
    PresentationManager::instance().init();
    TestAccess::destroy<PresentationManager>();
}

/// The names of the products of the library's own.
std::string products()
{
    std::string names;
    for (const std::string& name : AbstractPresentationFactory::products()) {
        names += (names.empty() ? "" : "|") + name;
    }
    return names;
}

/// What @p action asks translations for.
class AskedTexts : public QTranslator
{
public:
    explicit AskedTexts(const std::function<void()>& action)
    {
        QCoreApplication::installTranslator(this);
        action();
        QCoreApplication::removeTranslator(this);
    }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* comment, int) const override
    {
        m_context = context;
        m_comments[text] = comment ? comment : "";
        return {};
    }

    std::string context() const { return m_context; }
    /// What is said to translators of @p text; "not asked for" if it is none.
    std::string comment(const std::string& text) const
    {
        const auto found = m_comments.find(text);
        return found == m_comments.end() ? "not asked for" : found->second;
    }

private:
    mutable std::string m_context;
    mutable std::map<std::string, std::string> m_comments;
};

INSTANTIATE_TEST_SUITE_P(Presentations, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"AssertionOfAMissingProduct", "!utilities::null_pointer( sp_presentation )",
            [] { return condition(init_with_a_missing_product); }},
        {"AssertionOfANameThatIsThere", "inserted",
            [] { return condition(init_with_a_name_that_is_listed_twice); }},
        {"SourceOfTheFirst", "housekeeping/gui/src/PresentationManager",
            [] { return source_file(init_with_a_missing_product); }},
        {"SourceOfTheSecond", "housekeeping/gui/src/PresentationManager",
            [] { return source_file(init_with_a_name_that_is_listed_twice); }},
        {"OnlyProductOfTheLibrary", "UndoRedoPresentation", products},
        {"AssertionOfAMissingMessage", "p_message",
            [] {
                return condition([] { TestAccess::class_instance_dispatch<MainWindowMessage>(nullptr); });
            }},
        {"SourceOfTheMessages", "housekeeping/gui/src/MainWindowMessage",
            [] {
                return source_file([] { TestAccess::class_instance_dispatch<MainWindowMessage>(nullptr); });
            }},
        {"ContextOfTheMessages", "tarqa::housekeeping::gui::MainWindowMessage",
            [] {
                const support::App app;
                return AskedTexts([] { MainWindowMessage::tr("text"); }).context();
            }},
    }),
    texts::name_of);

// Undo and redo

/// What can be undone and redone.
struct Command
{
    std::string name;
    std::string description;
};

/// A program with the library's presentation, and with commands that were done.
class UndoProgram
{
public:
    explicit UndoProgram(const std::vector<Command>& commands = {})
    {
        support::init_controllers();
        PresentationManager::instance().init();
        if (!commands.empty()) {
            const FakeDocument& document = support::create_document();
            for (const Command& command : commands) {
                run(document, command.name, command.description);
            }
        }
    }
    ~UndoProgram() { TestAccess::destroy<PresentationManager>(); }

    UndoRedoPresentation& presentation() const { return *UndoRedoPresentation::instance(); }

    support::App app;
};

typedef QAction* (UndoRedoPresentation::*ActionOf)();
typedef QString (QAction::*TextOf)() const;

const ActionOf s_undo = &UndoRedoPresentation::undo_action;
const ActionOf s_redo = &UndoRedoPresentation::redo_action;
const ActionOf s_undo_tool = &UndoRedoPresentation::undo_tool_bar_action;
const ActionOf s_redo_tool = &UndoRedoPresentation::redo_tool_bar_action;

/// A text of an action after these commands, of which some were undone.
std::function<std::string()> text(
    ActionOf action_of, TextOf text_of, const std::vector<Command>& commands = {}, std::size_t undone = 0)
{
    return [=] {
        const UndoProgram program(commands);
        program.presentation().undos_selected(undone);
        return ((program.presentation().*action_of)()->*text_of)().toStdString();
    };
}

std::function<std::string()> shortcut(ActionOf action_of)
{
    return [=] {
        const UndoProgram program;
        return (program.presentation().*action_of)()->shortcut().toString().toStdString();
    };
}

QImage picture(const QIcon& icon)
{
    return icon.pixmap(16).toImage();
}

/// The resource that holds the icon of an action.
std::function<std::string()> icon_of(ActionOf action_of)
{
    return [=] {
        const UndoProgram program;
        const QImage wanted = picture((program.presentation().*action_of)()->icon());
        QStringList found;
        for (const QFileInfo& file : QDir(":/pkBaseQt/Resources").entryInfoList()) {
            if (picture(QIcon(file.filePath())) == wanted) {
                found.append(file.filePath());
            }
        }
        return found.join("|").toStdString();
    };
}

/// What translators are told of a text of the actions.
std::function<std::string()> comment(const std::string& asked)
{
    return [asked] {
        const support::App app;
        support::init_controllers();
        UndoRedoPresentation presentation;
        return AskedTexts([&presentation] { presentation.init(); }).comment(asked);
    };
}

/// Where translators find the texts of the actions.
std::string context()
{
    const support::App app;
    return AskedTexts([] { UndoRedoPresentation::tr("text"); }).context();
}

/// The last entry of a list of three, when one entry is hovered; with 0 when the list opens.
std::function<std::string()> last_entry(ActionOf action_of, std::size_t undone, int hovered)
{
    return [=] {
        const UndoProgram program({{"A", ""}, {"B", ""}, {"C", ""}});
        program.presentation().undos_selected(undone);
        const QMenu& list = *(program.presentation().*action_of)()->menu();
        emit(program.presentation().*action_of)()->menu()->aboutToShow();
        if (hovered > 0) {
            list.actions().at(hovered - 1)->hover();
        }
        return list.actions().last()->text().toStdString();
    };
}

/// The first entry of the undo list.
std::function<std::string()> entry(const Command& command)
{
    return [=] {
        const UndoProgram program({{"A", ""}, command});
        return program.presentation().undo_tool_bar_action()->menu()->actions().first()->text().toStdString();
    };
}

/// The quick help of a direction: "Undo: Ctrl+Z".
std::function<std::string()> quick_help(ActionOf action_of)
{
    return [=] {
        const UndoProgram program;
        const std::string keys = (program.presentation().*action_of)()->shortcut().toString().toStdString();
        const QAbstractListModel& rows = quickhelp_test::list(QuickHelpSection::Editing);
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex index = rows.index(row, 0);
            if (index.data(quickhelp_test::Command).toString().toStdString() == keys) {
                return index.data(quickhelp_test::Description).toString().toStdString();
            }
        }
        return std::string();
    };
}

/// The menus that take the actions.
std::string menus_that_take_them()
{
    const UndoProgram program;
    QStringList titles;
    for (const char* title : {"Edit", "&Edit", "E&dit", "&File", "&View"}) {
        QMenu menu(title);
        MainWindowMessage* const p_message = MainWindowMessage::instance();
        p_message->kind(MainWindowMessage::Menu);
        p_message->target(&menu);
        Message::dispatch(p_message);
        if (!menu.isEmpty()) {
            titles.append(menu.title());
        }
    }
    return titles.join("|").toStdString();
}

/// A presentation without its controller refreshes, or undoes.
void miss_the_controller(bool undoes)
{
    const support::App app;
    const support::EmptyRegistry<AbstractControllerFactory> registry;
    support::register_controller("tool");
    support::create_document();
    UndoRedoPresentation presentation;
    presentation.init();
    undoes ? presentation.undo() : presentation.enable_edit_actions(true);
}

void refresh_without_controller()
{
    miss_the_controller(false);
}

void undo_without_controller()
{
    miss_the_controller(true);
}

const std::vector<Command> s_rotate = {{"Rotate", ""}};
const std::vector<Command> s_described = {{"Rotate", "by 90 degrees"}};
const std::string s_fifty_eight(58, 'x');

INSTANTIATE_TEST_SUITE_P(UndoRedo, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"MenuUndo", "&Undo", text(s_undo, &QAction::text)},
        {"MenuRedo", "&Redo", text(s_redo, &QAction::text)},
        {"ToolBarUndo", "&Undo", text(s_undo_tool, &QAction::text)},
        {"ToolBarRedo", "&Redo", text(s_redo_tool, &QAction::text)},
        {"MenuUndoIcon", ":/pkBaseQt/Resources/undo.png", icon_of(s_undo)},
        {"MenuRedoIcon", ":/pkBaseQt/Resources/redo.png", icon_of(s_redo)},
        {"ToolBarUndoIcon", ":/pkBaseQt/Resources/undo.png", icon_of(s_undo_tool)},
        {"ToolBarRedoIcon", ":/pkBaseQt/Resources/redo.png", icon_of(s_redo_tool)},
        {"MenuUndoStatusTip", "Undo the last operation completed on the active document",
            text(s_undo, &QAction::statusTip)},
        {"MenuRedoStatusTip", "Redo the last operation undone on the active document",
            text(s_redo, &QAction::statusTip)},
        {"ToolBarUndoStatusTip", "", text(s_undo_tool, &QAction::statusTip)},
        {"ToolBarRedoStatusTip", "", text(s_redo_tool, &QAction::statusTip)},
        {"MenuUndoShortcut", "Ctrl+Z", shortcut(s_undo)},
        {"MenuRedoShortcut", "Ctrl+Y", shortcut(s_redo)},
        {"ToolBarUndoShortcut", "", shortcut(s_undo_tool)},
        {"ToolBarRedoShortcut", "", shortcut(s_redo_tool)},
        {"UndoShortcutForTranslators", "Edit|Undo", comment("Ctrl+Z")},
        {"RedoShortcutForTranslators", "Edit|Redo", comment("Ctrl+Y")},
        {"ContextForTranslators", "tarqa::housekeeping::gui::UndoRedoPresentation", context},
        {"MenuUndoTip", "Undo", text(s_undo, &QAction::toolTip)},
        {"MenuRedoTip", "Redo", text(s_redo, &QAction::toolTip)},
        {"ToolBarUndoTip", "Undo", text(s_undo_tool, &QAction::toolTip)},
        {"ToolBarRedoTip", "Redo", text(s_redo_tool, &QAction::toolTip)},
        {"MenuUndoOfACommand", "&Undo Rotate", text(s_undo, &QAction::text, s_rotate)},
        {"MenuRedoOfACommand", "&Redo Rotate", text(s_redo, &QAction::text, s_rotate, 1)},
        {"ToolBarUndoOfACommand", "&Undo", text(s_undo_tool, &QAction::text, s_rotate)},
        {"ToolBarRedoOfACommand", "&Redo", text(s_redo_tool, &QAction::text, s_rotate, 1)},
        {"MenuUndoOfADescribedCommand", "&Undo Rotate", text(s_undo, &QAction::text, s_described)},
        {"MenuRedoOfADescribedCommand", "&Redo Rotate", text(s_redo, &QAction::text, s_described, 1)},
        {"MenuUndoTipOfACommand", "Undo Rotate", text(s_undo, &QAction::toolTip, s_rotate)},
        {"MenuRedoTipOfACommand", "Redo Rotate", text(s_redo, &QAction::toolTip, s_rotate, 1)},
        {"ToolBarUndoTipOfADescribedCommand", "Undo Rotate: by 90 degrees",
            text(s_undo_tool, &QAction::toolTip, s_described)},
        {"ToolBarRedoTipOfADescribedCommand", "Redo Rotate: by 90 degrees",
            text(s_redo_tool, &QAction::toolTip, s_described, 1)},
        {"Entry", "Rotate", entry({"Rotate", ""})},
        {"EntryWithADescription", "Rotate: by 90 degrees", entry({"Rotate", "by 90 degrees"})},
        {"EntryWithALongDescription", "Rotate: " + s_fifty_eight + ", ...",
            entry({"Rotate", s_fifty_eight + ",xxxxxxxxxxx"})},
        {"LastUndoEntryWhenTheListOpens", "Undo 0 Actions", last_entry(s_undo_tool, 0, 0)},
        {"LastUndoEntryForOne", "Undo 1 Action", last_entry(s_undo_tool, 0, 1)},
        {"LastUndoEntryForTwo", "Undo 2 Actions", last_entry(s_undo_tool, 0, 2)},
        {"LastRedoEntryWhenTheListOpens", "Redo 0 Actions", last_entry(s_redo_tool, 3, 0)},
        {"LastRedoEntryForOne", "Redo 1 Action", last_entry(s_redo_tool, 3, 1)},
        {"LastRedoEntryForTwo", "Redo 2 Actions", last_entry(s_redo_tool, 3, 2)},
        {"QuickHelpOfUndo", "Undo", quick_help(s_undo)},
        {"QuickHelpOfRedo", "Redo", quick_help(s_redo)},
        {"MenuThatTakesThem", "&Edit", menus_that_take_them},
        {"NameOfItsController", "UndoRedoController",
            [] {
                const UndoProgram program;
                return TestAccess::controller_name(program.presentation());
            }},
        {"AssertionWhenItRefreshes", "urc", [] { return condition(refresh_without_controller); }},
        {"AssertionWhenItUndoes", "p_controller", [] { return condition(undo_without_controller); }},
        {"SourceOfTheFirst", "housekeeping/gui/src/UndoRedoPresentation",
            [] { return source_file(refresh_without_controller); }},
        {"SourceOfTheSecond", "housekeeping/gui/src/UndoRedoPresentation",
            [] { return source_file(undo_without_controller); }},
    }),
    texts::name_of);

} // namespace
