#include "tools/orlan/report/Html.hpp"

#include <cmath>
#include <utility>

#include "orlan/base/text.hpp"
#include "tools/orlan/output/shown.hpp"

namespace orlan::report {

namespace {

std::string reference(char character) {
  constexpr std::pair<char, const char*> references[] = {
      {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}};
  for (const auto& [markup, name] : references) {
    if (markup == character) return name;
  }
  return {character};
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string out;
  for (const char character : output::shown(text)) out += reference(character);
  return out;
}

std::string number(double value) {
  return std::isfinite(value) ? text::fixed(value, 2) : "0";
}

}  // namespace orlan::report
