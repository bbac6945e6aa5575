#!/usr/bin/python3
"""Checks a block replacement with ezdxf against the drawing it started from.

Usage: ezdxf_replaced.py ORIGINAL.dxf REPLACED.dxf OLD_BLOCK NEW_BLOCK [OLD NEW]...

Every new NEW_BLOCK reference must sit on an OLD_BLOCK reference of ORIGINAL
(normal, rotation, layer, colour; scale 1) with one attribute per definition,
in order, keeping its properties, where ezdxf puts the definition through the
reference's transform. Prints the audit's error count, then per pair its
counts, the attributes' texts and one line per fault.
"""
import sys

import ezdxf


def near(a, b):
    return (a - b).magnitude <= 1e-9 * max(1.0, a.magnitude)


def turned(a, b):
    return min((a - b) % 360, (b - a) % 360) > 1e-9


def kept(d):  # what an attribute keeps of its definition
    return (d.tag, d.flags & 1, d.get("field_length", 0), d.halign, d.valign, d.layer, d.color,
            d.linetype.upper(), d.ltscale, d.lineweight)


def where(e, point):
    return e.ocs().to_wcs(point)


def faults(attrib, attdef, transform):
    placed = attdef.copy()
    placed.transform(transform)
    a, p = attrib.dxf, placed.dxf
    checks = {"definition": kept(a) == kept(attdef.dxf),
              "position": near(a.extrusion, p.extrusion) and near(where(attrib, a.insert),
                                                                  where(placed, p.insert)),
              "alignment point": not (a.halign or a.valign) or near(
                  where(attrib, a.align_point), where(placed, p.align_point)),
              "rotation or height": not turned(a.rotation, p.rotation) and abs(
                  a.height - p.height) <= 1e-9 * p.height}
    return [name for name, ok in checks.items() if not ok]


def check_pair(original, replaced, old_name, new_name):
    known = {e.dxf.handle for e in original.modelspace()}
    olds = original.modelspace().query(f'INSERT[name=="{old_name}"]')
    news = [e for e in replaced.modelspace().query(f'INSERT[name=="{new_name}"]')
            if e.dxf.handle not in known]
    attdefs = list(replaced.blocks.get(new_name).query("ATTDEF"))
    for new in news:
        at = where(new, new.dxf.insert)
        old = next((o for o in olds if near(where(o, o.dxf.insert), at)), None)
        if (old is None or not near(new.dxf.extrusion, old.dxf.extrusion)
                or turned(new.dxf.rotation, old.dxf.rotation)
                or (new.dxf.layer, new.dxf.color) != (old.dxf.layer, old.dxf.color)
                or (new.dxf.xscale, new.dxf.yscale, new.dxf.zscale) != (1, 1, 1)
                or len(new.attribs) != len(attdefs)):
            print("reference misplaced at", at)
        for attrib, attdef in zip(new.attribs, attdefs):
            for fault in faults(attrib, attdef, new.matrix44()):
                print(attrib.dxf.tag, fault, "at", at)
    attribs = [a.dxf for new in news for a in new.attribs]
    print(old_name, "->", new_name, "references", len(news), "attributes", len(attribs),
          "invisible", sum(a.flags & 1 for a in attribs),
          "field lengths", sum(a.get("field_length", 0) for a in attribs))
    print("texts", "|".join(a.text for a in attribs))


if __name__ == "__main__":
    original, replaced = ezdxf.readfile(sys.argv[1]), ezdxf.readfile(sys.argv[2])
    print("audit errors", len(replaced.audit().errors))
    for i in range(3, len(sys.argv), 2):
        check_pair(original, replaced, sys.argv[i], sys.argv[i + 1])
