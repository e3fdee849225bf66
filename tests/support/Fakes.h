#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDataInformation.h>
#include <tarqa/housekeeping/AbstractDataInformationFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/CommandMessage.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/Updateable.h>

#include <pkBase/AbstractProgress.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace support {

// Qt compares the texts of signals and slots, which say "housekeeping::".
namespace housekeeping = tarqa::housekeeping;

/// The calls that the fakes received, in order, one text each. Any thread.
class Journal
{
public:
    void add(const std::string& entry);
    std::vector<std::string> entries() const;
    /// How many entries begin with @p start.
    int count(const std::string& start) const;
    void clear();

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_entries; // guarded by m_mutex
};

/// The journal of this process, which all fakes write into.
Journal& journal();

/// A model of @p items things without content; journals nothing but its operations' arguments.
class FakeModel : public housekeeping::AbstractModel
{
public:
    FakeModel();

    bool empty() const override { return items == 0; }
    unsigned long long size() const override { return items; }
    void clear() override;
    const std::string& document_type() const override { return type; }
    void setupDatabase(const QString& path) override;
    void mergeDatabase(const QString& path) override;
    QString getDatabasePath() override { return database; }

    unsigned long long items = 0;
    std::string type = "fake type";
    QString database;
};

/// Makes FakeModels under the name "fake model".
class FakeModelFactory : public housekeeping::AbstractModelFactory
{
public:
    FakeModelFactory();
    boost::shared_ptr<housekeeping::AbstractModel> create_product() override;
    housekeeping::AbstractModel* create_unmanaged_product() override;
};

/// A document with a FakeModel. Journals as its first title, "Document 1.busy(true)" for example.
class FakeDocument : public housekeeping::AbstractDocument
{
public:
    FakeDocument();
    ~FakeDocument() override;

    static FakeDocument& of(AbstractDocument& document) { return dynamic_cast<FakeDocument&>(document); }
    /// The journal's name for a document, dead or alive; "?" if there was never one of that id.
    static std::string label(const housekeeping::DocumentId& id);

    const std::string& label() const { return m_label; }
    FakeModel& fake_model() { return static_cast<FakeModel&>(model()); }
    void remove_model() { m_model.reset(); }

    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override;
    bool is_busy() const override { return m_busy; }
    bool request_close(bool first, bool second) override;
    void set_modified(bool modified) override;
    void document_created() override;
    void title_changed() override;

    /// The flag alone, as if the document were busy by itself.
    void busy_by_itself(bool busy) { m_busy = busy; }

    bool agrees_to_close = true;
    std::function<void()> on_request_close;
    std::function<void(FakeDocument&)> on_created; // in document_created()

private:
    std::string m_label;
    std::atomic<bool> m_busy{false};
};

/// Makes FakeDocuments under the name "fake document". Registered for ever by register_documents().
class FakeDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    FakeDocumentFactory();
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override;
    housekeeping::AbstractDocument* create_unmanaged_product() override;

    bool gives_nothing = false;
    bool repeats_first = false; // gives the first of kept again
    bool keeps_products = false; // in kept
    std::vector<boost::shared_ptr<housekeeping::AbstractDocument>> kept;
    std::function<void(FakeDocument&)> on_created; // handed to each product
};

/// Registers the factory of FakeDocuments and makes the controllers that were not made yet; once in a
/// process.
FakeDocumentFactory& register_documents();
/// A new document of the document manager; registers their factory when it is the first.
FakeDocument& create_document();

/// A state with a value.
class FakeState : public housekeeping::AbstractState
{
public:
    using AbstractState::AbstractState;
    int value = 0;
};

/// A controller that journals as its name; "alpha.update_state(Document 1)" for example.
class FakeController : public housekeeping::AbstractController
{
public:
    /// @param label its name in the journal @param has_states whether it makes states
    explicit FakeController(const std::string& label, bool has_states = true);
    ~FakeController() override;

    void post_init() override;
    using AbstractController::force_update;

    const boost::shared_ptr<housekeeping::AbstractState>& last_state() const { return m_last_state; }

    std::function<void()> on_post_init;

protected:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override;
    void update_state(boost::shared_ptr<housekeeping::AbstractState> state) override;

private:
    std::string m_label;
    bool m_has_states;
    boost::shared_ptr<housekeeping::AbstractState> m_last_state;
};

