#!/usr/bin/python3
"""Kills the real floorxport (SIGKILL) at random moments of a drawing save, an export in each
format and a settings write, each over an existing file. After every kill the target must be the
old file or a whole new one (equal to what an unkilled run writes), and the next unkilled run
into the same folder must leave no temporary file behind.

Usage: kill_test.py FLOORXPORT SAMPLE.dxf CORPUS_DIR WORK_DIR   (FX_KILL_SEED overrides the seed)
"""
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time

KILLS_WANTED = 224
CORPUS_FLOOR = "pms-app/building001-0_floor3.dxf"
FORMATS = ["xml", "planvault", "drawing", "svg", "svgz"]
SETTING = ["Contour Layer", "A-AREA-NEW"]
# The save stamps the time of saving into the header; those two values are not compared.
SAVE_TIME = re.compile(rb"(\$TDU?UPDATE\r?\n *40\r?\n)[^\r\n]*")


def operations(floorxport, drawing, folder):
    """(name, argv, target, files the folder holds besides the target)."""
    ops = [("save", [floorxport, "run", drawing, "-o", f"{folder}/save/plan.dxf"], "save/plan.dxf", set())]
    for fmt in FORMATS:
        ops.append((fmt, [floorxport, "export", drawing, f"{folder}/{fmt}/plan.{fmt}", "--yes"],
                    f"{fmt}/plan.{fmt}", set()))
    ops.append(("settings", [floorxport, "settings", "set", *SETTING], "settings/VantoryApp.reg",
                {"VantoryApp.reg.lock"}))
    return [(name, argv, f"{folder}/{target}", extra) for name, argv, target, extra in ops]


def run(argv, env):
    return subprocess.Popen(argv, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def read(path):
    with open(path, "rb") as file:
        return SAVE_TIME.sub(rb"\1-", file.read())


def put(path, data):
    with open(path, "wb") as file:
        file.write(data)


class KillSeries:
    def __init__(self, rng, figures, failures):
        self.rng, self.figures, self.failures = rng, figures, failures

    def prepare(self, name, argv, target, env):
        """Old content in place, then the reference (an unkilled run) and its duration."""
        os.makedirs(os.path.dirname(target), exist_ok=True)
        if name == "settings":  # a valid file holding an older value
            subprocess.run(argv[:-1] + ["A-AREA-OLD"], env=env, check=True, stdout=subprocess.DEVNULL)
            old = read(target)
        else:
            old = b"the old " + name.encode() + b" file\n"
        start = time.monotonic()
        put(target, old)
        if run(argv, env).wait() != 0:
            raise SystemExit(f"{' '.join(argv)} failed without a kill")
        return old, read(target), time.monotonic() - start

    def check_folder_clean(self, label, target, extra):
        left = set(os.listdir(os.path.dirname(target))) - {os.path.basename(target)} - extra
        if left:
            self.failures.append(f"{label}: left after an unkilled run: {sorted(left)}")

    def kill_many(self, label, argv, target, extra, env, count):
        old, new, duration = self.prepare(label.split("/")[-1], argv, target, env)
        folder = os.path.dirname(target)
        kills = 0
        for _ in range(3 * count):  # a run may end before its kill comes
            if kills == count:
                break
            put(target, old)
            process = run(argv, env)
            time.sleep(self.rng.uniform(0, duration))
            process.send_signal(signal.SIGKILL)
            killed = process.wait() == -signal.SIGKILL
            kills += killed
            self.figures["kills"] += killed
            self.figures["files checked"] += 1
            found = read(target)
            if found not in (old, new):
                self.failures.append(f"{label}: target is neither the old nor a whole new file "
                                     f"({len(found)} bytes; old {len(old)}, new {len(new)})")
            if len(os.listdir(folder)) > 1 + len(extra):
                self.figures["kills caught mid-write"] += 1
                if run(argv, env).wait() != 0 or read(target) != new:
                    self.failures.append(f"{label}: the run after a kill did not write the file")
                self.check_folder_clean(label, target, extra)


def main():
    floorxport, sample, corpus, work = sys.argv[1:5]
    seed = int(os.environ.get("FX_KILL_SEED", "1717"))
    drawings = {"sample": sample}
    if os.path.isfile(os.path.join(corpus, CORPUS_FLOOR)):
        drawings["corpus"] = os.path.join(corpus, CORPUS_FLOOR)
    else:
        print(f"corpus floor {CORPUS_FLOOR} absent: the sample floor only")
    shutil.rmtree(work, ignore_errors=True)
    figures = {"kills": 0, "files checked": 0, "kills caught mid-write": 0}
    failures = []
    series = KillSeries(random.Random(seed), figures, failures)
    count = -(-KILLS_WANTED // (len(drawings) * (1 + len(FORMATS) + 1)))
    for key, drawing in drawings.items():
        env = dict(os.environ, FLOORXPORT_SETTINGS=f"{work}/{key}/settings/VantoryApp.reg")
        for name, argv, target, extra in operations(floorxport, drawing, f"{work}/{key}"):
            series.kill_many(f"{key}/{name}", argv, target, extra, env, count)
    print(", ".join(f"{name}: {value}" for name, value in figures.items()) +
          f", failures: {len(failures)}")
    for failure in failures:
        print(f"FAILED (seed {seed}): {failure}")
    if figures["kills"] < 200:
        print(f"FAILED (seed {seed}): only {figures['kills']} runs were killed before they ended")
        return 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
