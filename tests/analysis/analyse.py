#!/usr/bin/env python3
"""Static analysis of source files: analyse.py DATABASE JOBS FILE...

clang-tidy spends nearly all of its time on the headers of a file, not on the file. So files of one folder that are
compiled alike, and whose own names differ, are put together into one text, which is analysed once. Where that text does
not compile or something is found, it is halved, down to single files: what is reported is always said of one file, as
it stands. DATABASE is the folder of compile_commands.json; the texts are written there.
Exit status 1 when something was found.
"""

import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys

LARGEST_BATCH = 16


def compile_arguments(entry):
    """The compiler's arguments of an entry, without input and output."""
    arguments = shlex.split(entry["command"])
    kept = []
    skip = False
    for argument in arguments:
        if skip:
            skip = False
        elif argument in ("-o", "-c"):
            skip = True
        else:
            kept.append(argument)
    return kept


def own_names(path):
    """The names that a file has for itself: what its nameless namespaces begin a line with."""
    with open(path, encoding="utf-8") as file:
        namespaces = re.findall(r"^namespace \{$(.*?)^\}  // namespace$", file.read(), re.DOTALL | re.MULTILINE)
    return {name for text in namespaces for name in re.findall(r"^[A-Za-z][^({=;\n]*?(\w+) ?[({=;[]", text, re.MULTILINE)}


def batches(database, files):
    """Lists of (path, arguments): files of one folder with the same arguments and different names of their own."""
    with open(os.path.join(database, "compile_commands.json"), encoding="utf-8") as file:
        entries = {os.path.realpath(entry["file"]): entry for entry in json.load(file)}
    alike = {}
    for name in files:
        entry = entries.get(os.path.realpath(name))
        arguments = compile_arguments(entry) if entry else None
        key = (os.path.dirname(name), tuple(arguments) if arguments else name)
        alike.setdefault(key, []).append((os.path.realpath(name), arguments))
    for group in alike.values():
        open_batches = []
        for path, arguments in group:
            names = own_names(path)
            for batch, taken in open_batches:
                if len(batch) < LARGEST_BATCH and names.isdisjoint(taken):
                    break
            else:
                batch, taken = [], set()
                open_batches.append((batch, taken))
            batch.append((path, arguments))
            taken |= names
        yield from (batch for batch, _ in open_batches)


def run(database, path, arguments):
    """clang-tidy's exit status and what it says of the file, compiled with the arguments."""
    command = ["clang-tidy", "--quiet"]
    command += ["-p", database, f"--extra-arg=-I{database}", path] if arguments is None else \
        [path, "--", *arguments[1:], f"-I{database}"]
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return result.returncode, result.stdout


def analyse(database, batch):
    """What is found in the files of the batch, as text; empty for nothing."""
    if len(batch) == 1:
        path, arguments = batch[0]
        status, said = run(database, path, arguments)
        # The counts of what was left out are noise.
        said = re.sub(r"^\d+ warnings? .*generated\.\n", "", said, flags=re.MULTILINE)
        return said or f"{path}: clang-tidy ended with {status}\n" if status else ""
    text = os.path.join(database, f"batch-{abs(hash(batch[0][0]))}-{len(batch)}.cpp")
    with open(text, "w", encoding="utf-8") as together:
        for path, _ in batch:
            with open(path, encoding="utf-8") as file:
                together.write(f'#line 1 "{path}"\n{file.read()}\n')
    status, _ = run(database, text, [*batch[0][1], f"-iquote{os.path.dirname(batch[0][0])}"])
    os.remove(text)
    if status == 0:
        return ""
    half = len(batch) // 2
    return analyse(database, batch[:half]) + analyse(database, batch[half:])


def main():
    database, jobs, files = os.path.abspath(sys.argv[1]), int(sys.argv[2]), sys.argv[3:]
    work = sorted(batches(database, files), key=len, reverse=True)
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        found = "".join(pool.map(lambda batch: analyse(database, batch), work))
    print(found, end="")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
