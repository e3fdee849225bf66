#pragma once

namespace fuzz {

/// Makes the application object of this process, with the names under which the settings are stored, unless
/// there is one. It lives until the process ends.
void make_application();

/// The same for a program without windows, which tells of its troubles without boxes that wait for an answer.
void make_application_without_windows();

} // namespace fuzz
