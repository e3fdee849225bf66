#include <tarqa/utilities/Pointers.h>

#include <gtest/gtest.h>

#include <memory>

#include <boost/shared_ptr.hpp>

using tarqa::utilities::null_pointer;
using tarqa::utilities::valid_pointer;

TEST(Pointers, TellNullFromValidForPlainAndSharedPointers)
{
    int value = 3;
    const int* const null = nullptr;
    EXPECT_TRUE(null_pointer(null));
    EXPECT_FALSE(valid_pointer(null));
    EXPECT_FALSE(null_pointer(&value));
    EXPECT_TRUE(valid_pointer(&value));
    EXPECT_TRUE(null_pointer(boost::shared_ptr<int>()));
    EXPECT_TRUE(valid_pointer(boost::shared_ptr<int>(new int(0))));
    EXPECT_TRUE(null_pointer(std::unique_ptr<int>()));
    EXPECT_TRUE(valid_pointer(std::make_unique<int>(0)));
}
