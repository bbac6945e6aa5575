#!/usr/bin/python3
"""Writes the small drawings of the room analysis tests (tests/rooms).

Run with Debian's python3 (python3-ezdxf 0.18) from this directory. The
drawings are committed (problems.dxf and locked.dxf serve other tests too):
rerun only to change them, then update the expectations.

problems.dxf   one floor with a case of every problem flag, for both modes:
               room stamps (block ROOMTAG) and texts on Names/Types/
               Descriptions at the same places.
locked.dxf     one room whose floor, contour and name layers are locked.
no_floor.dxf   rooms without a polyline on the floor-area layer.
records.dxf    entities carrying records of versions 1.0, 1.1 and 1.2.
anchors.dxf    labels anchored on a wall with their text inside the room.
"""
import ezdxf

TAGS = ("NAME", "CATEGORY", "DESCRIPTION")


def new_drawing():
    doc = ezdxf.new("R2018", setup=False)
    doc.header["$INSUNITS"] = 6  # metres
    for name in ("Floor", "Contours", "Stamps", "Names", "Types", "Descriptions", "Frozen"):
        doc.layers.add(name)
    doc.layers.get("Frozen").freeze()
    block = doc.blocks.new("ROOMTAG", base_point=(0, 0))
    block.add_lwpolyline([(-1, -0.5), (1, -0.5), (1, 0.5), (-1, 0.5)], close=True)
    for i, tag in enumerate(TAGS):
        block.add_attdef(tag, (0, 0.2 - 0.3 * i), dxfattribs={"height": 0.2})
    # An older stamp without the description attribute.
    old = doc.blocks.new("OLDTAG", base_point=(0, 0))
    for i, tag in enumerate(TAGS[:2]):
        old.add_attdef(tag, (0, 0.2 - 0.3 * i), dxfattribs={"height": 0.2})
    doc.appids.new("VantoryApp")
    return doc


def rectangle(msp, x0, y0, x1, y1, layer="Contours", bulge=None):
    points = [(x0, y0, 0, 0, 0), (x1, y0, 0, 0, 0), (x1, y1, 0, 0, 0), (x0, y1, 0, 0, 0)]
    if bulge is not None:
        points[1] = (x1, y0, 0, 0, bulge)
    return msp.add_lwpolyline(points, format="xyseb", close=True, dxfattribs={"layer": layer})


def stamp(msp, x, y, name, category="Office", description="", layer="Stamps", block="ROOMTAG"):
    insert = msp.add_blockref(block, (x, y), dxfattribs={"layer": layer})
    values = {"NAME": name, "CATEGORY": category, "DESCRIPTION": description}
    insert.add_auto_attribs({tag: values[tag] for tag in TAGS if block == "ROOMTAG" or tag != "DESCRIPTION"})
    return insert


def label(msp, x, y, name, category="Office", description="", mtext=False):
    """The three texts of a room, centred on (x, y) one above the other."""
    if mtext:
        msp.add_mtext(name, dxfattribs={"layer": "Names", "char_height": 0.2, "insert": (x, y + 0.3),
                                         "attachment_point": 5})
    else:
        msp.add_text(name, dxfattribs={"layer": "Names", "height": 0.2}).set_pos((x, y + 0.3), align="MIDDLE_CENTER")
    msp.add_text(category, dxfattribs={"layer": "Types", "height": 0.2}).set_pos((x, y), align="MIDDLE_CENTER")
    msp.add_text(description, dxfattribs={"layer": "Descriptions", "height": 0.2}).set_pos(
        (x, y - 0.3), align="MIDDLE_CENTER")


def room(msp, x, y, name, mtext=False):
    """A room's stamp and its three texts, described as "Room NAME"."""
    stamp(msp, x, y, name, description="Room " + name.strip())
    label(msp, x, y, name, description="Room " + name.strip(), mtext=mtext)


