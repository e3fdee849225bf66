#pragma once

#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <string>

namespace tarqa::housekeeping::testkit {

/**
 * What every command promises to the command manager, to the undo history and to the user. RoundTripProof
 * says by these which one a command breaks.
 */
enum class Promise
{
    // What the proof is given
    DigestIsStable, ///< two fresh documents have the same digest, and asking for it changes nothing
    IsMade, ///< the maker gives a command, not null, for the document that it was given
    MakingChangesNothing, ///< a command that was made and not inserted has changed nothing

    // A whole run
    DoSucceeds, ///< an undisturbed do run succeeds
    DoChanges, ///< an undisturbed do run changes the document
    UndoRestores, ///< undo brings back what was there before the do run, every time
    RedoRepeats, ///< redo brings back what was there after the first do run, every time
    UndoReportsNothing, ///< undo_command() does not call progress(): a late request to cancel would be fatal
    UndoNeverFails, ///< undo_command() throws nothing: whatever it throws is fatal
    ProgressInOrder, ///< the reports of a run never fall, stay within 100, and end with 100 if there are any
    SinkMakesNoDifference, ///< without a progress sink the same is done
    ThreadMakesNoDifference, ///< run by a worker thread the same is done; only with in_worker()
    UndoWithoutRunIsHarmless, ///< undo of a command that is listed and did not run changes nothing

    // A disturbed run
    CancelIsHeeded, ///< a request to cancel that a report can notice ends the run as failed, and so does the
                    ///< answer Cancel to a composite's question
    CancelRestores, ///< after a cancelled run the document is as before it
    CancelLeavesItUsable, ///< after a cancelled run undo is harmless, and a redo does the whole
    FailureIsReported, ///< what fails inside of do_command() is neither swallowed nor counted as done in
                       ///< silence
    FailureRestores, ///< after a run that failed as expected the document is as before it
    FailureLeavesItUsable, ///< after such a run undo is harmless, and a redo does the whole
    UnexpectedFailureIsUndone, ///< undo takes back the half of a run that an unexpected exception left

    // Several commands
    MergeKeepsSteps, ///< undo of a merged command takes back all that went into it, and redo brings it back
    MergeWaitsForTheRun, ///< a newer command that was merged, and then cancelled or failed, leaves nothing
                         ///< that a redo of the older one would do
    MultiUndoRestores, ///< undoing several commands goes through the states that they went through
    MultiRedoRepeats, ///< redoing several commands does, too

    // Around it
    NameStays, ///< the command has a name, and no run changes it
    DescriptionStays, ///< a redo leaves the description as the first do run left it
    TextsAreOneLine, ///< name and description have no line breaks, those of a composite's children neither:
                     ///< menus, lists and the protocol have one line for them
    IdStays, ///< every command has an id of its own, and no run changes it
    FlagsStay, ///< no run changes validUndo() and the other three: they count before the run
    GoingChangesNothing, ///< a command that goes changes nothing: one that was not inserted, was undone and
                         ///< can no longer be redone, was merged, or is not kept
    OthersUntouched, ///< no other document is changed, the current one neither
    ModifiedStays, ///< a document that a command ran on is modified
    BusyMarksBalance, ///< no run leaves its document busy, or takes a busy mark away that is not its own
    LogsNothing, ///< an undisturbed run writes nothing into the error log but its protocol
    ThrowsNothing ///< nothing leaves the command manager: size(), stackWith(), rollback() and finished() do
                  ///< not throw
};

/// The name as it stands above, "UndoRestores" for example. Any thread.
TQ_HK_TESTKIT_EXPORT std::string name_of(Promise promise);
/// The promise in one sentence without a full stop. Any thread.
TQ_HK_TESTKIT_EXPORT std::string sentence_of(Promise promise);

} // namespace tarqa::housekeeping::testkit
