// What the list of a quick-help section costs with few and with many entries, beside a QStandardItemModel
// that has as many rows and the same roles: reading a row, finding the row of an entry that has changed,
// taking an entry out and putting it back, and filling the list.

#include "RatioReporter.h"

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>

#include <QtCore/QAbstractListModel>
#include <QtGui/QStandardItemModel>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace housekeeping = tarqa::housekeeping;
using housekeeping::QuickHelpSection;

namespace {

enum Role
{
    Command = Qt::DisplayRole,
    Description = Qt::UserRole,
    Visible,
    DocId
};

const unsigned long long s_document = 7;

QString command_of(int row)
{
    return QStringLiteral("Ctrl+%1").arg(row);
}

QString description_of(int row)
{
    return QStringLiteral("Explanation %1").arg(row);
}

/// An entry that has its text at hand, as an item of the peer has, so that the lists are compared.
class TextEntry : public housekeeping::AbstractQuickHelpInputEntry
{
public:
    TextEntry(int row, QuickHelpSection section)
        : AbstractQuickHelpInputEntry(
            nullptr, housekeeping::DocumentId::build(s_document), description_of(row), section)
        , m_input(command_of(row))
    { }
    ~TextEntry() override { take_out(); }
    QString input() const override { return m_input; }

private:
    QString m_input;
};

/// An entry as hosts have it: its text is made of its keys whenever it is read.
class KeyEntry : public housekeeping::QuickHelpKeySequenceEntry
{
public:
    KeyEntry(int row, QuickHelpSection section)
        : QuickHelpKeySequenceEntry(nullptr, housekeeping::DocumentId::build(s_document),
            QKeySequence(Qt::CTRL | (Qt::Key_A + row % 26)), description_of(row), section)
    { }
};

/// A section that nobody else uses; there are enough for all lists below.
QuickHelpSection next_section()
{
    static unsigned int s_next = 0;
    return static_cast<QuickHelpSection>(s_next++);
}

/// The list of a section, filled with entries of the class @p Entry.
template <class Entry>
class Section
{
public:
    explicit Section(int count)
        : m_section(next_section())
    {
        for (int row = 0; row < count; ++row) {
            m_entries.push_back(std::make_unique<Entry>(row, m_section));
        }
        fill();
    }

    QAbstractItemModel& model()
    {
        return *housekeeping::QuickHelpManager::instance().sectionModel(m_section);
    }
    void change(int row) { m_entries[row]->setVisible(!m_entries[row]->visible()); }
    void take_out(int row) { m_entries[row]->setAttached(false); }
    void put_back(int row) { m_entries[row]->setAttached(true); }
    void fill()
    {
        for (const auto& entry : m_entries) {
            entry->setAttached(true);
        }
    }
    /// From the end, where it is cheap.
    void clear()
    {
        for (auto iter = m_entries.rbegin(); iter != m_entries.rend(); ++iter) {
            (*iter)->setAttached(false);
        }
    }

private:
    QuickHelpSection m_section;
    std::vector<std::unique_ptr<Entry>> m_entries; // by row
};

/// The peer, with the same operations.
class Items
{
public:
    explicit Items(int count)
    {
        for (int row = 0; row < count; ++row) {
            auto* const p_item = new QStandardItem;
            p_item->setData(command_of(row), Command);
            p_item->setData(description_of(row), Description);
            p_item->setData(true, Visible);
            p_item->setData(s_document, DocId);
            m_items.push_back(p_item);
        }
        fill();
    }

    QAbstractItemModel& model() { return m_model; }
    void change(int row) { m_items[row]->setData(!m_items[row]->data(Visible).toBool(), Visible); }
    void take_out(int row) { m_model.takeRow(row); }
    void put_back(int row) { m_model.insertRow(row, m_items[row]); }
    void fill()
    {
        for (QStandardItem* const p_item : m_items) {
            m_model.appendRow(p_item);
        }
    }
    void clear()
    {
        for (int row = m_model.rowCount() - 1; row >= 0; --row) {
            m_model.takeRow(row);
        }
    }

private:
    QStandardItemModel m_model;
    std::vector<QStandardItem*> m_items; // by row; owned by the model but for while they are taken out
};

typedef Section<TextEntry> Texts;
typedef Section<KeyEntry> Keys;

/// The filled list of @p count rows, the same one each time.
template <class List>
List& list_of(int count)
{
    static std::map<int, std::unique_ptr<List>> s_lists;
    std::unique_ptr<List>& list = s_lists[count];
    if (!list) {
        list = std::make_unique<List>(count);
    }
    return *list;
}

/// Goes round some rows that are evenly spread over a list, in leaps. The number of different rows says how
/// much memory is touched, whatever the length of the list; both numbers are powers of ten.
class Walk
{
public:
    explicit Walk(const benchmark::State& state)
        : m_rows(static_cast<int>(state.range(1)))
        , m_distance(static_cast<int>(state.range(0)) / m_rows)
        , m_leap(61813 % m_rows) // prime to a power of ten: no row comes twice before each has come once
    { }

