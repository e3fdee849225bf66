#include <tarqa/testkit/Promise.h>

namespace tarqa::housekeeping::testkit {

namespace {

struct Words
{
    const char* name;
    const char* sentence;
};

Words words_of(Promise promise)
{
    switch (promise) {
    case Promise::DigestIsStable:
        return {"DigestIsStable", "fresh documents have the same digest, and asking for it changes nothing"};
    case Promise::IsMade:
        return {"IsMade", "a command is made, for the document that was given"};
    case Promise::MakingChangesNothing:
        return {"MakingChangesNothing", "a command that was only made has changed nothing"};
    case Promise::DoSucceeds:
        return {"DoSucceeds", "an undisturbed do run succeeds"};
    case Promise::DoChanges:
        return {"DoChanges", "an undisturbed do run changes the document"};
    case Promise::UndoRestores:
        return {"UndoRestores", "undo brings back what was there before the do run"};
    case Promise::RedoRepeats:
        return {"RedoRepeats", "redo brings back what was there after the first do run"};
    case Promise::UndoReportsNothing:
        return {"UndoReportsNothing", "undo_command() does not call progress()"};
    case Promise::UndoNeverFails:
        return {"UndoNeverFails", "undo_command() throws nothing"};
    case Promise::ProgressInOrder:
        return {"ProgressInOrder", "progress never falls, stays within 100 and ends with 100"};
    case Promise::SinkMakesNoDifference:
        return {"SinkMakesNoDifference", "without a progress sink the same is done"};
    case Promise::ThreadMakesNoDifference:
        return {"ThreadMakesNoDifference", "run by a worker thread the same is done"};
    case Promise::UndoWithoutRunIsHarmless:
        return {
            "UndoWithoutRunIsHarmless", "undo of a command that is listed and did not run changes nothing"};
    case Promise::CancelIsHeeded:
        return {
            "CancelIsHeeded", "a request to cancel ends the run as failed, and so does the answer Cancel"};
    case Promise::CancelRestores:
        return {"CancelRestores", "after a cancelled run the document is as before it"};
    case Promise::CancelLeavesItUsable:
        return {"CancelLeavesItUsable", "after a cancelled run undo is harmless, and redo does the whole"};
    case Promise::FailureIsReported:
        return {"FailureIsReported", "a failure inside of do_command() is not swallowed"};
    case Promise::FailureRestores:
        return {"FailureRestores", "after a failed run the document is as before it"};
    case Promise::FailureLeavesItUsable:
        return {"FailureLeavesItUsable", "after a failed run undo is harmless, and redo does the whole"};
    case Promise::UnexpectedFailureIsUndone:
        return {"UnexpectedFailureIsUndone", "undo takes back the half that an unexpected exception left"};
    case Promise::MergeKeepsSteps:
        return {"MergeKeepsSteps", "a merged command is undone and redone as a whole"};
    case Promise::MergeWaitsForTheRun:
        return {"MergeWaitsForTheRun", "what was merged, and then cancelled or failed, is not redone"};
    case Promise::MultiUndoRestores:
        return {"MultiUndoRestores", "undoing several commands goes through their states"};
    case Promise::MultiRedoRepeats:
        return {"MultiRedoRepeats", "redoing several commands goes through their states"};
    case Promise::NameStays:
        return {"NameStays", "the command has a name, and no run changes it"};
    case Promise::DescriptionStays:
        return {"DescriptionStays", "a redo leaves the description as the first do run left it"};
    case Promise::TextsAreOneLine:
        return {"TextsAreOneLine", "name and description have no line breaks"};
    case Promise::IdStays:
        return {"IdStays", "every command has an id of its own, and no run changes it"};
    case Promise::FlagsStay:
        return {"FlagsStay", "no run changes the four flags"};
    case Promise::GoingChangesNothing:
        return {"GoingChangesNothing", "a command that goes changes nothing"};
    case Promise::OthersUntouched:
        return {"OthersUntouched", "no other document is changed"};
    case Promise::ModifiedStays:
        return {"ModifiedStays", "a document that a command ran on is modified"};
    case Promise::BusyMarksBalance:
        return {
            "BusyMarksBalance", "no run leaves its document busy, or takes away a mark that is not its own"};
    case Promise::LogsNothing:
        return {"LogsNothing", "an undisturbed run writes nothing into the error log but its protocol"};
    case Promise::ThrowsNothing:
        return {"ThrowsNothing", "nothing leaves the command manager"};
    }
    return {"Promise", "an unknown promise"};
}

} // namespace

std::string name_of(Promise promise)
{
    return words_of(promise).name;
}

std::string sentence_of(Promise promise)
{
    return words_of(promise).sentence;
}

} // namespace tarqa::housekeeping::testkit
