#!/usr/bin/python3
"""Writes the drawings of the rooms_ui tests (run with Debian's python3-ezdxf).

rooms_base.dxf      R2000, layers FloorArea, RoomContours, RoomTags and Markers, the
                    blocks ROOMTAG (NAME, CATEGORY, DESCRIPTION), NEWTAG (base point
                    (1, 1); ROOM, LABEL centred and turned, NOTE invisible) and PLAIN
                    (no attributes); nothing in model space.
rooms_plan.dxf      rooms_base.dxf with a floor to analyse: five contours (one empty,
                    two overlapping) and six ROOMTAG inserts (a duplicate, a second
                    tag in a room, one in no contour).
rooms_cjk.dxf       rooms_base.dxf with two rooms named in Chinese and in Korean.
replace_planes.dxf  the blocks OLDMARK and NEWMARK (attributes invisible, aligned, with
                    field lengths, layer, linetype and lineweight of their own) and
                    four OLDMARK references off the world plane, scaled, mirrored, turned.
The files are committed (rooms_base.dxf serves other tests too); run this only
to change them, then update the expectations.
"""
import os

import ezdxf

HERE = os.path.dirname(os.path.abspath(__file__))


def base():
    doc = ezdxf.new("R2000", setup=False)
    for name in ("FloorArea", "RoomContours", "RoomTags", "Markers"):
        doc.layers.new(name)
    tag = doc.blocks.new("ROOMTAG")
    tag.add_lwpolyline([(-1, -1), (1, -1), (1, 1), (-1, 1)], close=True)
    for i, name in enumerate(("NAME", "CATEGORY", "DESCRIPTION")):
        tag.add_attdef(name, (0, -i * 0.5), dxfattribs={"height": 0.4})
    new = doc.blocks.new("NEWTAG", base_point=(1, 1))
    new.add_circle((1, 1), 1)
    new.add_attdef("ROOM", (1, 1), dxfattribs={"height": 2.5, "layer": "RoomTags", "color": 3})
    label = new.add_attdef("LABEL", (0, 0), dxfattribs={"height": 0.5, "rotation": 90})
    label.set_placement((4, 0), align=ezdxf.enums.TextEntityAlignment.MIDDLE_CENTER)
    new.add_attdef("NOTE", (1, -1), dxfattribs={"height": 0.5, "flags": 1})
    plain = doc.blocks.new("PLAIN")
    plain.add_lwpolyline([(0, 0), (1, 0), (1, 1), (0, 1)], close=True)
    return doc


def plan():
    doc = base()
    msp = doc.modelspace()
    msp.add_lwpolyline([(0, 0), (40, 0), (40, 25), (0, 25)], close=True,
                       dxfattribs={"layer": "FloorArea"})
    for x0, y0, x1, y1 in ((0, 0, 10, 10), (10, 0, 20, 10), (20, 0, 30, 10),
                           (0, 10, 10, 20), (6, 14, 16, 24)):
        msp.add_lwpolyline([(x0, y0), (x1, y0), (x1, y1), (x0, y1)], close=True,
                           dxfattribs={"layer": "RoomContours"})
    for point, values in (((5, 5), ("101", "Office", "Corner, north")),
                          ((13, 5), ("102", "Meeting", "Small")),
                          ((17, 5), ("102b", "Meeting", "Second tag")),
                          ((3, 15), (" 101 ", "Office", "Twin")),
                          ((13, 22), ("104", "Storage", "")),
                          ((35, 5), ("103", "Office", "Caf\u00e9"))):
        insert = msp.add_blockref("ROOMTAG", point, dxfattribs={"layer": "RoomTags"})
        insert.add_auto_attribs(dict(zip(("NAME", "CATEGORY", "DESCRIPTION"), values)))
    return doc


def cjk():
    doc = base()
    msp = doc.modelspace()
    msp.add_lwpolyline([(0, 0), (20, 0), (20, 10), (0, 10)], close=True, dxfattribs={"layer": "FloorArea"})
    for x0 in (0, 10):
        msp.add_lwpolyline([(x0, 0), (x0 + 10, 0), (x0 + 10, 10), (x0, 10)], close=True,
                           dxfattribs={"layer": "RoomContours"})
    for point, values in (((5, 5), ("\u4f1a\u8bae\u5ba4", "\u529e\u516c", "\u5317\u697c")),
                          ((15, 5), ("\ud68c\uc758\uc2e4", "\u529e\u516c", "Caf\u00e9"))):
        insert = msp.add_blockref("ROOMTAG", point, dxfattribs={"layer": "RoomTags"})
        insert.add_auto_attribs(dict(zip(("NAME", "CATEGORY", "DESCRIPTION"), values)))
    return doc


def planes():
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
    kind.set_placement((4, 0), align=ezdxf.enums.TextEntityAlignment.MIDDLE_CENTER)
    note = new.add_attdef("NOTE", (0, 0), dxfattribs={"height": 0.2, "flags": 1})
    note.set_placement((3, -1), align=ezdxf.enums.TextEntityAlignment.TOP_RIGHT)
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
    return doc


if __name__ == "__main__":
    for name, make in (("rooms_base", base), ("rooms_plan", plan), ("rooms_cjk", cjk), ("replace_planes", planes)):
        make().saveas(os.path.join(HERE, name + ".dxf"))
