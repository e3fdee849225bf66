#pragma once

#include <string>

namespace tarqa::housekeeping {
class AbstractDocument;
}

namespace host_test {

namespace housekeeping = tarqa::housekeeping;

/// All that a terrain document holds, as lines of text: the raster with its place on the Earth and each cell
/// bit by bit, the triangulation, and where it comes from. Two documents that differ in anything that
/// commands may change have different texts. The mark of being modified and the record of changes for those
/// who draw are left out, since undo does not bring them back.
std::string text_of(const housekeeping::AbstractDocument& document);

} // namespace host_test
