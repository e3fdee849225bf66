#include <pkBase/pkDestructor.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace pkBase {

namespace {

/// The functions not called yet, by phase; inside a phase in the order in which they were entered.
struct Table
{
    std::mutex mutex;
    std::map<int, std::vector<pkDestructor::Function>> phases; // guarded by mutex
    bool running = false; // guarded by mutex
    bool armed = false; // guarded by mutex
    std::thread::id arming_thread; // guarded by mutex
};

/// Leaked, so that it is there in every static constructor and destructor.
Table& table()
{
    static Table* const s_p_table = new Table;
    return *s_p_table;
}

/// Takes the next function out of the table; null when nothing is left.
pkDestructor::Function take_next()
{
    Table& entries = table();
    const std::lock_guard<std::mutex> lock(entries.mutex);
    if (entries.phases.empty()) {
        entries.running = false;
        return nullptr;
    }
    const auto phase = entries.phases.begin();
    const pkDestructor::Function function = phase->second.back();
    phase->second.pop_back();
    if (phase->second.empty()) {
        entries.phases.erase(phase);
    }
    return function;
}

/// What the process calls when it exits. Objects that belong to the main thread are left alone where another
/// one ends the process.
void run_in_the_arming_thread()
{
    {
        Table& entries = table();
        const std::lock_guard<std::mutex> lock(entries.mutex);
        if (entries.arming_thread != std::this_thread::get_id()) {
            return;
        }
    }
    pkDestructor::run();
}

} // namespace

pkDestructor::pkDestructor(pkDestructionPhase phase, Function function)
{
    if (!function) {
        return;
    }
    Table& entries = table();
    const std::lock_guard<std::mutex> lock(entries.mutex);
    entries.phases[phase.number()].push_back(function);
}

void pkDestructor::run()
{
    {
        Table& entries = table();
        const std::lock_guard<std::mutex> lock(entries.mutex);
        if (entries.running) {
            return;
        }
        entries.running = true;
    }
    while (const Function function = take_next()) {
        try {
            function();
        } catch (const std::exception& e) {
            std::cerr << "An exception escaped from an ordered destruction: " << e.what() << std::endl;
        } catch (...) {
            std::cerr << "An unknown exception escaped from an ordered destruction" << std::endl;
        }
    }
}

void pkDestructor::run_at_exit()
{
    Table& entries = table();
    const std::lock_guard<std::mutex> lock(entries.mutex);
    if (!entries.armed) {
        entries.armed = std::atexit(&run_in_the_arming_thread) == 0;
        entries.arming_thread = std::this_thread::get_id();
    }
}

} // namespace pkBase
