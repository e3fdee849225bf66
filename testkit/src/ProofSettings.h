#pragma once

#include <tarqa/testkit/RoundTripProof.h>

#include <set>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/// A command that a proof tries.
struct Subject
{
    std::string label;
    RoundTripProof::MakeCommand make;
};

/// What a proof was told.
struct ProofSettings
{
    RoundTripProof::MakeDocument make_document;
    RoundTripProof::Digest digest;
    RoundTripProof::IsModified is_modified; // may be empty
    std::vector<Subject> subjects;
    std::set<Promise> exceptions;
    std::vector<std::string> expected_log;
    bool in_worker = false;
    int rounds = 3;
    int places = 20;
};

} // namespace tarqa::housekeeping::testkit
