#include "formats/point_list.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(PointList, RowsAndReports) {
  std::string body;
  AppendDepthRow(body, "55.1", "37.1", "7.2");
  AppendHeightRow(body, "55.1", "37.1", "7.2");
  AppendBadLine(body, {"zero depth", "", " in line ", 7});
  AppendBadLine(body, {"ammout of sattelites ", "05", " in line ", 0});
  EXPECT_EQ(
      body,
      "55.1,37.1,7.2\r\n37.1,55.1,-7.2\r\nzero depth in line 7\r\nammout of sattelites 05 in line 0\r\n");
}

}  // namespace
}  // namespace sondrix
