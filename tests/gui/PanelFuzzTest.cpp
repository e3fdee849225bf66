#include "PanelFixture.h"
#include "PanelModel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <QtCore/QSettings>
#include <QtGui/QCursor>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <chrono>
#include <filesystem>
#include <random>
#include <string>

// Random work with panels, each step compared with a model of the rules. HK_FUZZ_STEPS sets the number of
// steps and HK_FUZZ_SEED the seed; the same two do the same again.

namespace {

typedef PanelWindow::ChildDockWidget ChildDockWidget;
typedef std::vector<std::optional<QPoint>> Places;

const std::size_t s_most_panels = 14;

const QStringList s_titles
    = {"Home", "Alpha", "Beta", "beta", "A && B", "A & B", "A&&B", "A&B", "&Menu", "X && Y & Z &&& W",
        " & & ", "Höhenlinien", "地形", "🙂 Karte", "tabOrder", "100 %1 = [x], \"y\"; z", ""};

/// What the settings may hold without a panel of that title.
const QStringList s_other_titles = {"Ghost", "A && B & C", "X & Y & Z && W"};

class Fuzzer
{
public:
    explicit Fuzzer(unsigned int seed)
        : m_random(seed)
        , m_names(s_titles + s_other_titles)
    {
        connect_window();
    }

    ~Fuzzer() { end_program(); }
    Fuzzer(const Fuzzer&) = delete;
    Fuzzer& operator=(const Fuzzer&) = delete;

    /// One random step, and the comparison.
    void step()
    {
        struct Kind
        {
            unsigned int weight;
            void (Fuzzer::*action)();
        };
        static const Kind s_kinds[] = {{14, &Fuzzer::add}, {20, &Fuzzer::tear_off}, {18, &Fuzzer::close},
            {8, &Fuzzer::remove}, {10, &Fuzzer::move_tab}, {5, &Fuzzer::move_float}, {5, &Fuzzer::choose_tab},
            {4, &Fuzzer::destroy}, {6, &Fuzzer::write}, {4, &Fuzzer::read}, {3, &Fuzzer::corrupt_geometry},
            {2, &Fuzzer::corrupt_order}, {2, &Fuzzer::restore}, {3, &Fuzzer::restart},
            {1, &Fuzzer::clear_settings}};
        m_signals.clear();
        m_expected_signals.clear();
        unsigned int chosen = below(105);
        for (const Kind& kind : s_kinds) {
            if (chosen < kind.weight) {
                (this->*kind.action)();
                break;
            }
            chosen -= kind.weight;
        }
        settle();
        compare();
    }

    const std::string& last() const { return m_last; }
    int restarts() const { return m_restarts; }
    int empty_titles() const { return m_empty_titles; }

private:
    // --- chance

    unsigned int below(unsigned int limit) { return static_cast<unsigned int>(m_random() % limit); }
    int index_below(int limit) { return static_cast<int>(below(static_cast<unsigned int>(limit))); }
    bool one_in(unsigned int count) { return below(count) == 0; }
    QString any_of(const QStringList& texts) { return texts[index_below(texts.size())]; }
    QPoint any_point() { return QPoint(50 + index_below(250), 50 + index_below(250)); }
    QByteArray any_bytes(int size)
    {
        QByteArray bytes(size, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(below(256));
        }
        return bytes;
    }

    // --- steps

    void add()
    {
        if (m_panels_by_id.size() >= s_most_panels) {
            destroy();
            return;
        }
        std::vector<int> out;
        for (const auto& [id, panel] : m_panels_by_id) {
            if (m_model.index_of(id) < 0) {
                out.push_back(id);
            }
        }
        if (!out.empty() && one_in(2)) {
            add(out[below(static_cast<unsigned int>(out.size()))]);
        } else {
            add(make(one_in(3) ? "Alpha" : any_of(s_titles))); // with many equal ones
        }
    }

