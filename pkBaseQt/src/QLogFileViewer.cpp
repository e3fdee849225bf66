#include <pkBaseQt/QLogFileViewer.h>

namespace pkBase {

QLogFileViewer::QLogFileViewer() = default;

QLogFileViewer::~QLogFileViewer() = default;

pkSingleton<QLogFileViewer>& QLogFileViewer::get_instance()
{
    static pkSingleton<QLogFileViewer> s_holder(pkDestructionPhase(5), &QLogFileViewer::destroy_instance);
    return s_holder;
}

QLogFileViewer& QLogFileViewer::instance()
{
    return get_instance().get();
}

void QLogFileViewer::destroy_instance()
{
    get_instance().destroy();
}

} // namespace pkBase
