#include "support/Picture.h"

#include <gtest/gtest.h>

TEST(TerrainResources, LargeProductIcon)
{
    support::compiled_in_picture(":/tarq/Resources/tarqterrain64x64.png", 64);
}

TEST(TerrainResources, SmallProductIcon)
{
    support::compiled_in_picture(":/tarq/Resources/tarqterrain16x16.png", 16);
}
