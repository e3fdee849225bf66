#include "gui/UndoRedoFixture.h"

#include <QtTest/QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace tarqa::housekeeping;
using namespace undo_redo_test;
using testing::ElementsAre;

namespace {

/// Both lists, and one document.
class UndoRedoLists : public UndoRedoFixture
{
protected:
    QAction& entry(const QAction& tool, int position) { return *tool.menu()->actions().at(position - 1); }
    QAction& last(const QAction& tool) { return *tool.menu()->actions().last(); }

    /// What must be in the tips and the texts when there is one command of this description.
    static void expect_label(const std::string& description, const std::string& label)
    {
        FakeDocument& other = support::create_document();
        run(other, "A", description);
        EXPECT_THAT(tool_tips(), ElementsAre("Undo " + label, "Redo"));
        EXPECT_THAT(texts(), ElementsAre("&Undo A", "&Redo"));
        run(other, "B");
        EXPECT_EQ(expected_lines("Undo", {"B", label}), opened(&undo_tool()));
        presentation().undos_selected(2);
        EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo " + label));
        EXPECT_EQ(expected_lines("Redo", {label, "B"}), opened(&redo_tool()));
    }

    FakeDocument& document = support::create_document();
};

class UndoRedoListsOf : public UndoRedoLists, public testing::WithParamInterface<int>
{ };

INSTANTIATE_TEST_SUITE_P(UndoRedo, UndoRedoListsOf, testing::Values(2, 3, 99, 100, 101, 102, 10000));

/// A description of @p length characters with commas at the given places, counted from 0.
std::string described(std::size_t length, std::initializer_list<std::size_t> commas)
{
    std::string text(length, 'x');
    for (const std::size_t comma : commas) {
        text[comma] = ',';
    }
    return text;
}

} // namespace

// Contents

TEST_F(UndoRedoLists, AreAbsentWithNothingToUndo)
{
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_EQ(nullptr, redo_tool().menu());
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo"));
}

TEST_F(UndoRedoLists, AreAbsentWithOneCommand)
{
    run(document, "Rotate");
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_THAT(texts(), ElementsAre("&Undo Rotate", "&Redo"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo Rotate", "Redo"));
    presentation().undo();
    EXPECT_EQ(nullptr, redo_tool().menu());
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo Rotate"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo Rotate"));
}

TEST_F(UndoRedoLists, AreAbsentAgainWhenOneIsLeft)
{
    run_many(document, 3);
    presentation().undo();
    EXPECT_TRUE(undo_tool().menu());
    presentation().undo();
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_TRUE(redo_tool().menu());
    presentation().undo();
    presentation().redos_selected(2);
    EXPECT_TRUE(undo_tool().menu());
    EXPECT_EQ(nullptr, redo_tool().menu());
}

TEST_F(UndoRedoLists, OneListLeavesTheOtherAlone)
{
    run_many(document, 3);
    EXPECT_EQ(nullptr, redo_tool().menu());
    presentation().undos_selected(3);
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_EQ(expected_lines("Redo", {"1", "2", "3"}), opened(&redo_tool()));
    EXPECT_NE(nullptr, redo_tool().menu());
    EXPECT_EQ(nullptr, redo_tool().menu()->parent());
}

TEST_P(UndoRedoListsOf, CommandsHoldThemAllInOrder)
{
    run_many(document, GetParam());
    Lines numbers;
    for (int number = 1; number <= GetParam(); ++number) {
        numbers.push_back(std::to_string(number));
    }
    Lines reversed(numbers.rbegin(), numbers.rend());
    EXPECT_EQ(expected_lines("Undo", reversed), opened(&undo_tool()));
    EXPECT_EQ("no list", opened(&redo_tool()).front());
    EXPECT_THAT(texts(), ElementsAre("&Undo " + reversed.front(), "&Redo"));

    presentation().undos_selected(static_cast<std::size_t>(GetParam()));
    EXPECT_EQ("no list", opened(&undo_tool()).front());
    EXPECT_EQ(expected_lines("Redo", numbers), opened(&redo_tool()));
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo 1"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo 1"));
}

