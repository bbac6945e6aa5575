"""Reads a drawing with ezdxf, audits it and prints what the C++ test checks.

Usage: ezdxf_check.py DRAWING
Prints one line per fact, "key value", and exits 1 when ezdxf reports errors.
"""
import sys

import ezdxf


def main(path):
    doc = ezdxf.readfile(path)
    auditor = doc.audit()
    for error in auditor.errors:
        print("error", error.message)
    msp = doc.modelspace()
    print("entities", len(msp))
    print("layers", " ".join(sorted(layer.dxf.name for layer in doc.layers)))
    for entity in msp:
        if entity.has_xdata("VantoryApp"):
            values = [f"{tag.code}={tag.value}" for tag in entity.get_xdata("VantoryApp")]
            print("xdata", entity.dxf.handle, "|".join(str(v) for v in values))
        if entity.dxftype() == "TEXT":
            print("text", entity.dxf.handle, entity.dxf.text)
        if entity.dxftype() == "INSERT":
            attribs = " ".join(f"{a.dxf.tag}={a.dxf.text}" for a in entity.attribs)
            print("insert", entity.dxf.handle, entity.dxf.name, attribs)
    for block in doc.blocks:
        if block.name.startswith("FX_"):
            parts = []
            for entity in block:
                parts.append(entity.dxftype() + (":" + entity.dxf.tag if entity.dxftype() == "ATTDEF" else ""))
            print("block", block.name, " ".join(parts))
    root = doc.rootdict
    if "FLOORXPORT_TEST" in root:
        dictionary = root["FLOORXPORT_TEST"]
        for key, xrecord in dictionary.items():
            values = [f"{tag.code}={tag.value}" for tag in xrecord.tags]
            print("xrecord", key, "|".join(values))
    return 1 if auditor.has_errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
