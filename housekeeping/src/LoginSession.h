#pragma once

#include <QtCore/QString>

namespace tarqa::housekeeping {

/// The login session that the process belongs to, as it stands in file names: letters and digits, a number in
/// hexadecimal. Empty where the system tells none. Looked up once per process.
const QString& login_session();

} // namespace tarqa::housekeeping