/// Makes FakeControllers that are labelled like the product. Registered for ever by register_controller().
class FakeControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    explicit FakeControllerFactory(const std::string& name);
    boost::shared_ptr<housekeeping::AbstractController> create_product() override;
    housekeeping::AbstractController* create_unmanaged_product() override;

    bool gives_nothing = false;
    bool has_states = true;
    std::function<void()> on_post_init; // handed to each controller

private:
    std::string m_name;
};

FakeControllerFactory& register_controller(const std::string& name);

/// A view that journals "<name>.update".
class FakeView : public housekeeping::Updateable
{
public:
    explicit FakeView(const std::string& name);
    using Updateable::register_controller;
    using Updateable::unregister;

    std::function<void()> on_update;

private:
    void update() override;

    std::string m_name;
};

/// A command whose steps are journaled under its first name and then do what the test says.
class FakeCommand : public housekeeping::AbstractCommand
{
public:
    typedef std::function<void()> Step;

    FakeCommand(housekeeping::DocumentId document_id, const std::string& name);

    void rollback() override;
    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;

    using AbstractCommand::progress;
    using AbstractCommand::progress_text;

    void valid_undo(bool on) { m_valid_undo = on; }
    void sets_document_busy(bool on) { m_set_document_busy = on; }
    void stack_identical(bool on) { m_stack_identical = on; }
    void clears_redo_when_undoing(bool on) { m_clear_redo_when_undoing = on; }

    Step on_remember;
    Step on_do;
    Step on_undo;
    Step on_rollback;
    Step on_finished;
    std::function<bool(const AbstractCommand&)> absorbs; // null: nothing

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;
    void finished(bool succeeded) override;

private:
    void step(const std::string& entry, const Step& action);

    std::string m_label;
};

boost::shared_ptr<FakeCommand> make_command(
    const housekeeping::DocumentId& document_id, const std::string& name);

// Steps that throw. The place is "tests/Fakes" and line 7, the code 42.
FakeCommand::Step throws_cancel();
FakeCommand::Step throws_failure(const std::string& message);
FakeCommand::Step throws_housekeeping(const std::string& message);
FakeCommand::Step throws_tarqa(const std::string& message);
FakeCommand::Step throws_std(const std::string& message);
FakeCommand::Step throws_unknown();

/// A progress sink that journals "<name>.open(0)", "<name>.percentage(50)", "<name>.text(reading)",
/// "<name>.close".
class FakeProgress : public pkBase::AbstractProgress
{
public:
    explicit FakeProgress(const std::string& name = "progress");
    void open_run(unsigned int start) override;
    void set_percentage(unsigned int percentage) override;
    void set_text(const QString& text) override;
    void close_run() override;

private:
    std::string m_name;
};

/// Settings that are one text.
class FakeDataInformation : public housekeeping::AbstractDataInformation
{
public:
    explicit FakeDataInformation(const std::string& key);

    void info(const QStringList& list, int first) override;
    QStringList info() override;
    void set_complete(bool complete) { m_complete = complete; }

    std::string settings;
    int first_read = -1; // the index that info() was given last
    bool fails_to_read = false;

protected:
    std::istream& serialise(std::istream& stream) override;
    std::ostream& serialise(std::ostream& stream) const override;
};

/// Makes FakeDataInformations whose key is the product's name. Registered for ever by
/// register_data_information().
class FakeDataInformationFactory : public housekeeping::AbstractDataInformationFactory
{
public:
    FakeDataInformationFactory(const std::string& name, bool is_default);
    boost::shared_ptr<housekeeping::AbstractDataInformation> create_product() override;
    housekeeping::AbstractDataInformation* create_unmanaged_product() override;

    bool fails_to_read = false; // handed to each product

private:
    std::string m_name;
};

FakeDataInformationFactory& register_data_information(const std::string& name, bool is_default = false);

/// Journals the messages that it receives: "Busy(Document 1)", "DocumentHistoryMsg", "CommandMessage(Rotate,
/// 0)" or "CommandMessage(Rotate, 0, redo)". Subscribes when made.
class JournalingReceiver : public QObject
{
    Q_OBJECT

public:
    explicit JournalingReceiver(Qt::ConnectionType type = Qt::AutoConnection);
    ~JournalingReceiver() override;

    // Called after the entry was made.
    std::function<void(housekeeping::DocumentMessage&)> on_document;
    std::function<void(housekeeping::DocumentHistoryMsg&)> on_history;
    std::function<void(housekeeping::CommandMessage&)> on_command;

public slots:
    void handle_message(housekeeping::DocumentMessage& message);
    void handle_message(housekeeping::DocumentHistoryMsg& message);
    void handle_message(housekeeping::CommandMessage& message);
};

} // namespace support
