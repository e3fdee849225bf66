#pragma once

#include <QtWidgets/QApplication>

#include <string>

namespace support {

/**
 * The application object of one test, with arguments of its own. Made inside the test, so that tests without
 * one stay possible; file dialogs are Qt's own, which a DialogDriver can drive.
 */
class App
{
public:
    /// @param program what the command line calls the program
    explicit App(const std::string& program = "test")
        : m_name(program)
        , m_application(m_count, m_arguments)
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    QApplication& application() { return m_application; }

private:
    std::string m_name;
    char* m_arguments[2] = {m_name.data(), nullptr};
    int m_count = 1;
    QApplication m_application;
};

} // namespace support
