// Says of each scenario on standard input, one a line, whether the readers take it: 1 or 0. The argument is
// the directory of the files that they name.
#include <iostream>
#include <string>

#include "tools/orlan/simulate/ScenarioReader.hpp"

int main(int, char** arguments) {
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << orlan::simulate::parseScenario(line, arguments[1], "scenario").has_value() << '\n';
  }
}
