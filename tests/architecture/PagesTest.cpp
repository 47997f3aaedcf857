#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "architecture/Pages.hpp"

namespace orlan::architecture {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Sources& pages() {
  static const Sources read = readPages();
  return read;
}

TEST(Pages, LinkToWhatIsThere) {
  EXPECT_TRUE(pages().contains("docs/overview.md"));
  const auto exists = [](const std::string& path) {
    return std::filesystem::exists(std::filesystem::path(ORLAN_SOURCE_DIR) / path);
  };
  EXPECT_THAT(brokenLinks(pages(), exists), IsEmpty());
}

TEST(Pages, QuoteLogLinesAsTheyAreWritten) {
  const Sources library = withJoinedLiterals(readSources({"orlan"}));
  const auto lines = quotedInTables(pages().at("docs/troubleshooting.md"));
  EXPECT_GT(lines.size(), 50U);
  for (const std::string& line : lines) EXPECT_TRUE(isWritten(line, library)) << line;
}

TEST(Pages, NameWhatThereIs) {
  std::set<std::string> words;
  for (const auto& [file, text] : readSources({"orlan", "phones", "tools"})) {
    static const std::regex word("\\w+");
    for (std::sregex_iterator at(text.begin(), text.end(), word), end; at != end; ++at)
      words.insert(at->str());
  }
  const std::set<std::string> forms = {"Impl", "orlan_"};  // of names rather than names
  for (const auto& [page, text] : pages()) {
    if (!page.starts_with("docs/")) continue;
    for (const std::string& name : namesIn(text)) {
      EXPECT_TRUE(words.contains(name) || forms.contains(name)) << page << ": " << name;
    }
  }
}

TEST(Pages, NameStoreKeysAndPathsThatAreUsed) {
  const Sources library = withJoinedLiterals(readSources({"orlan"}));
  for (std::string name : quotedInTables(pages().at("docs/privacy.md"))) {
    if (name.ends_with("…")) name.resize(name.find("…"));
    while (name.ends_with('.')) name.pop_back();
    EXPECT_TRUE(isWritten(name, library)) << name;
  }
}

/// tests/docs compiles and runs most of it.
TEST(Pages, ShowCodeThatCompiles) {
  std::string compiled;
  for (const auto& [file, text] : readSources({"tests", "docs", "examples"})) {
    compiled.append(withoutWhiteSpace(text));
  }
  std::size_t found = 0;
  for (const auto& [page, text] : pages()) {
    for (const std::string& block : codeBlocks(text, "cpp")) {
      ++found;
      EXPECT_NE(compiled.find(block), std::string::npos) << page << " shows\n" << block;
    }
  }
  EXPECT_GT(found, 20U);
}

TEST(PageCheck, FindsLinksThatLeadNowhere) {
  const Sources planted = {
      {"docs/a.md",
       "# Twice told, once heard\n[b](b.md) [up](../README.md#the-rest) [out](https://x.example/y)\n"
       "[here](#twice-told-once-heard) [no](#nothing)\n```\n[code](none.md)\n```\n[gone](c.md)\n"},
      {"docs/b.md", "[a](a.md#other) [folder](../tests)\n"},
      {"README.md", "## The rest\n"},
  };
  const auto exists = [&](const std::string& path) { return planted.contains(path) || path == "tests"; };
  EXPECT_THAT(brokenLinks(planted, exists),
              ElementsAre("docs/a.md: #nothing", "docs/a.md: c.md", "docs/b.md: a.md#other"));
}

TEST(PageCheck, ComparesLinesWithLiterals) {
  EXPECT_THAT(quotedInTables("| line | means |\n|---|---|\n| `a …b`, `c` | `d` |\n`e`\n"),
              ElementsAre("a …b", "c"));
  const Sources sources =
      withJoinedLiterals({{"a.cpp", "log(format(\"fetch ({}) failed: \"\n        \"again {}\", reason));"}});
  const struct {
    std::string_view line;
    bool written;
  } rows[] = {
      {"fetch (…) failed: again …", true}, {"…failed: again", true}, {"fetch (…) failed: once", false},
      {"failed: …fetch (", false},         {"fetch(", false},        {"…", false},
  };
  for (const auto& row : rows) EXPECT_EQ(isWritten(row.line, sources), row.written) << row.line;
}

TEST(PageCheck, FindsNames) {
  EXPECT_THAT(
      namesIn("`a::b::install` and `latest()`, `fail(…)`; no `two words`, no `x.y`\n```\n`code`\n```\n"),
      ElementsAre("install", "latest", "fail"));
}

TEST(PageCheck, TakesBlocksOfOneLanguage) {
  EXPECT_THAT(codeBlocks("```cpp\n  a();\n\n    b();\n```\n```\nno\n```\n```json\n{}\n```\n", "cpp"),
              ElementsAre("a();b();"));
}

}  // namespace
}  // namespace orlan::architecture
