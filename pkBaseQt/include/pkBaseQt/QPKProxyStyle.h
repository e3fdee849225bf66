#pragma once

#include <pkBaseQt/pkBaseQt_export.h>

#include <QtWidgets/QProxyStyle>

namespace pkBase {

/**
 * The maker's look on top of the platform's style. Programs derive their own style from it; the application
 * owns the style that it is given. Main thread.
 */
class PKBASEQT_EXPORT QPKProxyStyle : public QProxyStyle
{
    Q_OBJECT

public:
    QPKProxyStyle();
    ~QPKProxyStyle() override;

    /// Menus that are higher than the screen scroll, on every platform, instead of growing columns.
    int styleHint(StyleHint hint, const QStyleOption* p_option = nullptr, const QWidget* p_widget = nullptr,
        QStyleHintReturn* p_return = nullptr) const override;
};

} // namespace pkBase
