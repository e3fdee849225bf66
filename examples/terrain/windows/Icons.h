#pragma once

#include <QtCore/QString>
#include <QtGui/QIcon>

namespace terrain {

/**
 * The icon that is compiled in as `icons/NAME.svg`, for all sizes and all screens.
 *
 * It is drawn when somebody looks at it, in the colours that the program's palette has then: text of buttons;
 * where it is disabled, the text of disabled ones; where it is selected, highlighted text. So it follows the
 * palette by itself. A null icon if there is none of that name.
 *
 * Any thread may ask for one, keep it and copy it, also in a program without windows; it is drawn on the main
 * thread of programs that have some, and nowhere else.
 */
QIcon icon(const QString& name);

} // namespace terrain
