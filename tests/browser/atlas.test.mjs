// The review atlas in a real browser: `floorxport review` on two corpus
// floors, each page opened in chromium and read as a reader sees it. Every
// outline must lie over its entity as another DXF reader (ezdxf) places it,
// the legend must count what findings.json lists, each card must show its
// finding, and the page must load nothing from anywhere.
//
//   node atlas.test.mjs FLOORXPORT CORPUS_DIR WORK_DIR PYTHON
//
// Exits 77 (skipped) when the corpus floors, chromium or playwright-core
// are missing.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';

import { launchChromium, missingBrowser } from './chromium.mjs';

const [floorxport, corpus, work, python] = process.argv.slice(2);
const here = path.dirname(fileURLToPath(import.meta.url));

const textLayers = (floor, contours, names) => [
  '--floor-layer', floor, '--contour-layer', contours, '--name-layer', names,
  '--type-layer', names, '--description-layer', names, '--yes'];
const floors = [
  { file: 'openindoor6/plan.dxf', args: textLayers('ABY_Contour_Facade', 'ABY_Zone_ZIND', 'Texte_Pièces') },
  { file: 'cs-proxymix/Standard_Factory_Plan.dxf', args: textLayers('00_Walls', '00_Offices', '01_Legends') },
].filter((floor) => fs.existsSync(path.join(corpus, floor.file)));

// The legend's captions, by the kind ids of findings.json.
const kTitles = {
  'area-not-found': 'Area not found',
  'duplicate-number': 'Duplicate Numbers',
  'intersected-contour': 'Intersected contours',
  'empty-contour': 'Contours Without Identifiers',
  'multiple-ids': 'Room With Multiple Identifiers',
};
const kContourKinds = new Set(['intersected-contour', 'empty-contour']);

const skip = floors.length === 0 ? `no corpus floors in ${corpus}` : await missingBrowser();
if (skip) {
  console.log(`skipped: ${skip}`);
  process.exit(77);
}

let browser;
before(async () => { browser = await launchChromium(); });
after(async () => { await browser?.close(); });

function review(floor, dir) {
  fs.rmSync(dir, { recursive: true, force: true });
  const run = spawnSync(floorxport, ['--settings', path.join(work, 'settings.reg'), 'review',
                                     path.join(corpus, floor.file), ...floor.args, '-o', dir],
                        { encoding: 'utf8', stdio: ['ignore', 'pipe', 'pipe'] });
  assert.equal(run.status, 0, `floorxport review ${floor.file}\n${run.stderr}`);
  return JSON.parse(fs.readFileSync(path.join(dir, 'findings.json'), 'utf8'));
}

function entityBoxes(drawing, handles) {
  const run = spawnSync(python, [path.join(here, 'entity_boxes.py'), drawing, ...handles],
                        { encoding: 'utf8', maxBuffer: 64 << 20 });
  assert.equal(run.status, 0, run.stderr);
  return JSON.parse(run.stdout);
}

// World box -> the page's SVG coordinates (findings.json's view) -> screen.
function onScreen([x0, y0, x1, y1], view, [a, b, c, d, e, f]) {
  const points = [[x0, y0], [x1, y1]].map(([x, y]) => [x - view.min[0], view.max[1] - y])
    .map(([x, y]) => [a * x + c * y + e, b * x + d * y + f]);
  const xs = points.map((p) => p[0]);
  const ys = points.map((p) => p[1]);
  return [Math.min(...xs), Math.min(...ys), Math.max(...xs), Math.max(...ys)];
}

const area = ([x0, y0, x1, y1]) => Math.max(x1 - x0, 0) * Math.max(y1 - y0, 0);
// The share of the smaller box that the two boxes have in common.
function overlap(p, q) {
  const common = area([Math.max(p[0], q[0]), Math.max(p[1], q[1]), Math.min(p[2], q[2]), Math.min(p[3], q[3])]);
  return common / Math.max(Math.min(area(p), area(q)), 1e-9);
}

