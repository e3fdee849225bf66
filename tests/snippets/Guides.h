#pragma once

#include <string>
#include <vector>

/// What stands between the fences of a guide, and between the marks of a source.
namespace guides {

typedef std::vector<std::string> Lines;

/// A block of code in a guide.
struct Block
{
    std::string language; ///< behind the opening fence; may be empty
    int line = 0; ///< of the opening fence, from 1
    Lines lines;
};

/// A part of a source that guides may show: between two lines "//! [name]".
struct Region
{
    std::string name;
    Lines lines; ///< without the marks of regions inside
};

std::vector<Block> blocks_of(const std::string& text);
/// @throws std::runtime_error for a region without an end
std::vector<Region> regions_of(const std::string& text);

/// Whether a block shows a region: all of it, but for what a line "..." or one that begins with "// ..."
/// stands for. Indentation that all lines between two of those have in common does not count.
bool shows(const Lines& block, const Lines& region);

} // namespace guides
