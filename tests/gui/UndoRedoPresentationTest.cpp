#include "gui/UndoRedoFixture.h"
#include "quickhelp/QuickHelpFixture.h"
#include "support/EmptyRegistry.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QTranslator>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace tarqa::housekeeping;
using namespace undo_redo_test;
using gui::AbstractPresentationFactory;
using gui::MainWindowMessage;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_name = "UndoRedoPresentation";
const char* const s_source = "housekeeping/gui/src/UndoRedoPresentation";

class UndoRedoActions : public UndoRedoFixture
{
protected:
    static void send(int type)
    {
        DocumentMessage message;
        message.doc_change_type(static_cast<DocumentMessage::DocChangeType>(type));
        message.dispatch();
    }

    /// What is shown while nothing can be undone or redone.
    static void expect_plain()
    {
        EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
        EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo"));
        EXPECT_EQ(nullptr, undo_tool().menu());
        EXPECT_EQ(nullptr, redo_tool().menu());
    }
};

QImage picture(const QIcon& icon)
{
    EXPECT_FALSE(icon.isNull());
    return icon.pixmap(16).toImage();
}

/// A main window that notes what its tool bar is given.
class Window : public gui::AbstractMainWindow
{
public:
    void take_undo_redo_actions(QAction* p_undo, QAction* p_redo) override
    {
        taken.push_back({p_undo, p_redo});
    }

    std::vector<std::pair<QAction*, QAction*>> taken;
};

/// Puts "<T>" before each text; shortcuts become others, if the comment is the expected one.
class Translator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* comment, int) const override
    {
        if (QString(context) != "tarqa::housekeeping::gui::UndoRedoPresentation") {
            return {};
        }
        const QString key = QString(text) + "/" + comment;
        if (key == "Ctrl+Z/Edit|Undo") {
            return "Ctrl+U";
        }
        return key == "Ctrl+Y/Edit|Redo" ? QString("Ctrl+R") : "<T>" + QString(text);
    }
};

} // namespace

// The product

TEST(UndoRedoPresentation, IsRegisteredButNotTheDefault)
{
    const std::vector<std::string> products = AbstractPresentationFactory::products();
    EXPECT_EQ(1, std::count(products.begin(), products.end(), s_name));
    EXPECT_THROW(AbstractPresentationFactory::create("unknown"), std::runtime_error);
}

TEST(UndoRedoPresentation, BothCreationsGiveNewOnes)
{
    const support::App app;
    const boost::shared_ptr<gui::AbstractPresentation> product = AbstractPresentationFactory::create(s_name);
    const std::unique_ptr<gui::AbstractPresentation> unmanaged(
        AbstractPresentationFactory::create_unmanaged(s_name));
    EXPECT_TRUE(boost::dynamic_pointer_cast<gui::UndoRedoPresentation>(product));
    EXPECT_TRUE(dynamic_cast<gui::UndoRedoPresentation*>(unmanaged.get()));
    EXPECT_NE(product.get(), unmanaged.get());
}

TEST(UndoRedoPresentation, IsNotThereBeforeTheManagersInit)
{
    EXPECT_FALSE(gui::UndoRedoPresentation::instance());
}

TEST(UndoRedoPresentation, HasNothingBeforeInit)
{
    const support::App app;
    gui::UndoRedoPresentation presentation;
    EXPECT_EQ(nullptr, presentation.undo_action());
    EXPECT_EQ(nullptr, presentation.redo_action());
    EXPECT_EQ(nullptr, presentation.undo_tool_bar_action());
    EXPECT_EQ(nullptr, presentation.redo_tool_bar_action());
    presentation.enable_edit_actions(true);
    presentation.enable_edit_actions(false);
    DocumentMessage message;
    message.doc_change_type(DocumentMessage::Idle);
    presentation.handle_message(message);
}

