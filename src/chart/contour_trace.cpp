#include "chart/contour_trace.h"

#include <algorithm>
#include <array>

namespace sondrix {

namespace {

// The crossings between two nodes, numbered from the one to the other.
struct Crossings {
  std::int32_t first = 0;
  int fromBand = 0, toBand = 0;

  std::int32_t Of(int level) const {
    return fromBand < toBand ? first + (level - fromBand - 1) : first + (fromBand - level);
  }
};

class Tracer {
 public:
  explicit Tracer(const ContourSurface& surface)
      : surface_(surface),
        columns_(static_cast<std::size_t>(surface.shape.columns)),
        margin_(CrossingMargin(surface.shape.cell)),
        north_(columns_),
        south_(columns_),
        down_(columns_),
        northNodes_(columns_, ContourTrace::None),
        southNodes_(columns_, ContourTrace::None) {}

  ContourTrace Run() {
    for (int row = 0; row < surface_.shape.rows; ++row) {
      north_.swap(south_);
      northNodes_.swap(southNodes_);
      RowOfNodes(row);
      if (row > 0) RowOfSquares(row);
    }
    return std::move(trace_);
  }

 private:
  std::int32_t Count() const { return static_cast<std::int32_t>(trace_.at.size()); }

  void AddVertex(PlanePoint at, int level) {
    trace_.at.push_back(at);
    trace_.level.push_back(static_cast<std::uint16_t>(level));
    trace_.next.push_back(ContourTrace::None);
    trace_.nextOnEdge.push_back(ContourTrace::None);
  }

  Crossings AddCrossings(int column, int row, int toColumn, int toRow) {
    const std::size_t from = surface_.shape.IndexOf(column, row);
    const std::size_t to = surface_.shape.IndexOf(toColumn, toRow);
    const Crossings result = {Count(), surface_.band[from], surface_.band[to]};
    if (result.fromBand == result.toBand) return result;
    const double fromDepth = static_cast<double>(surface_.depth[from]);
    const double toDepth = static_cast<double>(surface_.depth[to]);
    const PlanePoint a = surface_.shape.MiddleOf(column, row), b = surface_.shape.MiddleOf(toColumn, toRow);
    const auto add = [&](int level, double least, double most, PlanePoint shallow, PlanePoint deep) {
      const double along = (surface_.depths[static_cast<std::size_t>(level) - 1] - least) / (most - least);
      const double part = margin_ + (1 - margin_) * along;
      AddVertex({shallow.x + part * (deep.x - shallow.x), shallow.y + part * (deep.y - shallow.y)}, level);
    };
    for (int level = result.fromBand + 1; level <= result.toBand; ++level)
      add(level, fromDepth, toDepth, a, b);
    for (int level = result.fromBand; level > result.toBand; --level) add(level, toDepth, fromDepth, b, a);
    return result;
  }

  // The edge of the chart from one node to another, the crossings of the edge being `first` to `end`.
  void ChainEdge(std::int32_t from, std::int32_t to, std::int32_t first, std::int32_t end, bool isForward) {
    std::int32_t last = isForward ? from : to;
    const auto link = [&](std::int32_t vertex) {
      trace_.nextOnEdge[static_cast<std::size_t>(last)] = vertex;
      last = vertex;
    };
    if (isForward) {
      for (std::int32_t vertex = first; vertex < end; ++vertex) link(vertex);
      link(to);
    } else {
      for (std::int32_t vertex = end; vertex-- > first;) link(vertex);
      link(from);
    }
  }

  void RowOfNodes(int row) {
    trace_.rowStart.push_back(trace_.at.size());
    const std::uint8_t* above = surface_.squares.data() + surface_.SquareIndex(0, row);
    const std::uint8_t* below = above + surface_.SquareStride();
    std::int32_t end = 0;  // of the crossings of the edge that comes to the node
    for (int column = 0; column < surface_.shape.columns; ++column) {
      const auto index = static_cast<std::size_t>(column);
      const int around = above[index] + above[index + 1] + below[index] + below[index + 1];
      const bool isAtEdge = around != 0 && around != 4;
      southNodes_[index] = isAtEdge ? Count() : ContourTrace::None;
      if (isAtEdge) AddVertex(surface_.shape.MiddleOf(column, row), 0);
      if (above[index] != below[index]) {
        const Crossings& edge = south_[index - 1];
        ChainEdge(southNodes_[index - 1], southNodes_[index], edge.first, end, above[index] != 0);
      }
      if ((above[index + 1] | below[index + 1]) != 0) {
        south_[index] = AddCrossings(column, row, column + 1, row);
        end = Count();
      }
    }
  }

