#pragma once

#include "CommandFixture.h"
#include "HeightsOf.h"
#include "SceneScreen.h"
#include "documents/CellChanges.h"
#include "scene/Graphics.h"
#include "scene/SceneCanvas.h"
#include "scene/SceneView.h"
#include "support/App.h"
#include "support/Controllers.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace host_test {

const QSize s_size(500, 400);
const QColor s_ground(10, 20, 200); ///< no colour of heights

inline double hill(int column, int row)
{
    return std::max(0.0, 30 - std::hypot(column - 40, row - 30));
}

inline void prepare()
{
    QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
    support::init_controllers();
    auto& preferences = tarqa::housekeeping::ApplicationManager::instance();
    preferences.setAnimateCameraJumps(false);
    preferences.setViewBackgroundColour(s_ground);
}

/// Shows a view and waits for its picture.
inline void show(terrain::SceneView& view)
{
    view.resize(s_size);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    ASSERT_TRUE(QTest::qWaitFor([&view] { return view.canvas() && view.canvas()->frames() > 0; }));
}

inline QImage picture(const terrain::SceneView& view)
{
    return view.canvas()->grabFramebuffer();
}

inline terrain::CellChanges cells(const QRect& changed)
{
    terrain::CellChanges changes;
    changes.cells = changed;
    return changes;
}

/// A screen with OpenGL.
class SceneViewTest : public testing::Test
{
protected:
    void SetUp() override
    {
        prepare();
        ASSERT_TRUE(terrain::has_scene_graphics());
    }

    SceneScreen screen;
    support::App application;
};

} // namespace host_test
