"""Checks drawings written by the clean-up commands with ezdxf, an independent reader.

Usage: ezdxf_cleanup_check.py ORIGINAL RESULT HANDLES [ORIGINAL RESULT HANDLES ...]
One line per drawing: "check NAME ERRORS_BEFORE ERRORS_AFTER FIXES_BEFORE FIXES_AFTER
ERASED FAULTS [FIRST FAULT]". ERRORS and FIXES count what doc.audit() reports (among
them references to linetypes, text styles and blocks the drawing lacks; our own AUDIT
of the result checks layers too). Where HANDLES is 1 (the original has handles to
compare), ERASED counts the model-space entities the result lacks, and FAULTS those not
covered by one it keeps on the same layer (a LINE: both end points on a kept line;
others: the same type and place); no entity may appear; a kept LINE that changed must
end where original lines ended. Where HANDLES is 0, only model space must not grow.
A drawing that cannot be read prints "error NAME MESSAGE".
"""
import math
import sys

import ezdxf

TOL = 1e-5


def attr(entity, name, default=None):
    """The attribute, or `default` where the entity type has no such attribute."""
    try:
        return entity.dxf.get(name, default)
    except ezdxf.DXFAttributeError:
        return default


def audit(doc):
    """What ezdxf's audit finds and fixes; it changes the drawing, so it comes last."""
    auditor = doc.audit()
    return len(auditor.errors), len(auditor.fixes)


def pt(v):
    return (float(v[0]), float(v[1]), float(v[2]) if len(v) > 2 else 0.0)


def near(a, b):
    return all(abs(x - y) <= TOL for x, y in zip(a, b))


def on_segment(p, a, b):
    dx, dy = b[0] - a[0], b[1] - a[1]
    l2 = dx * dx + dy * dy
    if l2 == 0:
        return near(p, a)
    t = max(0.0, min(1.0, ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / l2))
    return math.hypot(a[0] + t * dx - p[0], a[1] + t * dy - p[1]) <= TOL


def place(e):
    t = e.dxftype()
    if t in ("CIRCLE", "ARC"):
        return pt(e.dxf.center) + (e.dxf.radius,)
    if t == "POINT":
        return pt(e.dxf.location)
    if t in ("TEXT", "MTEXT", "INSERT"):
        return pt(e.dxf.insert)
    if t == "LWPOLYLINE":
        return tuple(sorted((round(x, 4), round(y, 4)) for x, y, *_ in e.get_points()))
    return None


def covers(kept, e):
    if e.dxftype() == "LINE":
        s, f = pt(e.dxf.start), pt(e.dxf.end)
        a, b = pt(kept.dxf.start), pt(kept.dxf.end)
        return on_segment(s, a, b) and on_segment(f, a, b)
    if e.dxftype() == "TEXT" and e.dxf.get("text") != kept.dxf.get("text"):
        return False
    if e.dxftype() == "MTEXT" and e.text != kept.text:
        return False
    p, q = place(e), place(kept)
    if p is None or q is None:
        return False
    if e.dxftype() == "LWPOLYLINE":
        return p == q
    return len(p) == len(q) and near(p, q)


def overkill(original, result):
    old = {e.dxf.handle: e for e in original.modelspace()}
    new = {e.dxf.handle: e for e in result.modelspace()}
    faults = [f"{len(set(new) - set(old))} entities appeared"] if set(new) - set(old) else []
    kept = {}
    for e in new.values():
        kept.setdefault((e.dxftype(), str(attr(e, "layer", "0")).lower()), []).append(e)
    erased = [old[h] for h in set(old) - set(new)]
    for e in erased:
        group = kept.get((e.dxftype(), str(attr(e, "layer", "0")).lower()), [])
        if not any(covers(k, e) for k in group):
            faults.append(f"{e.dxftype()}:{e.dxf.handle}:not-covered")
    ends = {(str(attr(e, "layer", "0")).lower(),) + tuple(round(v, 6) for v in pt(p))
            for e in old.values() if e.dxftype() == "LINE" for p in (e.dxf.start, e.dxf.end)}
    for handle, line in new.items():
        before = old.get(handle)
        if before is None or line.dxftype() != "LINE":
            continue
        if near(pt(before.dxf.start), pt(line.dxf.start)) and near(pt(before.dxf.end), pt(line.dxf.end)):
            continue
        for p in (line.dxf.start, line.dxf.end):
            if (str(attr(line, "layer", "0")).lower(),) + tuple(round(v, 6) for v in pt(p)) not in ends:
                faults.append(f"LINE:{handle}:new-end")
    return len(erased), faults


def main(args):
    for before, after, handles in zip(args[0::3], args[1::3], args[2::3]):
        name = before.replace(" ", "_")
        try:
            old, new = ezdxf.readfile(before), ezdxf.readfile(after)
            if handles == "1":
                erased, faults = overkill(old, new)
            else:
                erased, faults = 0, ["model space grew"] if len(new.modelspace()) > len(old.modelspace()) else []
            b, a = audit(old), audit(new)
            print("check", name, b[0], a[0], b[1], a[1], erased, len(faults), *faults[:1])
        except Exception as error:  # reported to the test, which fails on it
            print("error", name, str(error).replace("\n", " "))
        sys.stdout.flush()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
