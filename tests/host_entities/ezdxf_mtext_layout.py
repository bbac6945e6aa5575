"""MTEXT laid out by ezdxf's text layout engine, for the C++ test that
compares the host's MTEXT lines with it.

Usage: ezdxf_mtext_layout.py OUT.dxf

Writes a small drawing of MTEXT (wrapped, centred, right-aligned, rotated,
width factors, full-width characters, no reference width) to OUT.dxf and
prints for each MTEXT a line "mtext HANDLE BOX", then one line per line of
text, top first: "line START END TEXT". TEXT is the line's words joined by
single blanks, START and END the world points (x y z) where its baseline
starts and ends; BOX is the world box (minimum then maximum corner) of the
rectangle, in the MTEXT's frame, around all words from baseline to cap
height.

ezdxf measures glyphs with fonts; here it is given the host's estimate
instead (a character is 0.65 x height x width factor wide, an East Asian
wide one 1.0 x), so that line breaks and positions depend on the layout
rules alone: word wrapping, alignment in the column, attachment, line
spacing. The text style's width factor is where ezdxf's inline width
factor starts. With no reference width the column is the widest line: a
first pass with an unbounded column finds it.
"""
import sys
import unicodedata

import ezdxf
from ezdxf.math import Vec3
from ezdxf.render import abstract_mtext_renderer
from ezdxf.render.abstract_mtext_renderer import AbstractMTextRenderer
from ezdxf.tools import fonts
from ezdxf.tools import text_layout as tl

UNBOUNDED = 1e9


def make_drawing(path):
    doc = ezdxf.new("R2010")
    doc.styles.new("narrow", dxfattribs={"font": "arial.ttf", "width": 0.8})
    msp = doc.modelspace()

    def mtext(text, insert, height, width, attachment, **extra):
        attribs = {"insert": insert, "char_height": height, "width": width, "attachment_point": attachment}
        attribs.update(extra)
        msp.add_mtext(text, dxfattribs=attribs)

    # A room label: number and name centred in the column of a top-left MTEXT.
    mtext("\\pxsm1,qc;C001 \\PFoyer \u00e9tudiants", (100, 400), 20, 210.6, 1)
    # A centred paragraph that wraps, then a left one (paragraph codes hold
    # until changed).
    mtext("\\pxqc;Salle de r\u00e9union du conseil d'administration\\Pdeux\\P\\pql;gauche seule",
          (0, 0), 10, 118.7, 1)
    # Right-aligned notes, middle-centre attachment, rotated, wider spacing;
    # a word longer than the column stays whole.
    mtext("\\pqr;NOTES G\u00c9N\u00c9RALES\\PVoir le plan d'ensemble pour les cotes "
          "Laboratoire-informatique-principal x",
          (500, 50), 5, 77.3, 5, rotation=30, line_spacing_factor=1.5)
    # No reference width: the column is the widest line, centred paragraphs
    # in a bottom-right block.
    mtext("\\pqc;Bureau du directeur\\P101\\PB", (300, -100), 3, 0, 9)
    # The style's width factor, an inline one, and the attachment's
    # alignment (right) with no paragraph code.
    mtext("Salle {\\W1.5;polyvalente} du rez-de-chauss\u00e9e et annexes", (700, 300), 8, 101.9, 3,
          style="narrow")
    # Full-width characters, given by a direction vector, left paragraphs in
    # a bottom-centre block.
    mtext("\\pql;\u4f1a\u8bae\u5ba4 101 \u529e\u516c\u533a \u4e00\u53f7\\P\u5927\u5385", (-200, 200), 6, 41.3, 8,
          text_direction=(0, 1, 0))
    # Double spacing in a bottom-left block; an empty paragraph keeps its line.
    mtext("a\\P\\Pb", (0, -300), 2, 0, 7, line_spacing_factor=2)
    doc.saveas(path)
    return doc


class RuleFont(fonts.AbstractFont):
    def __init__(self, cap_height, width_factor):
        super().__init__(fonts.FontMeasurements(
            baseline=0, cap_height=cap_height, x_height=cap_height * 0.5, descender_height=cap_height * 0.3))
        self.unit = cap_height * width_factor

    def text_width(self, text):
        return self.unit * sum(
            1.0 if unicodedata.east_asian_width(c) in "WF" else 0.65 for c in text if ord(c) >= 0x20)

    def space_width(self):
        return 0.65 * self.unit


class WordRecorder(tl.ContentRenderer):
    def __init__(self, text, words):
        self.text = text
        self.words = words

    def render(self, left, bottom, right, top, m=None):
        self.words.append((self.text, left, bottom, right, top, m))

    def line(self, x1, y1, x2, y2, m=None):
        pass


class RuleLayout(AbstractMTextRenderer):
    def __init__(self, doc):
        super().__init__()
        self.doc = doc
        self.words = []

    def word(self, text, ctx):
        return tl.Text(width=self.get_font(ctx).text_width(text), height=ctx.cap_height,
                       valign=tl.CellAlignment(ctx.align), renderer=WordRecorder(text, self.words))

    def fraction(self, data, ctx):
        upper, lower, kind = data
        return self.word(upper + ("/" + lower if kind and lower else ""), ctx)

    def get_font_face(self, mtext):
        return fonts.FontFace()

    def get_font(self, ctx):
        return RuleFont(ctx.cap_height, ctx.width_factor)

    def make_bg_renderer(self, mtext):
        return None

    def make_mtext_context(self, mtext):
        ctx = super().make_mtext_context(mtext)
        ctx.width_factor = self.doc.styles.get(mtext.dxf.style).dxf.width
        return ctx

    def lay_out(self, mtext, column_width):
        abstract_mtext_renderer.defined_width = lambda _: column_width
        # No tabs here; ezdxf would make one stop per 4 heights of column.
        abstract_mtext_renderer.make_default_tab_stops = lambda *_: []
        self.words = []
        layout = self.layout_engine(mtext)
        layout.place(align=tl.LayoutAlignment(mtext.dxf.attachment_point))
        layout.render(mtext.ucs().matrix)
        return self.words


def lines_of(words):
    """Words grouped into lines by their baseline, top line first."""
    lines = {}
    for word in words:
        lines.setdefault(round(word[2], 9), []).append(word)
    return [sorted(lines[y], key=lambda w: w[1]) for y in sorted(lines, reverse=True)]


def report(doc, mtext):
    engine = RuleLayout(doc)
    width = mtext.dxf.get("width", 0)
    if width <= 0:
        widest = max(line[-1][3] - line[0][1] for line in lines_of(engine.lay_out(mtext, UNBOUNDED)))
        width = widest * (1 + 1e-12)  # lines no wider than the column fit
    words = engine.lay_out(mtext, width)
    m = mtext.ucs().matrix
    left, right = min(w[1] for w in words), max(w[3] for w in words)
    bottom, top = min(w[2] for w in words), max(w[4] for w in words)
    box = [m.transform(Vec3(x, y)) for x in (left, right) for y in (bottom, top)]
    lo = [min(p[i] for p in box) for i in range(3)]
    hi = [max(p[i] for p in box) for i in range(3)]
    print("mtext", mtext.dxf.handle, *(repr(v) for v in lo + hi))
    for line in lines_of(words):
        start = m.transform(Vec3(line[0][1], line[0][2]))
        end = m.transform(Vec3(line[-1][3], line[-1][2]))
        print("line", *(repr(v) for v in list(start) + list(end)), " ".join(w[0] for w in line))


def main(argv):
    doc = make_drawing(argv[1])
    for mtext in doc.modelspace().query("MTEXT"):
        report(doc, mtext)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
