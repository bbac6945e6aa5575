"""Copies the model space of a DXF drawing into a new drawing whose handles
are all different: renumber_handles.py IN.dxf OUT.dxf (Debian's ezdxf).

The geometry, layers and texts stay as they were; only the handles change,
as when a drawing goes through another program."""
import sys

import ezdxf
from ezdxf.addons import Importer


def main():
    source = ezdxf.readfile(sys.argv[1])
    copy = ezdxf.new(source.dxfversion)
    # Past every handle of the source, so none is given again.
    last = max(int(entity.dxf.handle, 16) for entity in source.entitydb.values())
    while int(copy.entitydb.next_handle(), 16) <= last:
        pass
    importer = Importer(source, copy)
    importer.import_modelspace()
    importer.finalize()
    copy.saveas(sys.argv[2])


if __name__ == "__main__":
    main()