    int make(const QString& title)
    {
        m_panels_by_id[m_next] = Panels::make_panel(title);
        return m_next++;
    }

    void add(int id)
    {
        QWidget* const p_panel = m_panels_by_id[id];
        const QString title = p_panel->windowTitle();
        note("add " + title);
        m_empty_titles += title.isEmpty() ? 1 : 0;
        QCursor::setPos(any_point());
        const std::size_t floats = m_model.floats().size();
        EXPECT_EQ(window().addPanel(p_panel, any_of(m_names)), m_model.add(id, title));
        if (m_model.floats().size() > floats) {
            compare_place(p_panel);
        } else {
            EXPECT_EQ(p_panel->maximumWidth(), 600);
        }
    }

    void tear_off()
    {
        const QStringList tabs = m_model.tabs();
        const QString text = tabs.isEmpty() || one_in(8) ? any_of(m_names) : any_of(tabs);
        note("tear off " + text);
        const std::optional<int> panel = m_model.panel_of(text);
        QCursor::setPos(any_point());
        window().tear_off(text);
        const std::optional<int> index = m_model.tear_off(text);
        if (!index) {
            return;
        }
        expect_signal("detaching", *index);
        compare_place(m_panels_by_id[*panel]);
        EXPECT_EQ(m_panels_by_id[*panel]->maximumWidth(), 9999);
        const int current = window().tab_bar().currentIndex();
        if (window().tab_bar().tabText(current) != text) { // or it was this very panel that was shown last
            expect_current(current);
        }
    }

    void close()
    {
        const int count = static_cast<int>(m_model.floats().size());
        if (count == 0) {
            return;
        }
        const int position = index_below(count);
        ChildDockWidget* const p_window
            = window().window_of(m_panels_by_id[m_model.floats()[static_cast<std::size_t>(position)].panel]);
        note("close " + p_window->windowTitle());
        const bool first_tab = m_model.tabs().isEmpty();
        p_window->close();
        expect_signal("attached", m_model.close(position));
        EXPECT_EQ(window().tab_bar().currentIndex(), m_model.tabs().size() - 1);
        if (!first_tab) { // the first becomes current of itself, before the panel is in the stack
            expect_current(m_model.tabs().size() - 1);
        }
    }

    void remove()
    {
        const int index
            = index_below(static_cast<int>(m_model.stack().size()) + m_model.tabs().size() + 6) - 2;
        note(QString("remove %1").arg(index));
        const Places all = places();
        window().removePanel(index);
        m_model.remove(index, all);
    }

    void move_tab()
    {
        const int count = m_model.tabs().size();
        if (count < 2) {
            return;
        }
        const int from = index_below(count);
        const int to = index_below(count);
        note(QString("move tab %1 to %2").arg(from).arg(to));
        window().tab_bar().moveTab(from, to);
        m_model.move_tab(from, to);
    }

    void move_float()
    {
        if (m_model.floats().empty()) {
            return;
        }
        const auto entry = m_model.floats()[below(static_cast<unsigned int>(m_model.floats().size()))];
        note("move float " + entry.title);
        window().window_of(m_panels_by_id[entry.panel])->move(any_point());
    }

    void choose_tab()
    {
        const int index = index_below(m_model.tabs().size() + 2) - 1;
        note(QString("choose tab %1").arg(index));
        window().current_tab_changed(index);
        expect_current(index);
    }

    void destroy()
    {
        if (m_panels_by_id.empty()) {
            return;
        }
        auto iter = m_panels_by_id.begin();
        std::advance(iter, below(static_cast<unsigned int>(m_panels_by_id.size())));
        note("destroy " + iter->second->windowTitle());
        delete iter->second.data();
        m_model.destroy(iter->first);
        m_panels_by_id.erase(iter);
    }

    void write()
    {
        note("write");
        const Places all = places();
        window().writeSettings();
        m_model.write(all);
    }

    void read()
    {
        note("read");
        window().readSettings();
        m_model.read();
        expect_current(0);
    }

