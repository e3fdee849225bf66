#include "SheetProof.h"

#include "support/LogCapture.h"

#include <tarqa/testkit/RoundTripProof.h>

#include <algorithm>

namespace sheet {

namespace {

using housekeeping::AbstractDocument;
using tarqa::housekeeping::testkit::RoundTripProof;

template <class Command>
std::vector<Breach> breaches_of(
    const Command& command, const std::function<SheetDocument&()>& document, int& reports)
{
    support::LogCapture log;
    RoundTripProof proof([document]() -> AbstractDocument& { return document(); }, text_of);
    proof.modified([](AbstractDocument& of) { return dynamic_cast<SheetDocument&>(of).is_modified(); });
    proof.command(command.name,
        [&command](AbstractDocument& of) { return command.make(dynamic_cast<SheetDocument&>(of)); });
    proof.in_worker();
    for (const Promise promise : command.left_out) {
        proof.except(promise, "it does not make this promise");
    }
    const std::vector<Breach> breaches = proof.run();
    reports = proof.reports();
    log.take_all(); // it makes commands fail
    return breaches;
}

SheetDocument& small_sheet()
{
    return new_sheet();
}

} // namespace

std::vector<Breach> breaches_of(const WrongCommand& wrong)
{
    int reports = 0;
    return breaches_of(wrong, small_sheet, reports);
}

std::vector<Breach> breaches_of(const RightCommand& right, int& reports)
{
    return breaches_of(right, right.document ? right.document : small_sheet, reports);
}

const Breach* breach_of(const std::vector<Breach>& breaches, Promise promise)
{
    const auto found = std::find_if(breaches.begin(), breaches.end(),
        [promise](const Breach& breach) { return breach.promise == promise; });
    return found == breaches.end() ? nullptr : &*found;
}

} // namespace sheet
