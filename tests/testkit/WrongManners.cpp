// Commands that do something at a time or in a place where they must not.

#include "SheetCommand.h"
#include "WrongCommands.h"

#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

namespace sheet {

namespace {

/// Makes room for itself when it is made, before it is run.
class ChangesInItsConstructor : public SetCell
{
public:
    explicit ChangesInItsConstructor(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    {
        cell() = 0;
    }
};

/// Puts the marks into order to find its own again, and undo leaves them so.
class ChangesInRemember : public SetCell
{
public:
    explicit ChangesInRemember(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void remember() override
    {
        SetCell::remember();
        std::sort(sheet().marks.begin(), sheet().marks.end(),
            [](const Mark& one, const Mark& other) { return one.text < other.text; });
    }
};

/// Tidies up at the end of every run, whatever came of it.
class ChangesWhenFinished : public SetCell
{
public:
    explicit ChangesWhenFinished(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void finished(bool) override { sheet().heading += "*"; }
};

SheetDocument& current()
{
    return dynamic_cast<SheetDocument&>(housekeeping::DocumentManager::instance().current_document());
}

/// Changes the document that is current, which need not be its own.
class ChangesTheCurrentDocument : public housekeeping::AbstractCommand
{
public:
    explicit ChangesTheCurrentDocument(SheetDocument& document)
        : AbstractCommand(document.id(), "Set heading")
    { }
    void rollback() override { undo_command(); }

protected:
    void remember() override { m_old_heading = current().sheet().heading; }
    void do_command() override { current().sheet().heading = "Depths"; }
    void undo_command() override { current().sheet().heading = m_old_heading; }

private:
    std::string m_old_heading;
};

/// Is made for the document that is current, not for the one that it is asked for.
class MadeForTheCurrentDocument : public SetCell
{
public:
    explicit MadeForTheCurrentDocument(SheetDocument&)
        : SetCell(current(), "Set cell", 0, 0)
    { }
};

/// Writes into all open documents what it sets in one, and undo knows of that one only.
class WritesIntoAllDocuments : public SetCell
{
public:
    explicit WritesIntoAllDocuments(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        housekeeping::DocumentManager& manager = housekeeping::DocumentManager::instance();
        for (const housekeeping::DocumentId& id : manager.current_documents()) {
            dynamic_cast<SheetDocument&>(manager.document_from_id(id)).sheet().cell(0, 0) = m_value;
        }
    }
};

/// Marks its document as busy and clears the mark at the end of a run that ends well.
class StaysBusy : public ScaleRow
{
public:
    explicit StaysBusy(SheetDocument& document)
        : ScaleRow(document, "Scale row")
    {
        m_set_document_busy = false; // "does it itself"
    }

protected:
    void do_command() override
    {
        housekeeping::DocumentManager& manager = housekeeping::DocumentManager::instance();
        manager.document_busy(document_id(), true);
        ScaleRow::do_command();
        manager.document_busy(document_id(), false);
    }
};

/// Takes a busy mark away at its end, "to be tidy": it is the run's own.
class TakesTheRunsBusyMark : public SetCell
{
public:
    explicit TakesTheRunsBusyMark(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        housekeeping::DocumentManager::instance().document_busy(document_id(), false);
    }
};

/// Keeps the old value in a place of the thread that runs it: another thread, which undoes it, finds nothing.
class KeepsItInItsThread : public SetCell
{
public:
    explicit KeepsItInItsThread(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void remember() override { old_values()[id()] = cell(); }
    void undo_command() override
    {
        const auto old = old_values().find(id());
        if (old != old_values().end()) {
            cell() = old->second;
        }
    }

private:
    static std::map<housekeeping::CommandId, double>& old_values()
    {
        thread_local std::map<housekeeping::CommandId, double> t_old_values;
        return t_old_values;
    }
};

/// Finds out while it runs that it need not be kept: that was asked before.
class DecidesTooLateNotToBeKept : public SetCell
{
public:
    explicit DecidesTooLateNotToBeKept(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        m_valid_undo = false;
    }
};

/// Puts the cell back when it goes undone, "to be sure": by then it is another command's.
class RestoresWhenItGoes : public SetCell
{
public:
    explicit RestoresWhenItGoes(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
        , m_first_value(cell())
    { }
    ~RestoresWhenItGoes() override
    {
        const housekeeping::DocumentManager& manager = housekeeping::DocumentManager::const_instance();
        if (manager.document_exists(document_id())) {
            cell() = m_first_value;
        }
    }

private:
    double m_first_value;
};

/// Takes the preview away when it goes, which was taken over into the sheet.
class TakesItsPreviewAway : public SheetCommand
{
public:
    explicit TakesItsPreviewAway(SheetDocument& document)
        : SheetCommand(document, "Add mark")
        , m_mark({sheet().fresh_number(), "rock", 2})
    {
        m_valid_undo = false; // "there is nothing to undo in a preview"
    }
    ~TakesItsPreviewAway() override
    {
        if (housekeeping::DocumentManager::const_instance().document_exists(document_id())) {
            undo_command();
        }
    }

protected:
    void do_command() override { sheet().marks.push_back(m_mark); }
    void undo_command() override
    {
        std::vector<Mark>& marks = sheet().marks;
        const auto is_ours = [this](const Mark& mark) { return mark.number == m_mark.number; };
        marks.erase(std::remove_if(marks.begin(), marks.end(), is_ours), marks.end());
    }

private:
    Mark m_mark;
};

/// Its name comes from a file, with the end of the line.
class HasANameOfTwoLines : public SetCell
{
public:
    explicit HasANameOfTwoLines(SheetDocument& document)
        : SetCell(document, "Set cell\nof line 1", 0, 0)
    { }
};

/// Lists what came out, a line each.
class DescribesItselfInLines : public SetCell
{
public:
    explicit DescribesItselfInLines(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        setDescription("1 cell\n0 marks");
    }
};

/// A composite whose child has a name of two lines.
class HasAChildOfTwoLines : public housekeeping::CompositeCommand
{
public:
    explicit HasAChildOfTwoLines(SheetDocument& document)
        : CompositeCommand(document.id(), "Set cells", false)
    {
        push_back(boost::make_shared<HasANameOfTwoLines>(document));
    }
};

/// Says after each run what came out, and never takes it back.
class DescribesItselfOverAndOver : public SetCell
{
public:
    explicit DescribesItselfOverAndOver(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        appendDescription("1 cell");
    }
};

/// Counts its runs in its name.
class RenamesItself : public SetCell
{
public:
    explicit RenamesItself(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        setName(name() + " again");
    }
};

/// Has no steps, "since it is no composite".
class HasNoSize : public SetCell
{
public:
    explicit HasNoSize(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }
    unsigned long long size() const override { return 0; }
};

/// Has no name, so the undo list shows an empty line.
class HasNoName : public SetCell
{
public:
    explicit HasNoName(SheetDocument& document)
        : SetCell(document, "", 0, 0)
    { }
};

/// Changes copies of the cells.
class ChangesCopies : public SheetCommand
{
public:
    explicit ChangesCopies(SheetDocument& document)
        : SheetCommand(document, "Clear")
    { }

protected:
    void do_command() override
    {
        for (double value : sheet().cells) {
            value = 0;
            static_cast<void>(value);
        }
    }
};

/// Is made by copying one that is kept for the purpose: all have its id.
class CopiesAPrototype : public SetCell
{
public:
    explicit CopiesAPrototype(SheetDocument& document)
        : CopiesAPrototype(prototype(document))
    { }

private:
    struct Prototype
    { };
    CopiesAPrototype(SheetDocument& document, Prototype)
        : SetCell(document, "Set cell", 0, 0)
    { }

