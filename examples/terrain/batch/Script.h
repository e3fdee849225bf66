#pragma once

#include <QtCore/QString>

#include <stdexcept>
#include <string>
#include <vector>

namespace terrain {

/// A line of a script that cannot be carried out; the text is for the user.
class ScriptError : public std::runtime_error
{
public:
    explicit ScriptError(const QString& text)
        : std::runtime_error(text.toStdString())
    { }
};

/// The words of a line, which are separated by blanks. Blanks between double quotes belong to the word; a
/// word that begins with "#" starts a comment.
/// @throws ScriptError if a double quote is not closed
std::vector<std::string> words_of(const std::string& line);

/// A finite number, written as in C whatever the user's language, and nothing else.
/// @throws ScriptError if @p word is anything else
double number_of(const std::string& word);

/// A whole number from 1 on. @throws ScriptError if @p word is anything else
int count_of(const std::string& word);

/// A whole number from 0 on. @throws ScriptError if @p word is anything else
int place_of(const std::string& word);

} // namespace terrain
