#pragma once

#include <tarqa/testkit/Breach.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarqa::housekeeping::testkit {

/// The breaches that a proof has found so far, a few of each kind, and how much it has tried.
class Findings
{
public:
    /// @param exceptions promises that are not looked at
    explicit Findings(std::set<Promise> exceptions);

    void add(const Breach& breach);
    const std::vector<Breach>& breaches() const { return m_breaches; }

    int experiments = 0;
    int reports = 0;
    int questions = 0;

private:
    std::set<Promise> m_exceptions;
    std::map<std::pair<Promise, std::string>, int> m_counts;
    std::vector<Breach> m_breaches;
};

} // namespace tarqa::housekeeping::testkit
