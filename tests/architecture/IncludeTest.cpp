#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "architecture/Rules.hpp"
#include "architecture/SourceTree.hpp"

namespace orlan::architecture {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

const Sources& project() {
  static const Sources sources = readSources({"orlan", "phones", "tools"});
  return sources;
}

TEST(Project, IsReadWhole) {
  EXPECT_THAT(project(), Contains(Key("orlan/base/Document.cpp")));
  EXPECT_THAT(project(), Contains(Key("orlan/platform/Polygon.hpp")));
  EXPECT_THAT(project(), Contains(Key("orlan/sdk/Runtime.hpp")));
  EXPECT_THAT(includesOf(project().at("orlan/base/Document.cpp")),
              Contains(testing::Field(&Include::target, "simdjson.h")));
}

TEST(Project, IncludesFlowDownOnly) {
  EXPECT_THAT(includeFaults(project()), IsEmpty());
}

TEST(Project, HasNoIncludeCycle) {
  EXPECT_THAT(includeCycle(project()), IsEmpty());
}

TEST(Project, HandsServicesInBelowTheTopFloor) {
  EXPECT_THAT(sharedFaults(project()), IsEmpty());
}

TEST(IncludeCheck, FindsDirectivesOutsideComments) {
  const auto found = includesOf(
      "#pragma once\n"
      "#include \"orlan/base/text.hpp\"\n"
      "  #  include <vector>  // why\r\n"
      "// #include \"a.hpp\"\n"
      "/* #include \"b.hpp\"\n"
      "#include \"c.hpp\"\n"
      "*/ #include <fmt/format.h>\n"
      "#include/**/<map>\n"
      "#define include \"d.hpp\"\n"
      "std::string s = \"include <e>\";\n"
      "#include \"last.hpp\"");
  EXPECT_THAT(found, ElementsAre(Include{2, "orlan/base/text.hpp", true}, Include{3, "vector", false},
                                 Include{7, "fmt/format.h", false}, Include{8, "map", false},
                                 Include{11, "last.hpp", true}));
}

TEST(IncludeCheck, KnowsWhatMayIncludeWhat) {
  struct Row {
    std::string file, target;
    bool quoted, allowed;
  };
  const Row rows[] = {
      {"orlan/base/json.cpp", "orlan/base/json.hpp", true, true},
      {"orlan/base/json.hpp", "orlan/platform/Clock.hpp", true, false},
      {"orlan/platform/Polygon.cpp", "orlan/base/text.hpp", true, true},
      {"orlan/platform/Polygon.cpp", "orlan/logging/Logger.hpp", true, false},
      {"orlan/campaigns/A.cpp", "orlan/logging/Logger.hpp", true, true},
      {"orlan/campaigns/A.cpp", "orlan/surveys/B.hpp", true, false},
      {"orlan/surveys/A.cpp", "orlan/campaigns/B.hpp", true, false},
      {"orlan/backend/A.cpp", "orlan/surveys/B.hpp", true, true},
      {"orlan/backend/A.cpp", "orlan/geofence/B.hpp", true, false},
      {"orlan/geofence/A.hpp", "orlan/backend/B.hpp", true, true},
      {"orlan/geofence/A.hpp", "orlan/notifications/B.hpp", true, false},
      {"orlan/notifications/A.hpp", "orlan/geofence/B.hpp", true, false},
      {"orlan/notifications/A.hpp", "orlan/sdk/Runtime.hpp", true, false},
      {"orlan/sdk/A.cpp", "orlan/geofence/B.hpp", true, true},
      {"orlan/sdk/A.cpp", "phones/simulated/B.hpp", true, false},
      {"phones/common/A.cpp", "phones/simulated/B.hpp", true, false},
      {"phones/linux/A.cpp", "phones/common/B.hpp", true, true},
      {"phones/linux/A.cpp", "phones/simulated/B.hpp", true, false},
      {"phones/simulated/A.cpp", "orlan/sdk/B.hpp", true, false},
      {"tools/orlan/A.cpp", "phones/linux/B.hpp", true, true},
      {"orlan/base/A.cpp", "A.hpp", true, false},
      {"orlan/base/A.cpp", "../platform/A.hpp", true, false},
      {"orlan/base/deep/A.cpp", "orlan/base/text.hpp", true, true},
      {"orlan/orlan.hpp", "orlan/sdk/OrlanPlugin.hpp", true, true},
      {"orlan/sdk/A.cpp", "orlan/orlan.hpp", true, false},
      {"orlan/cellar/A.cpp", "orlan/base/text.hpp", true, false},

      {"orlan/base/A.hpp", "vector", false, true},
      {"orlan/sdk/orlan.h", "stdint.h", false, true},
      {"orlan/base/A.hpp", "fmt/format.h", false, false},
      {"orlan/sdk/A.cpp", "fmt/format.h", false, true},
      {"orlan/base/Document.cpp", "simdjson.h", false, true},
      {"orlan/base/A.cpp", "simdjson.h", false, false},
      {"orlan/base/casing.cpp", "utf8proc.h", false, true},
      {"orlan/sdk/A.cpp", "utf8proc.h", false, false},
      {"orlan/platform/A.cpp", "GeographicLib/Geodesic.hpp", false, true},
      {"orlan/geofence/A.cpp", "GeographicLib/Geodesic.hpp", false, false},
      {"orlan/logging/A.cpp", "unistd.h", false, false},
      {"orlan/logging/A.cpp", "sys/stat.h", false, false},
      {"orlan/logging/A.cpp", "fstream", false, false},
      {"orlan/base/A.hpp", "thread", false, false},
      {"phones/linux/A.cpp", "thread", false, true},
      {"phones/linux/A.cpp", "curl/curl.h", false, true},
      {"phones/linux/A.hpp", "sqlite3.h", false, true},
      {"phones/linux/A.cpp", "sys/stat.h", false, true},
      {"phones/linux/A.cpp", "httplib.h", false, false},
      {"phones/simulated/A.cpp", "curl/curl.h", false, false},
      {"phones/simulated/A.cpp", "unistd.h", false, false},
      {"tools/orlan/A.cpp", "CLI/CLI.hpp", false, true},
  };
  for (const Row& row : rows) {
    const auto fault = includeFault(row.file, {1, row.target, row.quoted});
    EXPECT_EQ(!fault, row.allowed) << row.file << " includes " << row.target << ": "
                                   << fault.value_or("allowed");
  }
}

TEST(IncludeCheck, NamesPlantedFaultsByFileAndLine) {
  const Sources planted = {
      {"orlan/base/a.hpp", "#pragma once\n#include \"orlan/sdk/Runtime.hpp\"\n"},
      {"orlan/sdk/Runtime.hpp", "#include \"orlan/base/none.hpp\"\n\n#include <fmt/core.h>\n"},
  };
  EXPECT_THAT(
      includeFaults(planted),
      ElementsAre("orlan/base/a.hpp:2: orlan/base must not include orlan/sdk: \"orlan/sdk/Runtime.hpp\"",
                  "orlan/sdk/Runtime.hpp:1: there is no \"orlan/base/none.hpp\"",
                  "orlan/sdk/Runtime.hpp:3: a header of the library must not include <fmt/core.h>"));
}

TEST(IncludeCheck, FindsACycleWhereverItBegins) {
  Sources sources = {
      {"orlan/base/a.hpp", "#include \"orlan/base/b.hpp\"\n#include \"orlan/base/c.hpp\"\n"},
      {"orlan/base/b.hpp", "#include \"orlan/base/d.hpp\"\n"},
      {"orlan/base/c.hpp", "#include \"orlan/base/d.hpp\"\n"},
      {"orlan/base/d.hpp", ""},
  };
  EXPECT_THAT(includeCycle(sources), IsEmpty()) << "a diamond is no cycle";
  sources["orlan/base/d.hpp"] = "#include \"orlan/base/b.hpp\"\n";
  EXPECT_THAT(includeCycle(sources), ElementsAre("orlan/base/b.hpp", "orlan/base/d.hpp", "orlan/base/b.hpp"));
}

TEST(SharedCheck, TellsDeclarationsFromUses) {
  const Sources sources = {
      {"orlan/geofence/A.hpp", "  static A& shared();  // for hosts\n"},
      {"orlan/geofence/A.cpp", "// A::shared() is for hosts\nA::shared().start();\n"},
      {"orlan/sdk/shared.cpp", "A& A::shared() { return runtime().a(); }\n"},
  };
  EXPECT_THAT(sharedFaults(sources),
              ElementsAre("orlan/geofence/A.cpp:2: below sdk/ nothing reaches for shared()"));
}

}  // namespace
}  // namespace orlan::architecture
