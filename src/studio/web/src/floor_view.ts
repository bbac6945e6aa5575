// The floor: our SVG export inside one <svg> whose viewBox is the view.
// Pan and zoom never touch the drawing's elements: while the user drags or
// turns the wheel only a CSS transform on the stage changes, and the
// browser moves its layer without painting the floor again. The stage is
// three views wide and high, so a drag of up to a view's size uncovers floor
// the browser has already drawn; only a zoom, or a longer drag, folds the
// transform into the viewBox when the gesture rests, and the floor is
// painted once at the new scale. Strokes do not scale (vector-effect in the
// style sheet), so walls stay readable at every zoom, and texts too small to
// read at the view's scale are left out of the painting.
//
// Picture units: the export's, x' = x - min x, y' = max y - y of the frame.

import type { FloorSvg, Problem, WorldView } from "./api";

const SVG_NS = "http://www.w3.org/2000/svg";
const SETTLE_MS = 160;
// Texts smaller than this many pixels are not drawn.
const SMALLEST_TEXT_PX = 3;

interface Box {
  x: number;
  y: number;
  w: number;
  h: number;
}

export class FloorView {
  private readonly stage: HTMLDivElement;
  private readonly canvas: SVGSVGElement;
  private readonly drawing: SVGGElement;
  private readonly marks: SVGGElement;
  private frame: [number, number, number, number] = [0, 0, 1, 1];
  private view: Box = { x: 0, y: 0, w: 1, h: 1 };
  // The pending gesture: screen translation and scale about the origin.
  private dx = 0;
  private dy = 0;
  private scale = 1;
  private settleTimer = 0;
  private dragging: { x: number; y: number } | null = null;
  private pictureShown = false;
  private textSize = 0;  // a typical font size of the picture, in its units

  constructor(private readonly host: HTMLElement) {
    this.stage = document.createElement("div");
    this.stage.className = "stage";
    this.canvas = document.createElementNS(SVG_NS, "svg");
    this.canvas.setAttribute("preserveAspectRatio", "xMidYMid meet");
    this.drawing = document.createElementNS(SVG_NS, "g");
    this.drawing.id = "drawing";
    this.marks = document.createElementNS(SVG_NS, "g");
    this.marks.id = "marks";
    this.canvas.append(this.drawing, this.marks);
    this.stage.append(this.canvas);
    host.append(this.stage);
    host.addEventListener("wheel", (event) => this.onWheel(event), { passive: false });
    host.addEventListener("pointerdown", (event) => this.onPointerDown(event));
    host.addEventListener("pointermove", (event) => this.onPointerMove(event));
    host.addEventListener("pointerup", (event) => this.onPointerUp(event));
    host.addEventListener("dblclick", () => this.fit());
    new ResizeObserver(() => this.applyView()).observe(host);
  }

  get shown(): boolean {
    return this.pictureShown;
  }

  // Replaces the picture; keeps the view unless this is the first one.
  show(floor: FloorSvg): void {
    const parsed = new DOMParser().parseFromString(floor.text, "image/svg+xml");
    const root = parsed.documentElement;
    if (root.nodeName !== "svg") throw new Error("the floor picture is not SVG");
    const [x0, y0, x1, y1] = floor.frame;
    root.setAttribute("x", "0");
    root.setAttribute("y", "0");
    root.setAttribute("width", String(x1 - x0));
    root.setAttribute("height", String(y1 - y0));
    root.setAttribute("preserveAspectRatio", "none");
    const first = !this.pictureShown;
    this.frame = floor.frame;
    this.textSize = typicalFontSize(root);
    this.drawing.replaceChildren(document.adoptNode(root));
    this.pictureShown = true;
    if (first) this.fit();
    else this.applyView();
  }

  fit(): void {
    const [x0, y0, x1, y1] = this.frame;
    this.setView({ x: 0, y: 0, w: x1 - x0, h: y1 - y0 }, 0.04);
  }

  // The editor's active view, in world units, with some of the floor around
  // it (a zoom to one entity fits it tightly).
  showWorldView(view: WorldView): void {
    const box = this.toPicture(view.x - view.width / 2, view.y + view.height / 2, view.width, view.height);
    const [x0, y0, x1, y1] = this.frame;
    const small = Math.max(box.w, box.h) < 0.1 * Math.max(x1 - x0, y1 - y0);
    this.setView(box, small ? 1.5 : 0);
  }

  // Outlines problems; `visited` ones stand out. `kind` names the colour.
  setMarks(groups: { kind: string; problems: Problem[]; visited: string }[]): void {
    const nodes: SVGRectElement[] = [];
    for (const group of groups) {
      for (const problem of group.problems) {
        if (!problem.box) continue;
        const [x0, y0, x1, y1] = problem.box;
        const box = this.toPicture(x0, y1, x1 - x0, y1 - y0);
        const rect = document.createElementNS(SVG_NS, "rect");
        // A point-sized entity still gets a visible outline.
        const pad = Math.max(box.w, box.h) * 0.08 + this.minimumPad();
        rect.setAttribute("x", String(box.x - pad));
        rect.setAttribute("y", String(box.y - pad));
        rect.setAttribute("width", String(box.w + 2 * pad));
        rect.setAttribute("height", String(box.h + 2 * pad));
        rect.setAttribute("class", `mark ${group.kind}${problem.handle === group.visited ? " visited" : ""}`);
        rect.dataset.handle = problem.handle;
        const title = document.createElementNS(SVG_NS, "title");
        title.textContent = `${problem.name || problem.handle} (${problem.layer})`;
        rect.append(title);
        nodes.push(rect);
      }
    }
    this.marks.replaceChildren(...nodes);
  }