    void corrupt_geometry()
    {
        const QString title = any_of(m_names);
        note("corrupt geometry of " + title);
        QByteArray bytes = window().saveGeometry();
        switch (below(4)) {
        case 0:
            bytes.clear();
            break;
        case 1:
            bytes = any_bytes(1 + index_below(100));
            break;
        case 2:
            bytes.truncate(1 + index_below(bytes.size()));
            break;
        default:
            bytes[index_below(bytes.size())] = static_cast<char>(below(256));
        }
        Panels::store(title + "/dockSize", bytes);
        m_model.store_geometry(title);
    }

    void corrupt_order()
    {
        note("corrupt order");
        QStringList order;
        for (unsigned int i = below(8); i > 0; --i) {
            order.append(any_of(m_names));
        }
        Panels::store("tabOrder", order);
        m_model.store_order(order);
    }

    void restore()
    {
        note("restore");
        for (QWidget* const p_panel : window().floating()) {
            window().window_of(p_panel)->setVisible(one_in(2));
        }
        window().restoreChildWidgets();
    }

    /// The program ends, with or without writing, and a new one reads what is on the disk.
    void restart()
    {
        if (!one_in(4)) {
            write();
        }
        QStringList titles;
        for (const auto& [id, panel] : m_panels_by_id) {
            if (m_model.index_of(id) >= 0) {
                titles.append(panel->windowTitle());
            }
        }
        end_program();
        forget_read_settings();
        m_panels.m_window = std::make_unique<PanelWindow>();
        connect_window();
        ++m_restarts;
        m_model.restart();
        if (one_in(4)) {
            std::reverse(titles.begin(), titles.end());
        }
        for (const QString& title : qAsConst(titles)) {
            add(make(title));
        }
        if (!one_in(8)) {
            read();
        }
        note("restart");
    }

    void clear_settings()
    {
        note("clear settings");
        QSettings().clear();
        m_model.clear_settings();
    }

    void end_program()
    {
        m_panels.m_window.reset();
        for (const auto& entry : m_panels_by_id) {
            delete entry.second.data(); // those that were removed are nobody's
        }
        m_panels_by_id.clear();
    }

    /// Settings are read from the file again when that seems to be another one.
    void forget_read_settings()
    {
        const std::string file = QSettings().fileName().toStdString();
        if (std::filesystem::exists(file)) {
            std::filesystem::last_write_time(
                file, std::filesystem::last_write_time(file) - std::chrono::hours(1));
        }
    }

    // --- comparison

    void compare()
    {
        EXPECT_EQ(window().tabs(), m_model.tabs());
        std::vector<QWidget*> docked;
        for (const int id : m_model.stack()) {
            docked.push_back(m_panels_by_id[id]);
        }
        EXPECT_EQ(window().docked(), docked);
        compare_floats();
        for (const auto& [id, panel] : m_panels_by_id) {
            ASSERT_FALSE(panel.isNull());
            EXPECT_EQ(window().indexOf(panel), m_model.index_of(id));
        }
        EXPECT_EQ(m_signals, m_expected_signals);
        compare_settings();
    }

    void compare_floats()
    {
        std::vector<QWidget*> floating;
        for (const PanelModel::Float& entry : m_model.floats()) {
            floating.push_back(m_panels_by_id[entry.panel]);
        }
        ASSERT_EQ(window().floating(), floating);
        for (const PanelModel::Float& entry : m_model.floats()) {
            const ChildDockWidget& child = *window().window_of(m_panels_by_id[entry.panel]);
            EXPECT_EQ(child.windowTitle(), entry.title);
            EXPECT_EQ(child.objectName(), entry.title);
            EXPECT_EQ(panel_in(child), m_panels_by_id[entry.panel].data());
            EXPECT_TRUE(child.isVisible());
        }
        const auto children = window().findChildren<ChildDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
        EXPECT_EQ(children.size(), static_cast<int>(floating.size())); // no window is left over
    }

