// The synthesizer's one source of randomness: xoshiro256** seeded through
// splitmix64. The standard library's distributions are avoided on purpose:
// their output differs between library versions, and a capture must come
// out byte for byte the same from the same seed everywhere.
#pragma once

#include <cstdint>

namespace tarnlog::synth {

inline std::uint64_t SplitMix64(std::uint64_t& state) {
  std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

class Rng {
 public:
  explicit Rng(std::uint64_t seed) {
    for (std::uint64_t& word : s_)
      word = SplitMix64(seed);
  }

  std::uint64_t Next() {
    const std::uint64_t result = Rotl(s_[1] * 5, 7) * 9;
    const std::uint64_t t = s_[1] << 17;
    s_[2] ^= s_[0];
    s_[3] ^= s_[1];
    s_[1] ^= s_[2];
    s_[0] ^= s_[3];
    s_[2] ^= t;
    s_[3] = Rotl(s_[3], 45);
    return result;
  }

  // In [0, 1), 53 random bits.
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }
  double Uniform(double low, double high) { return low + (high - low) * Unit(); }
  // In [0, n); n must not be 0. The slight bias of the modulo is harmless here.
  std::uint32_t Below(std::uint32_t n) { return static_cast<std::uint32_t>((Next() >> 32) % n); }
  // In [low, high], both included.
  int Between(int low, int high) {
    return low + static_cast<int>(Below(static_cast<std::uint32_t>(high - low + 1)));
  }
  bool Chance(double probability) { return Unit() < probability; }
  // Roughly normal with mean 0 and deviation 1 (sum of four uniforms), with
  // no call into the maths library.
  double Noise() { return (Unit() + Unit() + Unit() + Unit() - 2.0) * 1.7320508075688772; }

 private:
  static std::uint64_t Rotl(std::uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }
  std::uint64_t s_[4];
};

}  // namespace tarnlog::synth
