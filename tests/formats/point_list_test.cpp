#include "formats/point_list.h"

#include "core/point.h"
#include "formats/mp_points.h"
#include "formats/plt.h"
#include "formats/sounding_line.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(PointList, ThePointInEveryKindOfFile) {
  Point point{.Feet = 1.5F, .Time = 86399, .Segment = 1, .LatText = "1", .LonText = "2", .DepthText = ".4"};
  std::string text;
  AppendDepthRow(text, point);
  AppendHeightRow(text, point);
  AppendPltPoint(text, point);
  AppendBadLine(text, {"zero", " depth", " in line ", 7});
  AppendSoundingLine(text, 59.5, -.25, ".4", "now");
  AppendSoundingLine(text, 1, 2, "0.4", "");
  AppendMpPoint(text, point, "0x1000", 7);
  point.Gap = true;
  AppendMpPoint(text, point, "0x1000", 7);
  EXPECT_EQ(
      text,
      "1,2,.4\r\n2,1,-.4\r\n1,2,1,-1.5,,30-Dec-99,23:59:59\r\nzero depth in line 7\r\n"
      "59.5,-.25,0.4,now\r\n1,2,0.4,\r\n\r\n[POI]\r\nType=0x1000\r\nLabel=.4\r\nData0=(1,2)\r\n[END]\r\n"
      "\r\n[POI]\r\nType=0x2900\r\nLabel=.4 | 7\r\nData0=(1,2)\r\n[END]\r\n");
  EXPECT_EQ(PltHead("lake", 12),
            "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n"
            "0,2,65535,lake,0,0,2,8421376\r\n12\r\n");
}

}  // namespace
}  // namespace sondrix
