#include "Check.h"
#include "Targets.h"

#include "support/PrivateHome.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

// One target as a program of libFuzzer; the build says which.

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static const support::PrivateHome s_home;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* p_data, std::size_t size)
{
    try {
        fuzz::HK_FUZZ_TARGET(std::string(reinterpret_cast<const char*>(p_data), size));
    } catch (const fuzz::Failure& failure) {
        std::cerr << "does not hold: " << failure.what() << std::endl;
        std::abort(); // so that libFuzzer keeps the input
    }
    return 0;
}