    int next()
    {
        m_position += m_leap;
        if (m_position >= m_rows) {
            m_position -= m_rows;
        }
        return m_position * m_distance;
    }

private:
    int m_rows;
    int m_distance;
    int m_leap;
    int m_position = 0;
};

/// Few and many rows, of which always the same number is visited.
void lengths(benchmark::internal::Benchmark* p_benchmark)
{
    p_benchmark->Args({100, 100})->Args({10000, 100})->Args({100000, 100});
}

template <class List>
void read_row(benchmark::State& state)
{
    const QAbstractItemModel& model = list_of<List>(static_cast<int>(state.range(0))).model();
    Walk walk(state);
    unsigned long long documents = 0; // the sum of the numbers
    for (auto _ : state) {
        const QModelIndex index = model.index(walk.next(), 0);
        benchmark::DoNotOptimize(model.data(index, Command));
        benchmark::DoNotOptimize(model.data(index, Description));
        documents += model.data(index, DocId).toULongLong();
    }
    if (documents != static_cast<unsigned long long>(state.iterations()) * s_document) {
        state.SkipWithError("not every row was read");
    }
}
BENCHMARK_TEMPLATE(read_row, Texts)->Apply(lengths)->Args({100000, 100000});
BENCHMARK_TEMPLATE(read_row, Items)->Apply(lengths)->Args({100000, 100000});
BENCHMARK_TEMPLATE(read_row, Keys)->Args({100, 100});

template <class List>
void change_entry(benchmark::State& state)
{
    List& list = list_of<List>(static_cast<int>(state.range(0)));
    Walk walk(state);
    int expected = 0;
    benchmark::IterationCount told = 0;
    QObject context;
    QObject::connect(&list.model(), &QAbstractItemModel::dataChanged, &context,
        [&](const QModelIndex& index) { told += index.row() == expected ? 1 : 0; });
    for (auto _ : state) {
        expected = walk.next();
        list.change(expected);
    }
    if (told != state.iterations()) {
        state.SkipWithError("not every change was announced for its row");
    }
}
BENCHMARK_TEMPLATE(change_entry, Texts)->Apply(lengths);
BENCHMARK_TEMPLATE(change_entry, Items)->Apply(lengths);

template <class List>
void take_and_put_back(benchmark::State& state)
{
    List& list = list_of<List>(static_cast<int>(state.range(0)));
    Walk walk(state);
    int expected = 0;
    benchmark::IterationCount told = 0;
    QObject context;
    QObject::connect(&list.model(), &QAbstractItemModel::rowsInserted, &context,
        [&](const QModelIndex&, int row) { told += row == expected ? 1 : 0; });
    for (auto _ : state) {
        expected = walk.next();
        list.take_out(expected);
        list.put_back(expected);
    }
    if (told != state.iterations()) {
        state.SkipWithError("not every entry came back to its row");
    }
}
BENCHMARK_TEMPLATE(take_and_put_back, Texts)->Apply(lengths);
BENCHMARK_TEMPLATE(take_and_put_back, Items)->Apply(lengths);

/// The entries are made beforehand, on both sides.
template <class List>
void fill(benchmark::State& state)
{
    List& list = list_of<List>(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        list.clear();
        state.ResumeTiming();
        list.fill();
    }
    if (list.model().rowCount() != state.range(0)) {
        state.SkipWithError("the list is not full");
    }
}
BENCHMARK_TEMPLATE(fill, Texts)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK_TEMPLATE(fill, Items)->Arg(100)->Arg(10000)->Arg(100000);

/// Each length beside the peer, and how our own cost grows from the shortest list to the longest.
std::vector<Ratio> ratios()
{
    struct Benchmark
    {
        std::string what;
        std::string name;
        std::string visited;
    };
    const Benchmark benchmarks[]
        = {{"read a row", "read_row", "/100"}, {"change an entry", "change_entry", "/100"},
            {"take out and put back", "take_and_put_back", "/100"}, {"fill", "fill", ""}};
    std::vector<Ratio> result;
    for (const Benchmark& bench : benchmarks) {
        const std::string ours = bench.name + "<Texts>/";
        const std::string peer = bench.name + "<Items>/";
        for (const std::string count : {"100", "10000", "100000"}) {
            result.emplace_back(bench.what + ", " + count + " entries / QStandardItemModel",
                ours + count + bench.visited, peer + count + bench.visited);
        }
        result.emplace_back(bench.what + ", 100000 entries / 100", ours + "100000" + bench.visited,
            ours + "100" + bench.visited);
    }
    result.emplace_back("read each row in turn, 100000 entries / QStandardItemModel",
        "read_row<Texts>/100000/100000", "read_row<Items>/100000/100000");
    result.emplace_back("read a row of a key sequence / QStandardItemModel", "read_row<Keys>/100/100",
        "read_row<Items>/100/100");
    return result;
}
const std::vector<Ratio> s_ratios = ratios();

} // namespace
