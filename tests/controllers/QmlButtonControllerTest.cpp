#include <tarqa/housekeeping/QmlButtonController.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using tarqa::housekeeping::QmlButtonController;

namespace {

const QRectF s_place(10, 20, 300, 40);

/// What the signals said, in order: "visible 0", "geometry 10,20 300x40", "clicked".
class Signals
{
public:
    explicit Signals(QmlButtonController& button)
    {
        QObject::connect(&button, &QmlButtonController::visibleChanged, &m_context,
            [this](bool visible) { entries.push_back("visible " + std::to_string(visible)); });
        QObject::connect(&button, &QmlButtonController::geometryChanged, &m_context,
            [this](QRectF geometry) { entries.push_back("geometry " + text(geometry)); });
        QObject::connect(
            &button, &QmlButtonController::clicked, &m_context, [this] { entries.push_back("clicked"); });
    }

    static std::string text(const QRectF& place)
    {
        return QString("%1,%2 %3x%4")
            .arg(place.x())
            .arg(place.y())
            .arg(place.width())
            .arg(place.height())
            .toStdString();
    }

    std::vector<std::string> entries;

private:
    QObject m_context; // ends the connections
};

typedef std::vector<std::string> Entries;

} // namespace

// As the scene sees it

TEST(QmlButtonController, PropertiesInTheirOrder)
{
    const QMetaObject& meta = QmlButtonController::staticMetaObject;
    const int first = meta.propertyOffset();
    ASSERT_EQ(first + 2, meta.propertyCount());
    const QMetaProperty visible = meta.property(first);
    EXPECT_STREQ("visible", visible.name());
    EXPECT_EQ(QVariant::Bool, visible.type());
    EXPECT_EQ("visibleChanged(bool)", visible.notifySignal().methodSignature());
    const QMetaProperty geometry = meta.property(first + 1);
    EXPECT_STREQ("geometry", geometry.name());
    EXPECT_EQ(QVariant::RectF, geometry.type());
    EXPECT_EQ("geometryChanged(QRectF)", geometry.notifySignal().methodSignature());
    for (const QMetaProperty& property : {visible, geometry}) {
        EXPECT_TRUE(property.isReadable());
        EXPECT_TRUE(property.isWritable());
        EXPECT_TRUE(property.isScriptable());
        EXPECT_FALSE(property.isConstant());
    }
}

TEST(QmlButtonController, SignalsInTheirOrder)
{
    const QMetaObject& meta = QmlButtonController::staticMetaObject;
    std::vector<QByteArray> signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal) {
            signatures.push_back(meta.method(i).methodSignature());
        }
    }
    EXPECT_EQ(signatures,
        (std::vector<QByteArray>{"visibleChanged(bool)", "geometryChanged(QRectF)", "clicked()"}));
}

TEST(QmlButtonController, IsAPlainObject)
{
    EXPECT_EQ(&QObject::staticMetaObject, QmlButtonController::staticMetaObject.superClass());
}

TEST(QmlButtonController, PropertiesAreReadAndWrittenByName)
{
    QmlButtonController button;
    Signals heard(button);
    EXPECT_EQ(QVariant(true), button.property("visible"));
    EXPECT_EQ(QVariant(QRectF()), button.property("geometry"));
    EXPECT_TRUE(button.setProperty("visible", false));
    EXPECT_TRUE(button.setProperty("geometry", s_place));
    EXPECT_FALSE(button.visible());
    EXPECT_EQ(s_place, button.geometry());
    EXPECT_EQ(heard.entries, (Entries{"visible 0", "geometry 10,20 300x40"}));
}

TEST(QmlButtonController, GoesWithItsParent)
{
    QPointer<QmlButtonController> button;
    {
        QObject parent;
        button = new QmlButtonController(&parent);
        EXPECT_EQ(&parent, button->parent());
    }
    EXPECT_TRUE(button.isNull());
}

// Visible

TEST(QmlButtonController, BeginsVisible)
{
    const QmlButtonController button;
    EXPECT_TRUE(button.visible());
    EXPECT_EQ(nullptr, button.parent());
}

TEST(QmlButtonController, SameVisibilityTellsNothing)
{
    QmlButtonController button;
    Signals heard(button);
    button.setVisible(true);
    EXPECT_EQ(heard.entries, Entries());
    button.setVisible(false);
    button.setVisible(false);
    EXPECT_EQ(heard.entries, Entries{"visible 0"});
}

TEST(QmlButtonController, EveryChangeOfVisibilityIsTold)
{
    QmlButtonController button;
    Signals heard(button);
    button.setVisible(false);
    EXPECT_FALSE(button.visible());
    button.setVisible(true);
    EXPECT_TRUE(button.visible());
    button.setVisible(false);
    EXPECT_EQ(heard.entries, (Entries{"visible 0", "visible 1", "visible 0"}));
}

TEST(QmlButtonController, VisibilityIsStoredBeforeItIsTold)
{
    QmlButtonController button;
    int calls = 0;
    QObject::connect(&button, &QmlButtonController::visibleChanged, &button, [&](bool visible) {
        ++calls;
        EXPECT_EQ(visible, button.visible());
        button.setVisible(visible); // tells nothing again
    });
    button.setVisible(false);
    EXPECT_EQ(1, calls);
}

