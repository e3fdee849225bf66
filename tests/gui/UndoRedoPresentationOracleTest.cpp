#include "gui/UndoRedoFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using namespace tarqa::housekeeping;
using namespace undo_redo_test;

namespace {

/// What is known of a command.
struct Step
{
    std::string name;
    std::string description;
    qint64 icon;
    bool clears_redo;
    bool merges;
};

/// What is known of a document; the newest step is the first.
struct Known
{
    FakeDocument* p_document;
    std::deque<Step> undos;
    std::deque<Step> redos;
};

std::string label(const Step& step)
{
    if (step.description.empty()) {
        return step.name;
    }
    std::string description = step.description;
    for (std::size_t i = 55; step.description.size() > 60 && i < step.description.size(); ++i) {
        if (step.description[i] == ',') {
            description = step.description.substr(0, i + 1) + " ...";
            break;
        }
    }
    return step.name + ": " + description;
}

/// The seed, and whether the lists are looked at after every step or only now and then.
struct Run
{
    unsigned int seed;
    bool always_looks;
};

std::string name_of(const Run& run)
{
    return "Seed" + std::to_string(run.seed) + (run.always_looks ? "Looking" : "Glancing");
}

/// For GoogleTest.
void PrintTo(const Run& run, std::ostream* p_stream)
{
    *p_stream << name_of(run);
}

/// Random steps on up to four documents, and what they must have led to.
class UndoRedoOracle : public UndoRedoFixture, public testing::WithParamInterface<Run>
{
protected:
    unsigned int below(std::size_t limit) { return random() % static_cast<unsigned int>(limit); }
    bool one_in(unsigned int chances) { return below(chances) == 0; }

    Known* current()
    {
        for (Known& known : documents) {
            if (known.p_document->id() == DocumentManager::instance().current_document_id()) {
                return &known;
            }
        }
        return nullptr;
    }

    void step()
    {
        const unsigned int choice = below(100);
        Known* const p_current = current();
        if (!p_current || (choice < 2 && documents.size() < 4)) {
            documents.push_back({&support::create_document(), {}, {}});
        } else if (choice < 4) {
            close(below(documents.size()));
        } else if (choice < 9) {
            const FakeDocument& next = *documents[below(documents.size())].p_document;
            DocumentManager::instance().current_document(next.id());
        } else if (choice < 45) {
            do_one(one_in(10) ? documents[below(documents.size())] : *p_current);
        } else if (choice < 48) {
            for (unsigned int count = below(150); count > 0; --count) {
                do_one(*p_current);
            }
        } else if (choice < 62) {
            one_in(2) ? presentation().undo() : undo_action().trigger();
            take_undos(*p_current, 1);
        } else if (choice < 76) {
            one_in(2) ? presentation().redo() : redo_tool().trigger();
            take_redos(*p_current, 1);
        } else if (choice < 88) {
            take_undos(*p_current, choose(undo_tool(), p_current->undos.size(), true));
        } else {
            take_redos(*p_current, choose(redo_tool(), p_current->redos.size(), false));
        }
    }

    void close(std::size_t index)
    {
        close_document(*documents[index].p_document);
        documents.erase(documents.begin() + static_cast<std::ptrdiff_t>(index));
    }

    std::string random_description()
    {
        if (one_in(3)) {
            return "";
        }
        std::string text(below(90), 'd');
        for (char& letter : text) {
            letter = one_in(15) ? ',' : letter;
        }
        return text;
    }

    void do_one(Known& known)
    {
        const QIcon& icon = icons[below(icons.size())];
        Step step = {
            "step " + std::to_string(++number), random_description(), icon.cacheKey(), one_in(12), one_in(6)};
        const bool kept = !one_in(15);
        const auto command = support::make_command(known.p_document->id(), step.name);
        command->setIcon(icon);
        command->clears_redo_when_undoing(step.clears_redo);
        command->stack_identical(step.merges);
        command->absorbs = [](const AbstractCommand&) { return true; };
        command->valid_undo(kept);
        FakeCommand* const p_command = command.get();
        const std::string description = step.description;
        if (one_in(4)) { // the run finds out
            command->on_do = [p_command, description] { p_command->setDescription(description); };
        } else {
            command->setDescription(description);
        }
        if (one_in(20)) {
            command->setDescription(description);
            command->on_do = support::throws_cancel();
        }
        CommandManager::instance().insert(command, false);
        command->on_do = nullptr;
        if (!kept) {
            return;
        }
        known.redos.clear();
        if (known.undos.empty() || !known.undos.front().merges || !step.merges) {
            known.undos.push_front(step);
        }
    }

