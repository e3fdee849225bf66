#include "batch/Script.h"

#include <QtCore/QObject>

#include <charconv>
#include <cmath>

namespace terrain {

namespace {

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r'; // the last one ends lines elsewhere
}

template <class Number>
bool parse(const std::string& word, Number& number)
{
    const char* const p_end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), p_end, number);
    return result.ec == std::errc() && result.ptr == p_end;
}

int whole_number(const std::string& word, int least)
{
    int number = 0;
    if (!parse(word, number) || number < least) {
        throw ScriptError(QObject::tr("\"%1\" is not a whole number from %2 on")
                              .arg(QString::fromStdString(word), QString::number(least)));
    }
    return number;
}

} // namespace

std::vector<std::string> words_of(const std::string& line)
{
    std::vector<std::string> words;
    bool in_word = false;
    bool in_quotes = false;
    for (const char c : line) {
        if (!in_quotes && is_blank(c)) {
            in_word = false;
            continue;
        }
        if (!in_word && c == '#') {
            break;
        }
        if (!in_word) {
            words.emplace_back();
            in_word = true;
        }
        if (c == '"') {
            in_quotes = !in_quotes;
        } else {
            words.back() += c;
        }
    }
    if (in_quotes) {
        throw ScriptError(QObject::tr("a double quote is not closed"));
    }
    return words;
}

double number_of(const std::string& word)
{
    double number = 0;
    if (!parse(word, number) || !std::isfinite(number)) {
        throw ScriptError(QObject::tr("\"%1\" is not a number").arg(QString::fromStdString(word)));
    }
    return number;
}

int count_of(const std::string& word)
{
    return whole_number(word, 1);
}

int place_of(const std::string& word)
{
    return whole_number(word, 0);
}

} // namespace terrain
