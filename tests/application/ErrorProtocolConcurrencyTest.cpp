#include "LogFiles.h"
#include "support/ChildProcess.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

using support::ChildProcess;

namespace {

using support::LogCapture;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::ErrorProtocolOutput;

const int s_threads = 8;

/// Runs @p work in eight threads that begin together; it gets the number of the thread.
void in_threads(const std::function<void(int)>& work)
{
    std::atomic<int> waiting{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < s_threads; ++number) {
        threads.emplace_back([&work, &waiting, number] {
            ++waiting;
            while (waiting < s_threads) {
                std::this_thread::yield();
            }
            work(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// One letter per thread, so that a torn line shows.
std::string line_of(int thread, int entry)
{
    const std::string letters(
        static_cast<std::size_t>(1 + (entry * 37) % 300), static_cast<char>('a' + thread));
    return std::to_string(thread) + ' ' + std::to_string(entry) + ' ' + letters;
}

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Two processes that make their logs at the same time; gives the names of the files they took.
std::vector<std::string> race()
{
    int barrier[2];
    if (pipe(barrier) != 0) {
        return {};
    }
    const auto work = [barrier] {
        close(barrier[1]);
        char ignored = 0;
        while (read(barrier[0], &ignored, 1) < 0) { // returns when the parent closes its end
        }
        ErrorProtocol::instance().log_message("process " + std::to_string(getpid()));
        return ErrorProtocol::instance().log_filename();
    };
    ChildProcess first(work);
    ChildProcess second(work);
    close(barrier[0]);
    close(barrier[1]);
    std::vector<std::string> files = {first.report(), second.report()};
    const std::vector<pid_t> ids = {first.id(), second.id()};
    first.let_go();
    second.let_go();
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(log_files::read(files[i]), log_files::head() + "process " + std::to_string(ids[i]) + "\n");
    }
    return files;
}

TEST(ErrorProtocolThreads, EntriesNeverInterleave)
{
    const int entries = 200;
    LogCapture capture;
    in_threads([](int thread) {
        for (int entry = 0; entry < entries; ++entry) {
            ErrorProtocol::instance().log_message(line_of(thread, entry));
        }
    });

    std::map<std::string, int> next; // by thread: its entries stand in its own order
    const std::vector<std::string> lines = lines_of(capture.text());
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(s_threads * entries));
    for (const std::string& line : lines) {
        const std::string thread = line.substr(0, line.find(' '));
        ASSERT_EQ(line, line_of(std::stoi(thread), next[thread]++));
    }
    capture.take_all();
}

TEST(ErrorProtocolThreads, StreamedEntriesNeverInterleave)
{
    const int entries = 50;
    LogCapture capture;
    in_threads([](int thread) {
        for (int entry = 0; entry < entries; ++entry) {
            if (thread % 2) {
                ErrorProtocol::instance().log_message(line_of(thread, entry));
                continue;
            }
            ErrorProtocolOutput output;
            for (const char letter : line_of(thread, entry)) {
                output << letter << std::flush;
            }
        }
    });

    std::map<std::string, int> next;
    const std::vector<std::string> lines = lines_of(capture.text());
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(s_threads * entries));
    for (const std::string& line : lines) {
        const std::string thread = line.substr(0, line.find(' '));
        ASSERT_EQ(line, line_of(std::stoi(thread), next[thread]++));
    }
    capture.take_all();
}

TEST(ErrorProtocolThreads, SimultaneousFirstUseMakesOneFile)
{
    LogCapture capture;
    std::atomic<ErrorProtocol*> logs[s_threads];
    in_threads([&logs](int thread) {
        logs[thread] = &ErrorProtocol::instance();
        ErrorProtocol::instance().log_message("here");
    });
    for (const std::atomic<ErrorProtocol*>& log : logs) {
        EXPECT_EQ(log.load(), &ErrorProtocol::instance());
    }
    EXPECT_EQ(log_files::names(), std::vector<std::string>{"Tarq_1.log"});
    EXPECT_EQ(capture.count("here"), s_threads);
    capture.take_all();
}

TEST(ErrorProtocolProcesses, NeverTakeTheSameNewFile)
{
    const std::set<std::string> allowed = {log_files::path(1), log_files::path(2)};
    for (int round = 0; round < 20; ++round) {
        log_files::remove_all();
        const std::vector<std::string> files = race();
        ASSERT_EQ(std::set<std::string>(files.begin(), files.end()), allowed) << "round " << round;
    }
    log_files::remove_all();
}

TEST(ErrorProtocolProcesses, NeverReuseTheSameOldFile)
{
    const std::set<std::string> oldest = {log_files::path(9), log_files::path(14)};
    for (int round = 0; round < 20; ++round) {
        for (int number = 1; number <= 20; ++number) {
            log_files::make(number, oldest.count(log_files::path(number)) ? 1000 + number : number);
        }
        const std::vector<std::string> files = race();
        ASSERT_EQ(std::set<std::string>(files.begin(), files.end()), oldest) << "round " << round;
    }
    log_files::remove_all();
}

} // namespace