def problems():
    doc = new_drawing()
    msp = doc.modelspace()
    # The floor, and a smaller polyline on its layer (a courtyard).
    rectangle(msp, 70, 40, 80, 50, layer="Floor")
    rectangle(msp, -5, -5, 110, 110, layer="Floor")
    rooms = [
        ((0, 0, 10, 10), [("101", 5, 5)]),                      # a clean room
        ((10, 0, 20, 10), [("201", 13, 5), ("202", 17, 5)]),    # shares an edge with 101; two names
        ((30, 0, 40, 10), [("301", 33, 3)]),                    # overlaps the next one
        ((38, 8, 48, 18), [("401", 45, 15)]),
        ((50, 0, 60, 10), []),                                  # empty (the frozen stamp does not count)
        ((0, 20, 10, 30), [("601", 5, 25)]),
        ((10, 20, 20, 30), [(" 601 ", 15, 25)]),                # a duplicate of 601
        ((50, 20, 60, 30), [("901", 53, 25), ("901", 57, 25)]), # one room labelled twice
    ]
    for (x0, y0, x1, y1), names in rooms:
        rectangle(msp, x0, y0, x1, y1)
        for name, x, y in names:
            room(msp, x, y, name, mtext=name == "101")
    rectangle(msp, 30, 20, 40, 30, bulge=0.2)                  # a contour with an arc
    room(msp, 35, 25, "801")
    room(msp, 100, 100, "999")                                 # outside every contour
    stamp(msp, 10, 5, "150", description="Room 150")          # on the wall of 101 and 201
    stamp(msp, 55, 5, "777", layer="Frozen")                   # on a frozen layer: skipped
    msp.add_line((0, 0), (10, 10), dxfattribs={"layer": "Contours"})  # not a contour
    doc.saveas("problems.dxf")


def locked():
    doc = new_drawing()
    msp = doc.modelspace()
    rectangle(msp, -5, -5, 20, 20, layer="Floor")
    rectangle(msp, 0, 0, 10, 10)
    room(msp, 5, 5, "101")
    for name in ("Floor", "Contours", "Stamps", "Names"):
        doc.layers.get(name).lock()
    doc.saveas("locked.dxf")


def no_floor():
    doc = new_drawing()
    msp = doc.modelspace()
    rectangle(msp, 0, 0, 10, 10)
    room(msp, 5, 5, "101")
    stamp(msp, 15, 5, "102", block="OLDTAG")                   # an insert of another block
    rectangle(msp, 20, 0, 30, 10)
    # A stamp of ROOMTAG made before the block had its description.
    insert = msp.add_blockref("ROOMTAG", (25, 5), dxfattribs={"layer": "Stamps"})
    insert.add_attrib("NAME", "103", (25, 5.2))
    insert.add_attrib("CATEGORY", "Store", (25, 4.9))
    doc.saveas("no_floor.dxf")


def records():
    doc = new_drawing()
    msp = doc.modelspace()
    contour = rectangle(msp, 0, 0, 10, 10)
    handle = contour.dxf.handle
    common = [(1000, "101"), (1000, "Office"), (1000, "Open office"), (1000, "note"), (1000, handle)]
    for version, rest in (("1.0", []), ("1.1", [(1071, 9)]),
                          ("1.2", [(1071, 40000), (1010, (1, 2, 0)), (1010, (3, 4, 0))])):
        text = msp.add_text("v" + version, dxfattribs={"layer": "Names"}).set_pos((1, 1))
        text.set_xdata("VantoryApp", [(1000, version)] + common + rest)
    other = msp.add_text("other", dxfattribs={"layer": "Names"}).set_pos((2, 2))
    doc.appids.new("OtherApp")
    other.set_xdata("OtherApp", [(1000, "kept")])
    doc.saveas("records.dxf")


def anchors():
    doc = new_drawing()
    msp = doc.modelspace()
    rectangle(msp, -5, -5, 40, 20, layer="Floor")
    rectangle(msp, 0, 0, 10, 10)
    rectangle(msp, 10, 0, 20, 10)
    rectangle(msp, 20, 0, 30, 10)
    # Top-left MTEXT anchored in the room's corner, a left-aligned TEXT
    # anchored on the wall it shares with the previous room, and a
    # right-aligned TEXT whose alignment point is on the far wall.
    msp.add_mtext("A1", dxfattribs={"layer": "Names", "char_height": 1, "insert": (0, 10), "attachment_point": 1})
    msp.add_text("A2", dxfattribs={"layer": "Names", "height": 1}).set_pos((10, 5))
    msp.add_text("A3", dxfattribs={"layer": "Names", "height": 1}).set_pos((30, 5), align="RIGHT")
    doc.saveas("anchors.dxf")


if __name__ == "__main__":
    for make in (problems, locked, no_floor, records, anchors):
        make()
