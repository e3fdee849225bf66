#pragma once

#include <QtCore/QString>

namespace tarqa::housekeeping {
class DocumentId;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// The quick help of a document, or of none, as HTML: its title, and a table for each section that has
/// anything. Main thread.
QString shortcuts_table(const housekeeping::DocumentId& document);

} // namespace terrain
