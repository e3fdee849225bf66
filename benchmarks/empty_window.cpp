#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

/// What the start of the terrain host is measured beside: the same libraries, and a window with nothing in
/// it.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1300, 780); // as the host's
    window.show();
    return QApplication::exec();
}
