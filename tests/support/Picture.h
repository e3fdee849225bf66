#pragma once

#include <QtCore/QFile>
#include <QtGui/QImage>

#include <gtest/gtest.h>

namespace support {

/// The PNG picture that is compiled in under @p path, with an alpha channel; fails the test when there is
/// none, when it is not @p size pixels wide and high, or when nothing of it can be seen.
inline QImage compiled_in_picture(const QString& path, int size)
{
    EXPECT_TRUE(QFile::exists(path)) << path.toStdString();
    const QImage picture = QImage(path, "PNG").convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(QSize(size, size), picture.size()) << path.toStdString();
    int visible = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            visible += qAlpha(picture.pixel(x, y)) == 255;
        }
    }
    EXPECT_GT(visible, 0) << path.toStdString();
    return picture;
}

} // namespace support
