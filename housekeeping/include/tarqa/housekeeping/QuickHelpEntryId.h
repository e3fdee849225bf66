#pragma once

namespace tarqa::housekeeping {

/// Names a quick-help entry; unique within one run, never reused. The first entry has 0.
typedef unsigned long long QuickHelpEntryId;

} // namespace tarqa::housekeeping
