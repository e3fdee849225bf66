// What the list of a quick-help section costs with few and with many entries, beside a QStandardItemModel
// that has as many rows and the same roles: reading rows, finding the row of an entry that has changed,
// taking an entry out and putting it back, and filling the list; then both behind a filter that shows one
// document's rows.

#include "RatioReporter.h"

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QSortFilterProxyModel>
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

/// The number of the document of a row: whoever opens a document attaches its entries together.
unsigned long long document_of(int row, int rows_per_document)
{
    return 1 + static_cast<unsigned long long>(row / rows_per_document);
}

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
    TextEntry(int row, unsigned long long document, QuickHelpSection section)
        : AbstractQuickHelpInputEntry(
            nullptr, housekeeping::DocumentId::build(document), description_of(row), section)
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
    KeyEntry(int row, unsigned long long document, QuickHelpSection section)
        : QuickHelpKeySequenceEntry(nullptr, housekeeping::DocumentId::build(document),
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
    typedef housekeeping::QuickHelpInputModelFilter Filter;

    Section(int count, int rows_per_document)
        : m_section(next_section())
    {
        for (int row = 0; row < count; ++row) {
            m_entries.push_back(std::make_unique<Entry>(row, document_of(row, rows_per_document), m_section));
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

/// The rule of our filter, for the peer.
class ItemFilter : public QSortFilterProxyModel
{
public:
    ItemFilter(const housekeeping::DocumentId& document, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_document(document.getId())
    {
        setDynamicSortFilter(true);
    }

    void setDocId(const housekeeping::DocumentId& document)
    {
        m_document = document.getId();
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        const QModelIndex index = sourceModel()->index(row, 0, parent);
        if (!index.data(Visible).toBool()) {
            return false;
        }
        const qulonglong document = index.data(DocId).toULongLong();
        return document == 0 || document == m_document;
    }

private:
    qulonglong m_document;
};

/// The peer, with the same operations.
class Items
{
public:
    typedef ItemFilter Filter;

    Items(int count, int rows_per_document)
    {
        for (int row = 0; row < count; ++row) {
            auto* const p_item = new QStandardItem;
            p_item->setData(command_of(row), Command);
            p_item->setData(description_of(row), Description);
            p_item->setData(true, Visible);
            p_item->setData(document_of(row, rows_per_document), DocId);
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

/// The filled list of @p count rows of one document, the same one each time.
template <class List>
List& list_of(int count)
{
    static std::map<int, std::unique_ptr<List>> s_lists;
    std::unique_ptr<List>& list = s_lists[count];
    if (!list) {
        list = std::make_unique<List>(count, count);
    }
    return *list;
}

const int s_rows = 100000;
const int s_rows_per_document = 1000;

/// A filled list of many documents, and a filter that shows one of them.
template <class List>
class Filtered
{
public:
    Filtered()
        : m_list(s_rows, s_rows_per_document)
        , m_filter(document_at(0), nullptr)
    {
        m_filter.setSourceModel(&m_list.model());
    }

    /// The same one each time.
    static Filtered& instance()
    {
        static Filtered s_filtered;
        return s_filtered;
    }

    void show(int row) { m_filter.setDocId(document_at(row)); }
    int shown() const { return m_filter.rowCount(); }
    List& list() { return m_list; }

private:
    static housekeeping::DocumentId document_at(int row)
    {
        return housekeeping::DocumentId::build(document_of(row, s_rows_per_document));
    }

    List m_list;
    typename List::Filter m_filter;
};

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
    if (documents != static_cast<unsigned long long>(state.iterations())) { // each is 1
        state.SkipWithError("not every row was read");
    }
}
BENCHMARK_TEMPLATE(read_row, Texts)->Apply(lengths)->Args({100000, 100000});
BENCHMARK_TEMPLATE(read_row, Items)->Apply(lengths)->Args({100000, 100000});
BENCHMARK_TEMPLATE(read_row, Keys)->Args({100, 100});

/// All rows in their order, as a view reads them that is filled; an iteration is one row.
template <class List>
void read_all(benchmark::State& state)
{
    const QAbstractItemModel& model = list_of<List>(static_cast<int>(state.range(0))).model();
    const int count = model.rowCount();
    int row = 0;
    unsigned long long documents = 0;
    for (auto _ : state) {
        const QModelIndex index = model.index(row, 0);
        benchmark::DoNotOptimize(index.data(Command));
        benchmark::DoNotOptimize(index.data(Description));
        documents += index.data(DocId).toULongLong();
        row = row + 1 == count ? 0 : row + 1;
    }
    if (documents != static_cast<unsigned long long>(state.iterations())) {
        state.SkipWithError("not every row was read");
    }
}
BENCHMARK_TEMPLATE(read_all, Texts)->Arg(s_rows);
BENCHMARK_TEMPLATE(read_all, Items)->Arg(s_rows);

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
BENCHMARK_TEMPLATE(take_and_put_back, Texts)->Apply(lengths)->Args({s_rows, s_rows});
BENCHMARK_TEMPLATE(take_and_put_back, Items)->Apply(lengths)->Args({s_rows, s_rows});

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

/// Another document's rows are shown, and counted.
template <class List>
void refilter(benchmark::State& state)
{
    Filtered<List>& filtered = Filtered<List>::instance();
    int row = 0;
    bool complete = true;
    for (auto _ : state) {
        row = (row + s_rows_per_document) % s_rows;
        filtered.show(row);
        complete = filtered.shown() == s_rows_per_document && complete;
    }
    if (!complete) {
        state.SkipWithError("not every row of the document was shown");
    }
}
BENCHMARK_TEMPLATE(refilter, Texts)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(refilter, Items)->Unit(benchmark::kMicrosecond);

/// Some entries of the document in the middle come one by one, and the rows that are shown are counted each
/// time. Making room for them is not measured.
template <class List>
void insert_through_filter(benchmark::State& state)
{
    const int some = 100;
    const int first = s_rows / 2;
    Filtered<List>& filtered = Filtered<List>::instance();
    filtered.show(first);
    bool complete = true;
    for (auto _ : state) {
        state.PauseTiming();
        for (int row = first + some - 1; row >= first; --row) {
            filtered.list().take_out(row);
        }
        int expected = filtered.shown();
        state.ResumeTiming();
        for (int row = first; row < first + some; ++row) {
            filtered.list().put_back(row);
            complete = filtered.shown() == ++expected && complete;
        }
    }
    if (!complete || filtered.shown() != s_rows_per_document) {
        state.SkipWithError("not every entry came through the filter");
    }
}
BENCHMARK_TEMPLATE(insert_through_filter, Texts)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(insert_through_filter, Items)->Unit(benchmark::kMicrosecond);

// What is asked of the longest lists.
const Ratio s_read_all("quick help, read all 100000 rows in order / QStandardItemModel",
    "read_all<Texts>/100000", "read_all<Items>/100000", 0.8);
const Ratio s_fill("quick help, attach 100000 entries in order / appendRow() of a QStandardItemModel",
    "fill<Texts>/100000", "fill<Items>/100000", 2.0);
const Ratio s_insert("quick help, take out and put back at random among 100000 / QStandardItemModel",
    "take_and_put_back<Texts>/100000/100000", "take_and_put_back<Items>/100000/100000", 1.0);
const Ratio s_refilter("quick help, filter 100000 entries for another document / the same rule over a "
                       "QStandardItemModel",
    "refilter<Texts>", "refilter<Items>", 0.9);
const Ratio s_insert_through_filter("quick help, attach through the filter among 100000 / the same rule over "
                                    "a QStandardItemModel",
    "insert_through_filter<Texts>", "insert_through_filter<Items>", 1.1);

/// Each length beside the peer, and how our own cost grows from the shortest list to the longest.
std::vector<Ratio> ratios()
{
    struct Benchmark
    {
        std::string what;
        std::string name;
        std::string visited;
        std::vector<std::string> lengths;
    };
    const Benchmark benchmarks[] = {{"read a row", "read_row", "/100", {"100", "10000", "100000"}},
        {"change an entry", "change_entry", "/100", {"100", "10000", "100000"}},
        {"take out and put back", "take_and_put_back", "/100", {"100", "10000", "100000"}},
        {"fill", "fill", "", {"100", "10000"}}};
    std::vector<Ratio> result;
    for (const Benchmark& bench : benchmarks) {
        const std::string ours = bench.name + "<Texts>/";
        const std::string peer = bench.name + "<Items>/";
        for (const std::string& count : bench.lengths) {
            result.emplace_back("quick help, " + bench.what + ", " + count + " entries / QStandardItemModel",
                ours + count + bench.visited, peer + count + bench.visited);
        }
        result.emplace_back("quick help, " + bench.what + ", 100000 entries / 100",
            ours + "100000" + bench.visited, ours + "100" + bench.visited);
    }
    result.emplace_back("quick help, read a row in leaps, 100000 entries / QStandardItemModel",
        "read_row<Texts>/100000/100000", "read_row<Items>/100000/100000");
    result.emplace_back("quick help, read a row of a key sequence / QStandardItemModel",
        "read_row<Keys>/100/100", "read_row<Items>/100/100");
    return result;
}
const std::vector<Ratio> s_ratios = ratios();

} // namespace
