#include "TarqStyle.h"

namespace tarqa::housekeeping {

int TarqStyle::styleHint(
    StyleHint hint, const QStyleOption* p_option, const QWidget* p_widget, QStyleHintReturn* p_return) const
{
    if (hint == SH_Slider_AbsoluteSetButtons) {
        return Qt::LeftButton;
    }
    return QPKProxyStyle::styleHint(hint, p_option, p_widget, p_return);
}

} // namespace tarqa::housekeeping
