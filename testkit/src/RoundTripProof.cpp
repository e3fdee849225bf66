#include <tarqa/testkit/RoundTripProof.h>

#include "Experiments.h"
#include "Findings.h"
#include "ProofSettings.h"
#include "QuietErrors.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <algorithm>
#include <utility>

namespace tarqa::housekeeping::testkit {

namespace {

/// Makes the document current again that was it, if it is there still.
class CurrentDocument
{
public:
    CurrentDocument()
        : m_id(DocumentManager::instance().current_document_id())
    { }
    ~CurrentDocument()
    {
        if (DocumentManager::instance().document_exists(m_id)) {
            DocumentManager::instance().current_document(m_id);
        }
    }
    CurrentDocument(const CurrentDocument&) = delete;
    CurrentDocument& operator=(const CurrentDocument&) = delete;

private:
    DocumentId m_id;
};

/// What is tried with a command that succeeds when nothing disturbs it.
void try_further(const ProofSettings& settings, Findings& findings, const Subject& subject,
    const Record& record, bool may_show_boxes)
{
    try_disturbed(settings, findings, subject, record);
    if (may_show_boxes) {
        try_questions(settings, findings, subject, record);
    }
    try_without_run(settings, findings, subject, record);
    try_letting_go(settings, findings, subject);
    if (settings.in_worker) {
        try_in_worker(settings, findings, subject, record);
    }
}

} // namespace

struct RoundTripProof::Plan : ProofSettings
{ };

RoundTripProof::RoundTripProof(MakeDocument make_document, Digest digest)
    : m_p_plan(std::make_unique<Plan>())
{
    m_p_plan->make_document = std::move(make_document);
    m_p_plan->digest = std::move(digest);
}

RoundTripProof::~RoundTripProof() = default;

RoundTripProof& RoundTripProof::command(const std::string& label, MakeCommand make_command)
{
    m_p_plan->subjects.push_back({label, std::move(make_command)});
    return *this;
}

RoundTripProof& RoundTripProof::except(Promise promise, const std::string&)
{
    m_p_plan->exceptions.insert(promise);
    return *this;
}

RoundTripProof& RoundTripProof::modified(IsModified is_modified)
{
    m_p_plan->is_modified = std::move(is_modified);
    return *this;
}

RoundTripProof& RoundTripProof::expect_log(const std::string& part)
{
    m_p_plan->expected_log.push_back(part);
    return *this;
}

RoundTripProof& RoundTripProof::in_worker()
{
    m_p_plan->in_worker = true;
    return *this;
}

RoundTripProof& RoundTripProof::rounds(int count)
{
    m_p_plan->rounds = std::max(count, 1);
    return *this;
}

RoundTripProof& RoundTripProof::places(int count)
{
    m_p_plan->places = std::max(count, 0);
    return *this;
}

std::vector<Breach> RoundTripProof::run()
{
    const ProofSettings& settings = *m_p_plan;
    const CurrentDocument current;
    const QuietErrors quiet;
    Findings findings(settings.exceptions);
    std::vector<std::pair<Subject, Record>> proper; // those that can be tried together

    try_documents(settings, findings);
    for (const Subject& subject : settings.subjects) {
        const Record record = try_whole(settings, findings, subject);
        if (record.usable) {
            try_further(settings, findings, subject, record, quiet.silences_dialogs());
        }
        if (record.undoable) {
            proper.emplace_back(subject, record);
        }
    }
    std::vector<Subject> all;
    for (const auto& first : proper) {
        all.push_back(first.first);
        for (const auto& second : proper) {
            try_merged(settings, findings, first.first, second.first, second.second);
        }
    }
    if (!all.empty()) {
        try_sequence(settings, findings, all);
    }
    m_experiments = findings.experiments;
    m_reports = findings.reports;
    m_questions = findings.questions;
    return findings.breaches();
}

int RoundTripProof::experiments() const
{
    return m_experiments;
}

int RoundTripProof::reports() const
{
    return m_reports;
}

int RoundTripProof::questions() const
{
    return m_questions;
}

} // namespace tarqa::housekeeping::testkit
