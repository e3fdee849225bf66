#include "texts/Texts.h"

#include <ostream>

namespace texts {

std::string name_of(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

void PrintTo(const Row& row, std::ostream* p_stream)
{
    *p_stream << row.name;
}

} // namespace texts

TEST_P(Texts, StandsAsItIs)
{
    EXPECT_EQ(GetParam().seen(), GetParam().expected);
}
