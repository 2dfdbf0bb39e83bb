#!/usr/bin/env python3
"""Holds every include of the project to the table under "Folders and arrows" in docs/architecture.md.

Usage: check_arrows.py ROOT. Prints a line `file:line: rule` for each fault and ends with 1 where there is one.

A row's first cell names folders of src/ (or tests/..., bench/...), its last one what their files may include besides their
own folder: folders, or a library, which stands for the headers that it publishes (`kel_published`). A folder without a row
of its own stands for the rows below it. A folder of tests/ or bench/ may include what the row `tests` or `bench` says, what
its own row adds, its part of src/, and what that may.
"""

import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'\s*#\s*include\s*["<]([^">]+)[">]')
PUBLISHED = re.compile(r"kel_published\(\s*(\w+)\s+\w+\s+([^)]*)\)")
MIRRORS = ("tests", "bench")


def names(cell):
    return re.findall(r"`([^`]+)`", cell)


def read_table(root):
    """The rows of the table: a folder, and the names in its last cell."""
    text = (root / "docs/architecture.md").read_text(encoding="utf-8")
    section = re.search(r"^## Folders and arrows\n(.*?)^## ", text, re.S | re.M)
    table = {}
    for line in section.group(1).splitlines() if section else []:
        cells = line.strip().strip("|").split("|")
        if line.startswith("| `"):
            table.update({folder: names(cells[-1]) for folder in names(cells[0])})
    if not table:
        sys.exit("docs/architecture.md: no table under 'Folders and arrows'")
    return table


def read_published(root):
    """For each published library the headers that it offers, seen from src/."""
    published = {}
    for file in sorted((root / "src").rglob("CMakeLists.txt")):
        for library, arguments in PUBLISHED.findall(file.read_text(encoding="utf-8")):
            folder = file.parent.relative_to(root / "src")
            published[library] = {str(folder / word) for word in arguments.split() if word.endswith(".h")}
    return published


class Arrows:
    def __init__(self, root):
        self.root = root
        self.table = read_table(root)
        self.published = read_published(root)

    def row(self, path):
        """The innermost row that `path` is in, '' for none."""
        while path not in self.table and path:
            path = path.rpartition("/")[0]
        return path

    def rows(self, name):
        """The rows that a name of the table stands for."""
        return [name] if name in self.table else [row for row in self.table if row.startswith(name + "/")]

    def part(self, path):
        """The part of src/ that a folder of tests/ or bench/ belongs to: tests/host_desktop to host/desktop."""
        part = "/".join(path.split("/")[1:-1]).replace("_", "/")
        while part and not self.rows(part):
            part = part.rpartition("/")[0]
        return part

    def allowed(self, path):
        """The names that the file may include."""
        row = self.row(path)
        result = {row, *self.table[row]}
        home = path.split("/")[0]
        if home in MIRRORS:
            part = self.part(path)
            own = [each for each in self.table if part and (each + "/").startswith(part + "/")]
            result.update([home], self.table[home], own, *(self.table[each] for each in own))
        return result

    def target(self, path, included):
        """The file that an include names, seen as the table sees files; '' where it is none of the project's."""
        home = path.split("/")[0]
        beside = (self.root / "src" / path if home not in MIRRORS + ("examples",) else self.root / path).parent
        for base in (self.root / "src", self.root / home, beside):
            file = (base / included).resolve()
            if file.is_file() and file.is_relative_to(self.root):
                return str(file.relative_to(self.root)).removeprefix("src/")
        return ""

    def fault(self, path, included):
        """What is wrong with an include of a file, '' for nothing."""
        target = self.target(path, included)
        row = self.row(target)
        allowed = self.allowed(path)
        if not target or any(target in self.published.get(name, ()) or row in self.rows(name) for name in allowed):
            return ""
        return f"{self.row(path)} may not include {target} (it may: {', '.join(sorted(allowed))})"

    def faults(self):
        for row in self.table:
            folder = self.root / ("" if row.startswith(MIRRORS + ("examples",)) else "src") / row
            if not folder.is_dir():
                yield f"docs/architecture.md: the table names {row}, which is no folder"
        for folder in ("src", "tests", "bench", "examples"):
            for file in sorted((self.root / folder).rglob("*")):
                if file.suffix in (".cpp", ".h"):
                    yield from self.faults_of(file)

    def faults_of(self, file):
        shown = str(file.relative_to(self.root))
        path = shown.removeprefix("src/")
        if not self.row(path):
            yield f"{shown}:1: its folder is in no row of the table"
            return
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            include = INCLUDE.match(line)
            rule = self.fault(path, include.group(1)) if include else ""
            if rule:
                yield f"{shown}:{number}: {rule}"


def main():
    faults = list(Arrows(Path(sys.argv[1]).resolve()).faults())
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