    static void take_undos(Known& known, std::size_t count)
    {
        for (; count > 0 && !known.undos.empty(); --count) {
            if (known.undos.front().clears_redo) {
                known.redos.clear();
            } else {
                known.redos.push_front(known.undos.front());
            }
            known.undos.pop_front();
        }
    }

    static void take_redos(Known& known, std::size_t count)
    {
        for (; count > 0 && !known.redos.empty(); --count) {
            known.undos.push_front(known.redos.front());
            known.redos.pop_front();
        }
    }

    /// Several steps at once, from the list if there is one. @return how many
    std::size_t choose(const QAction& tool, std::size_t available, bool undoes)
    {
        if (one_in(3) || available < 2) {
            const std::size_t count = below(available + 3);
            undoes ? presentation().undos_selected(count) : presentation().redos_selected(count);
            return count;
        }
        emit tool.menu()->aboutToShow();
        const QList<QAction*> entries = tool.menu()->actions();
        const std::size_t count = one_in(20) ? available : 1 + below(std::min<std::size_t>(available, 20));
        QAction* const p_entry
            = one_in(2) && count == available ? entries.last() : entries.at(static_cast<int>(count) - 1);
        p_entry->hover();
        expect_checked(*tool.menu(), undoes ? "Undo" : "Redo", count);
        p_entry->trigger();
        return count;
    }

    static void expect_checked(const QMenu& list, const std::string& word, std::size_t count)
    {
        const QList<QAction*> entries = list.actions();
        for (int i = 0; i < entries.size() - 2; ++i) {
            ASSERT_EQ(static_cast<std::size_t>(i) < count, entries.at(i)->isChecked()) << i;
        }
        ASSERT_EQ(word + " " + std::to_string(count) + (count == 1 ? " Action" : " Actions"),
            entries.last()->text().toStdString());
    }

    void expect_all()
    {
        static const Known s_nothing = {nullptr, {}, {}};
        const Known* const p_current = current() ? current() : &s_nothing;
        expect_side("Undo", undo_action(), undo_tool(), p_current->undos);
        expect_side("Redo", redo_action(), redo_tool(), p_current->redos);
    }

    void expect_side(
        const std::string& word, const QAction& action, const QAction& tool, const std::deque<Step>& steps)
    {
        const std::string tip = word + (steps.empty() ? "" : " " + label(steps.front()));
        ASSERT_EQ("&" + word + (steps.empty() ? "" : " " + steps.front().name), action.text().toStdString());
        ASSERT_EQ("&" + word, tool.text().toStdString());
        ASSERT_EQ(tip, action.toolTip().toStdString());
        ASSERT_EQ(tip, tool.toolTip().toStdString());
        ASSERT_TRUE(action.isEnabled() && tool.isEnabled());
        ASSERT_EQ(steps.size() >= 2, tool.menu() != nullptr);
        if (steps.size() < 2 || !(GetParam().always_looks || one_in(5))) {
            return;
        }
        Lines labels;
        for (const Step& step : steps) {
            labels.push_back(label(step));
        }
        ASSERT_EQ(expected_lines(word, labels), opened(&tool));
        const QList<QAction*> entries = tool.menu()->actions();
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const QIcon icon = entries.at(static_cast<int>(i))->icon();
            ASSERT_EQ(steps[i].icon, icon.isNull() ? 0 : icon.cacheKey()) << i;
        }
        longest = std::max(longest, steps.size());
    }

    std::mt19937 random{GetParam().seed};
    std::vector<QIcon> icons = {QIcon(), icon(Qt::red), icon(Qt::green), icon(Qt::blue)};
    std::vector<Known> documents;
    int number = 0;
    std::size_t longest = 0;
};

INSTANTIATE_TEST_SUITE_P(UndoRedo, UndoRedoOracle,
    testing::Values(Run{1, true}, Run{2, true}, Run{3, false}, Run{4, false}),
    [](const testing::TestParamInfo<Run>& run) { return name_of(run.param); });

} // namespace

TEST_P(UndoRedoOracle, ActionsAndListsShowExactlyWhatTheHistoriesHold)
{
    expect_all();
    for (int count = 1; count <= 2000; ++count) {
        step();
        expect_all();
        if (HasFailure()) {
            FAIL() << "after step " << count << " of seed " << GetParam().seed;
        }
        journal().clear();
    }
    EXPECT_GT(longest, 100u); // both ways of filling a list were seen
}