TEST(UndoRedoPresentation, SlotsStandInTheirOrder)
{
    const QMetaObject& meta = gui::UndoRedoPresentation::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::UndoRedoPresentation", meta.className());
    EXPECT_EQ(quickhelp_test::methods(meta, QMetaMethod::Slot),
        (Lines{"void undo()", "void redo()", "void undos_selected(size_t)", "void redos_selected(size_t)",
            "void handle_message(housekeeping::gui::MainWindowMessage&)",
            "void handle_message(housekeeping::DocumentMessage&)", "void undo(QAction*)",
            "void redo(QAction*)", "void hoveredUndo(QAction*)", "void hoveredUndo()",
            "void hoveredRedo(QAction*)", "void hoveredRedo()"}));
    EXPECT_EQ(QMetaMethod::Public, meta.method(meta.indexOfSlot("undo()")).access());
    EXPECT_EQ(QMetaMethod::Private, meta.method(meta.indexOfSlot("undo(QAction*)")).access());
}

TEST_F(UndoRedoActions, InstanceIsTheManagers)
{
    const boost::shared_ptr<gui::UndoRedoPresentation> instance = gui::UndoRedoPresentation::instance();
    ASSERT_TRUE(instance);
    EXPECT_EQ(PresentationManager::instance().presentation(s_name), instance);
    EXPECT_EQ("UndoRedoController", TestAccess::controller_name(*instance));
    EXPECT_EQ(&controller(), TestAccess::controller(*instance));
}

// The actions

TEST_F(UndoRedoActions, MenuUndo)
{
    EXPECT_EQ("&Undo", undo_action().text());
    EXPECT_EQ(picture(QIcon(":/pkBaseQt/Resources/undo.png")), picture(undo_action().icon()));
    EXPECT_EQ("Undo the last operation completed on the active document", undo_action().statusTip());
    EXPECT_EQ(QKeySequence("Ctrl+Z"), undo_action().shortcut());
    EXPECT_EQ(Qt::WidgetShortcut, undo_action().shortcutContext());
}

TEST_F(UndoRedoActions, MenuRedo)
{
    EXPECT_EQ("&Redo", redo_action().text());
    EXPECT_EQ(picture(QIcon(":/pkBaseQt/Resources/redo.png")), picture(redo_action().icon()));
    EXPECT_EQ("Redo the last operation undone on the active document", redo_action().statusTip());
    EXPECT_EQ(QKeySequence("Ctrl+Y"), redo_action().shortcut());
    EXPECT_EQ(Qt::WidgetShortcut, redo_action().shortcutContext());
}

TEST_F(UndoRedoActions, ToolBarHasNeitherTipsNorShortcuts)
{
    EXPECT_EQ("&Undo", undo_tool().text());
    EXPECT_EQ("&Redo", redo_tool().text());
    EXPECT_EQ(picture(QIcon(":/pkBaseQt/Resources/undo.png")), picture(undo_tool().icon()));
    EXPECT_EQ(picture(QIcon(":/pkBaseQt/Resources/redo.png")), picture(redo_tool().icon()));
    for (const QAction* p_action : {&undo_tool(), &redo_tool()}) {
        EXPECT_EQ("", p_action->statusTip());
        EXPECT_TRUE(p_action->shortcut().isEmpty());
    }
    EXPECT_NE(&undo_tool(), &undo_action());
    EXPECT_NE(&redo_tool(), &redo_action());
}

TEST_F(UndoRedoActions, WithoutADocumentAllIsPlainAndEnabled)
{
    expect_plain();
    for (const QAction* p_action : {&undo_action(), &redo_action(), &undo_tool(), &redo_tool()}) {
        EXPECT_TRUE(p_action->isEnabled());
        EXPECT_TRUE(p_action->isVisible());
        EXPECT_FALSE(p_action->isCheckable());
    }
}

TEST_F(UndoRedoActions, TriggeredOnesRunOneStep)
{
    FakeDocument& document = support::create_document();
    run_many(document, 3);
    journal().clear();
    undo_action().trigger();
    EXPECT_EQ(1, journal().count("3.undo"));
    undo_tool().trigger(); // although it has a list
    EXPECT_EQ(1, journal().count("2.undo"));
    EXPECT_EQ(0, journal().count("1."));
    redo_action().trigger();
    EXPECT_EQ(1, journal().count("2.do"));
    redo_tool().trigger();
    EXPECT_EQ(1, journal().count("3.do"));
    EXPECT_EQ(3u, document.document_history().undoSize());
}