for (const floor of floors) {
  test(`atlas of ${floor.file}`, async () => {
    const dir = path.join(work, path.dirname(floor.file));
    const findings = review(floor, dir);
    const boxes = entityBoxes(path.join(corpus, floor.file), findings.findings.map((f) => f.handle));
    const page = await browser.newPage({ viewport: { width: 1600, height: 1000 } });
    const url = pathToFileURL(path.join(dir, 'index.html')).href;
    const requests = [];
    const errors = [];
    page.on('request', (request) => requests.push(request.url()));
    page.on('pageerror', (error) => errors.push(error.message));
    await page.goto(url);

    // The legend counts what findings.json lists, kind by kind.
    const legend = await page.getByRole('list', { name: 'Legend' }).getByRole('listitem').allInnerTexts();
    const expected = Object.entries(kTitles).map(([kind, title]) =>
      `${title} ${findings.findings.filter((f) => f.kind === kind).length}`);
    assert.deepEqual(legend.map((item) => item.replace(/\s+/g, ' ').trim()), expected);
    assert.deepEqual(Object.values(findings.counts), Object.keys(kTitles).map((kind) =>
      findings.findings.filter((f) => f.kind === kind).length));

    // One card per finding, in list order.
    const headings = await page.getByRole('list', { name: 'Problems' }).getByRole('heading').allTextContents();
    assert.deepEqual(headings, findings.findings.map((f, i) => `${i + 1}. ${kTitles[f.kind]}`));

    // Each outline lies over its entity: a contour's box is the entity's to
    // a pixel; a text's box lies within ezdxf's estimate of it.
    const seen = await page.evaluate(() => {
      const m = document.getElementById('floor-view').getScreenCTM();
      const marks = Array.from(document.getElementById('marks').children, (mark) => {
        const r = mark.getBoundingClientRect();
        return [r.left, r.top, r.right, r.bottom];
      });
      const crops = Array.from(document.querySelectorAll('.finding svg'), (svg) => {
        const v = svg.viewBox.baseVal;
        return [v.x, v.y, v.x + v.width, v.y + v.height];
      });
      return { ctm: [m.a, m.b, m.c, m.d, m.e, m.f], marks, crops };
    });
    assert.equal(seen.marks.length, findings.findings.length);
    findings.findings.forEach((finding, i) => {
      const entity = boxes[finding.handle];
      assert.ok(entity, `ezdxf has no box for ${finding.handle}`);
      const expectedBox = onScreen(entity, findings.view, seen.ctm);
      const what = `${finding.number} ${finding.kind} ${finding.handle}: outline ${seen.marks[i]}, entity ${expectedBox}`;
      if (kContourKinds.has(finding.kind)) {
        seen.marks[i].forEach((edge, k) => assert.ok(Math.abs(edge - expectedBox[k]) < 1.5, what));
      } else {
        assert.ok(overlap(seen.marks[i], expectedBox) > 0.9, what);
      }
      // Its card's view holds it (the page's coordinates, y down).
      const [x0, y0, x1, y1] = finding.box;
      const [cx0, cy0, cx1, cy1] = seen.crops[i];
      const inView = x0 - findings.view.min[0] >= cx0 && x1 - findings.view.min[0] <= cx1 &&
                     findings.view.max[1] - y1 >= cy0 && findings.view.max[1] - y0 <= cy1;
      assert.ok(inView, `card ${finding.number} does not show ${finding.box}`);
    });

    // The last card, once scrolled to, draws the floor around its outline.
    const last = findings.findings.length;
    await page.getByRole('img', { name: `Problem ${last} on the floor` }).scrollIntoViewIfNeeded();
    await page.waitForFunction((n) => {
      const shown = document.querySelectorAll(`#f${n} .shown`);
      const mark = document.getElementById(`m${n}`).getAttribute('points');
      return shown.length === 2 && shown[0].childElementCount > 0 &&
             Array.from(shown[1].children).some((copy) => copy.getAttribute('points') === mark);
    }, last);

    assert.deepEqual(errors, []);
    assert.deepEqual(requests, [url], 'the page loads nothing but itself');
    await page.close();
  });
}
