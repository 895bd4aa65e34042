#include "core/Platform.h"

#include <cstring>

namespace kuvo {

float RandomGenerator::Next() {
  state_ = (state_ * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
  return static_cast<float>(state_) / 16777216.0f;
}

void RandomGenerator::Randomize(double secondsSinceMidnight) {
  // The clock's high word, folded into the middle bits of the state.
  std::uint64_t bits = 0;
  std::memcpy(&bits, &secondsSinceMidnight, sizeof bits);
  const std::uint32_t high = static_cast<std::uint32_t>(bits >> 32);
  const std::uint32_t mixed = ((high & 0xFFFFu) ^ (high >> 16)) << 8;
  state_ = (state_ & 0xFF0000FFu) | (mixed & 0x00FFFF00u);
}

}  // namespace kuvo
