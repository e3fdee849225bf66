#pragma once

class QByteArray;
class QWidget;

namespace terrain {

/// Puts a window where it was when @p geometry was saved. Of damaged bytes Qt finds most, but not all: a
/// window that would be where no screen is goes to the middle of the first one. Empty bytes change nothing.
void restore_place(QWidget& window, const QByteArray& geometry);

} // namespace terrain
