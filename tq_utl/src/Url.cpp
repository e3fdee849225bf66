#include <tarqa/utilities/Url.h>

#include <QtCore/QByteArray>

#include <algorithm>
#include <filesystem>

namespace tarqa::utilities {

namespace {

const std::string s_scheme = "file://";
const std::string s_this_machine = "localhost";

// What a path may hold besides letters, digits and "-._~".
const char* const s_path_characters = "!$&'()*+,;=:@/";

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// True if @p text holds a drive letter with its colon at @p at: at its end, or before a slash or backslash.
bool is_drive(const std::string& text, std::size_t at)
{
    if (text.size() < at + 2 || !is_letter(text[at]) || text[at + 1] != ':') {
        return false;
    }
    return text.size() == at + 2 || text[at + 2] == '/' || text[at + 2] == '\\';
}

/// Qt's texts would not survive bytes that are no UTF-8; its byte arrays do.
std::string encoded(const std::string& path)
{
    const QByteArray bytes(path.data(), static_cast<int>(path.size()));
    return bytes.toPercentEncoding(s_path_characters).toStdString();
}

int hex_digit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// Written out because QByteArray::fromPercentEncoding() makes garbage of a "%" without two hexadecimal
/// digits, which stands for itself here.
std::string decoded(const std::string& text)
{
    std::string path;
    path.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hex_digit(text[i + 1]) : -1;
        const int low = high < 0 ? -1 : hex_digit(text[i + 2]);
        if (low < 0) {
            path += text[i];
            continue;
        }
        path += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return path;
}

std::string absolute(const std::string& path)
{
    if (path.front() == '/') {
        return path;
    }
    std::error_code error;
    std::string base = std::filesystem::current_path(error).generic_u8string();
    if (base.empty() || base.back() != '/') { // empty: the working directory has been deleted
        base += '/';
    }
    return base + path;
}

std::string url_of_drive(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return s_scheme + '/' + encoded(path);
}

} // namespace

std::string filesystem_to_url(const std::string& path)
{
    if (path.empty()) {
        return {};
    }
    if (is_drive(path, 0)) {
        return url_of_drive(path);
    }
    const std::string full = absolute(path);
    if (is_drive(full, 0)) { // the working directory is on a drive
        return url_of_drive(full);
    }
    if (full.front() == '/'
        && is_drive(full, 1)) { // a folder that is called "C:"; not to be taken for a drive later
        return s_scheme + full.substr(0, 2) + "%3A" + encoded(full.substr(3));
    }
    return s_scheme + encoded(full);
}

std::string url_to_filesystem(const std::string& url)
{
    if (url.compare(0, s_scheme.size(), s_scheme) != 0) {
        return url;
    }
    std::string rest = url.substr(s_scheme.size());
    if (rest.compare(0, s_this_machine.size() + 1, s_this_machine + '/') == 0) {
        rest.erase(0, s_this_machine.size());
    }
    if (rest.empty() || is_drive(rest, 0)) {
        return decoded(rest);
    }
    if (rest.front() == '/') {
        return decoded(is_drive(rest, 1) ? rest.substr(1) : rest);
    }
    const bool names_a_machine = rest.find('/') != std::string::npos;
    return decoded(names_a_machine ? "//" + rest : rest);
}

std::string file_from_url(const std::string& url)
{
    return url_to_filesystem(url);
}

} // namespace tarqa::utilities
