#pragma once

#include "support/App.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <gtest/gtest.h>

#include <string>

/// The six message classes, each through the spy that receives it; they must behave alike.
typedef testing::Types<support::ApplicationMessageSpy, support::CommandMessageSpy,
    support::DocumentHistoryMsgSpy, support::DocumentMessageSpy, support::FilesInsertMessageSpy,
    support::MainWindowMessageSpy>
    AllSpies;

/// Those whose messages reach subscribers in other threads.
typedef testing::Types<support::ApplicationMessageSpy, support::CommandMessageSpy,
    support::DocumentHistoryMsgSpy, support::DocumentMessageSpy, support::FilesInsertMessageSpy>
    ThreadedSpies;

/// What Qt and the log call a message class, written out independently of the classes.
struct MessageNames
{
    const char* signal_type; ///< as in signals and slots
    const char* full; ///< the translation context
    const char* source; ///< in assertions
};

template <class Spy>
struct NamesOf;
template <>
struct NamesOf<support::ApplicationMessageSpy>
{
    static constexpr MessageNames value = {"housekeeping::ApplicationMessage",
        "tarqa::housekeeping::ApplicationMessage", "housekeeping/src/ApplicationMessage"};
};
template <>
struct NamesOf<support::CommandMessageSpy>
{
    static constexpr MessageNames value = {"housekeeping::CommandMessage",
        "tarqa::housekeeping::CommandMessage", "housekeeping/src/CommandMessage"};
};
template <>
struct NamesOf<support::DocumentHistoryMsgSpy>
{
    static constexpr MessageNames value = {"housekeeping::DocumentHistoryMsg",
        "tarqa::housekeeping::DocumentHistoryMsg", "housekeeping/src/DocumentHistoryMsg"};
};
template <>
struct NamesOf<support::DocumentMessageSpy>
{
    static constexpr MessageNames value = {"housekeeping::DocumentMessage",
        "tarqa::housekeeping::DocumentMessage", "housekeeping/src/DocumentMessage"};
};
template <>
struct NamesOf<support::FilesInsertMessageSpy>
{
    static constexpr MessageNames value = {"housekeeping::FilesInsertMessage",
        "tarqa::housekeeping::FilesInsertMessage", "housekeeping/src/FilesInsertMessage"};
};
template <>
struct NamesOf<support::MainWindowMessageSpy>
{
    static constexpr MessageNames value = {"housekeeping::gui::MainWindowMessage",
        "tarqa::housekeeping::gui::MainWindowMessage", "housekeeping/gui/src/MainWindowMessage"};
};

struct SpyNames
{
    template <class Spy>
    static std::string GetName(int)
    {
        const std::string full = NamesOf<Spy>::value.full;
        return full.substr(full.rfind(':') + 1);
    }
};