    void compare_settings()
    {
        EXPECT_EQ(Panels::stored_keys(), m_model.keys());
        for (const auto& [title, flag] : m_model.flags()) {
            EXPECT_EQ(Panels::stored(title + "/floating").toBool(), flag) << title.toStdString();
        }
        if (m_model.order()) {
            EXPECT_EQ(Panels::stored("tabOrder").toStringList(), *m_model.order());
        }
    }

    void compare_place(QWidget* p_panel)
    {
        const ChildDockWidget* const p_window = window().window_of(p_panel);
        ASSERT_NE(p_window, nullptr);
        const PanelModel::Place& place = m_model.last_place();
        if (place.at_cursor) {
            EXPECT_EQ(p_window->pos(), QCursor::pos());
        } else if (place.by_default) {
            EXPECT_NE(p_window->pos(), QCursor::pos());
        } else if (place.stored) {
            EXPECT_EQ(p_window->pos(), *place.stored);
        }
    }

    /// Where the floating windows are; without those that are so near the edge that Qt would move them, and
    /// those that a corrupt geometry made full-screen, which have no frame since.
    Places places()
    {
        Places places;
        const QRect safe(40, 40, 300, 300);
        for (QWidget* const p_panel : window().floating()) {
            const ChildDockWidget& child = *window().window_of(p_panel);
            const bool returns = safe.contains(child.pos()) && child.frameGeometry() != child.geometry();
            places.push_back(returns ? std::optional<QPoint>(child.pos()) : std::nullopt);
        }
        return places;
    }

    /// The panel of a tab is shown, if there is one.
    void expect_current(int tab)
    {
        if (tab < 0 || tab >= m_model.tabs().size()) {
            return;
        }
        if (const std::optional<int> panel = m_model.panel_of(m_model.tabs()[tab])) {
            EXPECT_EQ(window().stack().currentWidget(), m_panels_by_id[*panel].data());
        }
    }

    void expect_signal(const char* name, int index)
    {
        m_expected_signals.append(QString("%1 %2").arg(name).arg(index));
    }

    void connect_window()
    {
        QObject::connect(&window(), &PanelWindow::detachingPanel,
            [this](int index) { m_signals.append(QString("detaching %1").arg(index)); });
        QObject::connect(&window(), &PanelWindow::attachedPanel,
            [this](int index) { m_signals.append(QString("attached %1").arg(index)); });
    }

    PanelWindow& window() { return *m_panels.m_window; }
    void note(const QString& what) { m_last = what.toStdString(); }

    std::mt19937 m_random;
    const QStringList m_names;
    std::map<int, QPointer<QWidget>> m_panels_by_id;
    int m_next = 0;
    QStringList m_signals;
    QStringList m_expected_signals;
    std::string m_last;
    int m_restarts = 0;
    int m_empty_titles = 0;
    PanelModel m_model;
    Panels m_panels; // goes first, because its window sends signals
};

int from_environment(const char* variable, int otherwise)
{
    bool valid = false;
    const int value = qEnvironmentVariableIntValue(variable, &valid);
    return valid ? value : otherwise;
}

} // namespace

TEST(PanelFuzz, EveryPanelIsWhereTheRulesSayAfterEachStep)
{
    const int steps = from_environment("HK_FUZZ_STEPS", 2000);
    const int seed = from_environment("HK_FUZZ_SEED", 8101);
    support::LogCapture log;
    Fuzzer fuzzer(static_cast<unsigned int>(seed));
    for (int step = 0; step < steps; ++step) {
        fuzzer.step();
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step << ": " << fuzzer.last();
    }
    EXPECT_EQ(log.count("m_instance == 0"), fuzzer.restarts());
    EXPECT_EQ(log.count("!w->windowTitle().isEmpty()"), fuzzer.empty_titles());
    EXPECT_EQ(static_cast<int>(log.lines().size()), fuzzer.restarts() + fuzzer.empty_titles());
    log.take_all();
}
