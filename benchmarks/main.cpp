#include "Program.h"

#include <QtCore/QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return run_benchmarks(argc, argv);
}
