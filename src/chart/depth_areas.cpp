#include "chart/depth_areas.h"

#include <algorithm>
#include <numeric>

namespace sondrix {

namespace {

using Index = std::int32_t;
constexpr Index None = ContourTrace::None;

std::size_t At(Index index) { return static_cast<std::size_t>(index); }

// Twice the area within a closed ring, positive where it runs counterclockwise.
double TwiceArea(const PlaneLine& ring) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const double ax = ring[i].x - ring[0].x, ay = ring[i].y - ring[0].y;
    const double bx = ring[i + 1].x - ring[0].x, by = ring[i + 1].y - ring[0].y;
    sum += ax * by - bx * ay;
  }
  return sum;
}

struct Ring {
  PlaneLine points;
  int band = 0;
};

class RingMaker {
 public:
  RingMaker(const ContourTrace& trace, std::span<const ContourPath> paths)
      : trace_(trace), paths_(paths), owner_(trace.at.size(), None), isUsed_(trace.at.size(), 0) {
    for (std::size_t path = 0; path < paths.size(); ++path) {
      Index vertex = paths[path].first;
      for (std::size_t i = 0; i < paths[path].count; ++i, vertex = trace.next[At(vertex)]) {
        owner_[At(vertex)] = static_cast<Index>(path);
      }
    }
    left_.assign(paths.size(), None);
    right_.assign(paths.size(), None);
  }

  void MakeRings() {
    for (std::size_t path = 0; path < paths_.size(); ++path) {
      if (!paths_[path].isClosed) continue;
      AddPath(path, true);
      Close(paths_[path].level);
      AddPath(path, false);
      Close(paths_[path].level - 1);
    }
    // Along the edge from a crossing on; then the edges without one.
    for (const bool isCrossed : {true, false}) {
      for (std::size_t vertex = 0; vertex < trace_.at.size(); ++vertex) {
        const bool isCrossing = trace_.level[vertex] != 0;
        if (trace_.nextOnEdge[vertex] == None || isUsed_[vertex] != 0 || isCrossing != isCrossed) continue;
        isCrossed ? RingFrom(static_cast<Index>(vertex)) : EdgeRingFrom(static_cast<Index>(vertex));
      }
    }
  }

  // The rings of one area hang together: along a row of nodes, a ring that is left is followed by one of the
  // same area. From a hole's westernmost crossing with a row the way leads on to the west, from ring to ring,
  // and so to the outer one.
  void JoinRings(const ContourSurface& surface) {
    joined_.resize(rings_.size());
    std::iota(joined_.begin(), joined_.end(), 0);
    for (int row = 0; row < surface.shape.rows; ++row) {
      std::size_t vertex = trace_.rowStart[At(row)];
      const std::uint16_t* band = surface.band.data() + surface.shape.IndexOf(0, row);
      const std::uint8_t* above = surface.squares.data() + surface.SquareIndex(0, row);
      const std::uint8_t* below = above + surface.SquareStride();
      Index last = None;
      const auto pass = [&](Index before, Index after) {
        if (last != None) Join(last, before);
        last = after;
      };
      for (int column = 0; column < surface.shape.columns; ++column) {
        const int around = above[column] + above[column + 1] + below[column] + below[column + 1];
        if (around != 0 && around != 4) {
          const Index ring = owner_[vertex++];
          rings_[At(ring)].band = band[column];
          pass(ring, ring);
        }
        if ((above[column + 1] | below[column + 1]) == 0) {
          last = None;
          continue;
        }
        const int difference = band[column + 1] - band[column];
        for (int i = 0; i < std::abs(difference); ++i) {
          const std::size_t path = At(owner_[vertex++]);
          difference > 0 ? pass(right_[path], left_[path]) : pass(left_[path], right_[path]);
        }
      }
    }
  }