    static const CopiesAPrototype& prototype(SheetDocument& document)
    {
        static std::map<housekeeping::DocumentId, std::unique_ptr<CopiesAPrototype>> s_prototypes;
        std::unique_ptr<CopiesAPrototype>& prototype = s_prototypes[document.id()];
        if (!prototype) {
            prototype.reset(new CopiesAPrototype(document, Prototype()));
        }
        return *prototype;
    }
};

/// Says that there is nothing to save, "since it is one cell only".
class HidesItsChange : public SetCell
{
public:
    explicit HidesItsChange(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void do_command() override
    {
        SetCell::do_command();
        document().set_modified(false);
    }
};

/// Tells its user at the end, which cannot be done.
class ThrowsWhenFinished : public SetCell
{
public:
    explicit ThrowsWhenFinished(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void finished(bool) override { throw std::runtime_error("there is nobody to tell"); }
};

} // namespace

void add_wrong_manners(std::vector<WrongCommand>& all)
{
    all.push_back(wrong<MadeForTheCurrentDocument>("MadeForTheCurrentDocument",
        "is made for the current document, not for the one given", Promise::IsMade, "undisturbed"));
    all.push_back(
        wrong<ChangesInItsConstructor>("ChangesInItsConstructor", "changes the document when it is made",
            Promise::MakingChangesNothing, "undisturbed, made", {Promise::UndoRestores}));
    all.push_back(wrong<ChangesInRemember>("ChangesInRemember",
        "sorts the marks in remember(), and undo leaves them so", Promise::UndoRestores, "undo 1"));
    all.push_back(wrong<ChangesWhenFinished>("ChangesWhenFinished",
        "changes the document in finished(), which follows an undo too", Promise::UndoRestores, "undo 1"));
    all.push_back(wrong<ChangesCopies>("ChangesCopies", "changes copies of the cells, not the cells",
        Promise::DoChanges, "undisturbed, do"));
    all.push_back(wrong<ChangesTheCurrentDocument>("ChangesTheCurrentDocument",
        "changes the current document, not its own", Promise::OthersUntouched, "undisturbed, do",
        {Promise::DoChanges}));
    all.push_back(wrong<WritesIntoAllDocuments>("WritesIntoAllDocuments",
        "writes into other open documents, too", Promise::OthersUntouched, "undisturbed, do"));
    all.push_back(wrong<DescribesItselfOverAndOver>("DescribesItselfOverAndOver",
        "each run appends to the description what came out", Promise::DescriptionStays, "redo 1"));
    all.push_back(wrong<RenamesItself>(
        "RenamesItself", "each run changes its name", Promise::NameStays, "undisturbed, do"));
    all.push_back(wrong<HasNoName>("HasNoName", "has no name", Promise::NameStays, "undisturbed, made"));
    all.push_back(wrong<CopiesAPrototype>(
        "CopiesAPrototype", "is copied from a prototype, with its id", Promise::IdStays, "let go, made"));
    all.push_back(wrong<HidesItsChange>(
        "HidesItsChange", "says that there is nothing to save", Promise::ModifiedStays, "undisturbed, do"));
    all.push_back(wrong<HasANameOfTwoLines>(
        "HasANameOfTwoLines", "has a line break in its name", Promise::TextsAreOneLine, "undisturbed, made"));
    all.push_back(wrong<DescribesItselfInLines>("DescribesItselfInLines",
        "each run makes a description of two lines", Promise::TextsAreOneLine, "undisturbed, do"));
    all.push_back(wrong<HasAChildOfTwoLines>("HasAChildOfTwoLines",
        "a composite with a child that has a line break in its name", Promise::TextsAreOneLine,
        "undisturbed, made"));
    all.push_back(wrong<DecidesTooLateNotToBeKept>("DecidesTooLateNotToBeKept",
        "takes m_valid_undo back while it runs, which is too late", Promise::FlagsStay, "undisturbed, do"));
    all.push_back(wrong<RestoresWhenItGoes>("RestoresWhenItGoes",
        "puts the cell back when it goes, also where another command has set it since",
        Promise::GoingChangesNothing, "let go, after an undo and another one"));
    all.push_back(wrong<TakesItsPreviewAway>("TakesItsPreviewAway", "is not kept, and takes its mark with it",
        Promise::GoingChangesNothing, "let go, after the run"));
    all.push_back(
        wrong<KeepsItInItsThread>("KeepsItInItsThread", "keeps the old value in the thread that runs it",
            Promise::ThreadMakesNoDifference, "in a worker thread, undo 1"));
    all.push_back(
        wrong<HasNoSize>("HasNoSize", "says that it has no steps", Promise::LogsNothing, "undisturbed, do"));
    all.push_back(wrong<StaysBusy>("StaysBusy",
        "marks its document as busy itself, and leaves the mark when it is cancelled",
        Promise::BusyMarksBalance, "cancelled at report 1"));
    all.push_back(wrong<TakesTheRunsBusyMark>("TakesTheRunsBusyMark", "takes the busy mark of its run away",
        Promise::BusyMarksBalance, "undisturbed, do"));
    all.push_back(wrong<ThrowsWhenFinished>(
        "ThrowsWhenFinished", "its finished() throws", Promise::ThrowsNothing, "undisturbed, do"));
}

} // namespace sheet
