#pragma once

#include <QtCore/QString>

namespace terrain {

/// @p value as people read it in the language of the program, without groups of digits; the other arguments
/// are those of QString::number(). Any thread. Not for files, which are the same in every language; what a
/// batch prints is, too, as its numbers are plain, see Language.
QString number_text(double value, char format = 'g', int precision = 6);

} // namespace terrain