TEST_F(UndoRedoActions, TextsAreTranslated)
{
    Translator translator;
    QCoreApplication::installTranslator(&translator);
    FakeDocument& document = support::create_document();
    run(document, "Rotate", "by 90 degrees");
    gui::UndoRedoPresentation translated;
    translated.init();
    EXPECT_EQ(QKeySequence("Ctrl+U"), translated.undo_action()->shortcut());
    EXPECT_EQ(QKeySequence("Ctrl+R"), translated.redo_action()->shortcut());
    EXPECT_EQ("<T>&Undo", translated.undo_action()->text());
    EXPECT_EQ("<T>&Redo", translated.redo_tool_bar_action()->text());
    EXPECT_EQ(
        "<T>Undo the last operation completed on the active document", translated.undo_action()->statusTip());
    EXPECT_EQ(
        "<T>Redo the last operation undone on the active document", translated.redo_action()->statusTip());
    translated.build();
    EXPECT_EQ("<T>&Undo Rotate", translated.undo_action()->text());
    EXPECT_EQ("<T>Undo Rotate: by 90 degrees", translated.undo_tool_bar_action()->toolTip());
    EXPECT_EQ("<T>&Redo", translated.redo_action()->text());
    EXPECT_EQ("<T>Redo", translated.redo_tool_bar_action()->toolTip());
    QCoreApplication::removeTranslator(&translator);
}

TEST_F(UndoRedoActions, ListsAndQuickHelpAreTranslated)
{
    Translator translator;
    QCoreApplication::installTranslator(&translator);
    run_many(support::create_document(), 4);
    presentation().undos_selected(2);
    gui::UndoRedoPresentation translated;
    translated.init();
    translated.build();
    const QMenu& undos = *translated.undo_tool_bar_action()->menu();
    const QMenu& redos = *translated.redo_tool_bar_action()->menu();
    EXPECT_EQ("<T>Undo 0<T> Actions", undos.actions().last()->text());
    EXPECT_EQ("<T>Redo 0<T> Actions", redos.actions().last()->text());
    undos.actions().first()->hover();
    EXPECT_EQ("<T>Undo 1<T> Action", undos.actions().last()->text());
    redos.actions().at(1)->hover();
    EXPECT_EQ("<T>Redo 2<T> Actions", redos.actions().last()->text());
    EXPECT_THAT(quickhelp_test::texts(quickhelp_test::list(QuickHelpSection::Editing)),
        testing::UnorderedElementsAre("Undo", "Redo", "<T>Undo", "<T>Redo"));
    QCoreApplication::removeTranslator(&translator);
}

// The quick help

TEST_F(UndoRedoActions, ShortcutsAreInTheQuickHelpOfEveryDocument)
{
    const QAbstractListModel& editing = quickhelp_test::list(QuickHelpSection::Editing);
    ASSERT_EQ(2, editing.rowCount());
    std::vector<Lines> rows;
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = editing.index(row, 0);
        rows.push_back({index.data(quickhelp_test::Description).toString().toStdString(),
            index.data(quickhelp_test::Command).toString().toStdString()});
        EXPECT_EQ(0u, index.data(quickhelp_test::DocId).toULongLong());
        EXPECT_TRUE(index.data(quickhelp_test::Visible).toBool());
    }
    EXPECT_THAT(rows, testing::UnorderedElementsAre(Lines{"Undo", "Ctrl+Z"}, Lines{"Redo", "Ctrl+Y"}));
    for (const QuickHelpSection section : {QuickHelpSection::CurrentTool, QuickHelpSection::View,
             QuickHelpSection::Tools, QuickHelpSection::File}) {
        EXPECT_EQ(0, quickhelp_test::list(section).rowCount());
    }
}

TEST_F(UndoRedoActions, QuickHelpGoesWithThePresentation)
{
    TestAccess::destroy<PresentationManager>();
    EXPECT_EQ(0, quickhelp_test::list(QuickHelpSection::Editing).rowCount());
}

