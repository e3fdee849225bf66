#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/Message.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <set>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <malloc.h>

namespace {

using tarqa::housekeeping::ApplicationMessage;
using tarqa::housekeeping::DocumentMessage;
using tarqa::housekeeping::Message;

typedef std::vector<std::unique_ptr<ApplicationMessage>> Messages;

Messages make_many(std::size_t count)
{
    Messages messages;
    for (std::size_t i = 0; i < count; ++i) {
        messages.push_back(std::make_unique<ApplicationMessage>());
    }
    return messages;
}

std::size_t bytes_in_use()
{
    return mallinfo2().uordblks;
}

struct Large : ApplicationMessage
{
    unsigned char content[1000] = {};
};

struct alignas(128) Aligned : ApplicationMessage
{ };

struct Failing : ApplicationMessage
{
    Failing() { throw std::runtime_error("no message"); }
};

TEST(MessageMemory, OfLivingMessagesIsApart)
{
    make_many(100);
    const Messages first = make_many(100);
    const Messages second = make_many(100);
    std::set<std::uintptr_t> places;
    for (const Messages* p_messages : {&first, &second}) {
        for (const auto& p_message : *p_messages) {
            places.insert(reinterpret_cast<std::uintptr_t>(p_message.get()));
        }
    }
    ASSERT_EQ(places.size(), 200u);
    std::uintptr_t last = 0;
    for (const std::uintptr_t place : places) {
        EXPECT_EQ(place % alignof(std::max_align_t), 0u);
        EXPECT_GE(place - last, sizeof(ApplicationMessage));
        last = place;
    }
}

TEST(MessageMemory, OfALargeOneIsItsOwn)
{
    for (int round = 0; round < 3; ++round) {
        const auto large = std::make_unique<Large>();
        std::fill(std::begin(large->content), std::end(large->content), static_cast<unsigned char>(0xff));
        make_many(10);
        EXPECT_EQ(large->content[999], 0xff);
    }
}

TEST(MessageMemory, KeepsTheAlignmentOfAType)
{
    for (int round = 0; round < 10; ++round) {
        const std::unique_ptr<Message, void (*)(Message*)> message(
            new Aligned, [](Message* p_message) { delete static_cast<Aligned*>(p_message); });
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(message.get()) % 128, 0u);
    }
}

TEST(MessageMemory, CanBeAskedForWithoutThrowing)
{
    const std::unique_ptr<ApplicationMessage> message(new (std::nothrow) ApplicationMessage);
    EXPECT_NE(message, nullptr);
}

TEST(MessageMemory, OfOneWhoseConstructorThrowsIsGivenBack)
{
    EXPECT_THROW(new Failing, std::runtime_error);
    EXPECT_THROW(new (std::nothrow) Failing, std::runtime_error);
    const std::size_t before = bytes_in_use();
    for (int i = 0; i < 1000; ++i) {
        EXPECT_THROW(new Failing, std::runtime_error);
        EXPECT_THROW(new (std::nothrow) Failing, std::runtime_error);
    }
    EXPECT_LT(bytes_in_use(), before + 1000 * sizeof(Failing));
}

TEST(MessageMemory, CanBeTheCallers)
{
    std::aligned_storage_t<sizeof(DocumentMessage), alignof(DocumentMessage)> place;
    DocumentMessage* const p_message = new (&place) DocumentMessage;
    EXPECT_EQ(static_cast<void*>(p_message), static_cast<void*>(&place));
    p_message->~DocumentMessage();
}

TEST(MessageMemory, MayBeGivenBackInAnotherThread)
{
    Messages here = make_many(1000);
    Messages there;
    std::thread([&here, &there] {
        here.clear();
        there = make_many(1000);
    }).join();
    EXPECT_EQ(there.size(), 1000u);
    there.clear();
    EXPECT_EQ(make_many(2000).size(), 2000u);
}

TEST(MessageMemory, IsNotKeptWithoutEnd)
{
    make_many(20000);
    const std::size_t before = bytes_in_use();
    Messages messages = make_many(100000);
    messages = Messages();
    EXPECT_LT(bytes_in_use(), before + 2 * 1024 * 1024);
}

TEST(MessageMemory, IsGivenBackWhenAThreadEnds)
{
    const auto run = [] { std::thread([] { make_many(2000); }).join(); };
    run();
    const std::size_t before = bytes_in_use();
    for (int thread = 0; thread < 20; ++thread) {
        run();
    }
    EXPECT_LT(bytes_in_use(), before + 20 * 2000 * sizeof(ApplicationMessage) / 2);
}

TEST(MessageMemory, IsThereForMessagesThatAThreadsLastObjectsDelete)
{
    struct Last
    {
        ~Last()
        {
            p_message.reset();
            make_many(10);
            *p_ended = true;
        }
        std::unique_ptr<ApplicationMessage> p_message;
        bool* p_ended = nullptr;
    };
    bool ended = false;
    std::thread([&ended] {
        static thread_local Last
            s_last; // before the thread has deleted its first message: it goes after all else
        s_last.p_ended = &ended;
        s_last.p_message = std::make_unique<ApplicationMessage>();
        make_many(10);
    }).join();
    EXPECT_TRUE(ended);
}

} // namespace
