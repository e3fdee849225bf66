#include "Series.h"
#include "support/PrivateHome.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

// Kills hosts at random moments and looks at what they leave:  hk_kills [--count N] [--seed S]
// The exit code is 1 if anything was found that must not be, 2 for wrong usage.

namespace {

const char* const s_usage = "Usage: hk_kills [--count N] [--seed S]\n";

bool parse(const std::vector<std::string>& words, unsigned int& count, unsigned long long& seed)
{
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
        char* p_end = nullptr;
        const unsigned long long number = std::strtoull(words[i + 1].c_str(), &p_end, 10);
        if (words[i + 1].empty() || *p_end != '\0') {
            return false;
        }
        if (words[i] == "--count") {
            count = static_cast<unsigned int>(number);
        } else if (words[i] == "--seed") {
            seed = number;
        } else {
            return false;
        }
    }
    return words.size() % 2 == 0;
}

} // namespace

int main(int argc, char** argv)
{
    unsigned int count = 500;
    unsigned long long seed = 1;
    if (!parse(std::vector<std::string>(argv + 1, argv + argc), count, seed)) {
        std::cerr << s_usage;
        return 2;
    }
    const support::PrivateHome home;
    const auto begin = std::chrono::steady_clock::now();
    kills::Series series(support::PrivateHome::scratch_directory() + "/kills", seed);
    series.run(count);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    std::cout << "seed: " << seed << '\n' << series.figures() << "seconds: " << time.count() << '\n';
    for (const std::string& violation : series.violations()) {
        std::cout << "VIOLATION: " << violation << '\n';
    }
    std::cout << "violations: " << series.violations().size() << '\n';
    return series.violations().empty() ? 0 : 1;
}
