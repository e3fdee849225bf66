// What an entry in the error log costs: one open, one append, one close, and the rendering of the text.

#include "RatioReporter.h"
#include "RawLog.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>

#include <fstream>
#include <mutex>
#include <stdexcept>

namespace {

using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::ErrorProtocolOutput;

const int s_threads = 8;

const std::string s_text = "grid 12 has no cells above the water table";

void log_entry(benchmark::State& state)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    for (auto _ : state) {
        log.log_message(s_text);
    }
}
BENCHMARK(log_entry);
// The time of a round is that of one entry, however many threads there are.
BENCHMARK(log_entry)->Threads(s_threads)->UseRealTime();

void raw_append(benchmark::State& state)
{
    const RawLog log;
    for (auto _ : state) {
        log.append(s_text + '\n');
    }
}
BENCHMARK(raw_append);

/// As in the error log, each thread puts its entry together before it asks for the mutex.
void raw_append_locked(benchmark::State& state)
{
    static const RawLog s_log;
    static std::mutex s_mutex;
    for (auto _ : state) {
        const std::string entry = s_text + '\n';
        const std::lock_guard<std::mutex> lock(s_mutex);
        s_log.append(entry);
    }
}
BENCHMARK(raw_append_locked)->Threads(s_threads)->UseRealTime();

/// With a look at what was opened, as the error log has it for an entry by itself: one that follows another
/// one closely, as all of them do here, does without.
void raw_append_to_own(benchmark::State& state)
{
    const RawLog log;
    for (auto _ : state) {
        log.append_to_own(s_text + '\n');
    }
}
BENCHMARK(raw_append_to_own);

void stream_append(benchmark::State& state)
{
    const std::string file = RawLog().file();
    for (auto _ : state) {
        std::ofstream stream(file, std::ios::app);
        stream << s_text << '\n';
        stream.close();
    }
}
BENCHMARK(stream_append);

// The other forms of an entry.

void log_assertion(benchmark::State& state)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    for (auto _ : state) {
        log.log_assert("p_grid", "void Grid::add(Cell)", "src/Grid", 12);
    }
}
BENCHMARK(log_assertion);

void log_caught_exception(benchmark::State& state)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    const std::runtime_error exception(s_text);
    for (auto _ : state) {
        log.log_exception(exception);
    }
}
BENCHMARK(log_caught_exception);

void log_streamed(benchmark::State& state)
{
    for (auto _ : state) {
        ErrorProtocolOutput() << "grid " << 12 << " has no cells above the water table";
    }
}
BENCHMARK(log_streamed);

const Ratio s_beside_raw("log entry / one open-append-close", "log_entry", "raw_append", 1.05);
const Ratio s_of_threads("log entry, eight threads / the same under one std::mutex", "log_entry/threads:8",
    "raw_append_locked/threads:8", 1.05);
const Ratio s_look("the same by hand with a look at what was opened / one open-append-close",
    "raw_append_to_own", "raw_append");
const Ratio s_beside_stream("log entry / the same with a std::ofstream", "log_entry", "stream_append", 0.85);
const Ratio s_assertion("failed check / one open-append-close", "log_assertion", "raw_append");
const Ratio s_exception("caught exception / one open-append-close", "log_caught_exception", "raw_append");
const Ratio s_streamed("streamed entry / the same with a std::ofstream", "log_streamed", "stream_append");

} // namespace
