#!/usr/bin/python3
"""Checks a block replacement with ezdxf against the drawing it started from.

Usage: ezdxf_replaced.py ORIGINAL.dxf REPLACED.dxf OLD_BLOCK NEW_BLOCK [OLD NEW]...

For each pair, the new references are the model-space NEW_BLOCK references
ORIGINAL lacks. Each must sit on an OLD_BLOCK reference of ORIGINAL with its
normal, rotation, layer and colour, at scale 1, and carry one attribute per
definition of NEW_BLOCK, in order, with the definition's tag, flags, field
length, alignment and general properties, placed where ezdxf puts the
definition through the reference's block transform. Prints the audit's
error count, then per pair its counts, the attributes' texts and one line
per fault.
"""
import sys

import ezdxf


def near(a, b):
    return (a - b).magnitude <= 1e-9 * max(1.0, a.magnitude)


def turn_differs(a, b):
    return min((a - b) % 360, (b - a) % 360) > 1e-9


def wcs(entity, point):
    return entity.ocs().to_wcs(point)


def kept(e):  # what an attribute keeps of its definition
    d = e.dxf
    return (d.tag, d.flags & 1, d.get("field_length", 0), d.halign, d.valign, d.layer, d.color,
            d.linetype.upper(), d.ltscale, d.lineweight)


def faults(attrib, attdef, transform):
    placed = attdef.copy()
    placed.transform(transform)
    a, p = attrib.dxf, placed.dxf
    found = ["definition"] if kept(attrib) != kept(attdef) else []
    if not near(a.extrusion, p.extrusion) or not near(wcs(attrib, a.insert), wcs(placed, p.insert)):
        found.append("position")
    if (a.halign or a.valign) and not near(wcs(attrib, a.align_point), wcs(placed, p.align_point)):
        found.append("alignment point")
    if turn_differs(a.rotation, p.rotation) or abs(a.height - p.height) > 1e-9 * p.height:
        found.append("rotation or height")
    return found


def check_pair(original, replaced, old_name, new_name):
    known = {e.dxf.handle for e in original.modelspace()}
    olds = original.modelspace().query(f'INSERT[name=="{old_name}"]')
    news = [e for e in replaced.modelspace().query(f'INSERT[name=="{new_name}"]')
            if e.dxf.handle not in known]
    attdefs = list(replaced.blocks.get(new_name).query("ATTDEF"))
    attribs = [a for new in news for a in new.attribs]
    for new in news:
        where = wcs(new, new.dxf.insert)
        old = next((o for o in olds if near(wcs(o, o.dxf.insert), where)), None)
        if (old is None or not near(new.dxf.extrusion, old.dxf.extrusion)
                or turn_differs(new.dxf.rotation, old.dxf.rotation)
                or (new.dxf.layer, new.dxf.color) != (old.dxf.layer, old.dxf.color)
                or (new.dxf.xscale, new.dxf.yscale, new.dxf.zscale) != (1, 1, 1)
                or len(new.attribs) != len(attdefs)):
            print("reference misplaced at", where)
        for attrib, attdef in zip(new.attribs, attdefs):
            for fault in faults(attrib, attdef, new.matrix44()):
                print(attrib.dxf.tag, fault, "at", where)
    print(old_name, "->", new_name, "references", len(news), "attributes", len(attribs),
          "invisible", sum(a.dxf.flags & 1 for a in attribs),
          "field lengths", sum(a.dxf.get("field_length", 0) for a in attribs))
    print("texts", "|".join(a.dxf.text for a in attribs))


def main(original_path, replaced_path, *pairs):
    original = ezdxf.readfile(original_path)
    replaced = ezdxf.readfile(replaced_path)
    print("audit errors", len(replaced.audit().errors))
    for i in range(0, len(pairs), 2):
        check_pair(original, replaced, pairs[i], pairs[i + 1])


if __name__ == "__main__":
    main(*sys.argv[1:])
