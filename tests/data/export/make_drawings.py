#!/usr/bin/python3
"""Writes the small drawings of the export tests (tests/export); they are
committed: rerun (with Debian's /usr/bin/python3, python3-ezdxf 0.18, from
this folder) only to change them, then update the expectations.

floor.dxf         a floor in metres with room records as an analysis leaves
                  them (each room's case is commented below), layers of every
                  kind, a frame layer for "Drawing Position" 2 and an active
                  view centred on (50, 25), 40 by 20.
no_view.dxf       an R12 drawing of one line without tables.
no_active.dxf     one line; the viewport table has no "*ACTIVE".
twisted_view.dxf  a rectangle seen through a view whose display system is
                  not the world's (target (100, 50), twist 90 degrees): in
                  the world the view spans x 95 to 115 and y 20 to 60.
"""
import ezdxf
from ezdxf import bbox


def record(entity, name, category="", description="", comment="", linked="0", flags=0):
    box = bbox.extents([entity])
    entity.set_xdata("VantoryApp", [
        (1000, "1.2"), (1000, name), (1000, category), (1000, description), (1000, comment),
        (1000, linked), (1071, flags), (1010, tuple(box.extmin)), (1010, tuple(box.extmax)),
    ])


def main():
    doc = ezdxf.new("R2018", setup=False)
    doc.header["$INSUNITS"] = 6  # metres
    doc.appids.new("VantoryApp")
    # Every kind of colour and lineweight, one layer off, one frozen, one
    # without entities; a frame (a point first, then a rectangle) and a
    # layer holding only a point.
    layers = [
        # name, colour, lineweight (hundredths of a millimetre; -3 default)
        ("Floor", 8, 25), ("Contours", 3, -3), ("Names", 1, -1), ("Walls", 1, 211),
        ("Thin", 7, 0), ("Off", 5, 13), ("Frozen", 6, 50), ("Unused", 2, 30),
        ("Frame", 4, -3), ("PointOnly", 4, -3),
    ]
    for name, colour, weight in layers:
        layer = doc.layers.add(name, color=colour)
        layer.dxf.lineweight = weight
    doc.layers.get("Walls").rgb = (0x12, 0x34, 0x56)
    doc.layers.get("Off").off()
    doc.layers.get("Frozen").freeze()

    msp = doc.modelspace()
    msp.add_point((2, 2), dxfattribs={"layer": "Frame"})
    msp.add_point((7, 7), dxfattribs={"layer": "PointOnly"})
    floor = msp.add_lwpolyline([(0, 0), (20, 0), (20, 10), (0, 10)], close=True, dxfattribs={"layer": "Floor"})
    record(floor, "<*AREA_FLOOR*>")

    # A triangle named by a text; a rectangle and a 2D POLYLINE that carry
    # their own records; a room whose contour is gone, one whose contour is a
    # point, and one outside the floor.
    triangle = msp.add_lwpolyline([(1, 1), (5, 1), (1, 4)], close=True, dxfattribs={"layer": "Contours"})
    name = msp.add_text("A1", dxfattribs={"layer": "Names", "height": 0.5, "insert": (1.5, 1.5)})
    record(name, "A1", "Office", 'Corner & "quoted" <room>', "first", linked=triangle.dxf.handle)

    rectangle = msp.add_lwpolyline([(6.125, 1.5), (10.0625, 1.5), (10.0625, 4.25), (6.125, 4.25)], close=True,
                                   dxfattribs={"layer": "Contours"})
    record(rectangle, "B2", "Meeting", "", "", linked=rectangle.dxf.handle)

    gone = msp.add_text("C3", dxfattribs={"layer": "Names", "height": 0.5, "insert": (11, 8)})
    record(gone, "C3", "Store", "no contour", "", linked="FFFFF", flags=16)

    point = msp.add_lwpolyline([(3, 7), (3, 7), (3, 7)], close=True, dxfattribs={"layer": "Contours"})
    record(point, "D4", "", "", "", linked=point.dxf.handle)

    heavy = msp.add_polyline2d([(12, 1), (16, 1), (16, 5), (12, 5)], close=True, dxfattribs={"layer": "Contours"})
    record(heavy, "E5", "Lab", "", "", linked=heavy.dxf.handle)

    outside = msp.add_lwpolyline([(-3, -2), (-1, -2), (-1, -0.5)], close=True, dxfattribs={"layer": "Contours"})
    record(outside, "F6", "Shed", "", "", linked=outside.dxf.handle)

    msp.add_line((0, 5), (20, 5), dxfattribs={"layer": "Walls"})
    msp.add_line((0, 6), (20, 6), dxfattribs={"layer": "Thin"})
    msp.add_circle((10, 8), 1, dxfattribs={"layer": "Off"})
    msp.add_line((0, 9), (20, 9), dxfattribs={"layer": "Frozen"})
    msp.add_lwpolyline([(-1, -1), (21, -1), (21, 11), (-1, 11)], close=True, dxfattribs={"layer": "Frame"})

    doc.set_modelspace_vport(height=20, center=(50, 25))
    doc.viewports.get("*Active")[0].dxf.aspect_ratio = 2.0
    doc.saveas("floor.dxf")


def no_view():
    tags = ["0", "SECTION", "2", "HEADER", "9", "$ACADVER", "1", "AC1009", "0", "ENDSEC",
            "0", "SECTION", "2", "ENTITIES",
            "0", "LINE", "8", "0", "10", "0.0", "20", "0.0", "30", "0.0", "11", "10.0", "21", "5.0", "31", "0.0",
            "0", "ENDSEC", "0", "EOF"]
    with open("no_view.dxf", "w", newline="\n") as out:
        out.write("\n".join(tags) + "\n")


def no_active():
    doc = ezdxf.new("R2018", setup=False)
    doc.modelspace().add_line((0, 0), (10, 5))
    doc.viewports.delete_config("*Active")
    doc.saveas("no_active.dxf")


def twisted_view():
    doc = ezdxf.new("R2018", setup=False)
    doc.modelspace().add_lwpolyline([(90, 30), (120, 30), (120, 50), (90, 50)], close=True)
    doc.set_modelspace_vport(height=20, center=(10, 5))
    view = doc.viewports.get("*Active")[0]
    view.dxf.aspect_ratio = 2.0
    view.dxf.target = (100, 50, 0)
    view.dxf.view_twist = 90
    doc.saveas("twisted_view.dxf")


if __name__ == "__main__":
    main()
    no_view()
    no_active()
    twisted_view()
