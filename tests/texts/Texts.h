#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

// The texts of the libraries as one table: what people, scripts and other programs read from them. Each area
// has a file with its rows, and each row is a test of its own:
//
//     INSTANTIATE_TEST_SUITE_P(Documents, Texts, testing::ValuesIn(std::vector<texts::Row>{
//         {"UnsavedTitle", "Untitled", [] { return title_of_a_new_document(); }},
//     }), texts::name_of);

namespace texts {

/// One text.
struct Row
{
    std::string name; ///< of the test: letters and digits, unique in its area
    std::string expected; ///< byte for byte, in UTF-8
    std::function<std::string()> seen; ///< makes the libraries produce the text, in a process of its own
};

/// The row's name for gtest.
std::string name_of(const testing::TestParamInfo<Row>& info);

/// How gtest prints a row.
void PrintTo(const Row& row, std::ostream* p_stream);

} // namespace texts

class Texts : public testing::TestWithParam<texts::Row>
{ };
