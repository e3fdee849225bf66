#include "Host.h"

#include <cstdlib>
#include <string>
#include <vector>

// The host as a program of its own. Its arguments are the fields of HostOptions, in their order.

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 10) {
        return 2;
    }
    kills::HostOptions options;
    options.to_parent = std::atoi(arguments[0].c_str());
    options.from_parent = std::atoi(arguments[1].c_str());
    options.gate = std::atoi(arguments[2].c_str());
    options.documents = arguments[3];
    options.outside = arguments[4];
    options.steps = static_cast<std::uint32_t>(std::atoi(arguments[5].c_str()));
    options.first = static_cast<std::uint32_t>(std::atoi(arguments[6].c_str()));
    options.stores = arguments[7] == "1";
    options.waits = arguments[8] == "1";
    options.claims_first = arguments[9] == "1";
    kills::live(options);
}
