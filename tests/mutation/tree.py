"""Copies of the sources in which mutants are built and tried."""

import filecmp
import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
BUILD = ROOT / "build" / "mutation"
LIBRARY = "search_path_utilities"
PROGRAMS = (ROOT / "tests" / "library_programs").read_text().split()

# File by file, so that little is compiled for a mutant, and without linking programs anew when the library changes.
OPTIONS = ["-DCMAKE_UNITY_BUILD=OFF", "-DSPU_WARNINGS_AS_ERRORS=OFF", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
           "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0"]
# Tests by how long they take: those that try everything there is not at all.
SLOW, TOO_SLOW = "*Laws.*:*Oracle.*:StringAndIRI.*", "*EverySmall*:*AllShortSequences*"
QUICK = f"-{SLOW}:{TOO_SLOW}"
QUICK_THEN_SLOW = [QUICK, f"{SLOW}-{TOO_SLOW}"]
MEMORY = 4 << 30  # what a program may ask for: a mutant that never ends often takes all there is

os.environ.pop("CCACHE_DISABLE", None)
os.environ["SPU_TEST_PERCENT"] = "10"


def sources():
    """All files of the working folder that are not ignored: a test counts before it is committed."""
    listed = subprocess.check_output(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=ROOT, text=True)
    return [file for file in listed.split("\0") if (ROOT / file).is_file()]


class Tree:
    """One copy, for one mutant at a time."""

    def __init__(self, number, jobs):
        self.root = BUILD / str(number)
        self.jobs = str(max(1, (os.cpu_count() or 1) // jobs))
        self.programs = {}  # where each is
        self.seconds = dict.fromkeys(PROGRAMS, 60)  # how long each takes when nothing is wrong
        self.has_built_programs = False  # for the mutant that is tried

    def prepare(self):
        for file in sources():
            copy = self.root / file
            if not copy.is_file() or not filecmp.cmp(ROOT / file, copy, shallow=False):
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / file, copy)
        if not self._succeeds(["cmake", "--preset", "dev", *OPTIONS]) or not self._build(LIBRARY, *PROGRAMS):
            sys.exit(f"nothing is changed, and yet it does not build; {self.root}/log says why")
        self.programs = {program: next(self.root.glob(f"build/dev/tests/**/{program}")) for program in PROGRAMS}

    def measure(self):
        for program in PROGRAMS:
            begin = time.monotonic()
            if self._first_to_fail([program], QUICK_THEN_SLOW):
                sys.exit(f"nothing is changed, and yet {program} fails; {self.root}/log says why")
            self.seconds[program] = time.monotonic() - begin

    def verdict_on(self, mutant):
        """What comes of it, and the program that caught it."""
        place = self.root / mutant.file
        original = place.read_text()
        place.write_text(mutant.text)
        self.has_built_programs = False
        try:
            return self._verdict_on_what_is_there(mutant.file.split("/")[1])
        finally:
            place.write_text(original)
            if self.has_built_programs:
                self._build(LIBRARY, *PROGRAMS)  # or the next mutant would be tried by programs that hold this one

    def _verdict_on_what_is_there(self, folder):
        if not self._build(LIBRARY):
            return "unbuildable", "-"
        by_cost = sorted(PROGRAMS, key=self.seconds.get)
        near = [program for program in by_cost if program.startswith(folder)]
        far = [program for program in by_cost if program not in near]
        if program := self._first_to_fail(near, [QUICK]):
            return "caught", program
        # Programs that include headers of the library themselves are slow to compile, and mostly not needed by now.
        self.has_built_programs = True
        if not self._build(*PROGRAMS):
            return "unbuildable", "-"
        program = self._first_to_fail(near + far, QUICK_THEN_SLOW)
        return ("caught", program) if program else ("missed", "-")

    def _build(self, *targets):
        return self._succeeds(["cmake", "--build", "--preset", "dev", "-j", self.jobs, "--target", *targets])

    def _first_to_fail(self, programs, filters):
        for tests in filters:
            for program in programs:
                command = [self.programs[program], "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={tests}"]
                seconds = 30 + 10 * self.seconds[program]
                # Twice, for on a busy machine a program may fail once that has nothing against the mutant.
                if not self._succeeds(command, seconds, MEMORY) and not self._succeeds(command, seconds, MEMORY):
                    return program
        return None

    def _succeeds(self, command, seconds=None, memory="unlimited"):
        """Within so many seconds; then it is gone with all that it started."""
        temporary = self.root / "tmp"
        shutil.rmtree(temporary, ignore_errors=True)
        temporary.mkdir(parents=True)
        limited = ["prlimit", "--core=0", f"--as={memory}", *command]
        with open(self.root / "log", "wb") as log:
            process = subprocess.Popen(limited, cwd=self.root, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                       env={**os.environ, "TMPDIR": str(temporary)}, start_new_session=True)
            try:
                return process.wait(seconds) == 0
            except subprocess.TimeoutExpired:
                return False
            finally:
                try:
                    os.killpg(process.pid, signal.SIGKILL)
                except ProcessLookupError:
                    pass  # nothing was left
                process.wait()
