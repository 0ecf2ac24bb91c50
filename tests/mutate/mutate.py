#!/usr/bin/env python3
"""Plants the faults of faults.txt in a copy of the sources and tells which of them no test notices.

All faults are planted at once, each behind a number that the environment names when a program starts,
so that one build serves all. Called by ./dev mutate [NAME...] in the root of the sources.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass

HERE = pathlib.Path("tests/mutate")
WORK = pathlib.Path("build/mutate")
COPY, BUILD = WORK / "source", WORK / "build"
MUTATED, LINKED = ("src", "kit", "apps"), ("cmake", "docs", "fuzz", "packaging", "samples", "tests", "CMakeLists.txt", "LICENSE")
JOBS = 2
MEMORY = 6 << 30  # bytes that a test may take when a fault makes it go on for ever
# Which tests are likely to notice a fault of a folder, besides those of the same name.
CLOSEST = {"legend": ["legend", "kit"], "kit": ["kit", "cli"], "apps": ["cli"]}


@dataclass
class Fault:
    name: str
    why: str
    file: str
    number: int
    after: str = ""
    old: str = ""
    new: str = ""
    excuse: str = ""


def read_table(path):
    faults, file = [], ""
    for number, line in enumerate(path.read_text().splitlines(), 1):
        mark, rest = line[:1], line[2:]
        if line.startswith("== "):
            file = rest.strip()
        elif mark in "@-+=" and mark and faults:
            field = {"@": "after", "-": "old", "+": "new", "=": "excuse"}[mark]
            setattr(faults[-1], field, f"{getattr(faults[-1], field)}\n{rest}".strip())
        elif line and mark != "#":
            name, colon, why = line.partition(": ")
            if not colon or any(name == fault.name for fault in faults):
                sys.exit(f"{path}:{number}: no new NAME: WHY")
            faults.append(Fault(name, why, file, len(faults) + 1))
    return faults


def pattern(text):
    """The text with any white space for any other."""
    return re.compile(r"\s+".join(map(re.escape, text.split())))


def planted(text, fault, problems):
    """The text with one fault in it; what hinders that is added to the problems."""
    begin = 0
    if fault.after:
        anchor = pattern(fault.after).search(text)
        begin = anchor.end() if anchor else len(text)
    found = list(pattern(fault.old).finditer(text, begin))
    if not fault.old or not found or (len(found) > 1 and not fault.after):
        problems.append(f"{fault.name}: its text stands in {fault.file} {len(found)} times, not once")
        return text
    start, end = found[0].span()
    old, switch = text[start:end], f"vexel_fault({fault.number})"
    if old.endswith(";") or (old.endswith("}") and ";" in old):
        new = f"if ({switch}) {{ {fault.new} }} else {{ {old} }}"
    else:
        new = f"({switch} ? ({fault.new}) : ({old}))"
    return text[:start] + new + text[end:]


def write_copy(faults):
    """Copies what is to be compiled; what has not changed keeps its time."""
    problems = [f"{each.name}: there is no {each.file}" for each in faults
                if not pathlib.Path(each.file).exists()]
    for folder in MUTATED:
        wanted = {path for path in pathlib.Path(folder).rglob("*") if path.is_file()}
        for path in (COPY / folder).rglob("*"):
            if path.is_file() and path.relative_to(COPY) not in wanted:
                path.unlink()
        for path in wanted:
            text = path.read_text()
            for fault in (each for each in faults if each.file == str(path)):
                text = planted(text, fault, problems)
            target = COPY / path
            if not target.exists() or target.read_text() != text:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text)
    for name in LINKED:
        link = COPY / name
        if not link.is_symlink():
            link.symlink_to(pathlib.Path(name).absolute())
    if problems:
        sys.exit("".join(f"mutate: {problem}\n" for problem in problems).rstrip())


def build(programs):
    say("building")
    flags = f"-O1 -w -D_GLIBCXX_ASSERTIONS -include {HERE.absolute()}/fault.h"
    run = lambda *command: subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    run("cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_CXX_COMPILER=g++",
        "-DCMAKE_BUILD_TYPE=None", f"-DCMAKE_CXX_FLAGS={flags}", "-DVEXEL_INSTALL=OFF")
    run("cmake", "--build", BUILD, "--target", *programs)


def run_tests(program, number, limit, only=None):
    """The name of the first test that fails, None when all pass."""
    command = [f"./{program}", "--gtest_fail_fast", "--gtest_brief=1"]
    command += [f"--gtest_filter={only}"] if only else []
    child = subprocess.Popen(command, cwd=BUILD, env={**os.environ, "VEXEL_FAULT": str(number)},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True,
                             preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY)))
    try:
        output = child.communicate(timeout=limit)[0].decode(errors="replace")
    except subprocess.TimeoutExpired:
        return "(hangs)"
    finally:
        try:
            os.killpg(child.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        child.communicate()
    if child.returncode == 0:
        return None
    failed = re.findall(r"\[  FAILED  \] (\S+?)[, (\n]", output + "\n")
    return failed[0] if failed else "(crashes)"


def say(text):
    print(f"mutate: {text}", file=sys.stderr, flush=True)


class Runner:
    def __init__(self, programs):
        self.programs = programs
        self.times = {}
        self.known = WORK / "caught.json"  # which test has caught a fault before
        self.caught = json.loads(self.known.read_text()) if self.known.exists() else {}

    def run_plain(self):
        say("without a fault")
        def one(program):
            begin = time.monotonic()
            failed = run_tests(program, 0, 600)
            self.times[program] = time.monotonic() - begin
            return f"{program}: {failed}" if failed else None
        with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
            failures = [each for each in pool.map(one, self.programs) if each]
        if failures:
            sys.exit("mutate: fails without a fault: " + ", ".join(failures))

    def order(self, fault):
        top, folder = fault.file.split("/")[:2]
        closest = CLOSEST.get(folder) or CLOSEST.get(top) or [folder]
        near = [f"test_{name}" for name in closest if f"test_{name}" in self.programs]
        return near + sorted(set(self.programs) - set(near), key=self.times.get)

    def catch(self, fault):
        """Which test notices the fault, None when there is none."""
        program, only = self.caught.get(fault.name, (None, None))
        if program in self.programs and not only.startswith("("):
            if run_tests(program, fault.number, 20 + 4 * self.times[program], only):
                return program, only
        for program in self.order(fault):
            failed = run_tests(program, fault.number, 20 + 4 * self.times[program])
            if failed:
                return program, failed
        return None

    def run(self, faults):
        survivors = []
        with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
            for done, (fault, by) in enumerate(zip(faults, pool.map(self.catch, faults)), 1):
                self.caught.pop(fault.name, None)
                if by:
                    self.caught[fault.name] = by
                else:
                    survivors.append(fault)
                outcome = f"caught by {by[0]} {by[1]}" if by else "survives"
                say(f"{done} of {len(faults)}: {fault.name} {outcome}")
                self.known.write_text(json.dumps(self.caught, indent=1))
        return survivors


def main(names):
    begin = time.monotonic()
    faults = read_table(HERE / "faults.txt")
    unknown = set(names) - {fault.name for fault in faults}
    if unknown:
        sys.exit("mutate: no fault is named " + ", ".join(sorted(unknown)))
    programs = sorted(f"test_{folder.name}" for folder in pathlib.Path("tests").iterdir()
                      if any(folder.glob("*_test.cpp")))
    write_copy(faults)
    build(programs)
    runner = Runner(programs)
    runner.run_plain()
    chosen = [fault for fault in faults if not names or fault.name in names]
    survivors = runner.run(chosen)
    bad = [fault for fault in survivors if not fault.excuse]
    for fault in survivors:
        print(f"{fault.name} ({fault.file}): {fault.why}" + (f"; {fault.excuse}" if fault.excuse else ""))
    minutes = (time.monotonic() - begin) / 60
    print(f"{len(chosen)} faults, {len(chosen) - len(survivors)} caught, "
          f"{len(survivors) - len(bad)} that nobody can see, {len(bad)} unnoticed, {minutes:.1f} min")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
