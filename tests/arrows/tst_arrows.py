#!/usr/bin/env python3
"""The check of arrows finds what is planted beside clean files, under the project's own table."""

import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tests/arrows"))
from check_arrows import Arrows  # noqa: E402

# File, its second line, and what the check says of it; None for nothing.
CASES = [
    ("src/labels/A.cpp", '#include "letters/Letter.h"', "labels may not include letters/Letter.h"),
    ("src/framework/A.cpp", '#include "labels/Label.h"', "framework may not include labels/Label.h"),
    ("src/framework/B.h", '# include <labels/Label.h>', "framework may not include labels/Label.h"),
    ("src/letters/editor/A.cpp", '#include "../../labels/Label.h"', "letters may not include labels/Label.h"),
    ("src/host/cli/A.cpp", '#include "database/dialect/Lexer.h"', "host/cli may not include database/dialect/Lexer.h"),
    ("src/host/cli/B.cpp", '#include "database/Inside.h"', "host/cli may not include database/Inside.h"),
    ("src/platform/adodb/A.cpp", '#include "platform/automation/Invoke.h"', "platform/adodb may not include platform/automation/Invoke.h"),
    ("tests/letters/A.cpp", '#include "labels/Label.h"', "tests may not include labels/Label.h"),
    ("examples/host/A.cpp", '#include "framework/Form.h"', "examples may not include framework/Form.h"),
    ("src/nowhere/A.cpp", "", "its folder is in no row of the table"),
    ("src/letters/editor/B.cpp", '#include "letters/Letter.h"', None),
    ("src/labels/B.cpp", '#include "framework/Form.h"  // a comment', None),
    ("src/labels/C.cpp", '// #include "letters/Letter.h"', None),
    ("src/host/cli/C.cpp", '#include "database/Database.h"', None),
    ("tests/labels/A.cpp", '#include "labels/Label.h"', None),
    ("tests/host_desktop/A.cpp", '#include "host/desktop/Window.h"', None),
]


def write(file, text):
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text, encoding="utf-8")


def plant(root):
    write(root / "docs/architecture.md", (ROOT / "docs/architecture.md").read_text(encoding="utf-8"))
    for row in Arrows(root).table:
        home = "" if row.split("/")[0] in ("tests", "bench", "examples") else "src"
        (root / home / row).mkdir(parents=True, exist_ok=True)
    write(root / "src/database/CMakeLists.txt", "kel_published(KelDatos Datos\n  Database.h)\n")
    for header in ("labels/Label.h", "letters/Letter.h", "framework/Form.h", "platform/automation/Invoke.h",
                   "database/Database.h", "database/Inside.h", "database/dialect/Lexer.h", "host/desktop/Window.h"):
        write(root / "src" / header, "")
    for path, line, _ in CASES:
        write(root / path, f"#include <QString>\n{line}\n")


def main():
    with tempfile.TemporaryDirectory() as folder:
        plant(Path(folder))
        check = subprocess.run([sys.executable, str(ROOT / "tests/arrows/check_arrows.py"), folder],
                               capture_output=True, text=True)
    found = dict(line.split(": ", 1) for line in check.stdout.splitlines())
    expected = {f"{path}:{2 if line else 1}": rule for path, line, rule in CASES if rule}
    wrong = [place for place in expected if not found.get(place, "").startswith(expected[place])]
    wrong += [place for place in found if place not in expected]
    for place in wrong:
        print(f"{place}: expected {expected.get(place)!r}, found {found.get(place)!r}")
    print(f"{len(CASES)} files, {len(expected)} faults planted")
    return 1 if wrong or check.returncode != 1 else 0


if __name__ == "__main__":
    sys.exit(main())
