"""Floors are kept: who includes what, no cycle, and nobody below sdk/ reaches for shared()."""
import re
import unittest

import sources

EVERY = {"orlan/" + name for name in
         "base platform logging campaigns surveys backend geofence notifications sdk".split()}
LOGGING = {"orlan/base", "orlan/platform"}
RECORDS = LOGGING | {"orlan/logging"}
BACKEND = RECORDS | {"orlan/campaigns", "orlan/surveys"}
PHONE = LOGGING | {"phones/common"}

# What each folder may include besides itself.
FLOORS = {
    "orlan/base": set(),
    "orlan/platform": {"orlan/base"},
    "orlan/logging": LOGGING,
    "orlan/campaigns": RECORDS,
    "orlan/surveys": RECORDS,
    "orlan/backend": BACKEND,
    "orlan/geofence": BACKEND | {"orlan/backend"},
    "orlan/notifications": BACKEND | {"orlan/backend"},
    "orlan/sdk": EVERY,
    "orlan": EVERY,  # what a host includes
    "orlan/c": EVERY,
    "phones/common": LOGGING,
    "phones/simulated": PHONE,
    "phones/linux": PHONE,
    "phones/c": PHONE | {"orlan/c", "phones/linux"},
    "tools/orlan": EVERY | {"orlan", "phones/common", "phones/simulated", "phones/linux"},
}

# Of the names with a suffix or a folder only these are the standard's.
C_HEADERS = {name + ".h" for name in
             "assert ctype errno float inttypes limits locale math stdarg stdbool stddef stdint stdio stdlib string "
             "time wchar".split()}

# Time, chance, files, threads and the terminal reach the library through its phone only. The border to C
# hosts, orlan/c, waits for those who are inside a phone that is freed.
PHONE_MATTERS = {"condition_variable", "filesystem", "fstream", "future", "iostream", "random", "stop_token", "thread"}

# Who may use a library: files, or folders with a slash. Whatever is not listed is the operating system's.
LIBRARIES = {
    "simdjson.h": ("orlan/base/Document.cpp",),
    "utf8proc.h": ("orlan/base/",),
    "GeographicLib/": ("orlan/platform/",),
    "fmt/": ("orlan/", "phones/", "tools/"),
    "curl/": ("phones/linux/", "tools/"),
    "sqlite3.h": ("phones/linux/", "tools/"),
    "plist/": ("phones/linux/", "tools/"),
    "pugixml.hpp": ("phones/linux/", "tools/"),
    "CLI/": ("tools/",),
}


def folder_of(path):
    return "/".join(path.split("/")[:-1][:2])


