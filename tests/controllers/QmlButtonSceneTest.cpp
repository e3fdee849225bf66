#include <tarqa/housekeeping/QmlButtonController.h>

#include <QtCore/QCoreApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

using tarqa::housekeeping::QmlButtonController;

namespace {

/// A scene that binds to a button and answers its clicks.
class QmlButtonScene : public testing::Test
{
protected:
    QmlButtonScene()
    {
        m_engine.rootContext()->setContextProperty("button", &button);
        QQmlComponent component(&m_engine);
        component.setData(
            "import QtQml 2.15\n"
            "QtObject {\n"
            "    property bool shown: button.visible\n"
            "    property real right: button.geometry.x + button.geometry.width\n"
            "    function press() { button.clicked() }\n"
            "    function move() { button.geometry = Qt.rect(1, 2, 3, 4); button.visible = false }\n"
            "}\n",
            QUrl());
        m_scene.reset(component.create());
        EXPECT_TRUE(m_scene) << component.errorString().toStdString();
    }

    QVariant value(const char* name) const { return m_scene->property(name); }
    void call(const char* function) { EXPECT_TRUE(QMetaObject::invokeMethod(m_scene.get(), function)); }

private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};

protected:
    QmlButtonController button;

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_scene;
};

} // namespace

TEST_F(QmlButtonScene, FollowsTheButton)
{
    EXPECT_EQ(QVariant(true), value("shown"));
    EXPECT_EQ(0, value("right").toDouble());
    button.setVisible(false);
    button.setGeometry(QRectF(10, 20, 30, 40));
    EXPECT_EQ(QVariant(false), value("shown"));
    EXPECT_EQ(40, value("right").toDouble());
}

TEST_F(QmlButtonScene, SetsTheButton)
{
    const QSignalSpy shown(&button, &QmlButtonController::visibleChanged);
    const QSignalSpy moved(&button, &QmlButtonController::geometryChanged);
    call("move");
    call("move"); // the same again tells nothing
    EXPECT_FALSE(button.visible());
    EXPECT_EQ(QRectF(1, 2, 3, 4), button.geometry());
    EXPECT_EQ(1, shown.count());
    EXPECT_EQ(1, moved.count());
    EXPECT_EQ(4, value("right").toDouble());
}

TEST_F(QmlButtonScene, TellsOfTheClick)
{
    const QSignalSpy clicked(&button, &QmlButtonController::clicked);
    call("press");
    EXPECT_EQ(1, clicked.count());
}
