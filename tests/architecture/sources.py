"""The project's files as text, for the checks beside this one."""
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[2]


def read(folders, suffixes=(".cpp", ".hpp", ".h")):
    """Text by path, such as "orlan/base/text.cpp"."""
    return {str(path.relative_to(ROOT)): path.read_text(encoding="utf-8")
            for folder in folders for path in sorted((ROOT / folder).rglob("*")) if path.suffix in suffixes}
