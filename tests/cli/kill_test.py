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

KILLS_WANTED = 112
CORPUS_FLOOR = "pms-app/building001-0_floor3.dxf"
FORMATS = ["xml", "planvault", "drawing", "svg", "svgz"]
# The save stamps the time of saving into the header; those two values are not compared.
SAVE_TIME = re.compile(rb"(\$TDU?UPDATE\r?\n *40\r?\n)[^\r\n]*")
figures = {"kills": 0, "files checked": 0, "kills caught mid-write": 0}
failures = []


def operations(floorxport, drawing, folder):
    """(name, argv, target, files its folder keeps besides the target)."""
    ops = [("save", ["run", drawing, "-o", f"{folder}/save/plan.dxf"], "save/plan.dxf", set())]
    ops += [(f, ["export", drawing, f"{folder}/{f}/plan.{f}", "--yes"], f"{f}/plan.{f}", set()) for f in FORMATS]
    ops.append(("settings", ["settings", "set", "Contour Layer", "A-AREA-NEW"], "settings/VantoryApp.reg",
                {"VantoryApp.reg.lock"}))
    return [(name, [floorxport] + args, f"{folder}/{target}", keep) for name, args, target, keep in ops]


def run(argv, env):
    return subprocess.Popen(argv, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def read(path):
    with open(path, "rb") as file:
        return SAVE_TIME.sub(rb"\1-", file.read())


def put(path, data):
    with open(path, "wb") as file:
        file.write(data)


def prepare(name, argv, target, env):
    """The old file in place, then the new one (an unkilled run) and the run's duration."""
    os.makedirs(os.path.dirname(target), exist_ok=True)
    old = b"the old " + name.encode() + b" file\n"
    if name == "settings":  # a valid file holding an older value
        subprocess.run(argv[:-1] + ["A-AREA-OLD"], env=env, check=True, stdout=subprocess.DEVNULL)
        old = read(target)
    start = time.monotonic()
    put(target, old)
    if run(argv, env).wait() != 0:
        raise SystemExit(f"{' '.join(argv)} failed without a kill")
    return old, read(target), time.monotonic() - start


def kill_many(rng, label, argv, target, keep, env, count):
    old, new, duration = prepare(label.split("/")[-1], argv, target, env)
    folder, kills = os.path.dirname(target), 0
    for _ in range(3 * count):  # a run may end before its kill comes
        if kills == count:
            break
        put(target, old)
        process = run(argv, env)
        delay = rng.uniform(0, duration)
        time.sleep(delay)
        process.send_signal(signal.SIGKILL)
        killed = process.wait() == -signal.SIGKILL
        if not killed:  # runs got quicker (a busy machine calmed down): aim within this one
            duration = delay
        kills += killed
        figures["kills"] += killed
        figures["files checked"] += 1
        found = read(target)
        if found not in (old, new):
            failures.append(f"{label}: the target is neither the old nor a whole new file "
                            f"({len(found)} bytes; old {len(old)}, new {len(new)})")
        if len(os.listdir(folder)) > 1 + len(keep):
            figures["kills caught mid-write"] += 1
            if run(argv, env).wait() != 0 or read(target) != new:
                failures.append(f"{label}: the run after a kill did not write the file")
            left = set(os.listdir(folder)) - {os.path.basename(target)} - keep
            if left:
                failures.append(f"{label}: left after the next run: {sorted(left)}")


def main():
    floorxport, sample, corpus, work = sys.argv[1:5]
    seed = int(os.environ.get("FX_KILL_SEED", "1717"))
    drawings = {"sample": sample}
    if os.path.isfile(os.path.join(corpus, CORPUS_FLOOR)):
        drawings["corpus"] = os.path.join(corpus, CORPUS_FLOOR)
    else:
        print(f"corpus floor {CORPUS_FLOOR} absent: the sample floor only")
    shutil.rmtree(work, ignore_errors=True)
    rng = random.Random(seed)
    count = -(-KILLS_WANTED // (len(drawings) * (len(FORMATS) + 2)))
    for key, drawing in drawings.items():
        env = dict(os.environ, FLOORXPORT_SETTINGS=f"{work}/{key}/settings/VantoryApp.reg")
        for name, argv, target, keep in operations(floorxport, drawing, f"{work}/{key}"):
            kill_many(rng, f"{key}/{name}", argv, target, keep, env, count)
    if figures["kills"] < 100:
        failures.append(f"only {figures['kills']} runs were killed before they ended")
    print(", ".join(f"{name}: {value}" for name, value in figures.items()) + f", failures: {len(failures)}")
    for failure in failures:
        print(f"FAILED (seed {seed}): {failure}")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