  std::vector<DepthArea> Areas(const std::vector<double>& depths, double deepest) {
    std::vector<Index> order(rings_.size()), areaOf(rings_.size(), None);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [this](Index a, Index b) { return rings_[At(a)].band < rings_[At(b)].band; });
    std::vector<DepthArea> areas;
    const auto depthOf = [&](int band) { return depths[At(band)]; };
    for (const bool isOuter : {true, false}) {
      for (const Index index : order) {
        Ring& ring = rings_[At(index)];
        const bool isLand = ring.band == 0 && !depths.empty() && depths[0] <= 0;
        if (isLand || ring.points.empty() || (TwiceArea(ring.points) > 0) != isOuter) continue;
        Index& area = areaOf[At(Root(index))];
        if (isOuter) {
          area = static_cast<Index>(areas.size());
          const int last = static_cast<int>(depths.size());
          areas.push_back({ring.band > 0 ? depthOf(ring.band - 1) : 0,
                           ring.band < last ? depthOf(ring.band) : deepest,
                           {}});
        }
        areas[At(area)].rings.push_back(std::move(ring.points));
        ring.points.clear();
      }
    }
    return areas;
  }

 private:
  void AddPath(std::size_t path, bool isForward) {
    const auto begin = static_cast<std::ptrdiff_t>(points_.size());
    Index vertex = paths_[path].first;
    for (std::size_t i = 0; i < paths_[path].count; ++i, vertex = trace_.next[At(vertex)]) {
      points_.push_back(trace_.at[At(vertex)]);
    }
    if (!isForward) std::reverse(points_.begin() + begin, points_.end());
    (isForward ? left_ : right_)[path] = static_cast<Index>(rings_.size());
  }

  void Close(int band) {
    points_.push_back(points_.front());
    rings_.push_back({PlaneLine(points_.begin(), points_.end()), band});
    points_.clear();
  }

  // Along the edge to the next crossing, along its contour to the contour's other end, and so on.
  void RingFrom(Index start) {
    const auto ring = static_cast<Index>(rings_.size());
    const auto level = static_cast<int>(trace_.level[At(start)]);
    const int band = trace_.next[At(start)] == None ? level : level - 1;
    for (Index at = start; isUsed_[At(at)] == 0;) {
      isUsed_[At(at)] = 1;
      for (at = trace_.nextOnEdge[At(at)]; trace_.level[At(at)] == 0; at = trace_.nextOnEdge[At(at)]) {
        AddNode(at, ring);
      }
      const std::size_t path = At(owner_[At(at)]);
      const bool isForward = at == paths_[path].first;
      AddPath(path, isForward);
      at = isForward ? paths_[path].last : paths_[path].first;
    }
    Close(band);
  }

  // Its band is found where the rows of nodes are gone through.
  void EdgeRingFrom(Index start) {
    const auto ring = static_cast<Index>(rings_.size());
    for (Index at = start; isUsed_[At(at)] == 0; at = trace_.nextOnEdge[At(at)]) AddNode(at, ring);
    Close(0);
  }

  void AddNode(Index vertex, Index ring) {
    points_.push_back(trace_.at[At(vertex)]);
    owner_[At(vertex)] = ring;
    isUsed_[At(vertex)] = 1;
  }

  Index Root(Index ring) {
    while (joined_[At(ring)] != ring) ring = joined_[At(ring)] = joined_[At(joined_[At(ring)])];
    return ring;
  }

  void Join(Index a, Index b) {
    a = Root(a);
    b = Root(b);
    joined_[At(std::max(a, b))] = std::min(a, b);
  }

  const ContourTrace& trace_;
  std::span<const ContourPath> paths_;
  std::vector<Index> owner_;          // of a crossing its path, of a node at the edge its ring
  std::vector<std::uint8_t> isUsed_;  // the edge of the chart from that vertex on is part of a ring
  std::vector<Index> left_, right_;   // the rings that a path is part of: deeper and shallower
  std::vector<Ring> rings_;
  std::vector<Index> joined_;  // a ring of the same area, itself in the end
  PlaneLine points_;           // of the ring in the making
};

}  // namespace

std::vector<DepthArea> DepthAreasOf(const ContourSurface& surface, const ContourTrace& trace,
                                    std::span<const ContourPath> paths, double deepest) {
  RingMaker maker(trace, paths);
  maker.MakeRings();
  maker.JoinRings(surface);
  return maker.Areas(surface.depths, deepest);
}

}  // namespace sondrix
