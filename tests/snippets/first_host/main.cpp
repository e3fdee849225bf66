//! [includes]
#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include <boost/make_shared.hpp>

namespace housekeeping = tarqa::housekeeping;
namespace gui = tarqa::housekeeping::gui;
//! [includes]

//! [model]
/// The data: the names of some boreholes.
class Boreholes : public housekeeping::AbstractModel
{
public:
    bool empty() const override { return names.empty(); }
    unsigned long long size() const override { return static_cast<unsigned long long>(names.size()); }
    void clear() override { names.clear(); }
    const std::string& document_type() const override { return m_type; }
    void setupDatabase(const QString&) override { } // there is no database behind them
    void mergeDatabase(const QString&) override { }
    QString getDatabasePath() override { return {}; }

    QStringList names;

private:
    std::string m_type = "Boreholes";
};
//! [model]

//! [document]
/// The document: owns the data, and is what the framework asks about them.
class BoreholesDocument : public housekeeping::AbstractDocument
{
public:
    BoreholesDocument()
    {
        m_model = boost::make_shared<Boreholes>();
        m_model->set_parent_document(*this);
    }

    QStringList& names() { return dynamic_cast<Boreholes&>(model()).names; }

    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    bool request_close(bool, bool) override { return !m_busy; }
    void set_modified(bool) override { } // a host with files remembers it
    void document_created() override { }
    void title_changed() override { }

private:
    bool m_busy = false;
};

class BoreholesDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    BoreholesDocumentFactory()
        : AbstractDocumentFactory("Boreholes", true) // true: the default, which the document manager makes
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<BoreholesDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new BoreholesDocument; }
};

const BoreholesDocumentFactory s_document_factory; // registers itself, before main() begins
//! [document]

//! [command]
class AddBorehole : public housekeeping::AbstractCommand
{
public:
    AddBorehole(BoreholesDocument& document, const QString& name)
        : AbstractCommand(document.id(), "Add borehole")
        , m_document(document)
        , m_name(name)
        , m_size_before(document.names().size()) // for an undo without a run
    {
        setDescription(name.toStdString());
    }

    /// Takes back what a do_command() that failed half-way has done.
    void rollback() override { undo_command(); }

protected:
    /// Keeps what undo needs; called right before do_command().
    void remember() override { m_size_before = m_document.names().size(); }
    void do_command() override { m_document.names().append(m_name); }
    void undo_command() override { m_document.names() = m_document.names().mid(0, m_size_before); }

private:
    BoreholesDocument& m_document; // not owned; its undo history owns this command
    QString m_name;
    int m_size_before;
};
//! [command]

//! [panel]
class BoreholesPanel : public QListWidget
{
    Q_OBJECT

public:
    BoreholesPanel()
    {
        setWindowTitle(tr("Boreholes")); // which names the panel
        housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    }

public slots:
    void handle_message(housekeeping::DocumentMessage& message) // written exactly so: Qt compares the text
    {
        if (message.doc_change_type() == housekeeping::DocumentMessage::Idle) { // a command has ended
            auto& document = housekeeping::DocumentManager::instance().document_from_id(message.id());
            clear();
            addItems(dynamic_cast<BoreholesDocument&>(document).names());
        }
    }
};
//! [panel]

//! [window]
class MainWindow : public gui::AbstractMainWindow
{
    Q_OBJECT

public:
    MainWindow()
    {
        m_panelTabBar = new QTabBar;
        m_panelStack = new QStackedWidget;
        auto* const p_area = new QWidget;
        auto* const p_layout = new QVBoxLayout(p_area);
        p_layout->addWidget(m_panelTabBar);
        p_layout->addWidget(m_panelStack);
        setCentralWidget(p_area);
        connect(m_panelTabBar, SIGNAL(currentChanged(int)), this, SLOT(currentTabChanged(int)));
        addPanel(new BoreholesPanel, QString());
    }

    /// When the presentations are there: undo and redo are the library's.
    void build_tool_bar()
    {
        const auto sp_undo_redo = gui::UndoRedoPresentation::instance();
        QToolBar* const p_bar = addToolBar(tr("Tools"));
        p_bar->addAction(tr("Add Borehole"), this, &MainWindow::add_borehole);
        p_bar->addAction(sp_undo_redo->undo_tool_bar_action());
        p_bar->addAction(sp_undo_redo->redo_tool_bar_action());
        // Ctrl+Z and its sister act on the widget that has the keyboard.
        m_panelStack->widget(0)->addActions({sp_undo_redo->undo_action(), sp_undo_redo->redo_action()});
    }

private:
    void add_borehole()
    {
        auto& document
            = dynamic_cast<BoreholesDocument&>(housekeeping::DocumentManager::instance().current_document());
        const QString name = tr("Borehole %1").arg(document.names().size() + 1);
        housekeeping::CommandManager::instance().insert(
            boost::make_shared<AddBorehole>(document, name), false);
    }
};
//! [window]

//! [main]
int main(int argc, char** argv)
{
    pkBase::pkProductInfo::instance().product_name("FirstHost"); // names the log and the settings
    auto& application = housekeeping::ApplicationManager::instance();
    application.init(argc, argv, "first-host", true);
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();
    {
        MainWindow window;
        gui::PresentationManager::instance().init();
        window.build_tool_bar();
        housekeeping::DocumentManager::instance().create_document();
        application.top_level_widget(&window);
        application.show();
        application.main_loop();
    } // the window goes before the framework's objects
    pkBase::pkDestructor::run();
    return 0;
}

#include "main.moc"
//! [main]