TEST_F(UndoRedoActions, QuickHelpEntryNeedsAShortcut)
{
    QAction bare("bare");
    const QuickHelpSection tools = QuickHelpSection::Tools;
    EXPECT_FALSE(TestAccess::createQuickHelpKeySequenceEntry(presentation(), nullptr, "Cut", tools));
    EXPECT_FALSE(TestAccess::createQuickHelpKeySequenceEntry(presentation(), &bare, "Cut", tools));
    EXPECT_EQ(0, quickhelp_test::list(tools).rowCount());
    bare.setShortcut(QKeySequence("Ctrl+X"));
    auto* const p_entry = dynamic_cast<QuickHelpKeySequenceEntry*>(
        TestAccess::createQuickHelpKeySequenceEntry(presentation(), &bare, "Cut", tools));
    ASSERT_TRUE(p_entry);
    EXPECT_EQ(&presentation(), p_entry->parent());
    EXPECT_EQ(DocumentId::null(), p_entry->documentId());
    EXPECT_EQ(QKeySequence("Ctrl+X"), p_entry->keySequence());
    EXPECT_EQ("Cut", p_entry->description());
    EXPECT_TRUE(p_entry->attached());
    EXPECT_EQ(Lines{"Cut"}, quickhelp_test::texts(quickhelp_test::list(tools)));
}

// Messages of documents

