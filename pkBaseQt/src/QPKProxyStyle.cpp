#include <pkBaseQt/QPKProxyStyle.h>

namespace pkBase {

QPKProxyStyle::QPKProxyStyle() = default;

QPKProxyStyle::~QPKProxyStyle() = default;

int QPKProxyStyle::styleHint(
    StyleHint hint, const QStyleOption* p_option, const QWidget* p_widget, QStyleHintReturn* p_return) const
{
    if (hint == SH_Menu_Scrollable) {
        return 1;
    }
    return QProxyStyle::styleHint(hint, p_option, p_widget, p_return);
}

} // namespace pkBase
