#pragma once

#include <tarqa/utilities/UrlList.h>

class QMimeData;

namespace terrain {

// Files that are dragged into the main window. Main thread.

/// The addresses of the files in @p data, which may hold other things too.
tarqa::utilities::UrlList urls_of_files(const QMimeData& data);

/// Asks whoever listens to open files, in the current document if that can be, by message.
void ask_to_insert(const tarqa::utilities::UrlList& urls);

} // namespace terrain
