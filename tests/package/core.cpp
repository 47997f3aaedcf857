// What a host that brings its own phone has before it has written one: the library without any.
#include <cstdio>
#include <orlan/orlan.hpp>
#include <orlan/platform/Polygon.hpp>

int main() {
  const auto parsed = orlan::json::parse(R"({"distance": "one degree"})");
  const double metres = orlan::distance({0, 0}, {0, 1});
  std::printf("%s: %.0f m\n", parsed ? "parsed" : "not parsed", metres);
  orlan::Runtime::uninstall();
  return parsed && metres > 111319 && metres < 111320 ? 0 : 1;
}
