#include "Guides.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <stdexcept>

namespace guides {

namespace {

const char* const s_fence = "```";
const std::string s_mark_begin = "//! [";
const char* const s_blanks = " \t\r";

std::string trimmed(const std::string& line)
{
    const std::size_t begin = line.find_first_not_of(s_blanks);
    return begin == std::string::npos ? "" : line.substr(begin, line.find_last_not_of(s_blanks) - begin + 1);
}

bool begins_with(const std::string& line, const std::string& begin)
{
    return line.compare(0, begin.size(), begin) == 0;
}

bool leaves_out(const std::string& line)
{
    const std::string text = trimmed(line);
    return text == "..." || begins_with(text, "// ...") || begins_with(text, "// …");
}

/// The name in a mark; empty for any other line.
std::string marked(const std::string& line)
{
    const std::string text = trimmed(line);
    if (!begins_with(text, s_mark_begin) || text.back() != ']') {
        return {};
    }
    return text.substr(s_mark_begin.size(), text.size() - s_mark_begin.size() - 1);
}

/// Without common indentation, and without empty lines at both ends.
Lines tidy(Lines lines)
{
    const auto is_blank = [](const std::string& line) { return trimmed(line).empty(); };
    lines.erase(lines.begin(), std::find_if_not(lines.begin(), lines.end(), is_blank));
    while (!lines.empty() && is_blank(lines.back())) {
        lines.pop_back();
    }
    std::size_t common = std::string::npos;
    for (const std::string& line : lines) {
        common = std::min(common, line.find_first_not_of(' ')); // "none" is the greatest number
    }
    for (std::string& line : lines) {
        line = is_blank(line) ? "" : line.substr(common);
    }
    return lines;
}

/// What stands between the lines that leave something out; empty parts too.
std::vector<Lines> parts_of(const Lines& block)
{
    std::vector<Lines> parts(1);
    for (const std::string& line : block) {
        if (leaves_out(line)) {
            parts.emplace_back();
        } else {
            parts.back().push_back(line);
        }
    }
    std::transform(parts.begin(), parts.end(), parts.begin(), tidy);
    return parts;
}

bool stands_at(const Lines& part, const Lines& region, std::size_t place)
{
    if (place + part.size() > region.size()) {
        return false;
    }
    const auto begin = region.begin() + static_cast<std::ptrdiff_t>(place);
    return tidy(Lines(begin, begin + static_cast<std::ptrdiff_t>(part.size()))) == part;
}

} // namespace

std::vector<Block> blocks_of(const std::string& text)
{
    std::vector<Block> blocks;
    std::istringstream stream(text);
    std::string line;
    bool inside = false;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (begins_with(trimmed(line), s_fence)) {
            inside = !inside;
            if (inside) {
                blocks.push_back({trimmed(trimmed(line).substr(3)), number, {}});
            }
        } else if (inside) {
            blocks.back().lines.push_back(line);
        }
    }
    return blocks;
}

std::vector<Region> regions_of(const std::string& text)
{
    std::vector<Region> regions;
    std::map<std::string, std::size_t> open; // places in the list
    std::istringstream stream(text);
    std::string line;
    while (std::getline(stream, line)) {
        const std::string name = marked(line);
        if (name.empty()) {
            for (const auto& [unused, place] : open) {
                regions[place].lines.push_back(line);
            }
        } else if (open.erase(name) == 0) {
            open[name] = regions.size();
            regions.push_back({name, {}});
        }
    }
    if (!open.empty()) {
        throw std::runtime_error("the region [" + open.begin()->first + "] has no end");
    }
    return regions;
}

bool shows(const Lines& block, const Lines& whole_region)
{
    const Lines region = tidy(whole_region);
    const std::vector<Lines> parts = parts_of(block);
    if (parts.size() == 1) {
        return parts[0] == region;
    }
    if (!stands_at(parts.front(), region, 0)) {
        return false;
    }
    std::size_t place = parts.front().size();
    for (std::size_t part = 1; part + 1 < parts.size(); ++part) {
        while (place < region.size() && !stands_at(parts[part], region, place)) {
            ++place;
        }
        if (!stands_at(parts[part], region, place)) {
            return false;
        }
        place += parts[part].size();
    }
    // The last part is what the region ends with.
    return place + parts.back().size() <= region.size()
        && stands_at(parts.back(), region, region.size() - parts.back().size());
}

} // namespace guides
