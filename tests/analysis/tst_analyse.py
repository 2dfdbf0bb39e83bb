#!/usr/bin/env python3
"""That files analysed together lose no finding: each kind of finding the project asks for, in the middle of a batch."""

import json
import os
import subprocess
import sys
import tempfile

CLEAN = "namespace {\nint %s() {\n  return 1;\n}\n}  // namespace\nint Use%s() {\n  return %s();\n}\n"
FINDINGS = {
    "misc-unused-using-decls": "#include <utility>\nusing std::pair;\nint Other() {\n  return 2;\n}\n",
    "bugprone-use-after-move": "#include <string>\n#include <utility>\nstd::size_t Moved(std::string text) {\n"
                               "  const std::string taken = std::move(text);\n  return taken.size() + text.size();\n}\n",
    "readability-function-size": "int Long(int a) {\n" + "  a += 1;\n" * 80 + "  return a;\n}\n",
    # A name of its own that another file has, too: the two do not compile together.
    "readability-else-after-return": "namespace {\nint a() {\n  return 1;\n}\n}  // namespace\nint Branch(bool yes) {\n"
                                     "  if (yes) {\n    return a();\n  } else {\n    return 2;\n  }\n}\n",
}


def analyse(folder, sources):
    """What the tool says of the sources, compiled alike: its exit status and text."""
    entries = []
    for name, text in sources.items():
        path = os.path.join(folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        entries.append({"directory": folder, "file": path, "command": f"c++ -std=c++20 -Wall -o x.o -c {path}"})
    with open(os.path.join(folder, "compile_commands.json"), "w", encoding="utf-8") as file:
        json.dump(entries, file)
    tool = os.path.join(os.path.dirname(os.path.abspath(__file__)), "analyse.py")
    result = subprocess.run([sys.executable, tool, folder, "2", *(entry["file"] for entry in entries)],
                            stdout=subprocess.PIPE, text=True, check=False)
    left = [name for name in os.listdir(folder) if name.startswith("batch-")]
    assert not left, left
    return result.returncode, result.stdout


def main():
    root = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    clean = {f"{name}.cpp": CLEAN % (name, name, name) for name in "abcd"}
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(os.path.join(root, ".clang-tidy"), os.path.join(folder, ".clang-tidy"))
        assert analyse(folder, clean) == (0, ""), analyse(folder, clean)
        for check, text in FINDINGS.items():
            status, said = analyse(folder, {"a.cpp": clean["a.cpp"], "b.cpp": text, "c.cpp": clean["c.cpp"]})
            assert status == 1 and check in said and "/b.cpp:" in said and "/c.cpp:" not in said, (check, status, said)
        status, said = analyse(folder, {"a.cpp": clean["a.cpp"], "b.cpp": "int Broken( {\n"})
        assert status == 1 and "clang-diagnostic-error" in said, (status, said)


if __name__ == "__main__":
    main()
