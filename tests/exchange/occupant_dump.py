#!/usr/bin/python3
"""Prints the occupant import of a drawing as another DXF reader sees it.

Usage: occupant_dump.py DRAWING
One JSON object: "attdefs", the tags of the ATTDEFs of the block
VANTORY-IMPORT-ATTRIBUTES-BLOCK (null without the block); "on_layer", the
number of model-space entities on the layer !VANTORYIMPORT; "inserts", each
model-space insert of the block with its layer, scale and attributes (tag,
text and layer of each). Read with ezdxf (Debian's python3-ezdxf).
"""
import json
import sys

import ezdxf

BLOCK = "VANTORY-IMPORT-ATTRIBUTES-BLOCK"
LAYER = "!VANTORYIMPORT"


def main(path):
    doc = ezdxf.readfile(path)
    block = doc.blocks.get(BLOCK)
    attdefs = None if block is None else [e.dxf.tag for e in block if e.dxftype() == "ATTDEF"]
    msp = doc.modelspace()
    inserts = []
    for insert in msp.query("INSERT"):
        if insert.dxf.name != BLOCK:
            continue
        inserts.append({
            "layer": insert.dxf.layer,
            "scale": insert.dxf.xscale,
            "attribs": [[a.dxf.tag, a.dxf.text, a.dxf.layer] for a in insert.attribs],
        })
    on_layer = sum(1 for e in msp if e.dxf.layer == LAYER)
    json.dump({"attdefs": attdefs, "on_layer": on_layer, "inserts": inserts}, sys.stdout)


if __name__ == "__main__":
    main(sys.argv[1])
