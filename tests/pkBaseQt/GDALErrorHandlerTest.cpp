#include <pkBase/pkDestructor.h>
#include <pkBaseQt/GDALErrorHandler.h>

#include <cpl_conv.h>
#include <cpl_error.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using pkBase::GDALErrorHandler;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> s_texts;
std::vector<std::string> s_former;

void note(const std::string& text)
{
    s_texts.push_back(text);
}

void CPL_STDCALL note_former(CPLErr, CPLErrorNum, const char* p_message)
{
    s_former.push_back(p_message);
}

void CPL_STDCALL note_other(CPLErr, CPLErrorNum, const char*) { }

/// GDAL's handler now; it stays.
CPLErrorHandler current_handler()
{
    CPLErrorHandler handler = CPLSetErrorHandler(nullptr);
    CPLSetErrorHandler(handler);
    return handler;
}

/// The handler singleton, installed over note_former().
GDALErrorHandler& installed()
{
    CPLSetErrorHandler(&note_former);
    GDALErrorHandler& handler = GDALErrorHandler::instance();
    handler.sink(&note);
    handler.install();
    return handler;
}

} // namespace

TEST(GDALErrorHandler, TextsBeginWithTheClass)
{
    EXPECT_EQ(GDALErrorHandler::text(CE_None, "message"), "CE_None: message");
    EXPECT_EQ(GDALErrorHandler::text(CE_Debug, "message"), "CE_Debug: message");
    EXPECT_EQ(GDALErrorHandler::text(CE_Warning, "message"), "CE_Warning: message");
    EXPECT_EQ(GDALErrorHandler::text(CE_Failure, "message"), "CE_Failure: message");
    EXPECT_EQ(GDALErrorHandler::text(CE_Fatal, "message"), "CE_Fatal: message");
}

