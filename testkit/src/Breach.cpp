#include <tarqa/testkit/Breach.h>

#include <algorithm>
#include <cctype>

namespace tarqa::housekeeping::testkit {

namespace {

const std::size_t s_before = 30; // bytes shown before the first that differs
const std::size_t s_after = 50; // and from it on

std::string printable(const std::string& text)
{
    static const char* const s_digits = "0123456789abcdef";
    std::string shown;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x20 || byte == 0x7f) {
            shown += "\\x";
            shown += s_digits[byte / 16];
            shown += s_digits[byte % 16];
        } else {
            shown += letter; // beyond ASCII it is UTF-8, or as good as that
        }
    }
    return shown;
}

/// The line of @p text that begins at @p begin, cut around the byte at @p place.
std::string line_around(const std::string& text, std::size_t begin, std::size_t place)
{
    if (begin > text.size() || (begin == text.size() && begin > 0)) {
        return "the end";
    }
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::size_t from = place > begin + s_before ? place - s_before : begin;
    const std::size_t to = std::min(end, place + s_after);
    return '"' + std::string(from > begin ? "..." : "") + printable(text.substr(from, to - from))
        + (to < end ? "..." : "") + '"';
}

} // namespace

std::string Breach::text() const
{
    std::string line = name_of(promise) + ": ";
    for (const std::string& part : {command, where}) {
        line += part.empty() ? part : part + ", ";
    }
    line.resize(line.size() - 2);
    return difference.empty() ? line : line + ": " + difference;
}

std::string text_of(const std::vector<Breach>& breaches)
{
    std::string text;
    for (const Breach& breach : breaches) {
        text += breach.text() + '\n';
    }
    return text;
}

std::string first_difference(const std::string& expected, const std::string& actual)
{
    if (expected == actual) {
        return {};
    }
    const std::size_t common = std::min(expected.size(), actual.size());
    const std::size_t place
        = static_cast<std::size_t>(std::mismatch(expected.begin(),
                                       expected.begin() + static_cast<std::ptrdiff_t>(common), actual.begin())
                                       .first
            - expected.begin());
    const auto until = expected.begin() + static_cast<std::ptrdiff_t>(place);
    const auto number = std::count(expected.begin(), until, '\n') + 1;
    const std::size_t last = place == 0 ? std::string::npos : expected.rfind('\n', place - 1);
    const std::size_t begin = last == std::string::npos ? 0 : last + 1;
    return "line " + std::to_string(number) + " is " + line_around(actual, begin, place) + ", not "
        + line_around(expected, begin, place);
}

} // namespace tarqa::housekeeping::testkit
