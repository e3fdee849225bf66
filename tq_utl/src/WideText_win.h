#pragma once

#include <QtCore/QString>

#include <string>

namespace tarqa::utilities {

/// UTF-8 to what the system's functions take.
inline std::wstring to_wide(const std::string& text)
{
    return QString::fromStdString(text).toStdWString();
}

/// What the system's functions give to UTF-8.
inline std::string from_wide(const std::wstring& text)
{
    return QString::fromStdWString(text).toStdString();
}

} // namespace tarqa::utilities