TEST_P(UndoRedoListsOf, CommandsAreCheckedUpToTheHoveredOne)
{
    run_many(document, GetParam());
    emit undo_tool().menu()->aboutToShow();
    const std::size_t all = static_cast<std::size_t>(GetParam());
    for (const std::size_t hovered : {all, all / 2, std::size_t(1), all - 1}) {
        entry(undo_tool(), static_cast<int>(hovered)).hover();
        const Lines shown = lines(*undo_tool().menu());
        EXPECT_EQ(static_cast<std::ptrdiff_t>(hovered),
            std::count_if(
                shown.begin(), shown.end(), [](const std::string& line) { return line[1] == 'x'; }));
        EXPECT_EQ("Undo " + std::to_string(hovered) + (hovered == 1 ? " Action" : " Actions"),
            last(undo_tool()).text().toStdString());
        EXPECT_TRUE(entry(undo_tool(), static_cast<int>(hovered)).isChecked());
    }
}

TEST_F(UndoRedoLists, FollowTheHistoryAcrossTheHundred)
{
    run_many(document, 101);
    EXPECT_EQ(103u, opened(&undo_tool()).size());
    presentation().undo();
    EXPECT_EQ(102u, opened(&undo_tool()).size());
    presentation().undos_selected(97);
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), opened(&undo_tool()));
    presentation().redos_selected(98);
    EXPECT_EQ(103u, opened(&undo_tool()).size());
    EXPECT_EQ("[ ] 101 (1)", opened(&undo_tool()).front());
}

TEST_F(UndoRedoLists, EntriesShowTheIconsOfTheCommands)
{
    const QIcon red = icon(Qt::red);
    const QIcon blue = icon(Qt::blue);
    run(document, "A", "", red);
    run(document, "B");
    run(document, "C", "", blue);
    ASSERT_TRUE(undo_tool().menu());
    emit undo_tool().menu()->aboutToShow();
    EXPECT_EQ(blue.cacheKey(), entry(undo_tool(), 1).icon().cacheKey());
    EXPECT_TRUE(entry(undo_tool(), 2).icon().isNull());
    EXPECT_EQ(red.cacheKey(), entry(undo_tool(), 3).icon().cacheKey());
    EXPECT_TRUE(last(undo_tool()).icon().isNull());
    presentation().undo(); // entries that are used again take the icons with them
    emit undo_tool().menu()->aboutToShow();
    EXPECT_TRUE(entry(undo_tool(), 1).icon().isNull());
    EXPECT_EQ(red.cacheKey(), entry(undo_tool(), 2).icon().cacheKey());
}

TEST_F(UndoRedoLists, ShowTheCurrentDocument)
{
    run_many(document, 2);
    FakeDocument& other = support::create_document();
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    EXPECT_EQ(nullptr, undo_tool().menu());
    run(document, "3"); // not the current one
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    DocumentManager::instance().current_document(document.id());
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), opened(&undo_tool()));
    close_document(document);
    EXPECT_EQ(other.id(), DocumentManager::instance().current_document_id());
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    EXPECT_EQ(nullptr, undo_tool().menu());
}

TEST_F(UndoRedoLists, AreAbsentWhenTheLastDocumentIsGone)
{
    run_many(document, 4);
    presentation().undos_selected(2);
    close_document(document);
    EXPECT_THAT(texts(), ElementsAre("&Undo", "&Redo"));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo", "Redo"));
    EXPECT_EQ(nullptr, undo_tool().menu());
    EXPECT_EQ(nullptr, redo_tool().menu());
}

TEST_F(UndoRedoLists, ShowADescriptionThatTheRunGave)
{
    run(document, "A");
    const auto command = support::make_command(document.id(), "Rotate");
    command->on_do = [&command] { command->setDescription("3 faults"); };
    CommandManager::instance().insert(command, false);
    command->on_do = nullptr;
    EXPECT_EQ(expected_lines("Undo", {"Rotate: 3 faults", "A"}), opened(&undo_tool()));
    EXPECT_THAT(tool_tips(), ElementsAre("Undo Rotate: 3 faults", "Redo"));
    EXPECT_THAT(texts(), ElementsAre("&Undo Rotate", "&Redo"));
}

