#pragma once

#include <pkBaseQt/pkBaseQt_export.h>

class QWidget;

namespace pkBase {

/**
 * The last touch for a panel or page when it is complete: what the maker's forms have in common and no form
 * says for itself.
 *
 * Spin boxes, combo boxes and sliders take the wheel only while they have the focus, so that scrolling over a
 * long panel changes no value by accident. Main thread.
 */
class PKBASEQT_EXPORT QFinalPolish
{
public:
    QFinalPolish() = delete;

    /// Polishes @p p_widget and all widgets in it that exist now; a second time changes nothing. Null is
    /// ignored.
    static void apply(QWidget* p_widget);
};

} // namespace pkBase
