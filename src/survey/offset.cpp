#include "survey/offset.h"

#include "geo/constants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace sondrix {
namespace {

// The course is that from post to post, which stand at least so far apart: three times the step of a position
// in whole metres of the recorders' Mercator sphere.
constexpr double PostMetres = 2;
// A longer way from one sounding to the next is no course: a pause, or a false fix.
constexpr double LongestStep = 100;
constexpr double NearPole = 0.01;  // cosine of the latitude

struct Way {
  double east = 0, north = 0;  // metres
};
double Length(const Way& way) { return std::sqrt(way.east * way.east + way.north * way.north); }

// Metres of a degree on WGS84 about a latitude; another latitude takes a new one.
class Scale {
 public:
  Way Between(const Sounding& from, const Sounding& to) {
    Hold(from.latitude);
    double east = to.longitude - from.longitude;
    if (std::abs(east) > 180) east = std::remainder(east, 360);
    return {east * east_, (to.latitude - from.latitude) * north_};
  }
  void Move(Sounding& sounding, const Way& way) {
    Hold(sounding.latitude);
    double longitude = sounding.longitude + way.east / east_;
    if (std::abs(longitude) > 180) longitude = std::remainder(longitude, 360);
    sounding.longitude = KeptDegrees(longitude);
    sounding.latitude = KeptDegrees(sounding.latitude + way.north / north_);
  }

 private:
  void Hold(double latitude) {
    constexpr double near = 0.001;  // degrees
    if (std::abs(latitude - latitude_) < near) return;
    latitude_ = latitude;
    const double sine = std::sin(latitude * Deg2Rad);
    const double root = std::sqrt(1 - Ecc * Ecc * sine * sine);
    east_ = Deg2Rad * SemiMajor / root * std::max(NearPole, std::cos(latitude * Deg2Rad));
    north_ = Deg2Rad * SemiMajor * (1 - Ecc * Ecc) / (root * root * root);
  }

  double latitude_ = 1000, east_ = 1, north_ = 1;
};

bool TakesPart(const Sounding& sounding) {
  return sounding.HasPosition() && sounding.fate != Fate::NoPosition;
}

// The posts of a line as they come into reach of its soundings: two before, two behind. A post keeps the
// place as it was before it is moved.
class Posts {
 public:
  Posts(const SoundingList& soundings, std::size_t begin, std::size_t end, Scale& scale)
      : soundings_(soundings), scale_(scale), next_(begin), end_(end) {
    for (std::size_t i = 0; i < 2; ++i) Push(NextPost());
  }

  // Goes on to the posts about a sounding; none must lie behind it already.
  // Whether the posts are others now.
  bool Reach(std::size_t index) {
    bool isOther = false;
    while (hasMore_ && (count_ < posts_.size() || posts_[2].index <= index)) {
      const Post post = NextPost();
      Push(post);
      isOther = true;
    }
    return isOther;
  }
  bool ShowCourse() const { return count_ >= 2; }
  Way Course() const {
    const Way way = scale_.Between(posts_[0].place, posts_[count_ - 1].place);
    if (Length(way) >= PostMetres) return way;
    // It came back on the spot.
    const std::size_t middle = count_ / 2;
    return scale_.Between(posts_[middle - 1].place, posts_[middle].place);
  }

 private:
  struct Post {
    Sounding place;
    std::size_t index = 0;
  };

  void Push(const Post& post) {
    if (!hasMore_) return;
    if (count_ == posts_.size()) std::rotate(posts_.begin(), posts_.begin() + 1, posts_.end());
    if (count_ < posts_.size()) ++count_;
    posts_[count_ - 1] = post;
  }
  Post NextPost() {
    for (; next_ < end_; ++next_) {
      const Sounding& sounding = soundings_[next_];
      if (!TakesPart(sounding)) continue;
      if (count_ > 0 && Length(scale_.Between(posts_[count_ - 1].place, sounding)) < PostMetres) continue;
      return {sounding, next_++};
    }
    hasMore_ = false;
    return {};
  }

  const SoundingList& soundings_;
  Scale& scale_;
  std::array<Post, 4> posts_;
  std::size_t count_ = 0;
  std::size_t next_, end_;
  bool hasMore_ = true;
};

// Behind the last sounding of the line that begins at one.
std::size_t EndOfLine(const SoundingList& soundings, std::size_t begin, Scale& scale) {
  const Sounding* last = nullptr;
  std::size_t i = begin;
  for (; i < soundings.size(); ++i) {
    const Sounding& sounding = soundings[i];
    if (i > begin && sounding.beginsLine) break;
    if (!TakesPart(sounding)) continue;
    if (last != nullptr && Length(scale.Between(*last, sounding)) > LongestStep) break;
    last = &sounding;
  }
  return i;
}

}  // namespace

std::uint64_t ApplyOffset(SoundingList& soundings, double right, double ahead) {
  if (right == 0 && ahead == 0) return 0;
  std::uint64_t unmoved = 0;
  Scale scale;
  for (std::size_t begin = 0; begin < soundings.size();) {
    const std::size_t end = EndOfLine(soundings, begin, scale);
    Posts posts(soundings, begin, end, scale);
    Way move;
    bool hasCourse = false;
    for (std::size_t i = begin; i < end; ++i) {
      if (!TakesPart(soundings[i])) continue;
      if ((posts.Reach(i) || i == begin) && posts.ShowCourse()) {
        const Way course = posts.Course();
        const double length = Length(course);
        move = {(ahead * course.east + right * course.north) / length,
                (ahead * course.north - right * course.east) / length};
        hasCourse = true;
      }
      if (hasCourse) {
        scale.Move(soundings[i], move);
      } else {
        ++unmoved;
      }
    }
    begin = end;
  }
  return unmoved;
}

void ApplyDraft(SoundingList& soundings, double draft) {
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (Sounding& sounding : soundings.Block(b)) {
      if (sounding.depth > 0) sounding.depth = KeptMetres(static_cast<double>(sounding.depth) + draft);
    }
  }
}

}  // namespace sondrix
