#include "Program.h"

#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the same on every machine
    const QApplication application(argc, argv);
    return run_benchmarks(argc, argv);
}
