#include <tarqa/housekeeping/Tripwire.h>

#include "LockTable.h"
#include "TripwireState.h"

#include <QtCore/QByteArray>

namespace tarqa::housekeeping {

namespace {

const char* const s_variable = "TARQ_TRIPWIRE";

} // namespace

std::atomic<int> TripwireState::s_value{TripwireState::Unasked};

/// Looks at the environment if nobody has decided yet.
bool TripwireState::is_on_or_asks()
{
    int value = s_value;
    if (value == Unasked) {
        const QByteArray text = qgetenv(s_variable);
        const int wanted = text.isEmpty() || text == "0" ? Off : On;
        if (s_value.compare_exchange_strong(value, wanted)) { // or somebody decided meanwhile
            value = wanted;
        }
    }
    return value == On;
}

void Tripwire::enable()
{
    TripwireState::set(true);
}

void Tripwire::disable()
{
    TripwireState::set(false);
    LockTable::instance().clear();
}

bool Tripwire::enabled()
{
    return TripwireState::is_on();
}

} // namespace tarqa::housekeeping
