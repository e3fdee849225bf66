#pragma once

#include <pkBaseQt/QPKProxyStyle.h>

namespace tarqa::housekeeping {

/// The application's style: the maker's look with one habit of modelling programs. The application owns it.
class TarqStyle : public pkBase::QPKProxyStyle
{
    Q_OBJECT

public:
    /// A click into a slider's groove goes there at once.
    int styleHint(StyleHint hint, const QStyleOption* p_option = nullptr, const QWidget* p_widget = nullptr,
        QStyleHintReturn* p_return = nullptr) const override;
};

} // namespace tarqa::housekeeping
