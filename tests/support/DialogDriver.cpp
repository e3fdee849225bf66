#include "support/DialogDriver.h"

#include <gtest/gtest.h>

namespace support {

DialogDriver::DialogDriver() = default;

DialogDriver::~DialogDriver()
{
    if (pending() > 0) {
        ADD_FAILURE() << pending() << " dialog(s) that were to be answered did not appear";
    }
}

void DialogDriver::problem(const std::string& text)
{
    ADD_FAILURE() << text;
}

} // namespace support
