#include "chart/projection.h"

#include <cmath>
#include <memory>
#include <proj.h>

namespace sondrix {
namespace {

constexpr const char* Wgs84 = "EPSG:4326";

struct ContextEnd {
  void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using Context = std::unique_ptr<PJ_CONTEXT, ContextEnd>;

struct ObjectEnd {
  void operator()(PJ* object) const { proj_destroy(object); }
};
using Object = std::unique_ptr<PJ, ObjectEnd>;

// A transformation with the context that it belongs to, which has to outlive it.
struct Pipeline {
  Context context;
  Object object;
};

Context MakeContext() {
  Context context(proj_context_create());
  if (!context) throw CantProject("the projections can't be set up");
  proj_log_level(context.get(), PJ_LOG_NONE);
  proj_context_set_enable_network(context.get(), 0);
  return context;
}

Object SystemOf(const Context& context, const std::string& crs) {
  Object system(proj_create(context.get(), crs.c_str()));
  if (!system || proj_is_crs(system.get()) == 0)
    throw CantProject(crs + " is no coordinate system that is known");
  return system;
}

bool IsPlaneInMetres(const Context& context, const Object& system) {
  if (proj_get_type(system.get()) != PJ_TYPE_PROJECTED_CRS) return false;
  const Object axes(proj_crs_get_coordinate_system(context.get(), system.get()));
  double unit = 0;  // metres
  return axes &&
         proj_cs_get_axis_info(context.get(), axes.get(), 0, nullptr, nullptr, nullptr, &unit, nullptr,
                               nullptr, nullptr) != 0 &&
         unit == 1;
}

// x is east and y north on both sides, whatever the order of the systems' axes.
Transform MakeTransform(Context context, const std::string& crs, PJ_DIRECTION direction) {
  const Object plain(proj_create_crs_to_crs(context.get(), Wgs84, crs.c_str(), nullptr));
  Object object(plain ? proj_normalize_for_visualization(context.get(), plain.get()) : nullptr);
  if (!object) throw CantProject(crs + " has no way to longitude and latitude");
  const auto pipeline = std::make_shared<Pipeline>(Pipeline{std::move(context), std::move(object)});
  return [pipeline, direction](double fromX, double fromY, double& x, double& y) {
    const PJ_COORD to = proj_trans(pipeline->object.get(), direction, proj_coord(fromX, fromY, 0, HUGE_VAL));
    if (!std::isfinite(to.xy.x) || !std::isfinite(to.xy.y)) return false;
    x = to.xy.x;
    y = to.xy.y;
    return true;
  };
}

}  // namespace

Transform ToPlane(const std::string& crs) {
  Context context = MakeContext();
  if (!IsPlaneInMetres(context, SystemOf(context, crs)))
    throw CantProject(crs + " is no projection in metres");
  return MakeTransform(std::move(context), crs, PJ_FWD);
}

Transform ToDegrees(const std::string& crs) {
  Context context = MakeContext();
  // What has a height alone would take the numbers for degrees.
  if (proj_get_type(SystemOf(context, crs).get()) == PJ_TYPE_VERTICAL_CRS)
    throw CantProject(crs + " holds no longitude and latitude, only heights");
  return MakeTransform(std::move(context), crs, PJ_INV);
}

}  // namespace sondrix
