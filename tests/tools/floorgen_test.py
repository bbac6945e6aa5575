#!/usr/bin/python3
"""Checks the floor-plan generator (bench/floorgen) with an independent DXF
reader, ezdxf, whose audit also checks handles and references.

Usage: floorgen_test.py FLOORGEN_BINARY TEMP_DIR   (Debian's python3, for python3-ezdxf)
"""

import logging
import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

logging.disable(logging.WARNING)  # font fallback notices from ezdxf's text metrics

import ezdxf  # noqa: E402
from ezdxf import bbox  # noqa: E402

SAMPLE = Path(__file__).resolve().parents[2] / "examples" / "sample-floor.dxf"
CATEGORIES = {"Office", "Meeting", "Storage", "WC", "Corridor"}
MIB = 1024 * 1024

binary = Path(sys.argv[1]).resolve()
temp_dir = Path(sys.argv[2]).resolve()
temp_dir.mkdir(parents=True, exist_ok=True)


def generate(name, *args):
    """Runs floorgen with -o into the temp dir; returns the output path."""
    path = temp_dir / name
    run = subprocess.run([str(binary), *args, "-o", str(path)], capture_output=True, text=True)
    assert run.returncode == 0, f"floorgen {' '.join(args)} failed: {run.stderr}"
    return path


def records_without_contours(path):
    """The file's records (group code and value lines from one 0 group to the next), minus room contours."""
    lines = path.read_bytes().split(b"\n")
    records = []
    for code, value in zip(lines[0::2], lines[1::2]):
        if code.strip() == b"0":
            records.append([])
        records[-1].append((code.strip(), value))
    return [record for record in records if (b"8", b"RoomContours") not in record]


def read_and_audit(path):
    doc = ezdxf.readfile(str(path))
    auditor = doc.audit()
    assert not auditor.has_errors, [e.message for e in auditor.errors[:5]]
    assert not auditor.has_fixes, [e.message for e in auditor.fixes[:5]]
    return doc


def query(msp, dxftype, layer):
    return [e for e in msp if e.dxftype() == dxftype and e.dxf.layer == layer]


def room_tags(msp):
    """{name: (category, description, insertion point)} from ROOMTAG inserts."""
    tags = {}
    for insert in msp.query("INSERT[name=='ROOMTAG']"):
        assert insert.dxf.layer == "RoomTags"
        values = {attrib.dxf.tag: attrib.dxf.text for attrib in insert.attribs}
        assert len(insert.attribs) == 3 and set(values) == {"NAME", "CATEGORY", "DESCRIPTION"}, values
        assert values["NAME"] not in tags, f"duplicate room name {values['NAME']}"
        assert values["CATEGORY"] in CATEGORIES, values
        tags[values["NAME"]] = (values["CATEGORY"], values["DESCRIPTION"], insert.dxf.insert)
    return tags


def contours(msp):
    polygons = []
    for polyline in query(msp, "LWPOLYLINE", "RoomContours"):
        assert polyline.closed, "open room contour"
        points = list(polyline.get_points("xyb"))
        assert all(b == 0 for _, _, b in points), "room contour with a bulge"
        polygons.append([(x, y) for x, y, _ in points])
    return polygons


def check_room_counts(msp, rooms, storeys=1):
    """Every room has a contour, a tag with three attributes and three texts
    that agree with it, and a door unless it is a corridor; names are unique
    and numbered per storey. Returns the room tags."""
    tags = room_tags(msp)
    assert len(tags) == rooms * storeys, (len(tags), rooms * storeys)
    assert len(contours(msp)) == rooms * storeys
    names = set(tags)
    for layer, field in (("RoomNames", None), ("RoomTypes", 0), ("RoomDescriptions", 1)):
        texts = Counter(t.dxf.text for t in query(msp, "TEXT", layer))
        expected = Counter(names) if field is None else Counter(v[field] for v in tags.values())
        assert texts == expected, f"texts on {layer} do not match the room tags"
    pattern = re.compile(r"(\d+)\.(\d+)$")
    per_storey = Counter(int(pattern.match(name).group(1)) for name in names)
    assert per_storey == {s: rooms for s in range(1, storeys + 1)}, "room names do not count up per storey"
    corridors = sum(1 for v in tags.values() if v[1] == "Main corridor")
    assert len(msp.query("INSERT[name=='DOOR']")) == rooms * storeys - corridors, "one door per room expected"
    return tags


