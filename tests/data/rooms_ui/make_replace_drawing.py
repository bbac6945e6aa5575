#!/usr/bin/python3
"""Writes replace_planes.dxf for the block replacement tests (run with Debian's
python3-ezdxf).

An R2000 drawing with two blocks:
  OLDMARK  a triangle and the attribute definition NAME;
  NEWMARK  base point (2, 1), a circle and three attribute definitions:
           NUMBER (field length 12, layer Tags, colour 1, linetype DASHED,
           linetype scale 2, lineweight 0.25 mm), TYPE (invisible, middle-centred
           at (4, 0), rotated 90 degrees, field length 8), NOTE (invisible,
           top-right at (3, -1));
and OLDMARK references in model space, each with NAME set:
  (10, 5)   normal (0, 0, -1), rotated 30 degrees       "A1"
  (20, 5)   normal (0, 0, -1), scale 2                  "A2"
  (30, 5)   x scale -1, rotated 45 degrees              "A3"
  (40, 5)   normal (0, 0.6, 0.8), rotated 10 degrees    "A4"
The file is committed; run this only to change it.
"""
import os

import ezdxf
from ezdxf.enums import TextEntityAlignment

HERE = os.path.dirname(os.path.abspath(__file__))


def main():
    doc = ezdxf.new("R2000", setup=False)
    doc.layers.new("Marks")
    doc.layers.new("Tags", dxfattribs={"color": 5})
    doc.linetypes.new("DASHED", dxfattribs={"description": "Dashed __ __",
                                            "pattern": [0.75, 0.5, -0.25]})
    old = doc.blocks.new("OLDMARK")
    old.add_lwpolyline([(0, 0), (1, 0), (0.5, 1)], close=True)
    old.add_attdef("NAME", (0, -0.5), dxfattribs={"height": 0.3})
    new = doc.blocks.new("NEWMARK", base_point=(2, 1))
    new.add_circle((2, 1), 1)
    new.add_attdef("NUMBER", (2, 1), dxfattribs={
        "height": 0.5, "field_length": 12, "layer": "Tags", "color": 1, "linetype": "DASHED",
        "ltscale": 2, "lineweight": 25})
    kind = new.add_attdef("TYPE", (0, 0), dxfattribs={
        "height": 0.25, "rotation": 90, "flags": 1, "field_length": 8})
    kind.set_placement((4, 0), align=TextEntityAlignment.MIDDLE_CENTER)
    note = new.add_attdef("NOTE", (0, 0), dxfattribs={"height": 0.2, "flags": 1})
    note.set_placement((3, -1), align=TextEntityAlignment.TOP_RIGHT)
    msp = doc.modelspace()
    placements = [
        ((10, 5, 0), {"extrusion": (0, 0, -1), "rotation": 30}, "A1"),
        ((20, 5, 0), {"extrusion": (0, 0, -1), "xscale": 2, "yscale": 2, "zscale": 2}, "A2"),
        ((30, 5, 0), {"xscale": -1, "rotation": 45}, "A3"),
        ((40, 5, 0), {"extrusion": (0, 0.6, 0.8), "rotation": 10}, "A4"),
    ]
    for point, attribs, name in placements:
        attribs["layer"] = "Marks"
        insert = msp.add_blockref("OLDMARK", (0, 0), dxfattribs=attribs)
        # The insertion point is stored in the plane of the normal.
        insert.dxf.insert = insert.ocs().from_wcs(point)
        insert.add_auto_attribs({"NAME": name})
    doc.saveas(os.path.join(HERE, "replace_planes.dxf"))


if __name__ == "__main__":
    main()
