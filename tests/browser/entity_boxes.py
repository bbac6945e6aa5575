"""Prints the world boxes of entities of a DXF drawing, by handle, as JSON.

Another DXF reader's view of the drawing (ezdxf), for checking what our
program draws: entity_boxes.py DRAWING HANDLE... prints
{"HANDLE": [min x, min y, max x, max y] or null}. ezdxf boxes a TEXT or
MTEXT by its anchor and an estimate of its size (an MTEXT by its column), so
a text's box holds the text as laid out rather than fitting it.
"""
import json
import sys

import ezdxf
from ezdxf import bbox


def main():
    doc = ezdxf.readfile(sys.argv[1])
    boxes = {}
    for handle in sys.argv[2:]:
        entity = doc.entitydb.get(handle)
        box = bbox.extents([entity]) if entity is not None else None
        boxes[handle] = ([box.extmin.x, box.extmin.y, box.extmax.x, box.extmax.y]
                         if box is not None and box.has_data else None)
    json.dump(boxes, sys.stdout)


if __name__ == "__main__":
    main()
