#pragma once

#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "orlan/platform/Coordinate.hpp"

namespace orlan::test {

/// Rings and points that are hard on a shortcut. The same seed gives the same ones on every machine: nothing
/// here uses the library's distributions, which differ between implementations.
class PolygonGenerator {
 public:
  explicit PolygonGenerator(std::uint64_t seed) : random_(seed) {}

  std::vector<Coordinate> ring() {
    switch (below(6)) {
      case 0:
        return star(3 + below(40));
      case 1:
        return built(below(10), [this] { return Coordinate{lattice(), lattice()}; });
      case 2:
        return built(3 + below(8), [this] { return Coordinate{lattice(), nearlyEqual()}; });
      case 3:
        return built(below(12), [this] { return Coordinate{anything(), anything()}; });
      case 4:
        return zigzag(3 + below(60));
      default:
        return withRepeats(star(3 + below(12)));
    }
  }

  Coordinate point(const std::vector<Coordinate>& ring) {
    if (ring.empty() || below(8) == 0) return {anything(), anything()};
    const Coordinate vertex = ring[below(ring.size())];
    const Coordinate other = ring[below(ring.size())];
    switch (below(6)) {
      case 0:
        return vertex;
      case 1:
        return {other.latitude, vertex.longitude};
      case 2:
        return {beside(vertex.latitude), beside(vertex.longitude)};
      case 3: {
        const double t = unit();
        return {beside(vertex.latitude + t * (other.latitude - vertex.latitude)),
                vertex.longitude + t * (other.longitude - vertex.longitude)};
      }
      case 4:
        return {vertex.latitude + unit() - 0.5, vertex.longitude + unit() - 0.5};
      default:
        return {lattice(), lattice()};
    }
  }

  std::vector<Coordinate> star(std::size_t count) {
    const Coordinate centre{120.0 * unit() - 60.0, 300.0 * unit() - 150.0};
    const double size = std::pow(10.0, 3.0 * unit() - 3.0);
    std::vector<Coordinate> ring;
    for (std::size_t i = 0; i < count; ++i) {
      const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count);
      const double radius = size * (0.3 + unit());
      ring.push_back(
          {centre.latitude + radius * std::sin(angle), centre.longitude + radius * std::cos(angle)});
    }
    return ring;
  }

  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }

  double unit() { return static_cast<double>(random_() >> 11) * 0x1p-53; }

 private:
  template <class Make>
  std::vector<Coordinate> built(std::size_t count, Make make) {
    std::vector<Coordinate> ring;
    for (std::size_t i = 0; i < count; ++i) ring.push_back(make());
    return ring;
  }

  std::vector<Coordinate> zigzag(std::size_t count) {
    std::vector<Coordinate> ring;
    for (std::size_t i = 0; i < count; ++i) {
      ring.push_back({0.01 * static_cast<double>(i), (i % 2 == 0 ? -1.0 : 1.0) + 0.1 * unit()});
    }
    return ring;
  }

  std::vector<Coordinate> withRepeats(std::vector<Coordinate> ring) {
    for (std::size_t i = 1 + below(3); i < ring.size(); i += 1 + below(4)) ring[i] = ring[i - 1];
    return ring;
  }

  double lattice() { return static_cast<double>(below(4)) - 1.0; }

  /// Numbers whose differences are about the constant in the formula's divisor.
  double nearlyEqual() { return 0.5 + 0x1p-53 * static_cast<double>(below(7)) + (below(4) == 0 ? 1.0 : 0.0); }

  double beside(double value) {
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto choice = below(3);
    return choice == 0 ? value : std::nextafter(value, choice == 1 ? infinity : -infinity);
  }

  double anything() {
    using Limits = std::numeric_limits<double>;
    constexpr double tiny = Limits::denorm_min();
    constexpr double infinity = Limits::infinity();
    constexpr double special[] = {0.0,
                                  -0.0,
                                  1.0,
                                  -1.0,
                                  90.0,
                                  -180.0,
                                  180.0,
                                  1e9,
                                  -1e300,
                                  Limits::max(),
                                  Limits::lowest(),
                                  Limits::min(),
                                  tiny,
                                  -3 * tiny,
                                  infinity,
                                  -infinity,
                                  Limits::quiet_NaN()};
    return below(4) == 0 ? 360.0 * unit() - 180.0 : special[below(std::size(special))];
  }

  std::mt19937_64 random_;
};

}  // namespace orlan::test
