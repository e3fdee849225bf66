#include "support/App.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QMetaType>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <gtest/gtest.h>

#include <memory>

namespace {

using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;

const QString s_name = "QuickHelpInputModel";

/// What the engine says of a document that begins with an import of the library's module.
QString errors_of(const QString& version, const QString& text)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    const QString import
        = QString("import %1 %2\nimport QtQml 2.0\n").arg(ApplicationManager::QML_NAMESPACE, version);
    component.setData((import + text).toUtf8(), QUrl("memory:/test.qml"));
    if (!support::wait_until([&component] { return !component.isLoading(); })) {
        return "it does not end";
    }
    if (!component.isReady()) {
        return component.errorString();
    }
    const std::unique_ptr<QObject> object(component.create());
    return object ? QString() : component.errorString();
}

} // namespace

TEST(ApplicationManagerQml, ModuleHasANameInReverseDomainForm)
{
    const QStringList sections = QString(ApplicationManager::QML_NAMESPACE).split('.');
    EXPECT_GE(sections.size(), 2);
    for (const QString& section : sections) {
        EXPECT_TRUE(!section.isEmpty() && section.front().isLower()) << ApplicationManager::QML_NAMESPACE;
    }
}

TEST(ApplicationManagerQml, ModuleIsUnknownBeforeRegistration)
{
    const support::App app;
    EXPECT_NE(errors_of("1.0", "QtObject { }"), QString());
}

TEST(ApplicationManagerQml, InputModelIsRegisteredAsAType)
{
    const StartedApplication started;
    EXPECT_EQ(errors_of("1.0", "QtObject { property QuickHelpInputModel model: null }"), QString());
    EXPECT_NE(errors_of("1.0", "QtObject { property QuickHelpOtherModel model: null }"), QString());
}

TEST(ApplicationManagerQml, InputModelIsRegisteredInVersionOneZeroOnly)
{
    const StartedApplication started;
    EXPECT_NE(errors_of("2.0", "QtObject { }"), QString());
    EXPECT_NE(errors_of("0.9", "QtObject { }"), QString());
}

TEST(ApplicationManagerQml, InputModelCannotBeMadeAndTheReasonSaysWhy)
{
    const StartedApplication started;
    const QString errors = errors_of("1.0", s_name + " { }");
    EXPECT_TRUE(errors.trimmed().endsWith(":3 QuickHelpModels should be obtained from the QuickHelpManager"))
        << errors.toStdString();
}

TEST(ApplicationManagerQml, CanBeRegisteredWithoutTheRest)
{
    EXPECT_EQ(QMetaType::type("QAbstractListModel*"), static_cast<int>(QMetaType::UnknownType));
    ApplicationManager::registerQmlTypes();
    EXPECT_NE(QMetaType::type("QAbstractListModel*"), static_cast<int>(QMetaType::UnknownType));
    EXPECT_EQ(QMetaType::type("QAbstractListModel*"), qMetaTypeId<QAbstractListModel*>());
    const support::App app;
    EXPECT_EQ(errors_of("1.0", "QtObject { property QuickHelpInputModel model: null }"), QString());
}

TEST(ApplicationManagerQml, RegisteringTwiceChangesNothing)
{
    const StartedApplication started;
    ApplicationManager::registerQmlTypes();
    EXPECT_EQ(errors_of("1.0", "QtObject { property QuickHelpInputModel model: null }"), QString());
}