// Labels

TEST_F(UndoRedoLists, LabelOfACommandWithoutADescriptionIsItsName)
{
    expect_label("", "A");
}

TEST_F(UndoRedoLists, LabelHoldsAShortDescription)
{
    expect_label("3 faults, 2 horizons", "A: 3 faults, 2 horizons");
}

TEST_F(UndoRedoLists, LabelKeeps60CharactersWhole)
{
    const std::string text = described(60, {55, 58});
    expect_label(text, "A: " + text);
}

TEST_F(UndoRedoLists, LabelCuts61Characters)
{
    expect_label(described(61, {55}), "A: " + std::string(55, 'x') + ", ...");
}

TEST_F(UndoRedoLists, LabelCutsAfterCharacter58Of70)
{
    expect_label(described(70, {58}), "A: " + std::string(58, 'x') + ", ...");
}

TEST_F(UndoRedoLists, LabelIsNotCutBeforeCharacter55)
{
    const std::string text = described(70, {54});
    expect_label(text, "A: " + text);
    expect_label(described(70, {10, 54, 60}), "A: " + described(61, {10, 54, 60}) + " ...");
}

TEST_F(UndoRedoLists, LabelIsCutAtTheFirstOfTheLateCommas)
{
    expect_label(described(200, {56, 57, 199}), "A: " + std::string(56, 'x') + ", ...");
}

TEST_F(UndoRedoLists, LabelMayBeCutAtTheVeryEnd)
{
    const std::string text = described(70, {69});
    expect_label(text, "A: " + text + " ...");
}

TEST_F(UndoRedoLists, LabelWithoutCommasStaysWhole)
{
    const std::string text(500, 'x');
    expect_label(text, "A: " + text);
}

TEST_F(UndoRedoLists, LabelCountsCharactersNotBytes)
{
    std::string umlauts;
    for (int i = 0; i < 58; ++i) {
        umlauts += "\u00e4";
    }
    expect_label(umlauts + ",x", "A: " + umlauts + ",x"); // 60
    expect_label(umlauts + ",xx", "A: " + umlauts + ", ..."); // 61
}

TEST_F(UndoRedoLists, LabelTakesPlaceMarkersAndAmpersandsAsTheyAre)
{
    run(document, "%2 & %1", "100%1 of %2");
    EXPECT_THAT(tool_tips(), ElementsAre("Undo %2 & %1: 100%1 of %2", "Redo"));
    EXPECT_THAT(texts(), ElementsAre("&Undo %2 & %1", "&Redo"));
}

// Hovering

TEST_F(UndoRedoLists, HoveringChecksUpToThere)
{
    run_many(document, 3);
    emit undo_tool().menu()->aboutToShow();
    entry(undo_tool(), 2).hover();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}, 2), lines(*undo_tool().menu()));
    entry(undo_tool(), 1).hover();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}, 1), lines(*undo_tool().menu()));
    entry(undo_tool(), 3).hover();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}, 3), lines(*undo_tool().menu()));
}

TEST_F(UndoRedoLists, HoveringTheLastEntryChecksAll)
{
    run_many(document, 3);
    emit undo_tool().menu()->aboutToShow();
    last(undo_tool()).hover();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}, 3), lines(*undo_tool().menu()));
}

TEST_F(UndoRedoLists, OpeningUnchecksAll)
{
    run_many(document, 3);
    emit undo_tool().menu()->aboutToShow();
    entry(undo_tool(), 3).hover();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), opened(&undo_tool()));
}

TEST_F(UndoRedoLists, HoveringForRedoSaysRedo)
{
    run_many(document, 3);
    presentation().undos_selected(3);
    EXPECT_EQ(expected_lines("Redo", {"1", "2", "3"}), opened(&redo_tool()));
    entry(redo_tool(), 1).hover();
    EXPECT_EQ(expected_lines("Redo", {"1", "2", "3"}, 1), lines(*redo_tool().menu()));
    last(redo_tool()).hover();
    EXPECT_EQ(expected_lines("Redo", {"1", "2", "3"}, 3), lines(*redo_tool().menu()));
}

