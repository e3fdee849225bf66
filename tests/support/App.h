#pragma once

#include <QtWidgets/QApplication>

namespace support {

/**
 * The application object of one test, with arguments of its own. Made inside the test, so that tests without
 * one stay possible; file dialogs are Qt's own, which a DialogDriver can drive.
 */
class App
{
public:
    App()
        : m_application(m_count, m_arguments)
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    QApplication& application() { return m_application; }

private:
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    QApplication m_application;
};

} // namespace support