// Geometry

TEST(QmlButtonController, BeginsWithTheNullRectangle)
{
    QmlButtonController button;
    EXPECT_TRUE(button.geometry().isNull());
    EXPECT_EQ(QRectF(), button.geometry());
}

TEST(QmlButtonController, NullRectangleAtFirstTellsNothing)
{
    QmlButtonController button;
    Signals heard(button);
    button.setGeometry(QRectF());
    EXPECT_EQ(heard.entries, Entries());
}

TEST(QmlButtonController, FirstGeometryIsToldOnce)
{
    QmlButtonController button;
    Signals heard(button);
    button.setGeometry(s_place);
    button.setGeometry(s_place);
    EXPECT_EQ(heard.entries, Entries{"geometry 10,20 300x40"});
    EXPECT_EQ(s_place, button.geometry());
    EXPECT_TRUE(button.visible());
}

TEST(QmlButtonController, ChangeOfOnePartIsAChange)
{
    for (const QRectF& place : {s_place.translated(1, 0), s_place.translated(0, 1), QRectF(10, 20, 301, 40),
             QRectF(10, 20, 300, 41), QRectF(10, 20, 0, 0), QRectF(10, 20, -300, -40), QRectF()}) {
        QmlButtonController button;
        button.setGeometry(s_place);
        Signals heard(button);
        button.setGeometry(place);
        EXPECT_EQ(heard.entries, Entries{"geometry " + Signals::text(place)});
        EXPECT_EQ(place, button.geometry());
    }
}

TEST(QmlButtonController, NullSizeAtAnotherPlaceIsAChange)
{
    QmlButtonController button;
    Signals heard(button);
    button.setGeometry(QRectF(5, 0, 0, 0));
    EXPECT_EQ(heard.entries, Entries{"geometry 5,0 0x0"});
}

TEST(QmlButtonController, RoundingNoiseTellsNothingAndStoresNothing)
{
    const QRectF exact(0.1, 0.2, 0.3, 1e6);
    const QRectF noisy(0.3 - 0.2, 0.1 + 0.1, 0.1 + 0.2, std::nextafter(1e6, 2e6));
    ASSERT_NE(exact.width(), noisy.width());
    QmlButtonController button;
    button.setGeometry(exact);
    Signals heard(button);
    button.setGeometry(noisy);
    EXPECT_EQ(heard.entries, Entries());
    EXPECT_EQ(exact.width(), button.geometry().width()); // bit by bit
    EXPECT_EQ(exact.height(), button.geometry().height());
}

TEST(QmlButtonController, NoiseDoesNotCreepAway)
{
    QmlButtonController button;
    button.setGeometry(s_place);
    Signals heard(button);
    // Each step is noise, all of them together are not: it is the stored rectangle that counts.
    double width = s_place.width();
    for (int step = 0; step < 100000 && heard.entries.empty(); ++step) {
        width += 1e-11;
        button.setGeometry(QRectF(10, 20, width, 40));
    }
    EXPECT_EQ(1u, heard.entries.size());
}

TEST(QmlButtonController, MoreThanNoiseIsAChange)
{
    QmlButtonController button;
    button.setGeometry(s_place);
    const QSignalSpy spy(&button, &QmlButtonController::geometryChanged);
    const QRectF moved(10.000001, 20, 300, 40);
    button.setGeometry(moved);
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ(moved.x(), spy.at(0).at(0).toRectF().x());
    EXPECT_EQ(moved.x(), button.geometry().x());
}

TEST(QmlButtonController, ExtremeRectanglesAreStoredAsTheyAre)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const QRectF& place :
        {QRectF(-1e300, 1e300, 1e-300, 1e300), QRectF(0, 0, infinity, infinity), QRectF(3, 4, -5, -6)}) {
        QmlButtonController button;
        Signals heard(button);
        button.setGeometry(place);
        EXPECT_EQ(1u, heard.entries.size());
        EXPECT_EQ(place.x(), button.geometry().x());
        EXPECT_EQ(place.width(), button.geometry().width());
        EXPECT_EQ(place.height(), button.geometry().height());
    }
}

TEST(QmlButtonController, GeometryIsStoredBeforeItIsTold)
{
    QmlButtonController button;
    int calls = 0;
    QObject::connect(&button, &QmlButtonController::geometryChanged, &button, [&](QRectF place) {
        ++calls;
        EXPECT_EQ(place, button.geometry());
        button.setGeometry(place);
    });
    button.setGeometry(s_place);
    EXPECT_EQ(1, calls);
}

// Clicks

TEST(QmlButtonController, ClickIsTheScenesToTell)
{
    QmlButtonController button;
    Signals heard(button);
    EXPECT_TRUE(QMetaObject::invokeMethod(&button, "clicked")); // as a scene does
    emit button.clicked();
    EXPECT_EQ(heard.entries, (Entries{"clicked", "clicked"}));
}

TEST(QmlButtonController, ClickDoesNotDependOnVisibility)
{
    QmlButtonController button;
    button.setVisible(false);
    Signals heard(button);
    emit button.clicked();
    EXPECT_EQ(heard.entries, Entries{"clicked"});
    EXPECT_FALSE(button.visible());
}
