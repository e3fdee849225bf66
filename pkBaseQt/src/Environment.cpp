#include <pkBaseQt/Environment.h>

#include <QtCore/QByteArray>

namespace pkBase {

bool Environment::putQEnv(const QByteArray& assignment)
{
    const int separator = assignment.indexOf('=');
    if (separator < 1 || assignment.contains('\0')) {
        return false;
    }
    const QByteArray name = assignment.left(separator);
    return qputenv(name.constData(), assignment.mid(separator + 1));
}

} // namespace pkBase