def includes_of(text):
    """(line, target, quoted) of every directive outside of comments."""
    text = re.sub(r"/\*.*?\*/", lambda comment: "\n" * comment.group().count("\n"), text, flags=re.S)
    for number, line in enumerate(text.splitlines(), 1):
        found = re.match(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', line)
        if found:
            yield number, found[1] or found[2], found[1] is not None


def fault(file, target, quoted):
    """What is wrong with one include; None when it is allowed."""
    here = folder_of(file)
    if here not in FLOORS:
        return "the folder has no floor"
    if quoted:
        there = folder_of(target)
        if there not in FLOORS:
            return f'not a path from the root of the project: "{target}"'
        allowed = there == here or there in FLOORS[here]
        return None if allowed else f'{here} must not include {there}: "{target}"'
    library = file.startswith("orlan/")
    if target in C_HEADERS or not re.search("[./]", target):
        wrong = library and here != "orlan/c" and target in PHONE_MATTERS
        return f"only phones may include <{target}>" if wrong else None
    if library and not file.endswith(".cpp"):
        return f"a header of the library must not include <{target}>"
    users = next((users for name, users in LIBRARIES.items()
                  if target == name or (name.endswith("/") and target.startswith(name))), ("phones/linux/", "tools/"))
    allowed = any(file == user or (user.endswith("/") and file.startswith(user)) for user in users)
    return None if allowed else f"must not include <{target}>"


def faults(files):
    for file, text in files.items():
        for line, target, quoted in includes_of(text):
            wrong = fault(file, target, quoted)
            if not wrong and quoted and target not in files:
                wrong = f'there is no "{target}"'
            if wrong:
                yield f"{file}:{line}: {wrong}"


def cycle(files):
    """A chain of files, each including the next, that comes back to its first; empty when there is none."""
    done = set()

    def walk(file, path):
        if file in done:
            return []
        if file in path:
            return path[path.index(file):] + [file]
        for _, target, _ in includes_of(files[file]):
            found = walk(target, path + [file]) if target in files else []
            if found:
                return found
        done.add(file)
        return []

    return next((found for file in files if (found := walk(file, []))), [])


def uses_of_shared(files):
    """Below sdk/ everything is handed in; a declaration in a header is no use."""
    for file, text in files.items():
        if not file.startswith("orlan/") or file.startswith("orlan/sdk/"):
            continue
        for number, line in enumerate(text.splitlines(), 1):
            code = line.split("//")[0].rstrip()
            declares = file.endswith(".hpp") and re.search(r"\bstatic .*& shared\(\);$", code)
            if "shared()" in code and not declares:
                yield f"{file}:{number}"


class Includes(unittest.TestCase):
    maxDiff = None
    files = sources.read(["orlan", "phones", "tools"])

    def test_the_project_is_read_whole(self):
        self.assertIn("simdjson.h", [target for _, target, _ in includes_of(self.files["orlan/base/Document.cpp"])])
        self.assertEqual(set(FLOORS) - {folder_of(file) for file in self.files}, set())

    def test_flow_down_only(self):
        self.assertEqual(list(faults(self.files)), [])

    def test_have_no_cycle(self):
        self.assertEqual(cycle(self.files), [])

    def test_services_are_handed_in_below_the_top_floor(self):
        self.assertEqual(list(uses_of_shared(self.files)), [])

    def test_planted_faults_are_named(self):
        planted = {
            "orlan/base/a.hpp": '/* "x"\n#include "y"\n*/\n#include "orlan/sdk/b.hpp"\n// #include "z"\n',
            "orlan/sdk/b.hpp": '#include "orlan/base/none.hpp"\n#include <fmt/core.h>\n#include "b.hpp"\n',
            "orlan/sdk/b.cpp": "#include <simdjson.h>\n#include <fmt/core.h>\n#include <thread>\n#include <unistd.h>\n",
            "orlan/geofence/c.cpp": '#include "orlan/notifications/d.hpp"\nA::shared().start();  // shared()\n',
            "orlan/notifications/d.hpp": "  static D& shared();  // for hosts\n",
            "phones/linux/e.cpp": "#include <thread>\n#include <curl/curl.h>\n#include <unistd.h>\n",
        }
        self.assertEqual(list(faults(planted)), [
            'orlan/base/a.hpp:4: orlan/base must not include orlan/sdk: "orlan/sdk/b.hpp"',
            'orlan/sdk/b.hpp:1: there is no "orlan/base/none.hpp"',
            "orlan/sdk/b.hpp:2: a header of the library must not include <fmt/core.h>",
            'orlan/sdk/b.hpp:3: not a path from the root of the project: "b.hpp"',
            "orlan/sdk/b.cpp:1: must not include <simdjson.h>",
            "orlan/sdk/b.cpp:3: only phones may include <thread>",
            "orlan/sdk/b.cpp:4: must not include <unistd.h>",
            'orlan/geofence/c.cpp:1: orlan/geofence must not include orlan/notifications: "orlan/notifications/d.hpp"',
        ])
        self.assertEqual(list(uses_of_shared(planted)), ["orlan/geofence/c.cpp:2"])

    def test_a_cycle_is_found_wherever_it_begins(self):
        diamond = {"a": '#include "b"\n#include "c"', "b": '#include "d"', "c": '#include "d"', "d": ""}
        self.assertEqual(cycle(diamond), [])
        self.assertEqual(cycle({**diamond, "d": '#include "b"'}), ["b", "d", "b"])


if __name__ == "__main__":
    unittest.main()
