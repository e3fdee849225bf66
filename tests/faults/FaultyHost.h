#pragma once

#include "support/Fakes.h"

#include <QtCore/QObject>

#include <string>
#include <vector>

namespace throwing_code {

namespace housekeeping = tarqa::housekeeping; // slots must spell their parameter's type this way

/// A model that is the list of the commands that are done in it. Throws in empty().
class FaultyModel : public support::FakeModel
{
public:
    bool empty() const override;
    /// Takes out the last of this name, if there is one.
    void take_out(const std::string& name);

    std::vector<std::string> done;
};

/// A document whose every virtual operation can throw; those that change something, before and after it.
class FaultyDocument : public support::FakeDocument
{
public:
    FaultyDocument();

    static FaultyDocument& of(const housekeeping::DocumentId& id);

    FaultyModel& faulty_model() { return static_cast<FaultyModel&>(model()); }

    void set_busy(bool busy) override;
    bool is_busy() const override;
    bool is_closing() const override;
    bool request_close(bool first, bool second) override;
    void set_modified(bool modified) override;
    void document_created() override;
    void title_changed() override;
};

class FaultyDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    FaultyDocumentFactory();
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override;
    housekeeping::AbstractDocument* create_unmanaged_product() override;
};

/// A controller that can throw when it is made, asked for a state, given one, and in post_init().
class FaultyController : public housekeeping::AbstractController
{
public:
    FaultyController();
    void post_init() override;
    using AbstractController::force_update;

protected:
    boost::shared_ptr<housekeeping::AbstractState> create_state(
        housekeeping::AbstractDocument& document) override;
    void update_state(boost::shared_ptr<housekeeping::AbstractState> state) override;
};

class FaultyControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    FaultyControllerFactory();
    boost::shared_ptr<housekeeping::AbstractController> create_product() override;
    housekeeping::AbstractController* create_unmanaged_product() override;
};

/// A view of a controller, from construction to destruction, that throws when it is to redraw.
class FaultyView : private support::FakeView
{
public:
    FaultyView(const std::string& place, housekeeping::AbstractController& controller);
    ~FaultyView() override;
};

/// A command that does itself in its document's FaultyModel, once in a run, and can throw at each step, and
/// before and after what the step does. Taking back what is not there does no harm.
class FaultyCommand : public housekeeping::AbstractCommand
{
public:
    FaultyCommand(housekeeping::DocumentId document_id, const std::string& name);

    unsigned long long size() const override;
    void rollback() override;
    bool stackWith(boost::shared_ptr<AbstractCommand> newer) override;

    void stack_identical(bool on) { m_stack_identical = on; }
    void valid_undo(bool on) { m_valid_undo = on; }
    // By itself at the end of do_command(), while places are listed.
    bool cancels = false;
    bool fails = false;

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;
    void finished(bool succeeded) override;

private:
    void at(const std::string& step) const;

    FaultyModel& model() const;
};

class FaultyProgress : public pkBase::AbstractProgress
{
public:
    void open_run(unsigned int start) override;
    void set_percentage(unsigned int percentage) override;
    void set_text(const QString& text) override;
    void close_run() override;
};

/// A subscriber of the messages of documents and commands that throws at each; "Busy", "Idle", "Created",
/// "Destroyed", "CurrentChanged", "history message", "command message".
class FaultySubscriber : public QObject
{
    Q_OBJECT

public:
    FaultySubscriber();

    std::vector<housekeeping::CommandMessage::CommandType> command_types;

public slots:
    void handle_message(housekeeping::DocumentMessage& message);
    void handle_message(housekeeping::DocumentHistoryMsg& message);
    void handle_message(housekeeping::CommandMessage& message);
};

/// Registers the factories of faulty documents and controllers, once in a process.
void register_faulty_host();

} // namespace throwing_code
