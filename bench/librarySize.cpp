// The shared library as a host ships it.
#include <cstdlib>
#include <string>

#include "bench/Workshop.hpp"
#include "bench/rows.hpp"

namespace orlan::bench {

void librarySize(Table& table) {
  const Workshop workshop;
  const std::string stripped = workshop.path("stripped");
  if (std::system(("strip -o '" + stripped + "' '" ORLAN_SHARED_LIBRARY "'").c_str()) != 0) return;
  Row& row = table.emplace_back(Row{"The stripped shared library", "library", Unit::bytes, {}});
  row.add(1, workshop.size("stripped"));
}

}  // namespace orlan::bench