TEST_F(UndoRedoActions, FallBackWhileADocumentIsBusyAndComeBack)
{
    FakeDocument& document = support::create_document();
    run_many(document, 5);
    presentation().undos_selected(2);
    const Lines undos = opened(&undo_tool());
    send(DocumentMessage::Busy);
    expect_plain();
    send(DocumentMessage::Idle);
    EXPECT_THAT(texts(), ElementsAre("&Undo 3", "&Redo 4"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo 3", "Redo 4"));
    EXPECT_EQ(undos, opened(&undo_tool()));
    EXPECT_EQ(expected_lines("Redo", {"4", "5"}), opened(&redo_tool()));
}

TEST_F(UndoRedoActions, OtherMessagesOfDocumentsChangeNothing)
{
    run_many(support::create_document(), 2);
    presentation().enable_edit_actions(false);
    for (const int type : {0, 1, 2, 3, 4, 7, 14, 15}) {
        send(type);
        expect_plain();
    }
    presentation().enable_edit_actions(true);
    for (const int type : {0, 1, 2, 3, 4, 7, 14, 15}) {
        send(type);
        EXPECT_EQ(Lines({"&Undo 2", "&Redo"}), texts()) << type;
        EXPECT_TRUE(undo_tool().menu()) << type;
    }
}

TEST_F(UndoRedoActions, EnablingThemShowsWhatThereIs)
{
    run_many(support::create_document(), 2);
    presentation().enable_edit_actions(false);
    expect_plain();
    presentation().enable_edit_actions(true);
    EXPECT_THAT(texts(), ElementsAre("&Undo 2", "&Redo"));
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
}

// Messages of the main window

TEST_F(UndoRedoActions, ComeFirstInTheEditMenu)
{
    QMenu menu("&Edit");
    MainWindowMessage message;
    message.kind(1);
    message.target(&menu);
    message.dispatch();
    EXPECT_THAT(TestAccess::entries(message), ElementsAre(&undo_action(), &redo_action(), nullptr));
}

TEST_F(UndoRedoActions, LeaveTheRestOfTheEditMenuToOthers)
{
    QMenuBar bar;
    QMenu file("&File");
    QMenu edit("&Edit");
    QAction cut("Cut");
    support::MainWindowMessageSpy others;
    others.run_in_slot([&](MainWindowMessage& message) {
        if (message.target() == &edit) {
            message.insertAction(3, &cut);
        }
    });
    MainWindowMessage* const p_message = MainWindowMessage::instance();
    p_message->target(&bar);
    p_message->addMenu(&file);
    p_message->addMenu(&edit);
    Message::dispatch(p_message);
    ASSERT_EQ(4, edit.actions().size());
    EXPECT_EQ(&undo_action(), edit.actions().at(0));
    EXPECT_EQ(&redo_action(), edit.actions().at(1));
    EXPECT_TRUE(edit.actions().at(2)->isSeparator());
    EXPECT_EQ(&cut, edit.actions().at(3));
    EXPECT_TRUE(file.actions().isEmpty());
}

TEST_F(UndoRedoActions, KeepOutOfOtherMenusAndKinds)
{
    QMenu edit("&Edit");
    QToolBar tool_bar("&Edit");
    for (const int kind : {-1, 0, 2, 3, 5, 6, 7}) {
        MainWindowMessage message;
        message.target(&edit);
        message.kind(kind);
        message.dispatch();
        EXPECT_THAT(TestAccess::entries(message), IsEmpty()) << kind;
    }
    for (const char* title : {"Edit", "&edit", "&Edit ", "E&dit", "&File", ""}) {
        QMenu menu(title);
        MainWindowMessage message;
        message.kind(1);
        message.target(&menu);
        message.dispatch();
        EXPECT_THAT(TestAccess::entries(message), IsEmpty()) << title;
    }
    for (QWidget* p_target : {static_cast<QWidget*>(&tool_bar), static_cast<QWidget*>(nullptr)}) {
        MainWindowMessage message;
        message.kind(1);
        message.target(p_target);
        message.dispatch();
        EXPECT_THAT(TestAccess::entries(message), IsEmpty());
    }
}

TEST_F(UndoRedoActions, MainWindowThatAsksIsGivenTheMenuActions)
{
    Window window;
    QWidget other;
    for (const int kind : {0, 1, 2, 3, 5, 7}) {
        MainWindowMessage message;
        message.kind(kind);
        message.owner(&window);
        message.dispatch();
        EXPECT_THAT(window.taken, IsEmpty()) << kind;
    }
    MainWindowMessage message;
    message.kind(6);
    message.dispatch(); // nobody owns it
    message.owner(&other);
    message.dispatch();
    EXPECT_THAT(window.taken, IsEmpty());
    message.owner(&window);
    message.dispatch();
    EXPECT_THAT(window.taken, ElementsAre(std::make_pair(&undo_action(), &redo_action())));
}

TEST_F(UndoRedoActions, BaseOfMainWindowsLetsThemBe)
{
    gui::AbstractMainWindow window;
    MainWindowMessage message;
    message.kind(6);
    message.owner(&window);
    message.dispatch();
    EXPECT_TRUE(undo_action().associatedWidgets().isEmpty());
    EXPECT_TRUE(redo_action().associatedWidgets().isEmpty());
}

// Without the controller

TEST(UndoRedoPresentation, MissingControllerIsLogged)
{
    const support::App app;
    const support::EmptyRegistry<AbstractControllerFactory> registry;
    support::register_controller("tool");
    FakeDocument& document = support::create_document();
    run(document, "A");
    gui::UndoRedoPresentation presentation;
    {
        support::LogCapture log;
        presentation.init();
        presentation.build();
        EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller",
            "housekeeping/src/ControllerManager"));
        EXPECT_TRUE(log.took_assert("urc", "UndoRedoPresentation::set_undo_redo_items(", s_source));
        presentation.enable_edit_actions(false); // asks nobody
    }
    EXPECT_EQ("&Undo", presentation.undo_action()->text());
    support::LogCapture log;
    presentation.undo();
    presentation.redo();
    EXPECT_TRUE(log.took_assert("p_controller", "UndoRedoPresentation::undos_selected(", s_source));
    EXPECT_TRUE(log.took_assert("p_controller", "UndoRedoPresentation::redos_selected(", s_source));
    // Each time when the document becomes idle again.
    EXPECT_TRUE(log.took_assert("urc", "UndoRedoPresentation::set_undo_redo_items(", s_source));
    EXPECT_TRUE(log.took_assert("urc", "UndoRedoPresentation::set_undo_redo_items(", s_source));
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
    EXPECT_EQ(0, journal().count("A.undo"));
}