  // Between the row of nodes and the one before.
  void RowOfSquares(int row) {
    const std::uint8_t* square = surface_.squares.data() + surface_.SquareIndex(0, row);
    for (int column = 0; column < surface_.shape.columns; ++column) {
      const auto index = static_cast<std::size_t>(column);
      if ((square[index] | square[index + 1]) != 0) {
        down_[index] = AddCrossings(column, row - 1, column, row);
        if (square[index] != square[index + 1]) {
          ChainEdge(northNodes_[index], southNodes_[index], down_[index].first, Count(),
                    square[index + 1] != 0);
        }
      }
      if (square[index] != 0) LinkSquare(column, row);
    }
  }

  // The square whose south-east corner is that node.
  void LinkSquare(int column, int row) {
    const auto east = static_cast<std::size_t>(column), west = east - 1;
    const Crossings &n = north_[west], &s = south_[west], &w = down_[west], &e = down_[east];
    if (n.fromBand == n.toBand && s.fromBand == s.toBand && w.fromBand == w.toBand) return;
    const float* southEast = surface_.depth.data() + surface_.shape.IndexOf(column, row);
    const float* northEast = southEast - columns_;
    const double falling = static_cast<double>(northEast[-1]) + static_cast<double>(southEast[0]);
    const double rising = static_cast<double>(northEast[0]) + static_cast<double>(southEast[-1]);
    if (falling < rising) {
      const Crossings diagonal = AddCrossings(column - 1, row - 1, column, row);
      LinkTriangle({n.fromBand, s.fromBand, s.toBand}, {&w, &s, &diagonal});
      LinkTriangle({n.fromBand, s.toBand, n.toBand}, {&diagonal, &e, &n});
    } else {
      const Crossings diagonal = AddCrossings(column, row - 1, column - 1, row);
      LinkTriangle({n.toBand, n.fromBand, s.fromBand}, {&n, &w, &diagonal});
      LinkTriangle({n.toBand, s.fromBand, s.toBand}, {&diagonal, &s, &e});
    }
  }

  // The corners counterclockwise, each with the edge to the next one. A contour with the deep on its left
  // comes in where the edge gets shallower.
  void LinkTriangle(std::array<int, 3> band, std::array<const Crossings*, 3> edge) {
    const auto [least, most] = std::minmax({band[0], band[1], band[2]});
    for (int level = least + 1; level <= most; ++level) {
      std::int32_t from = 0, to = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        const bool isDeep = band[i] >= level, isNextDeep = band[(i + 1) % 3] >= level;
        if (isDeep && !isNextDeep) from = edge[i]->Of(level);
        if (!isDeep && isNextDeep) to = edge[i]->Of(level);
      }
      trace_.next[static_cast<std::size_t>(from)] = to;
    }
  }

  const ContourSurface& surface_;
  std::size_t columns_;
  double margin_;
  ContourTrace trace_;
  // Of the rows of nodes at both sides of the squares: the crossings to the next node to the east, and the
  // vertices of the nodes themselves; and the crossings from north to south.
  std::vector<Crossings> north_, south_, down_;
  std::vector<std::int32_t> northNodes_, southNodes_;
};

}  // namespace

ContourTrace TraceContours(const ContourSurface& surface) { return Tracer(surface).Run(); }

std::vector<ContourPath> PathsOf(const ContourTrace& trace) {
  const std::size_t count = trace.at.size();
  std::vector<std::uint8_t> isDone(count, 0), hasBefore(count, 0);
  for (const std::int32_t next : trace.next) {
    if (next != ContourTrace::None) hasBefore[static_cast<std::size_t>(next)] = 1;
  }
  std::vector<ContourPath> paths;
  // Open ones first: what is left then is closed.
  for (const bool isClosed : {false, true}) {
    for (std::size_t vertex = 0; vertex < count; ++vertex) {
      if (isDone[vertex] != 0 || trace.level[vertex] == 0 || (!isClosed && hasBefore[vertex] != 0)) continue;
      ContourPath path = {static_cast<std::int32_t>(vertex), 0, 0, trace.level[vertex], isClosed};
      for (auto at = path.first; at != ContourTrace::None && isDone[static_cast<std::size_t>(at)] == 0;) {
        isDone[static_cast<std::size_t>(at)] = 1;
        path.last = at;
        ++path.count;
        at = trace.next[static_cast<std::size_t>(at)];
      }
      paths.push_back(path);
    }
  }
  std::sort(paths.begin(), paths.end(), [](const ContourPath& a, const ContourPath& b) {
    return a.level != b.level ? a.level < b.level : a.first < b.first;
  });
  return paths;
}

}  // namespace sondrix
