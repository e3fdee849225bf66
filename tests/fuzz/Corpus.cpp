#include "Corpus.h"

#include "Check.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace fuzz {

namespace {

std::string read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

void run_corpus(const std::string& name, void (*target)(const std::string& input))
{
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(HK_FUZZ_CORPUS "/" + name)) {
        files.insert(entry.path());
    }
    EXPECT_FALSE(files.empty());
    support::LogCapture log;
    for (const std::filesystem::path& file : files) {
        try {
            target(read(file));
        } catch (const Failure& failure) {
            ADD_FAILURE() << file << ": " << failure.what();
        }
    }
    log.take_all();
}

} // namespace fuzz
