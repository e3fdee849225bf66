// What the proof does not find everywhere: questions need an application, workers are asked for; and what a
// broken promise must not hide.

#include "SheetCommand.h"
#include "SheetProof.h"
#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <gtest/gtest.h>

#include <QtCore/QThread>

#include <algorithm>
#include <stdexcept>

namespace {

using sheet::SheetDocument;
using tarqa::housekeeping::AbstractDocument;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::testkit::Breach;
using tarqa::housekeeping::testkit::Promise;
using tarqa::housekeeping::testkit::RoundTripProof;

typedef std::function<sheet::CommandPointer(SheetDocument&)> Maker;

template <class Commands>
Maker maker_of(const Commands& commands, const std::string& name)
{
    const auto found = std::find_if(
        commands.begin(), commands.end(), [&name](const auto& command) { return command.name == name; });
    EXPECT_NE(found, commands.end()) << name;
    return found->make;
}

Maker wrong(const std::string& name)
{
    return maker_of(sheet::wrong_commands(), name);
}

Maker right(const std::string& name)
{
    return maker_of(sheet::right_commands(), name);
}

struct Result
{
    std::vector<Breach> breaches;
    int questions = 0;
};

enum class Workers
{
    No,
    Too
};

Result proved(const Maker& make, Workers workers = Workers::No)
{
    support::LogCapture log;
    RoundTripProof proof([]() -> AbstractDocument& { return sheet::new_sheet(); }, sheet::text_of);
    proof.command(
        "It", [&make](AbstractDocument& document) { return make(dynamic_cast<SheetDocument&>(document)); });
    if (workers == Workers::Too) {
        proof.in_worker();
    }
    Result result;
    result.breaches = proof.run();
    result.questions = proof.questions();
    log.take_all(); // it makes commands fail
    return result;
}

/// Stops where something fails, and says nothing of it; its name is of two lines.
class SwallowsInTwoLines : public sheet::ScaleRow
{
public:
    explicit SwallowsInTwoLines(SheetDocument& document)
        : ScaleRow(document, "Scale\nrow")
    { }

protected:
    void do_command() override
    {
        try {
            ScaleRow::do_command();
        } catch (const tarqa::housekeeping::FailedCommandException&) {
            // as if all were done
        }
    }
};

/// Can be told about in the thread that made it only.
class TellsItsMaker : public sheet::SetCell
{
public:
    explicit TellsItsMaker(SheetDocument& document)
        : SetCell(document, "Set cell", 0, 0)
    { }

protected:
    void finished(bool) override
    {
        if (QThread::currentThread() != m_p_maker) {
            throw std::runtime_error("my maker is not here");
        }
    }

private:
    QThread* m_p_maker = QThread::currentThread();
};

} // namespace

TEST(ProofQuestions, AreAnsweredWhereBoxesMayBeShown)
{
    const support::App app;
    const Result result = proved(right("CompositeOfNeighbours"));
    EXPECT_EQ(text_of(result.breaches), "");
    EXPECT_GT(result.questions, 3);
    EXPECT_TRUE(ErrorHandler::const_instance().may_show_dialogs()) << "as before";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(ProofQuestions, AreNotAskedOfACommandThatIsNoComposite)
{
    const support::App app;
    const Result result = proved(right("KeepsASnapshot"));
    EXPECT_EQ(text_of(result.breaches), "");
    EXPECT_EQ(result.questions, 0);
}

TEST(ProofQuestions, AreNotAskedWithoutAnApplication)
{
    const Result result = proved(wrong("SwallowsTheAnswer"));
    EXPECT_EQ(text_of(result.breaches), "") << "only an answer shows what is wrong";
    EXPECT_EQ(result.questions, 0);
}

TEST(ProofQuestions, AreNotAskedWhereTheHostAllowsNoBoxes)
{
    const support::App app;
    ErrorHandler::show_dialogs(false);
    const Result result = proved(wrong("SwallowsTheAnswer"));
    EXPECT_EQ(text_of(result.breaches), "");
    EXPECT_EQ(result.questions, 0);
    EXPECT_FALSE(ErrorHandler::const_instance().may_show_dialogs()) << "as before";
    ErrorHandler::show_dialogs(true);
}

TEST(ProofWorkers, AreTriedOnlyWhereTheyAreAskedFor)
{
    EXPECT_EQ(text_of(proved(wrong("KeepsItInItsThread")).breaches), "");
}

TEST(ProofWorkers, PassOnWhatComesOutOfTheCommandManager)
{
    const Result result = proved(
        [](SheetDocument& document) { return boost::make_shared<TellsItsMaker>(document); }, Workers::Too);
    EXPECT_EQ(text_of(result.breaches),
        "ThrowsNothing: It, in a worker thread, do: \"my maker is not here\" came out of the command "
        "manager\n");
}

TEST(ProofWorkers, AreHeardOfWhileTheirDocumentsAreThere)
{
    const support::App app;
    const support::CommandMessageSpy spy; // in the main thread: it gets copies from its event loop
    EXPECT_EQ(text_of(proved(right("SetsACell"), Workers::Too).breaches), "");
    const int heard = spy.count();
    EXPECT_GT(heard, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), heard) << "nothing is left that speaks of commands and documents that went";
}

TEST(ProofTexts, OfTwoLinesDoNotHideASwallowedFailure)
{
    const Result result
        = proved([](SheetDocument& document) { return boost::make_shared<SwallowsInTwoLines>(document); });
    EXPECT_TRUE(sheet::breach_of(result.breaches, Promise::TextsAreOneLine));
    EXPECT_TRUE(sheet::breach_of(result.breaches, Promise::FailureIsReported)) << text_of(result.breaches);
    EXPECT_FALSE(sheet::breach_of(result.breaches, Promise::LogsNothing)) << text_of(result.breaches);
}

TEST(ProofTexts, BreakAtWhateverMakesANewLine)
{
    for (const char* const name : {"a\nb", "a\r", "\vb", "a\fb", "a\xc2\x85", "\xe2\x80\xa8",
             "a\xe2\x80\xa9"
             "b"}) {
        const Result result = proved(
            [name](SheetDocument& document) { return boost::make_shared<sheet::ScaleRow>(document, name); });
        ASSERT_FALSE(result.breaches.empty()) << name;
        EXPECT_EQ(result.breaches.front().text(),
            "TextsAreOneLine: It, undisturbed, made: the name has a line break");
        EXPECT_EQ(result.breaches.back().promise, Promise::TextsAreOneLine) << text_of(result.breaches);
    }
}
