#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "architecture/SourceTree.hpp"

/// The project's Markdown pages as text, and what they claim about the rest of the project.
namespace orlan::architecture {

/// Every Markdown page of the checkout, by path such as "docs/campaigns.md".
[[nodiscard]] Sources readPages();

/// Relative links that lead nowhere, each as "page: target". A target is a file or a folder; behind # stands
/// a heading of the page, as a forge spells it.
[[nodiscard]] std::vector<std::string> brokenLinks(
    const Sources& pages, const std::function<bool(const std::string& path)>& exists);

/// What stands in backticks in the first column of a page's tables.
[[nodiscard]] std::vector<std::string> quotedInTables(std::string_view page);

/// Names in backticks in a page's text, such as `Runtime::install` or `latest()`: the last part of each.
[[nodiscard]] std::vector<std::string> namesIn(std::string_view page);

/// The sources with literals that stand one after the other made one.
[[nodiscard]] Sources withJoinedLiterals(Sources sources);

/// Whether some source writes `line`, in which … stands for whatever differs: its pieces follow each other
/// closely in one file.
[[nodiscard]] bool isWritten(std::string_view line, const Sources& sources);

/// The blocks of code in `language`, without white space.
[[nodiscard]] std::vector<std::string> codeBlocks(std::string_view page, std::string_view language);

/// A formatter and a page break lines at different places.
[[nodiscard]] std::string withoutWhiteSpace(std::string_view text);

}  // namespace orlan::architecture
