// What an entry in the error log costs: one open, one append, one close, and the rendering of the text.

#include "RatioReporter.h"
#include "RawLog.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <fstream>

namespace {

const std::string s_text = "grid 12 has no cells above the water table";

void log_entry(benchmark::State& state)
{
    tarqa::housekeeping::ErrorProtocol& log = tarqa::housekeeping::ErrorProtocol::instance();
    for (auto _ : state) {
        log.log_message(s_text);
    }
}
BENCHMARK(log_entry);

void raw_append(benchmark::State& state)
{
    const RawLog log;
    for (auto _ : state) {
        log.append(s_text + '\n');
    }
}
BENCHMARK(raw_append);

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

const Ratio s_beside_raw("log entry / one open-append-close", "log_entry", "raw_append");
const Ratio s_beside_stream("log entry / the same with a std::ofstream", "log_entry", "stream_append");

} // namespace
