#include "handlers/spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>

namespace toolbox {

namespace {

using Complex = std::complex<double>;

/// In place, by halves. REQUIRES: a power of two.
void transform(std::vector<Complex>& values) {
  const size_t count = values.size();
  for (size_t i = 1, mirrored = 0; i < count; ++i) {
    size_t bit = count >> 1;
    for (; (mirrored & bit) != 0; bit >>= 1) mirrored ^= bit;
    mirrored ^= bit;
    if (i < mirrored) std::swap(values[i], values[mirrored]);
  }
  for (size_t length = 2; length <= count; length *= 2) {
    const double angle = -2 * std::numbers::pi / static_cast<double>(length);
    for (size_t k = 0; k < length / 2; ++k) {
      const Complex turn = std::polar(1.0, angle * static_cast<double>(k));
      for (size_t begin = k; begin < count; begin += length) {
        const Complex odd = values[begin + length / 2] * turn;
        values[begin + length / 2] = values[begin] - odd;
        values[begin] += odd;
      }
    }
  }
}

/// Mean power by frequency: place k stands for k * rate / (2 * (size - 1)).
std::vector<double> powers_of(std::span<const float> sound) {
  const size_t size = std::bit_ceil(std::max<size_t>(sound.size(), 2));
  std::vector<Complex> values(size);
  double weight_sum = 0;
  for (size_t i = 0; i < sound.size(); ++i) {
    const double weight =
        0.5 - 0.5 * std::cos(2 * std::numbers::pi * (static_cast<double>(i) + 0.5) /
                             static_cast<double>(sound.size()));
    weight_sum += weight * weight;
    values[i] = sound[i] * weight;
  }
  transform(values);
  std::vector<double> powers(size / 2 + 1);
  if (weight_sum == 0) return powers;
  for (size_t k = 0; k < powers.size(); ++k) {
    const double sides = k == 0 || k == size / 2 ? 1 : 2;
    powers[k] = sides * std::norm(values[k]) / (static_cast<double>(size) * weight_sum);
  }
  return powers;
}

struct Edges {
  double low = 0;
  double high = 0;
};

Edges edges_of(double frequency, const std::vector<double>& sorted) {
  const auto at = std::lower_bound(sorted.begin(), sorted.end(), frequency);
  const bool has_below = at != sorted.begin();
  const bool has_above = at + 1 != sorted.end();
  if (!has_below && !has_above) {
    return {frequency / std::numbers::sqrt2, frequency * std::numbers::sqrt2};
  }
  Edges edges;
  if (has_below) edges.low = std::sqrt(frequency * at[-1]);
  if (has_above) edges.high = std::sqrt(frequency * at[1]);
  if (!has_below) edges.low = frequency * frequency / edges.high;
  if (!has_above) edges.high = frequency * frequency / edges.low;
  return edges;
}

}  // namespace

uint8_t level_byte(double level) {
  return static_cast<uint8_t>(std::lround(255 * std::clamp(level, 0.0, 1.0)));
}

std::vector<double> band_amplitudes(std::span<const float> sound, double rate,
                                    std::span<const uint32_t> bands) {
  std::vector<double> sorted;
  for (const uint32_t band : bands) {
    if (band != 0) sorted.push_back(band / 65536.0);
  }
  std::sort(sorted.begin(), sorted.end());
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  const std::vector<double> powers = powers_of(sound);
  const double step = rate / (2.0 * static_cast<double>(powers.size() - 1));
  const auto place = [&](double frequency) {
    return static_cast<size_t>(
        std::clamp(std::ceil(frequency / step), 0.0, static_cast<double>(powers.size())));
  };

  std::vector<double> amplitudes;
  for (const uint32_t band : bands) {
    const double frequency = band / 65536.0;
    double power = 0;
    if (band != 0 && frequency <= rate / 2) {
      const Edges edges = edges_of(frequency, sorted);
      const auto centre = static_cast<size_t>(std::lround(frequency / step));
      const size_t begin = std::min(place(edges.low), centre == 0 ? 0 : centre - 1);
      const size_t end = std::min(std::max(place(edges.high), centre + 2), powers.size());
      for (size_t k = begin; k < end; ++k) power += powers[k];
    }
    amplitudes.push_back(std::sqrt(2 * power));
  }
  return amplitudes;
}

}  // namespace toolbox
