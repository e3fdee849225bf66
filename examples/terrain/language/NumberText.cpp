#include "language/NumberText.h"

#include <QtCore/QLocale>

namespace terrain {

QString number_text(double value, char format, int precision)
{
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return locale.toString(value, format, precision);
}

} // namespace terrain
