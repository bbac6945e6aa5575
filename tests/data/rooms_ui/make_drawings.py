#!/usr/bin/python3
"""Writes the drawings of the rooms_ui tests (run with Debian's python3-ezdxf).

rooms_base.dxf: an R2000 drawing with the layers FloorArea, RoomContours,
RoomTags and Markers, and three blocks, nothing in model space:
  ROOMTAG  attribute definitions NAME, CATEGORY, DESCRIPTION (left, baseline);
  NEWTAG   base point (1, 1); ROOM (left, height 2.5, layer RoomTags, colour 3),
           LABEL (middle-centred at (4, 0), rotated 90 degrees), NOTE (invisible);
  PLAIN    a square, no attribute definitions.
rooms_plan.dxf: rooms_base.dxf with a floor to analyse (all in model space):
  floor outline  (0,0)-(40,25) on FloorArea;
  contours on RoomContours: A (0,0)-(10,10), B (10,0)-(20,10),
    C (20,0)-(30,10) (nothing in it), D (0,10)-(10,20),
    E (6,14)-(16,24) (overlapping D: each has a corner inside the other);
  ROOMTAG inserts on RoomTags (NAME / CATEGORY / DESCRIPTION):
    (5,5)   "101"   "Office"  "Corner, north"   in A
    (13,5)  "102"   "Meeting" "Small"           in B
    (17,5)  "102b"  "Meeting" "Second tag"      in B as well
    (3,15)  " 101 " "Office"  "Twin"            in D, a duplicate of 101
    (13,22) "104"   "Storage" ""                in E
    (35,5)  "103"   "Office"  "Café"            in no contour
rooms_cjk.dxf: rooms_base.dxf with two rooms named in Chinese and in Korean:
  floor outline  (0,0)-(20,10) on FloorArea; contours (0,0)-(10,10) and
  (10,0)-(20,10) on RoomContours; ROOMTAG inserts on RoomTags:
    (5,5)   "会议室" "办公" "北楼"
    (15,5)  "회의실" "办公" "Café"
The files are committed; run this only to change them.
"""
import os
import sys

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


def main():
    base().saveas(os.path.join(HERE, "rooms_base.dxf"))
    plan().saveas(os.path.join(HERE, "rooms_plan.dxf"))
    cjk().saveas(os.path.join(HERE, "rooms_cjk.dxf"))
    return 0


if __name__ == "__main__":
    sys.exit(main())
