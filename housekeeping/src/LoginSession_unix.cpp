#include "LoginSession.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

namespace tarqa::housekeeping {

namespace {

const int s_longest_name = 32; // so that garbage does not make file names that no file system takes
const qulonglong s_no_audit_session = 4294967295;

QString hexadecimal(qulonglong number)
{
    return QString::number(number, 16);
}

/// The session manager's name of the session, which is mostly a number.
QString session_of_the_environment()
{
    const QString name = QString::fromLocal8Bit(qgetenv("XDG_SESSION_ID"));
    bool is_number = false;
    const qulonglong number = name.toULongLong(&is_number);
    if (is_number) {
        return hexadecimal(number);
    }
    return QString(name).remove(QRegularExpression("[^a-zA-Z0-9]")).left(s_longest_name);
}

/// The session that the kernel's auditing counts.
QString session_of_the_kernel()
{
    QFile file("/proc/self/sessionid");
    if (!file.open(QIODevice::ReadOnly)) {
        return QString();
    }
    bool is_number = false;
    const qulonglong number = file.readAll().trimmed().toULongLong(&is_number);
    return is_number && number != s_no_audit_session ? hexadecimal(number) : QString();
}

} // namespace

const QString& login_session()
{
    static const QString s_session = [] {
        const QString session = session_of_the_environment();
        return session.isEmpty() ? session_of_the_kernel() : session;
    }();
    return s_session;
}

} // namespace tarqa::housekeeping
