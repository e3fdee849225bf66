#include "Findings.h"

namespace tarqa::housekeeping::testkit {

namespace {

const int s_most_of_a_kind = 3;

} // namespace

Findings::Findings(std::set<Promise> exceptions)
    : m_exceptions(std::move(exceptions))
{ }

void Findings::add(const Breach& breach)
{
    if (m_exceptions.count(breach.promise) == 0
        && ++m_counts[{breach.promise, breach.command}] <= s_most_of_a_kind) {
        m_breaches.push_back(breach);
    }
}

} // namespace tarqa::housekeeping::testkit
