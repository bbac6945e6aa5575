#include "review/atlas_assets.h"

namespace fx::review {

const char kAtlasStyle[] = R"css(
:root { color-scheme: light; }
body { margin: 0; font: 14px/1.4 system-ui, sans-serif; color: #1d1d1d; background: #f3f3f1; }
header { position: sticky; top: 0; z-index: 1; padding: 10px 20px; background: #fff;
         border-bottom: 1px solid #c8c8c8; }
h1 { font-size: 18px; margin: 0; }
h2 { font-size: 16px; margin: 18px 20px 8px; }
h3 { font-size: 15px; margin: 0 0 4px; }
.summary { margin: 2px 0 6px; color: #444; }
.legend { display: flex; flex-wrap: wrap; gap: 4px 20px; margin: 0; padding: 0; list-style: none; }
.legend li { display: flex; align-items: center; gap: 6px; }
.legend a { color: inherit; }
.legend .count { font-weight: 600; }
.swatch { display: inline-block; width: 12px; height: 12px; border: 2px solid var(--c);
          background: color-mix(in srgb, var(--c) 20%, transparent); }
.floor { margin: 12px 20px; background: #fff; border: 1px solid #c8c8c8; }
.floor figcaption { padding: 4px 10px; color: #555; border-top: 1px solid #e2e2e2; }
#floor-view { display: block; width: 100%; height: auto; max-height: 80vh; }
#floor-view *, .crop * { vector-effect: non-scaling-stroke; }
#floor-view.small-text text { display: none; }
.mark { stroke: var(--c); fill: var(--c); fill-opacity: 0.14; stroke-width: 2px; cursor: pointer; }
.findings { display: grid; grid-template-columns: repeat(auto-fill, minmax(330px, 1fr)); gap: 12px;
            margin: 0 20px 24px; padding: 0; list-style: none; }
.finding { background: #fff; border: 1px solid #c8c8c8; border-top: 5px solid var(--c);
           content-visibility: auto; contain-intrinsic-size: auto 420px; scroll-margin-top: 110px; }
.finding:target { outline: 3px solid var(--c); }
.crop { display: block; width: 100%; height: auto; aspect-ratio: 4 / 3; background: #fff;
        border-bottom: 1px solid #e2e2e2; }
.halo { fill: none; stroke: #1d1d1d; stroke-width: 1px; stroke-dasharray: 5 4; }
.about { padding: 8px 10px; }
.about p { margin: 0 0 6px; }
.about dl { display: grid; grid-template-columns: max-content 1fr; gap: 0 10px; margin: 0; }
.about dt { color: #555; }
.about dd { margin: 0; overflow-wrap: anywhere; }
.none { color: #777; font-style: italic; }
)css";

const char kAtlasScript[] = R"js(
(() => {
  const ns = 'http://www.w3.org/2000/svg';
  const floor = document.getElementById('floor');
  const marks = document.getElementById('marks');

  // The boxes of a group's children in the floor's coordinates, in a grid of
  // cells, so a crop finds the few elements it shows among many thousands.
  class BoxIndex {
    constructor(group, view) {
      this.items = Array.from(group.children);
      this.boxes = new Float64Array(this.items.length * 4);
      this.side = Math.max(view.width, view.height) / 128 || 1;
      this.cells = new Map();
      this.wide = [];
      this.items.forEach((item, i) => {
        const box = this.boxOf(item);
        this.boxes.set(box, i * 4);
        const [x0, y0, x1, y1] = this.cellRange(box);
        if ((x1 - x0 + 1) * (y1 - y0 + 1) > 256) { this.wide.push(i); return; }
        for (let x = x0; x <= x1; x++) {
          for (let y = y0; y <= y1; y++) {
            const key = x * 65536 + y;
            if (!this.cells.has(key)) this.cells.set(key, []);
            this.cells.get(key).push(i);
          }
        }
      });
    }
    // getBBox leaves out the element's own transform: its corners are mapped.
    // A text left out of the overview has no box there: it gets one from its
    // size and length, large enough for any face.
    boxOf(item) {
      let b = item.getBBox();
      if (item.tagName === 'text' && b.width === 0 && b.height === 0) {
        const size = parseFloat(item.getAttribute('font-size')) || 0;
        const length = item.textContent.length + 1;
        b = { x: -size, y: -1.5 * size, width: size * length, height: 2 * size };
      }
      const t = item.transform && item.transform.baseVal.consolidate();
      if (!t) return [b.x, b.y, b.x + b.width, b.y + b.height];
      const m = t.matrix;
      const xs = [], ys = [];
      for (const [x, y] of [[b.x, b.y], [b.x + b.width, b.y], [b.x, b.y + b.height],
                            [b.x + b.width, b.y + b.height]]) {
        xs.push(m.a * x + m.c * y + m.e);
        ys.push(m.b * x + m.d * y + m.f);
      }
      return [Math.min(...xs), Math.min(...ys), Math.max(...xs), Math.max(...ys)];
    }
    cellRange([x0, y0, x1, y1]) {
      const s = this.side;
      return [Math.floor(x0 / s), Math.floor(y0 / s), Math.floor(x1 / s), Math.floor(y1 / s)];
    }
    // The children whose box meets `box`, in drawing order.
    within(box) {
      const found = new Set(this.wide);
      const [x0, y0, x1, y1] = this.cellRange(box);
      for (let x = x0; x <= x1; x++) {
        for (let y = y0; y <= y1; y++) (this.cells.get(x * 65536 + y) || []).forEach((i) => found.add(i));
      }
      const b = this.boxes;
      return Array.from(found).filter((i) => b[i * 4] <= box[2] && b[i * 4 + 2] >= box[0] &&
                                             b[i * 4 + 1] <= box[3] && b[i * 4 + 3] >= box[1])
                              .sort((p, q) => p - q).map((i) => this.items[i]);
    }
  }

  let indexes = null;
  // A copy of the group's attributes (its styles), without id and clip.
  const shell = (group) => {
    const copy = group.cloneNode(false);
    copy.removeAttribute('id');
    copy.removeAttribute('clip-path');
    return copy;
  };
  const fill = (crop) => {
    if (crop.querySelector('.shown')) return;
    if (!indexes) {
      const view = document.getElementById('floor-view').viewBox.baseVal;
      indexes = [[floor, new BoxIndex(floor, view)], [marks, new BoxIndex(marks, view)]];
    }
    const v = crop.viewBox.baseVal;
    const box = [v.x, v.y, v.x + v.width, v.y + v.height];
    const halo = crop.querySelector('.halo');
    for (const [group, index] of indexes) {
      const shown = shell(group);
      shown.classList.add('shown');
      for (const item of index.within(box)) {
        const copy = item.cloneNode(true);
        copy.removeAttribute('id');
        shown.appendChild(copy);
      }
      crop.insertBefore(shown, halo);
    }
  };
  const empty = (crop) => crop.querySelectorAll('.shown').forEach((shown) => shown.remove());
  const watcher = new IntersectionObserver((entries) => {
    for (const entry of entries) {
      const crop = entry.target.querySelector('.crop');
      if (entry.isIntersecting) fill(crop); else empty(crop);
    }
  }, { rootMargin: '400px 0px' });
  document.querySelectorAll('.finding').forEach((card) => watcher.observe(card));
  marks.addEventListener('click', (event) => {
    const mark = event.target.closest('.mark');
    if (mark) location.hash = '#f' + mark.id.slice(1);
  });
})();
)js";

}  // namespace fx::review
