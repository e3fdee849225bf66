#include <tarqa/utilities/Hardware.h>

#include <gtest/gtest.h>

#include <fstream>
#include <ios>
#include <regex>
#include <sstream>
#include <string>

#include <sched.h>

#include <sys/sysinfo.h>
#include <sys/utsname.h>

using tarqa::utilities::Hardware;

namespace {

/// What stands in the brackets of @p line in the first line of @p file that matches it; empty without one.
std::string first_match(const char* file, const char* line)
{
    std::ifstream stream(file);
    for (std::string text; std::getline(stream, text);) {
        std::smatch match;
        if (std::regex_match(text, match, std::regex(line))) {
            return match[1];
        }
    }
    return {};
}

} // namespace

TEST(Hardware, KernelIsTheOneThatRuns)
{
    utsname facts;
    ASSERT_EQ(uname(&facts), 0);
    const std::string kernel = Hardware::kernel();
    EXPECT_EQ(kernel, "linux " + std::string(facts.release));
}

TEST(Hardware, TellsOperatingSystemAndMemory)
{
    EXPECT_NE(Hardware::operating_system(), "");
    EXPECT_GT(Hardware::physical_memory(), 1024ull * 1024);
}

TEST(Hardware, OperatingSystemIsCalledAsItCallsItself)
{
    const std::string name = first_match("/etc/os-release", "PRETTY_NAME=\"?([^\"]*)\"?");
    ASSERT_NE(name, "") << "Debian and its relatives say what they are called";
    EXPECT_EQ(Hardware::operating_system(), name);
}

TEST(Hardware, ProcessorIsTheFirstOneThatTheSystemLists)
{
    EXPECT_EQ(Hardware::processor(), first_match("/proc/cpuinfo", "model name\\s*:\\s*(.*\\S)\\s*"));
}

TEST(Hardware, MemoryIsAllThatTheSystemHas)
{
    struct sysinfo facts;
    ASSERT_EQ(sysinfo(&facts), 0);
    EXPECT_EQ(Hardware::physical_memory(), static_cast<unsigned long long>(facts.totalram) * facts.mem_unit);
}

TEST(Hardware, CountsTheProcessorsThatThisProcessMayUse)
{
    cpu_set_t allowed;
    ASSERT_EQ(sched_getaffinity(0, sizeof allowed, &allowed), 0);
    EXPECT_EQ(Hardware::processor_count(), static_cast<unsigned int>(CPU_COUNT(&allowed)));
    int first = 0;
    while (!CPU_ISSET(first, &allowed)) {
        ++first;
    }
    CPU_ZERO(&allowed);
    CPU_SET(first, &allowed);
    ASSERT_EQ(sched_setaffinity(0, sizeof allowed, &allowed), 0);
    EXPECT_EQ(Hardware::processor_count(), 1u);
}

TEST(Hardware, LogIsOneLinePerKnownFact)
{
    std::ostringstream stream;
    stream << std::hex << std::showbase;
    Hardware::write_to_log(stream);
    const std::string text = stream.str();
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text.rfind("Operating system: " + Hardware::operating_system()
                      + "\nKernel: " + Hardware::kernel() + "\n",
                  0),
        0u);
    EXPECT_NE(text.find("\nLogical processors: " + std::to_string(Hardware::processor_count()) + "\n"),
        std::string::npos);
    EXPECT_NE(text.find("\nPhysical memory: " + std::to_string(Hardware::physical_memory() / (1024 * 1024))
                  + " MiB\n"),
        std::string::npos);
    const std::size_t processor = text.find("\nProcessor: ");
    EXPECT_EQ(processor != std::string::npos, !Hardware::processor().empty());
    if (processor != std::string::npos) {
        EXPECT_LT(processor, text.find("\nLogical processors: "));
    }
    EXPECT_LT(text.find("\nLogical processors: "), text.find("\nPhysical memory: "));
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        ASSERT_NE(colon, std::string::npos) << line;
        EXPECT_GT(line.size(), colon + 2) << line;
    }
}
