#include "FuzzApplication.h"

#include <QtWidgets/QApplication>

namespace fuzz {

namespace {

template <class Application>
void make()
{
    static char s_name[] = "fuzz";
    static char* s_arguments[] = {s_name, nullptr};
    static int s_count = 1;
    // Never deleted: singletons that go at the very end would miss it.
    static const Application* const s_p_application = new Application(s_count, s_arguments);
    Q_UNUSED(s_p_application);
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("Tarq");
}

} // namespace

void make_application()
{
    make<QApplication>();
}

void make_application_without_windows()
{
    make<QCoreApplication>();
}

} // namespace fuzz
