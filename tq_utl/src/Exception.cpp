#include <tarqa/utilities/Exception.h>

#include <ostream>

namespace tarqa {

namespace {

std::string text_of(const char* text)
{
    return text ? text : "";
}

// Numbers go through std::to_string, never through the stream: its locale and its flags would change them.

std::string headline(unsigned int code, const std::string& message)
{
    return "Error " + std::to_string(code) + ": " + message;
}

std::string place(const std::string& file, unsigned int line)
{
    return file + ", line " + std::to_string(line);
}

} // namespace

Exception::Exception(unsigned int code, const std::string& message, const char* file, unsigned int line)
    : m_code(code)
    , m_message(message)
    , m_file(text_of(file))
    , m_line(line)
{ }

Exception::Exception(unsigned int code, const QString& message, const char* file, unsigned int line)
    : Exception(code, message.toStdString(), file, line)
{ }

Exception::Exception(unsigned int code, const char* message, const char* file, unsigned int line)
    : Exception(code, text_of(message), file, line)
{ }

Exception::Exception(const Exception&) = default;
Exception& Exception::operator=(const Exception&) = default;
Exception::~Exception() = default;

void Exception::log_information(std::ostream& stream) const
{
    stream << headline(m_code, m_message) << '\n';
    stream << "Thrown in " << place(m_file, m_line) << '\n';
    for (const std::string& line : m_trail) {
        stream << line << '\n';
    }
}

const char* Exception::what() const
{
    return m_message.c_str();
}

void Exception::caught_here(const char* file, unsigned int line)
{
    m_trail.push_back("Caught in " + place(text_of(file), line));
}

void Exception::catch_and_transfer(const Exception& caught)
{
    const std::vector<std::string> history = caught.m_trail; // a copy: caught may be this very exception
    m_trail.push_back("Replaces " + headline(caught.m_code, caught.m_message));
    m_trail.push_back("Thrown in " + place(caught.m_file, caught.m_line));
    m_trail.insert(m_trail.end(), history.begin(), history.end());
}

std::ostream& operator<<(std::ostream& stream, const Exception& exception)
{
    exception.log_information(stream);
    return stream;
}

} // namespace tarqa
