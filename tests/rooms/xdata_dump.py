#!/usr/bin/python3
"""Prints the room records of a drawing as another DXF reader sees them.

Usage: xdata_dump.py DRAWING
One tab-separated line per entity with a record: handle, type, the linked
entity's type:layer (or "-"), then each item as CODE=VALUE, points as x,y,z.
"""
import sys

import ezdxf


def value(tag):
    if tag.code in (1010, 1011, 1012, 1013):
        return ",".join(repr(float(c)) for c in tag.value)
    return str(tag.value)


def main(path):
    doc = ezdxf.readfile(path)
    for entity in doc.modelspace():
        if not entity.has_xdata("VantoryApp"):
            continue
        tags = list(entity.xdata.data["VantoryApp"])
        linked = "-"
        if len(tags) > 6:
            target = doc.entitydb.get(str(tags[6].value))
            if target is not None:
                linked = target.dxftype() + ":" + target.dxf.layer
        items = ["%d=%s" % (tag.code, value(tag)) for tag in tags]
        print("\t".join([entity.dxf.handle, entity.dxftype(), linked] + items))


if __name__ == "__main__":
    main(sys.argv[1])
