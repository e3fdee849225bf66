#pragma once

// The message type of the operating system whose power events QTarqaApplication::winEventFilter() takes.
// Elsewhere a structure of the same name and the same first fields makes the filter callable all the same.
#ifdef _WIN32
#include <windows.h>
#else
#include <QtCore/QtGlobal>

/// The first fields of the operating system's message, for systems that have none.
struct tagMSG
{
    void* hwnd = nullptr; ///< the window that the message is for
    unsigned int message = 0; ///< which message it is
    quintptr wParam = 0; ///< its first argument
    qintptr lParam = 0; ///< its second argument
};
/// As the operating system names it.
typedef tagMSG MSG;
#endif
