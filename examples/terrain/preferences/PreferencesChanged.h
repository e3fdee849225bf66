#pragma once

namespace tarqa::housekeeping {
class ApplicationMessage;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// Tells everybody in the program that preferences were changed and are in the ApplicationManager by now:
/// sends, at once, an ApplicationMessage of its own kind. Whoever shows something that depends on preferences
/// subscribes to that class. Main thread.
void send_preferences_changed();

/// Whether @p message is the one that send_preferences_changed() sends.
bool is_preferences_changed(const housekeeping::ApplicationMessage& message);

} // namespace terrain