def inside(point, polygon):
    """Strictly inside by ray casting (points on the boundary are not expected)."""
    x, y = point[0], point[1]
    result = False
    for (x1, y1), (x2, y2) in zip(polygon, polygon[1:] + polygon[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
            result = not result
    return result


def bounds(polygon):
    xs = [p[0] for p in polygon]
    ys = [p[1] for p in polygon]
    return min(xs), min(ys), max(xs), max(ys)


def overlapping_pairs(polygons):
    boxes = [bounds(p) for p in polygons]
    pairs = set()
    for i, a in enumerate(polygons):
        for j in range(i + 1, len(polygons)):
            a_box, b_box, b = boxes[i], boxes[j], polygons[j]
            if not (a_box[0] < b_box[2] and b_box[0] < a_box[2] and a_box[1] < b_box[3] and b_box[1] < a_box[3]):
                continue
            if any(inside(p, a) for p in b) or any(inside(p, b) for p in a):
                pairs.add((i, j))
    return pairs


def check_sample_floor():
    """24 rooms: a valid and complete drawing, deterministic and equal to the
    bundled sample (whose analysis, in the rooms and batch tests, finds every
    room by the tag inside its contour)."""
    path = generate("sample.dxf", "--rooms", "24", "--seed", "1")
    doc = read_and_audit(path)
    msp = doc.modelspace()
    header = doc.header

    check_room_counts(msp, 24)
    rooms = contours(msp)
    assert all(len(p) in (4, 6) for p in rooms) and any(len(p) == 6 for p in rooms), "L-shaped rooms expected"
    assert not overlapping_pairs(rooms), "room contours overlap"

    # ezdxf measures text with the fonts it finds on the machine (its own
    # metrics without matplotlib): the title's box may pass ours by a few units.
    extents = bbox.extents(msp)
    low, high = header["$EXTMIN"], header["$EXTMAX"]
    for axis in (0, 1):
        assert low[axis] - 5 <= extents.extmin[axis] <= low[axis] + 500, ("$EXTMIN", low, extents.extmin)
        assert high[axis] - 500 <= extents.extmax[axis] <= high[axis] + 5, ("$EXTMAX", high, extents.extmax)

    data = path.read_bytes()
    assert generate("again.dxf", "--rooms", "24", "--seed", "1").read_bytes() == data, "not deterministic"
    assert generate("other.dxf", "--rooms", "24", "--seed", "2").read_bytes() != data, "seed has no effect"
    assert SAMPLE.read_bytes() == data, f"{SAMPLE} is not the output of --rooms 24 --seed 1"


def check_overlap():
    """--overlap 0.2 enlarges exactly 20 % of the contours into neighbours and
    changes nothing else; a floor of 200 rooms, in several bands of rows, is
    as valid as the sample."""
    plain_path = generate("plain.dxf", "--rooms", "200", "--seed", "5")
    overlap_path = generate("overlap.dxf", "--rooms", "200", "--seed", "5", "--overlap", "0.2")
    plain = contours(read_and_audit(plain_path).modelspace())
    msp = read_and_audit(overlap_path).modelspace()
    check_room_counts(msp, 200)
    enlarged = contours(msp)
    changed = {i for i, (a, b) in enumerate(zip(plain, enlarged)) if a != b}
    assert len(changed) == 40, len(changed)
    assert not overlapping_pairs(plain), "contours overlap without --overlap"
    pairs = overlapping_pairs(enlarged)
    assert all(i in changed or j in changed for i, j in pairs), "an unchanged pair overlaps"
    for i in changed:
        a, b = bounds(plain[i]), bounds(enlarged[i])
        assert b[0] <= a[0] and b[1] <= a[1] and b[2] >= a[2] and b[3] >= a[3], "contour not enlarged"
        assert any(i in pair for pair in pairs), "enlarged contour overlaps nothing"
    assert records_without_contours(plain_path) == records_without_contours(overlap_path), \
        "overlap changed more than contours"


def check_target_size():
    """--target-mb adds storeys with their own room names until the file is
    big enough; standard output gets the same bytes."""
    path = generate("target.dxf", "--target-mb", "1", "--seed", "3")
    size = path.stat().st_size
    single = generate("single.dxf", "--seed", "3").stat().st_size
    assert MIB <= size < MIB + 2 * single, size
    msp = read_and_audit(path).modelspace()
    storeys = len(query(msp, "LWPOLYLINE", "FloorArea"))
    assert storeys > 1
    check_room_counts(msp, 24, storeys)
    outlines = [bounds(list(p.get_points("xy"))) for p in query(msp, "LWPOLYLINE", "FloorArea")]
    doc_header = msp.doc.header
    assert doc_header["$EXTMIN"][0] == min(b[0] for b in outlines), "$EXTMIN misses a storey"
    assert doc_header["$EXTMAX"][0] == max(b[2] for b in outlines), "$EXTMAX misses a storey"
    to_stdout = subprocess.run([str(binary), "--target-mb", "1", "--seed", "3"], capture_output=True)
    assert to_stdout.returncode == 0 and to_stdout.stdout == path.read_bytes(), "standard output differs"


for check in (check_sample_floor, check_overlap, check_target_size):
    check()
    print(f"ok   {check.__name__}")