TEST_F(UndoRedoLists, HoveringOneListLeavesTheOther)
{
    run_many(document, 4);
    presentation().undos_selected(2);
    emit redo_tool().menu()->aboutToShow();
    entry(redo_tool(), 2).hover();
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
    EXPECT_EQ(expected_lines("Redo", {"3", "4"}, 2), lines(*redo_tool().menu()));
}

// Choosing

TEST_F(UndoRedoLists, ChoosingTheSecondEntryUndoesTwo)
{
    run_many(document, 4);
    emit undo_tool().menu()->aboutToShow();
    entry(undo_tool(), 2).trigger();
    EXPECT_EQ(1, journal().count("4.undo"));
    EXPECT_EQ(1, journal().count("3.undo"));
    EXPECT_EQ(0, journal().count("2.undo"));
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
    EXPECT_EQ(expected_lines("Redo", {"3", "4"}), opened(&redo_tool()));
    entry(redo_tool(), 1).trigger();
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), opened(&undo_tool()));
}

TEST_F(UndoRedoLists, ChoosingTheLastEntryTakesAll)
{
    run_many(document, 3);
    emit undo_tool().menu()->aboutToShow();
    last(undo_tool()).trigger();
    EXPECT_EQ(0u, document.document_history().undoSize());
    EXPECT_EQ(3u, document.document_history().redoSize());
    emit redo_tool().menu()->aboutToShow();
    last(redo_tool()).trigger();
    EXPECT_EQ(3u, document.document_history().undoSize());
}

TEST_F(UndoRedoLists, ChoosingInAVeryLongListWorksToo)
{
    run_many(document, 300);
    emit undo_tool().menu()->aboutToShow();
    entry(undo_tool(), 298).trigger();
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
    EXPECT_EQ(300u, opened(&redo_tool()).size());
    last(redo_tool()).trigger();
    EXPECT_EQ(300u, document.document_history().undoSize());
}

TEST_F(UndoRedoLists, NumbersBeyondTheHistoryTakeAll)
{
    run_many(document, 3);
    presentation().undos_selected(0);
    EXPECT_EQ(3u, document.document_history().undoSize());
    presentation().undos_selected(5);
    EXPECT_EQ(3u, document.document_history().redoSize());
    presentation().redos_selected(0);
    presentation().redos_selected(5);
    EXPECT_EQ(3u, document.document_history().undoSize());
    EXPECT_EQ(expected_lines("Undo", {"3", "2", "1"}), opened(&undo_tool()));
}

TEST_F(UndoRedoLists, WorkWithTheKeyboard)
{
    run_many(document, 4);
    QMenu& list = *undo_tool().menu();
    list.popup(QPoint(0, 0));
    ASSERT_TRUE(list.isVisible());
    EXPECT_EQ(expected_lines("Undo", {"4", "3", "2", "1"}), lines(list));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(expected_lines("Undo", {"4", "3", "2", "1"}, 2), lines(list));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_FALSE(list.isVisible());
    EXPECT_EQ(2u, document.document_history().undoSize());
    EXPECT_EQ(expected_lines("Undo", {"2", "1"}), opened(&undo_tool()));
}

TEST_F(UndoRedoLists, WorkWithTheMouse)
{
    run_many(document, 150);
    QMenu& list = *undo_tool().menu();
    list.popup(QPoint(0, 0));
    EXPECT_EQ(152, list.actions().size());
    const QPoint third = list.actionGeometry(&entry(undo_tool(), 3)).center();
    QTest::mouseMove(&list, third);
    QTest::mouseClick(&list, Qt::LeftButton, Qt::NoModifier, third);
    EXPECT_FALSE(list.isVisible());
    EXPECT_EQ(147u, document.document_history().undoSize());
}
