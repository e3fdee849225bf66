// docs/start-up.md: headers of CGAL in a program that hides its symbols

//! [cgal]
#pragma GCC visibility push(default)
#include <CGAL/Delaunay_triangulation_2.h>
#pragma GCC visibility pop
//! [cgal]

#include <CGAL/Simple_cartesian.h>

#include <gtest/gtest.h>

TEST(StartUpGuide, CgalCanBeUsed)
{
    typedef CGAL::Simple_cartesian<double> Kernel;
    CGAL::Delaunay_triangulation_2<Kernel> triangulation;
    triangulation.insert(Kernel::Point_2(0, 0));
    EXPECT_EQ(triangulation.number_of_vertices(), 1U);
}
