#pragma once

#include "Disturbance.h"
#include "Findings.h"
#include "ProofSettings.h"

#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/// What an undisturbed first run and redo of a command are like.
struct Record
{
    bool usable = false; ///< the first run succeeded
    bool undoable = false; ///< it enters the history, and undo takes it back
    bool redoable = false; ///< and redo repeats it
    bool composite = false; ///< it may ask whether to go on
    std::string done; ///< the digest after it
    std::vector<unsigned int> reports;
    std::vector<unsigned int> reports_of_redo;
};

/// Whether the documents and their digest are fit for a proof.
void try_documents(const ProofSettings& settings, Findings& findings);

/// Do, undo and redo, with a progress sink and without.
Record try_whole(const ProofSettings& settings, Findings& findings, const Subject& subject);

/// Cancelled and failing at progress reports, in first runs and in redos.
void try_disturbed(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record);

/// With the question of a composite answered in each way, where its children fail by themselves or are made
/// to. Needs an application that may show boxes.
void try_questions(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record);

/// Listed in the history, and kept from running.
void try_without_run(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record);

/// Not needed any more.
void try_letting_go(const ProofSettings& settings, Findings& findings, const Subject& subject);

/// Done and redone by worker threads.
void try_in_worker(
    const ProofSettings& settings, Findings& findings, const Subject& subject, const Record& record);

/// A command after another one that it may be merged into. @param record that of the second one
void try_merged(const ProofSettings& settings, Findings& findings, const Subject& first,
    const Subject& second, const Record& record);

/// All commands one after the other.
void try_sequence(const ProofSettings& settings, Findings& findings, const std::vector<Subject>& subjects);

/// At most @p most of the numbers 1 to @p count, the first and the last among them.
std::vector<std::size_t> places_of(std::size_t count, int most);

/// "cancelled at report 2 of 5 (40 %)" for example.
std::string title_of(const Disturbance& disturbance, const std::vector<unsigned int>& reports);

} // namespace tarqa::housekeeping::testkit
