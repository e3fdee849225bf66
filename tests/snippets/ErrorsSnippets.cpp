#include "support/App.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <boost/current_function.hpp>
#include <gtest/gtest.h>

#include <string>

// docs/errors-and-log.md

namespace errors_guide {

namespace housekeeping = tarqa::housekeeping;

//! [assertion]
bool choose(const std::string* p_well)
{
    if (!p_well) {
        housekeeping::ErrorProtocol::instance().log_assert(
            "p_well", BOOST_CURRENT_FUNCTION, "wells/Choice", __LINE__);
        return false; // and go on, with a neutral result
    }
    return !p_well->empty();
}
//! [assertion]

} // namespace errors_guide

TEST(ErrorsGuide, FailedCheckIsLogged)
{
    const support::App app;
    support::LogCapture log;
    const std::string well = "A1";
    EXPECT_TRUE(errors_guide::choose(&well));
    EXPECT_FALSE(errors_guide::choose(nullptr));
    EXPECT_TRUE(log.took_assert("p_well", "choose", "wells/Choice"));
}
