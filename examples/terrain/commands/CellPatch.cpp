#include "commands/CellPatch.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace terrain {

namespace {

bool same_bits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

bool survives_as_float(double cell)
{
    return same_bits(static_cast<double>(static_cast<float>(cell)), cell);
}

} // namespace

/// Finds what cells held before, if they are looked up in their order.
class CellPatch::Reader
{
public:
    explicit Reader(const CellPatch& patch)
        : m_patch(patch)
    { }

    std::optional<double> find(std::size_t cell)
    {
        while (!at_end() && cell >= run().first + run().length) {
            m_passed += run().length;
            ++m_run;
        }
        if (at_end() || cell < run().first) {
            return {};
        }
        const std::size_t place = m_passed + cell - run().first;
        return m_patch.m_floats.empty() ? m_patch.m_doubles[place]
                                        : static_cast<double>(m_patch.m_floats[place]);
    }

private:
    bool at_end() const { return m_run == m_patch.m_runs.size(); }
    const Run& run() const { return m_patch.m_runs[m_run]; }

    const CellPatch& m_patch;
    std::size_t m_run = 0;
    std::size_t m_passed = 0; // cells in the runs before
};

/// Finds the runs of changed cells, if cells are looked through in their order.
class CellPatch::RunFinder
{
public:
    /// @param first the number of the first cell @param take gets each run as soon as its end is known
    template <class Take>
    void look_through(const std::vector<double>& before, std::size_t first, const double* p_after,
        std::size_t length, Take take)
    {
        // A gap that takes less room than the head of another run is kept along with the cells that changed.
        const std::size_t max_gap = sizeof(Run) / sizeof(double);
        for (std::size_t i = first; i < first + length; ++i) {
            if (same_bits(before[i], p_after[i - first])) {
                continue;
            }
            ++m_changed;
            if (m_run.length > 0 && i - (m_run.first + m_run.length) <= max_gap) {
                m_run.length = i - m_run.first + 1;
            } else {
                end(take);
                m_run = {i, 1};
            }
        }
    }

    /// Nothing is looked through any more.
    template <class Take>
    void end(Take take)
    {
        if (m_run.length > 0) {
            take(m_run);
        }
    }

    std::size_t changed() const { return m_changed; }

private:
    Run m_run = {0, 0};
    std::size_t m_changed = 0;
};

CellPatch::CellPatch(const std::vector<double>& before, const std::vector<double>& after)
{
    find_runs([&](RunFinder& finder, const auto& take) {
        finder.look_through(before, 0, after.data(), after.size(), take);
    });
    keep(before);
}

CellPatch::CellPatch(
    const std::vector<double>& before, int columns, const QRect& area, const std::vector<double>& after)
{
    const auto width = static_cast<std::size_t>(area.width());
    find_runs([&](RunFinder& finder, const auto& take) {
        for (int row = 0; row < area.height(); ++row) {
            const std::size_t first
                = static_cast<std::size_t>(area.top() + row) * static_cast<std::size_t>(columns)
                + static_cast<std::size_t>(area.left());
            finder.look_through(
                before, first, after.data() + static_cast<std::size_t>(row) * width, width, take);
        }
    });
    keep(before);
}

/// Looks through the cells twice, first to know how much memory to take: a list of runs that grows would need
/// more than twice as much for a while. @param look_through takes a finder through all cells
template <class LookThrough>
void CellPatch::find_runs(LookThrough look_through)
{
    std::size_t runs = 0;
    const auto count = [&runs](const Run&) { ++runs; };
    RunFinder counter;
    look_through(counter, count);
    counter.end(count);
    m_changed = counter.changed();

    m_runs.reserve(runs);
    const auto take = [this](const Run& run) { m_runs.push_back(run); };
    RunFinder finder;
    look_through(finder, take);
    finder.end(take);
}

/// Keeps what the cells of all runs held.
void CellPatch::keep(const std::vector<double>& before)
{
    std::size_t length = 0;
    bool as_floats = true;
    for (const Run& run : m_runs) {
        const auto first = before.begin() + static_cast<std::ptrdiff_t>(run.first);
        as_floats = as_floats
            && std::all_of(first, first + static_cast<std::ptrdiff_t>(run.length), survives_as_float);
        length += run.length;
    }
    as_floats ? m_floats.reserve(length) : m_doubles.reserve(length);
    for (const Run& run : m_runs) {
        for (std::size_t i = run.first; i < run.first + run.length; ++i) {
            as_floats ? m_floats.push_back(static_cast<float>(before[i])) : m_doubles.push_back(before[i]);
        }
    }
}

QRect CellPatch::area(int columns) const
{
    QRect area;
    const auto place_of = [columns](std::size_t cell) {
        const auto width = static_cast<std::size_t>(columns);
        return QPoint(static_cast<int>(cell % width), static_cast<int>(cell / width));
    };
    for (const Run& run : m_runs) {
        const QPoint first = place_of(run.first);
        const QPoint last = place_of(run.first + run.length - 1);
        const bool wraps = first.y() != last.y(); // it then reaches both sides
        area |= QRect(
            QPoint(wraps ? 0 : first.x(), first.y()), QPoint(wraps ? columns - 1 : last.x(), last.y()));
    }
    return area;
}

std::size_t CellPatch::bytes() const
{
    return sizeof *this + m_runs.capacity() * sizeof(Run) + m_floats.capacity() * sizeof(float)
        + m_doubles.capacity() * sizeof(double);
}

void CellPatch::restore(std::vector<double>& cells) const
{
    std::size_t next = 0;
    for (const Run& run : m_runs) {
        for (std::size_t i = run.first; i < run.first + run.length; ++i, ++next) {
            cells[i] = m_floats.empty() ? m_doubles[next] : static_cast<double>(m_floats[next]);
        }
    }
}

void CellPatch::add(const CellPatch& later, const std::vector<double>& now)
{
    CellPatch both;
    const auto is_first = [](const Run& one, const Run& other) { return one.first < other.first; };
    std::vector<Run> runs(m_runs.size() + later.m_runs.size());
    std::merge(
        m_runs.begin(), m_runs.end(), later.m_runs.begin(), later.m_runs.end(), runs.begin(), is_first);
    for (const Run& run : runs) {
        both.add_run(run);
    }
    both.m_runs.shrink_to_fit();
    std::size_t length = 0;
    for (const Run& run : both.m_runs) {
        length += run.length;
    }
    const bool as_floats = m_doubles.empty() && later.m_doubles.empty();
    as_floats ? both.m_floats.reserve(length) : both.m_doubles.reserve(length);
    Reader here(*this);
    Reader there(later);
    for (const Run& run : both.m_runs) {
        for (std::size_t i = run.first; i < run.first + run.length; ++i) {
            const std::optional<double> later_cell = there.find(i);
            const double cell = here.find(i).value_or(later_cell.value_or(now[i]));
            as_floats ? both.m_floats.push_back(static_cast<float>(cell)) : both.m_doubles.push_back(cell);
            both.m_changed += same_bits(cell, now[i]) ? 0 : 1; // the later change may have led back
        }
    }
    *this = std::move(both);
}

/// Adds a run that does not begin before the last one.
void CellPatch::add_run(const Run& run)
{
    if (!m_runs.empty() && run.first <= m_runs.back().first + m_runs.back().length) {
        Run& last = m_runs.back();
        last.length = std::max(last.first + last.length, run.first + run.length) - last.first;
    } else {
        m_runs.push_back(run);
    }
}

} // namespace terrain