  zoomToBox(box: [number, number, number, number]): void {
    const [x0, y0, x1, y1] = box;
    this.setView(this.toPicture(x0, y1, x1 - x0, y1 - y0), 0.6);
  }

  private minimumPad(): number {
    const [x0, y0, x1, y1] = this.frame;
    return Math.max(x1 - x0, y1 - y0) * 0.002;
  }

  private toPicture(left: number, top: number, width: number, height: number): Box {
    return { x: left - this.frame[0], y: this.frame[3] - top, w: width, h: height };
  }

  // Shows `box` with a margin of `margin` times its size on each side.
  private setView(box: Box, margin: number): void {
    const size = Math.max(box.w, box.h, this.minimumPad() * 20);
    const w = Math.max(box.w, size * 0.05) + 2 * margin * size;
    const h = Math.max(box.h, size * 0.05) + 2 * margin * size;
    this.view = { x: box.x + box.w / 2 - w / 2, y: box.y + box.h / 2 - h / 2, w, h };
    this.resetGesture();
    this.applyView();
  }

  // The canvas shows three views in each direction, the view in the middle.
  private applyView(): void {
    const rect = this.host.getBoundingClientRect();
    this.stage.style.left = `${-rect.width}px`;
    this.stage.style.top = `${-rect.height}px`;
    this.stage.style.width = `${3 * rect.width}px`;
    this.stage.style.height = `${3 * rect.height}px`;
    this.stage.style.transformOrigin = `${rect.width}px ${rect.height}px`;
    const { x, y, w, h } = this.view;
    this.canvas.setAttribute("viewBox", `${x - w} ${y - h} ${3 * w} ${3 * h}`);
    this.drawing.classList.toggle("far", this.textSize / this.unitsPerPixel() < SMALLEST_TEXT_PX);
  }

  // Picture units per screen pixel at the current view ("meet" fitting).
  private unitsPerPixel(): number {
    const rect = this.host.getBoundingClientRect();
    return Math.max(this.view.w / Math.max(rect.width, 1), this.view.h / Math.max(rect.height, 1));
  }

  private applyGesture(): void {
    this.stage.style.transform = `translate(${this.dx}px, ${this.dy}px) scale(${this.scale})`;
    window.clearTimeout(this.settleTimer);
    if (this.dragging === null) this.settleTimer = window.setTimeout(() => this.settle(), SETTLE_MS);
  }

  private resetGesture(): void {
    this.dx = 0;
    this.dy = 0;
    this.scale = 1;
    this.stage.style.transform = "";
  }

  // Folds the gesture into the viewBox: the screen point p shows what the
  // untransformed stage showed at (p - d) / scale.
  private settle(): void {
    const rect = this.host.getBoundingClientRect();
    // A drag within the drawn margin needs no new painting.
    if (this.scale === 1 && Math.abs(this.dx) < 0.8 * rect.width && Math.abs(this.dy) < 0.8 * rect.height) return;
    const units = this.unitsPerPixel();
    // The viewBox is centred in the host ("meet"): screen centre = view centre.
    const cx = rect.width / 2;
    const cy = rect.height / 2;
    const centreX = this.view.x + this.view.w / 2 + ((cx - this.dx) / this.scale - cx) * units;
    const centreY = this.view.y + this.view.h / 2 + ((cy - this.dy) / this.scale - cy) * units;
    const w = this.view.w / this.scale;
    const h = this.view.h / this.scale;
    this.view = { x: centreX - w / 2, y: centreY - h / 2, w, h };
    this.resetGesture();
    this.applyView();
  }

  private onWheel(event: WheelEvent): void {
    event.preventDefault();
    const rect = this.host.getBoundingClientRect();
    const px = event.clientX - rect.left;
    const py = event.clientY - rect.top;
    const factor = Math.exp(-event.deltaY * (event.deltaMode === 1 ? 0.05 : 0.0015));
    // Keep the point under the cursor in place: p = d + s * q.
    this.dx = px - (px - this.dx) * factor;
    this.dy = py - (py - this.dy) * factor;
    this.scale *= factor;
    this.applyGesture();
  }

  private onPointerDown(event: PointerEvent): void {
    if (event.button !== 0) return;
    this.dragging = { x: event.clientX, y: event.clientY };
    this.host.setPointerCapture(event.pointerId);
    this.host.classList.add("panning");
  }

  private onPointerMove(event: PointerEvent): void {
    if (this.dragging === null) return;
    this.dx += event.clientX - this.dragging.x;
    this.dy += event.clientY - this.dragging.y;
    this.dragging = { x: event.clientX, y: event.clientY };
    this.applyGesture();
  }

  private onPointerUp(event: PointerEvent): void {
    if (this.dragging === null) return;
    this.dragging = null;
    this.host.releasePointerCapture(event.pointerId);
    this.host.classList.remove("panning");
    this.settle();
  }
}

// The median font size of (up to 200 of) the picture's texts; 0 for none.
function typicalFontSize(root: Element): number {
  const texts = root.getElementsByTagName("text");
  const sizes: number[] = [];
  const step = Math.max(1, Math.floor(texts.length / 200));
  for (let i = 0; i < texts.length; i += step) {
    const size = Number.parseFloat(texts[i].getAttribute("font-size") ?? "");
    if (size > 0) sizes.push(size);
  }
  sizes.sort((a, b) => a - b);
  return sizes.length > 0 ? sizes[Math.floor(sizes.length / 2)] : 0;
}
