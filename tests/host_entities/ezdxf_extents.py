"""Extents of the model-space entities of a drawing by ezdxf, for the C++
corpus test that compares them with the host's getGeomExtents.

Usage: ezdxf_extents.py DRAWING            -- "HANDLE TYPE BOX" per entity
       ezdxf_extents.py DRAWING HANDLE...  -- "HANDLE DISTANCE BOX" per handle

BOX (minimum then maximum corner) is left out for entities not compared
(text, which ezdxf measures with fonts; types the host does not measure).
The first form gives bbox.extents(fast=False), exact for the Bezier curves
ezdxf turns arcs into, not for the arcs, and counting polyline widths. The
second gives the box of points on the true centre lines, flattened within
DISTANCE (1e-7 of the entity's size): inside the exact box, at most
DISTANCE short of it.
"""
import sys

import ezdxf
from ezdxf import bbox, disassemble
from ezdxf.math import BoundingBox

TEXT_TYPES = {"TEXT", "MTEXT", "ATTRIB", "ATTDEF"}
# What the host measures; everything else is skipped (and inside blocks it
# makes the insert skipped).
HOST_TYPES = {
    "LINE", "ARC", "CIRCLE", "ELLIPSE", "SPLINE", "LWPOLYLINE", "POLYLINE", "HATCH",
    "SOLID", "TRACE", "3DFACE", "POINT", "INSERT", "DIMENSION", "LEADER", "XLINE", "RAY",
}
# Block contents ezdxf measures but the host does not, or not alike.
CONTENT_TYPES = HOST_TYPES - {"INSERT", "DIMENSION"}


def skip_reason(entity):
    kind = entity.dxftype()
    if kind in TEXT_TYPES:
        return "text"
    if kind not in HOST_TYPES:
        return "not a host type"
    if kind == "LEADER" and (entity.dxf.get("annotation_type", 3) != 3 or entity.dxf.get("has_arrowhead", 1)):
        # ezdxf draws a line of the annotation's width beyond the last vertex
        # and the dimension style's arrow block; the host neither.
        return "leader with annotation or arrowhead"
    if kind in ("INSERT", "DIMENSION", "LEADER"):
        try:
            parts = list(disassemble.recursive_decompose([entity]))
        except Exception as error:  # a broken block: nothing to compare
            return "ezdxf cannot explode it: %s" % error
        kinds = {part.dxftype() for part in parts}
        if kinds & TEXT_TYPES:
            return "contains text"
        if kinds - CONTENT_TYPES:
            return "contains " + ",".join(sorted(kinds - CONTENT_TYPES))
    return None


def line(*words, box):
    """The words, then the corners of the box if it has any."""
    print(*words, *((list(box.extmin) + list(box.extmax)) if box.has_data else []))


def coarse(doc):
    for entity in doc.modelspace():
        compared = skip_reason(entity) is None
        line(entity.dxf.handle, entity.dxftype(), box=bbox.extents([entity], fast=False) if compared else BoundingBox())


def is_flat_polyline(part):
    kind = part.dxftype()
    return kind == "LWPOLYLINE" or (kind == "POLYLINE" and part.is_2d_polyline)


def exploded(entity):
    """The entity as ezdxf's simple curves, flat polylines split into lines
    and arcs. (No hatch of the compared drawings needs a finer box: ezdxf
    would measure its boundary's Bezier approximation.)"""
    todo = list(disassemble.recursive_decompose([entity]))
    while todo:
        part = todo.pop()
        if is_flat_polyline(part):
            todo.extend(part.virtual_entities())
        else:
            yield part


def fine(doc, handles):
    for handle in handles:
        entity = doc.entitydb.get(handle)
        size_box = bbox.extents([entity], fast=False)
        size = max(size_box.size.magnitude, 1e-9) if size_box.has_data else 1.0
        distance = size * 1e-7
        box = BoundingBox()
        for primitive in disassemble.to_primitives(exploded(entity), max_flattening_distance=distance):
            box.extend(primitive.vertices())
        line(handle, repr(distance), box=box)


def main(argv):
    doc = ezdxf.readfile(argv[1])
    if len(argv) > 2:
        fine(doc, argv[2:])
    else:
        coarse(doc)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
