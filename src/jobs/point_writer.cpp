#include "jobs/point_writer.h"

#include "core/code_page.h"
#include "core/date_time.h"
#include "core/point.h"
#include "core/run.h"
#include "core/settings.h"
#include "formats/mp_points.h"
#include "formats/plt.h"
#include "jobs/text_job.h"
#include "ozi/ozi_link.h"

#include <cmath>

namespace sondrix {

void WritePoint(Run& run, PointBodies& bodies, const Point& point, std::int64_t line,
                std::size_t feetLength) {
  AppendMpPoint(Fresh(bodies.text), point, ToCodePage(run.settings.DepthMP), line);
  bodies.mp.Add(bodies.text);
  AppendPltPoint(Fresh(bodies.text), point, feetLength);
  bodies.plt.Add(bodies.text);
  if (!run.settings.ViewOzi) return;
  const double today = std::floor(DayCount(ClockNow()));
  OziLivePoint(run.link, run.window, point.Segment, point.Latitude, point.Longitude,
               static_cast<double>(point.Feet), today);
}

}  // namespace sondrix
