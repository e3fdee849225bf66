#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>

#include <gtest/gtest.h>

#include <type_traits>

#include <QtCore/QPointer>

using pkBase::QLogFileViewer;

TEST(QLogFileViewer, IsOneObjectWithoutAPath)
{
    EXPECT_EQ(&QLogFileViewer::instance(), &QLogFileViewer::instance());
    EXPECT_FALSE(std::is_default_constructible<QLogFileViewer>::value);
    EXPECT_EQ(QLogFileViewer::instance().path(), QString());
}

TEST(QLogFileViewer, KeepsThePathThatWasSetLast)
{
    QLogFileViewer& viewer = QLogFileViewer::instance();
    viewer.setPath(QString::fromUtf8("/home/Gel\xc3\xa4nde/Tarq_1.log"));
    EXPECT_EQ(QLogFileViewer::instance().path(), QString::fromUtf8("/home/Gel\xc3\xa4nde/Tarq_1.log"));
    viewer.setPath("relative %1");
    EXPECT_EQ(viewer.path(), "relative %1");
    viewer.setPath(QString());
    EXPECT_EQ(viewer.path(), QString());
}

TEST(QLogFileViewer, IsDestroyedInPhaseFiveAndFreshAfterwards)
{
    static bool s_lived_in_phase_four = false;
    static bool s_gone_in_phase_six = false;
    static QPointer<QLogFileViewer> s_viewer;
    s_viewer = &QLogFileViewer::instance();
    s_viewer->setPath("/path");
    pkBase::pkDestructor(pkBase::pkDestructionPhase(4), [] { s_lived_in_phase_four = !s_viewer.isNull(); });
    pkBase::pkDestructor(pkBase::pkDestructionPhase(6), [] { s_gone_in_phase_six = s_viewer.isNull(); });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(s_lived_in_phase_four);
    EXPECT_TRUE(s_gone_in_phase_six);
    EXPECT_EQ(QLogFileViewer::instance().path(), QString());
}
