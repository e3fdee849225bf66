#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>
#include <vector>

namespace host_test {

/// A text of the program and what stands for it in another language.
struct TranslatedMessage
{
    QString context;
    QString source;
    QString comment;
    QStringList translations; ///< several for the forms of a plural
    bool is_finished = false;

    /// What tells it from other messages, for a failure to print.
    std::string name() const;
};

/// The messages of a .ts file; fails the test if there are none.
std::vector<TranslatedMessage> read_translations(const std::string& path);

} // namespace host_test
