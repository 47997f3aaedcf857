"""What the Markdown pages claim is true: links lead somewhere, what they name and quote stands in the sources."""
import re
import unittest

import sources


def prose(page):
    """The page without its blocks of code."""
    return re.sub(r"^```.*?^```[^\n]*$", "", page, flags=re.S | re.M)


def code_blocks(page, language):
    return [squeezed(block) for block in re.findall(rf"^```{language}\n(.*?)^```", page, flags=re.S | re.M)]


def squeezed(text):
    """A formatter and a page break lines at different places."""
    return re.sub(r"\s", "", text)


def anchors(page):
    """Headings as a forge spells them in addresses: "The number 20, twice" is "the-number-20-twice"."""
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*)$", prose(page), flags=re.M)}


def broken_links(pages, exists):
    for page, text in pages.items():
        for target in re.findall(r"\]\(([^)\s]+)\)", prose(text)):
            if "://" in target or target.startswith("mailto:"):
                continue
            path, _, anchor = target.partition("#")
            path = str((sources.ROOT / page).parent.joinpath(path).resolve().relative_to(sources.ROOT)) if path else page
            if not (path in pages and anchor in anchors(pages[path]) if anchor else exists(path)):
                yield f"{page}: {target}"


def quoted_in_tables(page):
    """What stands in backticks in the first column."""
    return [quote for cell in re.findall(r"^\| (.*?) \|", prose(page), flags=re.M) for quote in re.findall("`([^`]+)`", cell)]


def names_in(page):
    """Names such as `Runtime::install` or `latest()`: the last part of each."""
    return re.findall(r"`(?:[A-Za-z_]\w*::)*([A-Za-z_]\w*)(?:\(…?\))?`", prose(page))


def joined_literals(texts):
    """The sources with literals that stand one after the other made one."""
    return [re.sub(r'"\s*\n\s*"', "", text) for text in texts]


def is_written(line, texts):
    """… stands for whatever differs; the pieces follow each other closely in one file."""
    pieces = [re.escape(piece) for piece in line.split("…") if piece]
    return bool(pieces) and any(re.search(".{0,200}?".join(pieces), text, flags=re.S) for text in texts)


class Pages(unittest.TestCase):
    pages = {path: text for path, text in sources.read(["."], (".md",)).items() if not re.match(r"build/|\.", path)}
    library = joined_literals(sources.read(["orlan"]).values())

    def each(self, names, holds, at_least):
        self.assertGreater(len(names), at_least)
        for name in names:
            with self.subTest(name):
                self.assertTrue(holds(name))

    def test_links_lead_to_what_is_there(self):
        self.assertIn("docs/overview.md", self.pages)
        self.assertEqual(list(broken_links(self.pages, lambda path: (sources.ROOT / path).exists())), [])

    def test_log_lines_are_quoted_as_they_are_written(self):
        self.each(quoted_in_tables(self.pages["docs/troubleshooting.md"]), lambda line: is_written(line, self.library), 50)

    def test_store_keys_and_paths_are_used(self):
        names = [name.split("…")[0].rstrip(".") for name in quoted_in_tables(self.pages["docs/privacy.md"])]
        self.each(names, lambda name: is_written(name, self.library), 10)

    def test_names_exist(self):
        words = set(re.findall(r"\w+", " ".join(sources.read(["orlan", "phones", "tools"]).values())))
        words |= {"Impl", "orlan_"}  # forms of names
        guides = [text for path, text in self.pages.items() if path.startswith("docs/")]
        self.each([name for text in guides for name in names_in(text)], words.__contains__, 100)

    def test_code_in_cpp_stands_in_a_source_that_is_compiled(self):
        compiled = squeezed("".join(sources.read(["tests", "docs", "examples"]).values()))
        self.each([block for text in self.pages.values() for block in code_blocks(text, "cpp")], compiled.__contains__, 20)

    def test_planted_faults_are_found(self):
        planted = {
            "docs/a.md": "# Twice told, once heard\n[b](b.md) [up](../README.md#the-rest) [out](https://x.example/y)\n"
                         "[here](#twice-told-once-heard) [no](#nothing)\n```\n[code](none.md)\n```\n[gone](c.md)\n",
            "docs/b.md": "[a](a.md#other) [folder](../tests)\n",
            "README.md": "## The rest\n",
        }
        self.assertEqual(list(broken_links(planted, lambda path: path in planted or path == "tests")),
                         ["docs/a.md: #nothing", "docs/a.md: c.md", "docs/b.md: a.md#other"])
        self.assertEqual(quoted_in_tables("| line | means |\n|---|---|\n| `a …b`, `c` | `d` |\n`e`\n"), ["a …b", "c"])
        self.assertEqual(names_in("`a::b` and `c()`, `d(…)`; no `two words`, no `x.y`\n```\n`code`\n```\n"), ["b", "c", "d"])
        self.assertEqual(code_blocks("```cpp\n  a();\n\n b();\n```\n```json\n{}\n```\n", "cpp"), ["a();b();"])
        texts = joined_literals(['log(format("fetch ({}) failed: "\n        "again {}", reason));'])
        for line, written in {"fetch (…) failed: again …": True, "…failed: again": True, "fetch (…) failed: once": False,
                              "failed: …fetch (": False, "fetch(": False, "…": False}.items():
            self.assertEqual(is_written(line, texts), written, line)


if __name__ == "__main__":
    unittest.main()
