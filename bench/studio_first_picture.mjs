// Measures the studio on drawings: time from opening the page to the first
// painted picture of the floor, the frame interval while the floor is
// dragged (the stage's CSS transform only), the time to the next frame when
// the drag ends, and the time a zoom by the wheel takes to paint the floor
// at its new scale once the wheel rests.
//
//   node bench/studio_first_picture.mjs FLOORXPORT DRAWING...
//
// Not a test: timings depend on the machine. Debian's chromium, headless.
import { launchChromium } from "../tests/browser/chromium.mjs";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { startStudio } from "../tests/browser/studio_harness.mjs";

const [floorxport, ...drawings] = process.argv.slice(2);
const settings = path.join(fs.mkdtempSync(path.join(os.tmpdir(), "studio-bench-")), "settings.reg");
const browser = await launchChromium();
console.log("drawing                         MB   first picture ms   drag frame ms (median/max)   drag end ms   zoom repaint ms");
for (const drawing of drawings) {
  const studio = await startStudio(floorxport, drawing, settings);
  const page = await browser.newPage({ viewport: { width: 1440, height: 900 } });
  const opened = Date.now();
  await page.goto(studio.url);
  await page.waitForFunction(() => document.body.dataset.firstPicture !== undefined, null, { timeout: 300000 });
  const firstPicture = Date.now() - opened;
  // Drag across the floor for 60 frames and record the frame intervals.
  const box = await page.locator("#floor").boundingBox();
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await page.evaluate(() => {
    window.frames_ = [];
    const tick = (time) => {
      window.frames_.push(time);
      if (window.frames_.length < 61) requestAnimationFrame(tick);
    };
    requestAnimationFrame(tick);
  });
  for (let i = 0; i < 60; ++i) await page.mouse.move(box.x + box.width / 2 + i * 4, box.y + box.height / 2 + i * 2);
  const times = await page.evaluate(() => window.frames_);
  const intervals = times.slice(1).map((time, i) => time - times[i]).sort((a, b) => a - b);
  // Releasing folds the drag into the viewBox: one repaint of the floor.
  const repaint = await page.evaluate(
    () =>
      new Promise((resolve) => {
        const started = performance.now();
        document.querySelector("#floor").dispatchEvent(new PointerEvent("pointerup", { pointerId: 1, bubbles: true }));
        requestAnimationFrame(() => requestAnimationFrame(() => resolve(performance.now() - started)));
      }),
  );
  await page.mouse.up();
  const zoom = await page.evaluate(
    () =>
      new Promise((resolve) => {
        const floor = document.querySelector("#floor");
        const rect = floor.getBoundingClientRect();
        const at = { clientX: rect.left + rect.width / 2, clientY: rect.top + rect.height / 2, bubbles: true };
        floor.dispatchEvent(new WheelEvent("wheel", { ...at, deltaY: -400, cancelable: true }));
        const started = performance.now();
        const svg = floor.querySelector("svg");
        const before = svg.getAttribute("viewBox");
        const wait = () => {
          if (svg.getAttribute("viewBox") === before) return requestAnimationFrame(wait);
          requestAnimationFrame(() => requestAnimationFrame(() => resolve(performance.now() - started - 160)));
        };
        wait();
      }),
  );
  const median = intervals[Math.floor(intervals.length / 2)] ?? 0;
  const max = intervals[intervals.length - 1] ?? 0;
  const mb = fs.statSync(drawing).size / 1048576;
  console.log(
    `${path.basename(drawing).padEnd(30)} ${mb.toFixed(1).padStart(4)} ${String(firstPicture).padStart(16)} ` +
      `${median.toFixed(1).padStart(14)} / ${max.toFixed(1).padEnd(12)} ${repaint.toFixed(0).padStart(11)} ` +
      `${zoom.toFixed(0).padStart(17)}`,
  );
  await page.close();
  await studio.stop();
}
await browser.close();
