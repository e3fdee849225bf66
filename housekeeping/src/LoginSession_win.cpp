#include "LoginSession.h"

#include <QtCore/QLibrary>

#include <windows.h>

namespace tarqa::housekeeping {

namespace {

typedef BOOL(WINAPI* ProcessIdToSessionIdFunction)(DWORD, DWORD*);

QString session_of_this_process()
{
    const auto process_id_to_session_id = reinterpret_cast<ProcessIdToSessionIdFunction>(
        QLibrary::resolve("kernel32", "ProcessIdToSessionId"));
    if (!process_id_to_session_id) {
        return QString();
    }
    DWORD session = 0;
    process_id_to_session_id(GetCurrentProcessId(), &session);
    return QString::number(session, 16);
}

} // namespace

const QString& login_session()
{
    static const QString s_session = session_of_this_process();
    return s_session;
}

} // namespace tarqa::housekeeping
