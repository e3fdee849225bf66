#include "support/App.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/MessageFamily.h>

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

// docs/messages.md

//! [own class]
namespace wells {

namespace housekeeping = tarqa::housekeeping;

/// A well was chosen or let go of.
class WellMessage : public housekeeping::MessageFamily<WellMessage>
{
    Q_OBJECT

public:
    /// As it is spelled in signal and slots, to the letter.
    static const char* type_name() { return "wells::WellMessage"; }

    WellMessage() = default;
    WellMessage(const WellMessage&) = default; // subscribers in other threads get copies
    ~WellMessage() override = default;

    int well = -1;

signals:
    void message_dispatched(wells::WellMessage&);

private:
    friend class housekeeping::MessageFamily<WellMessage>;
    void class_instance_dispatch(WellMessage* p_message) { emit message_dispatched(*p_message); }
};

} // namespace wells
//! [own class]

namespace messages_guide {

std::vector<tarqa::housekeeping::DocumentMessage::DocChangeType> s_heard;

//! [subscribe]
namespace housekeeping = tarqa::housekeeping; // needed: see below

class View : public QObject
{
    Q_OBJECT
public:
    View() { housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection); }
public slots:
    void handle_message(housekeeping::DocumentMessage& message);
};
//! [subscribe]

void View::handle_message(housekeeping::DocumentMessage& message)
{
    s_heard.push_back(message.doc_change_type());
}

std::vector<housekeeping::ApplicationMessage::OpType> s_operations;

class Listener : public QObject
{
    Q_OBJECT
public:
    Listener() { housekeeping::ApplicationMessage::subscribe(this, Qt::AutoConnection); }
public slots:
    void handle_message(housekeeping::ApplicationMessage& message)
    {
        s_operations.push_back(message.opType());
    }
};

std::vector<int> s_wells;

class WellsView : public QObject
{
    Q_OBJECT
public:
    WellsView() { wells::WellMessage::subscribe(this, Qt::AutoConnection); }
public slots:
    void handle_message(wells::WellMessage& message) { s_wells.push_back(message.well); }
};

void send(housekeeping::ApplicationMessage::OpType operation)
{
    //! [send]
    auto* p_message = housekeeping::ApplicationMessage::instance(); // a new one, to fill in
    p_message->opType(operation);
    housekeeping::Message::dispatch(p_message); // now; deletes it, also if a subscriber throws
    //! [send]
}

} // namespace messages_guide

TEST(MessagesGuide, ViewHearsOfADocument)
{
    const support::App app;
    const messages_guide::View view;
    support::create_document();
    EXPECT_THAT(messages_guide::s_heard, testing::ElementsAre(tarqa::housekeeping::DocumentMessage::Created));
}

TEST(MessagesGuide, MessageReachesItsSubscribers)
{
    const support::App app;
    const messages_guide::Listener listener;
    const auto operation = static_cast<tarqa::housekeeping::ApplicationMessage::OpType>(7);
    messages_guide::send(operation);
    EXPECT_THAT(messages_guide::s_operations, testing::ElementsAre(operation));
}

TEST(MessagesGuide, ClassOfAHostsOwnIsSentAndPosted)
{
    const support::App app;
    const messages_guide::WellsView view;
    auto* p_message = wells::WellMessage::instance();
    p_message->well = 7;
    tarqa::housekeeping::Message::dispatch(p_message);
    EXPECT_THAT(messages_guide::s_wells, testing::ElementsAre(7));
    p_message = wells::WellMessage::instance();
    p_message->well = 8;
    p_message->post();
    EXPECT_THAT(messages_guide::s_wells, testing::ElementsAre(7));
    QCoreApplication::processEvents();
    EXPECT_THAT(messages_guide::s_wells, testing::ElementsAre(7, 8));
    EXPECT_TRUE(wells::WellMessage::unsubscribe(&view));
    EXPECT_FALSE(wells::WellMessage::unsubscribe(&view));
}

TEST(MessagesGuide, ClassOfAHostsOwnCrossesThreads)
{
    const support::App app;
    const messages_guide::WellsView view;
    std::thread([] { tarqa::housekeeping::Message::dispatch(wells::WellMessage::instance()); }).join();
    EXPECT_THAT(messages_guide::s_wells, testing::IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_THAT(messages_guide::s_wells, testing::ElementsAre(-1));
}

#include "MessagesSnippets.moc"
