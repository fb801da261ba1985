#include <quorel/geom/PlatformConversion.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using quorel::geom::PointT;
using quorel::geom::RectT;
using quorel::utility::PlatformPoint;
using quorel::utility::PlatformRect;
using quorel::utility::QRLtoWIN;
using quorel::utility::WINtoQRL;

TEST(PlatformConversion, RectangleToCornersAndBack) {
    RectT<std::int32_t> const rect(10, 20, 30, 40);
    PlatformRect const corners = QRLtoWIN(rect);
    EXPECT_EQ(corners.left, 10);
    EXPECT_EQ(corners.top, 20);
    EXPECT_EQ(corners.right, 40);
    EXPECT_EQ(corners.bottom, 60);
    EXPECT_EQ(WINtoQRL(corners), rect);
}

TEST(PlatformConversion, NothingIsNormalised) {
    RectT<std::int32_t> const negative(5, 5, -20, -1);
    PlatformRect const corners = QRLtoWIN(negative);
    EXPECT_EQ(corners.right, -15);
    EXPECT_EQ(corners.bottom, 4);
    EXPECT_EQ(WINtoQRL(corners), negative);

    // Extreme values wrap in 32 bits and still round-trip.
    std::int32_t const most = std::numeric_limits<std::int32_t>::max();
    RectT<std::int32_t> const huge(most, -most, most, most);
    EXPECT_EQ(WINtoQRL(QRLtoWIN(huge)), huge);
}

TEST(PlatformConversion, PointsCopyBothCoordinates) {
    PlatformPoint const point = QRLtoWIN(PointT<std::int32_t>(-3, 9));
    EXPECT_EQ(point.x, -3);
    EXPECT_EQ(point.y, 9);
    EXPECT_EQ(WINtoQRL(point), PointT<std::int32_t>(-3, 9));
}
