#include "sonar/layout/find_frame.h"

namespace sondrix {

std::uint32_t ResyncMarkerOf(int channel) { return channel == 0 ? 0x07800000U : 0x07800002U; }

}  // namespace sondrix
