#!/usr/bin/env python3
"""Plants one defect at a time in the store and says which ones its tests let pass.

A mutant is one conditional of eventlog/: turned round, or never taken, or with && and || exchanged.
Each is built and the store's test programs are run on it, in copies of the tree. Prints the
survivors, those that ran out of time (which a slow machine can be the reason of), and the figures.
Takes half an hour on two cores; run by hand.

usage: tests/mutation/mutate.py [--jobs N] [--only FILE] [--list]
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from queue import Queue

ROOT = Path(__file__).resolve().parents[2]
PROGRAMS = ["eventlog/test_eventlog", "faults/test_failing_calls", "model/test_model",
            "crash/test_crash"]
# Shorter sequences are as good here, and log files are synchronous: in memory they take no time.
ENVIRONMENT = {"ZUSAHPI_MODEL_LENGTH": "4", "PATH": "/usr/bin:/bin",
               "TMPDIR": "/dev/shm" if os.access("/dev/shm", os.W_OK) else "/tmp"}
TIMEOUT = 120  # seconds for one test program, some twenty times what it takes


def closing(text, start):
    """The offset of the parenthesis that closes the one at `start`."""
    depth = 0
    for offset in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[offset], 0)
        if depth == 0:
            return offset
    raise ValueError("unbalanced")


def mutants_of(path):
    """Yields (line, what, text of the mutated file)."""
    text = path.read_text()
    for found in re.finditer(r"\b(?:if|while) \(", text):
        start = found.end() - 1
        end = closing(text, start)
        condition = text[start + 1:end]
        line = text.count("\n", 0, start) + 1
        declaration, _, tested = condition.rpartition("; ")
        pointer = re.fullmatch(r"(?:const )?\w+ \*(\w+) = .*", tested)
        if pointer:
            declaration, tested = tested, pointer[1]
        prefix = declaration + "; " if declaration else ""
        kinds = [("turned round", f"{prefix}!({tested})")]
        if found.group().startswith("if"):
            kinds.append(("never taken", f"{prefix}false && ({tested})"))
        for what, mutated in kinds:
            yield line, what, text[:start + 1] + mutated + text[end:]
    for found in re.finditer(r" (&&|\|\|)(?=\s)", text):
        line = text.count("\n", 0, found.start()) + 1
        if text.splitlines()[line - 1].startswith("static_assert"):
            continue  # the compiler tests it
        other = "||" if found[1] == "&&" else "&&"
        yield line, f"{found[1]} becomes {other}", (
            text[:found.start()] + f" {other}" + text[found.end():])


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)


class Tree:
    """A copy of the project with a build of its own."""

    def __init__(self):
        self.root = Path(tempfile.mkdtemp(prefix="mutation-"))
        source = self.root / "source"
        files = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, check=True,
                               capture_output=True, text=True).stdout.split("\0")
        for name in filter(None, files):
            (source / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(ROOT / name, source / name)
        self.source = source
        self.build = self.root / "build"
        run(["cmake", "--preset", "native", "-B", self.build, "-DCMAKE_CXX_FLAGS_RELEASE=-O1",
             "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF"], cwd=source, check=True)
        if not self.builds() or self.test() != "survives":
            sys.exit("the tree does not build and pass as it is")

    def builds(self):
        targets = [Path(program).name for program in PROGRAMS]
        return run(["cmake", "--build", self.build, "--target", *targets]).returncode == 0

    def test(self):
        for program in PROGRAMS:
            try:
                result = run([self.build / "tests" / program, "--gtest_fail_fast"],
                             cwd=self.root, env=ENVIRONMENT, timeout=TIMEOUT)
            except subprocess.TimeoutExpired:
                return "out of time"
            if result.returncode != 0:
                return "caught"
        return "survives"

    def judge(self, path, mutated):
        target = self.source / path.relative_to(ROOT)
        original = target.read_text()
        target.write_text(mutated)
        try:
            if not self.builds():
                return "does not compile"
            return self.test()
        finally:
            target.write_text(original)


def main():
    parser = argparse.ArgumentParser(description="Plants defects in the store.")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", help="one file of eventlog/")
    parser.add_argument("--list", action="store_true", help="list the mutants, run nothing")
    options = parser.parse_args()

    paths = sorted(path for path in (ROOT / "eventlog").glob(options.only or "*")
                   if path.suffix in (".cpp", ".h"))
    mutants = [(path, *mutant) for path in paths for mutant in mutants_of(path)]
    if options.list:
        for path, line, what, _ in mutants:
            print(f"{path.relative_to(ROOT)}:{line}: {what}")
        return
    trees = Queue()
    for _ in range(options.jobs):
        trees.put(Tree())

    def judge(mutant):
        path, line, what, mutated = mutant
        tree = trees.get()
        verdict = tree.judge(path, mutated)
        trees.put(tree)
        if verdict != "caught":
            source = path.read_text().splitlines()[line - 1].strip()
            print(f"{verdict}: {path.relative_to(ROOT)}:{line}: {what}: {source}", flush=True)
        return verdict

    with ThreadPoolExecutor(options.jobs) as pool:
        verdicts = list(pool.map(judge, mutants))
    while not trees.empty():
        shutil.rmtree(trees.get().root)
    compiled = len(verdicts) - verdicts.count("does not compile")
    print(f"figure: mutants: {compiled}")
    print(f"figure: mutants caught: {verdicts.count('caught')}")
    print(f"figure: mutants that ran out of time: {verdicts.count('out of time')}")


if __name__ == "__main__":
    main()