TEST(GDALErrorHandler, TextOfAnotherClassIsEmpty)
{
    for (const int other : {-1, 5, 100, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(GDALErrorHandler::text(other, "message"), "");
    }
}

TEST(GDALErrorHandler, MessageIsTakenAsItStands)
{
    EXPECT_EQ(GDALErrorHandler::text(CE_Warning, ""), "CE_Warning: ");
    EXPECT_EQ(GDALErrorHandler::text(CE_Warning, "%1 %s %n\n\xff"), "CE_Warning: %1 %s %n\n\xff");
}

TEST(GDALErrorHandler, NullMessageIsAnEmptyOne)
{
    EXPECT_EQ(GDALErrorHandler::text(CE_Failure, nullptr), "CE_Failure: ");
}

TEST(GDALErrorHandler, IsOneObject)
{
    EXPECT_EQ(&GDALErrorHandler::instance(), &GDALErrorHandler::instance());
}

TEST(GDALErrorHandler, ExistingIsNotBeingInstalled)
{
    CPLSetErrorHandler(&note_former);
    GDALErrorHandler::instance().sink(&note);
    CPLError(CE_Warning, CPLE_AppDefined, "message");
    EXPECT_THAT(s_texts, IsEmpty());
    EXPECT_THAT(s_former, ElementsAre("message"));
}

TEST(GDALErrorHandler, InstalledHandsMessagesToTheSinkOnly)
{
    installed();
    CPLError(CE_Failure, CPLE_AppDefined, "%s", "first");
    CPLError(CE_Warning, CPLE_AppDefined, "%s", "second");
    EXPECT_THAT(s_texts, ElementsAre("CE_Failure: first", "CE_Warning: second"));
    EXPECT_THAT(s_former, IsEmpty());
}

TEST(GDALErrorHandler, EveryClassIsHandedOn)
{
    installed();
    const CPLErrorHandler handler = current_handler();
    for (const CPLErr error_class : {CE_None, CE_Debug, CE_Warning, CE_Failure, CE_Fatal}) {
        handler(error_class, CPLE_AppDefined, "m");
    }
    EXPECT_THAT(
        s_texts, ElementsAre("CE_None: m", "CE_Debug: m", "CE_Warning: m", "CE_Failure: m", "CE_Fatal: m"));
}

TEST(GDALErrorHandler, OtherClassesAreIgnored)
{
    installed();
    const CPLErrorHandler handler = current_handler();
    handler(static_cast<CPLErr>(5), CPLE_AppDefined, "m");
    handler(static_cast<CPLErr>(7), CPLE_AppDefined, "m");
    EXPECT_THAT(s_texts, IsEmpty());
}

TEST(GDALErrorHandler, NullSinkDropsMessages)
{
    installed().sink(nullptr);
    CPLError(CE_Failure, CPLE_AppDefined, "message");
    EXPECT_THAT(s_texts, IsEmpty());
    EXPECT_THAT(s_former, IsEmpty());
}

TEST(GDALErrorHandler, TakesMessagesOfWorkerThreads)
{
    installed();
    std::thread([] { CPLError(CE_Failure, CPLE_AppDefined, "from a worker"); }).join();
    EXPECT_THAT(s_texts, ElementsAre("CE_Failure: from a worker"));
}

TEST(GDALErrorHandler, HandlerThatAThreadPushedGoesFirst)
{
    installed();
    CPLPushErrorHandler(CPLQuietErrorHandler);
    CPLError(CE_Failure, CPLE_AppDefined, "quiet");
    CPLPopErrorHandler();
    CPLError(CE_Failure, CPLE_AppDefined, "loud");
    EXPECT_THAT(s_texts, ElementsAre("CE_Failure: loud"));
}

TEST(GDALErrorHandler, RestoreGivesTheFormerHandlerBack)
{
    installed().restore();
    EXPECT_EQ(current_handler(), &note_former);
    CPLError(CE_Failure, CPLE_AppDefined, "message");
    EXPECT_THAT(s_texts, IsEmpty());
    EXPECT_THAT(s_former, ElementsAre("message"));
}

TEST(GDALErrorHandler, RestoreGivesTheFormerHandlersDataBack)
{
    std::vector<std::string> taken;
    CPLSetErrorHandlerEx(
        [](CPLErr, CPLErrorNum, const char* p_message) {
            static_cast<std::vector<std::string>*>(CPLGetErrorHandlerUserData())->push_back(p_message);
        },
        &taken);
    GDALErrorHandler::instance().install();
    GDALErrorHandler::instance().restore();
    CPLError(CE_Failure, CPLE_AppDefined, "to the host");
    EXPECT_THAT(taken, ElementsAre("to the host"));
    CPLSetErrorHandler(nullptr);
}

TEST(GDALErrorHandler, RestoreWithoutInstallLeavesGdalAlone)
{
    CPLSetErrorHandler(&note_former);
    GDALErrorHandler::instance().restore();
    EXPECT_EQ(current_handler(), &note_former);
}

TEST(GDALErrorHandler, SecondRestoreLeavesGdalAlone)
{
    GDALErrorHandler& handler = installed();
    handler.restore();
    CPLSetErrorHandler(&note_other);
    handler.restore();
    EXPECT_EQ(current_handler(), &note_other);
}

TEST(GDALErrorHandler, SecondInstallKeepsTheFormerHandler)
{
    GDALErrorHandler& handler = installed();
    handler.install();
    CPLError(CE_Failure, CPLE_AppDefined, "once");
    EXPECT_THAT(s_texts, ElementsAre("CE_Failure: once"));
    handler.restore();
    EXPECT_EQ(current_handler(), &note_former);
}

TEST(GDALErrorHandler, CanBeInstalledAgainAfterRestore)
{
    GDALErrorHandler& handler = installed();
    handler.restore();
    CPLSetErrorHandler(&note_other);
    handler.install();
    CPLError(CE_Failure, CPLE_AppDefined, "again");
    EXPECT_THAT(s_texts, ElementsAre("CE_Failure: again"));
    handler.restore();
    EXPECT_EQ(current_handler(), &note_other);
}

TEST(GDALErrorHandler, DestructionInPhaseFiveGivesTheFormerHandlerBack)
{
    installed();
    static CPLErrorHandler s_in_phase_four = nullptr;
    static CPLErrorHandler s_in_phase_six = nullptr;
    pkBase::pkDestructor(pkBase::pkDestructionPhase(4), [] { s_in_phase_four = current_handler(); });
    pkBase::pkDestructor(pkBase::pkDestructionPhase(6), [] { s_in_phase_six = current_handler(); });
    pkBase::pkDestructor::run();
    EXPECT_NE(s_in_phase_four, &note_former);
    EXPECT_EQ(s_in_phase_six, &note_former);
    CPLError(CE_Failure, CPLE_AppDefined, "message");
    EXPECT_THAT(s_texts, IsEmpty());
    EXPECT_THAT(s_former, ElementsAre("message"));
}

TEST(GDALErrorHandler, DestructionLeavesANewerHandlerAloneAfterRestore)
{
    installed().restore();
    CPLSetErrorHandler(&note_other);
    pkBase::pkDestructor::run();
    EXPECT_EQ(current_handler(), &note_other);
}
