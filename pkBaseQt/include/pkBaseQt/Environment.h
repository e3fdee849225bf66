#pragma once

#include <pkBaseQt/pkBaseQt_export.h>

class QByteArray;

namespace pkBase {

/// The environment of the process. Main thread, at start-up.
class PKBASEQT_EXPORT Environment
{
public:
    Environment() = delete;

    /// Puts a variable into the environment, over an older value.
    /// @param assignment "NAME=value"; nothing after the "=" sets an empty value
    /// @return false, with nothing changed, if the text holds no "=", no name, or a null character, or if the
    /// system refuses. To be called before other threads start: reading the environment takes no lock.
    static bool putQEnv(const QByteArray& assignment);
};

} // namespace pkBase
