#include <tarqa/housekeeping/Tripwire.h>

#include "LockTable.h"
#include "TripwireState.h"

#include <QtCore/QByteArray>

namespace tarqa::housekeeping {

namespace {

const char* const s_variable = "TARQ_TRIPWIRE";

} // namespace

std::atomic<int> TripwireState::s_value{TripwireState::Unasked};

/// Unless somebody set it meanwhile.
bool TripwireState::ask_environment()
{
    const QByteArray text = qgetenv(s_variable);
    const int wanted = text.isEmpty() || text == "0" ? Off : On;
    int value = Unasked;
    return (s_value.compare_exchange_strong(value, wanted) ? wanted : value) == On;
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
