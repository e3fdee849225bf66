#pragma once

// The message type of the operating system whose power events QTarqaApplication::winEventFilter() takes.
// Elsewhere a structure of the same name and the same first fields makes the filter callable all the same.
#ifdef _WIN32
#include <windows.h>
#else
#include <QtCore/QtGlobal>

struct tagMSG
{
    void* hwnd = nullptr;
    unsigned int message = 0;
    quintptr wParam = 0;
    qintptr lParam = 0;
};
typedef tagMSG MSG;
#endif
