#include "sonar/layout/find_frame.h"

namespace sondrix {

std::uint32_t ResyncMarkerOf(Channel channel) {
  return channel == Channel::Primary ? 0x07800000U : 0x07800002U;
}

}  // namespace sondrix
