// Opens review atlas pages in chromium (the browser tests' playwright-core
// and Debian's chromium) and prints, per page, the median of RUNS loads:
// the first contentful paint (the header), the first picture of the floor
// (the end of the first frame after the document, floor included, was
// parsed: a message posted from the frame's animation callback arrives once
// the frame is drawn) and the load event, in milliseconds from the start
// of the navigation.
//
//   node bench/atlas_paint.mjs [--runs N] DIR/index.html...
import path from 'node:path';
import { pathToFileURL } from 'node:url';

import { launchChromium } from '../tests/browser/chromium.mjs';

const args = process.argv.slice(2);
let runs = 3;
if (args[0] === '--runs') {
  runs = Math.max(1, Number(args[1]));
  args.splice(0, 2);
}
const median = (values) => values.sort((a, b) => a - b)[Math.floor(values.length / 2)];

const browser = await launchChromium();
console.log(`${'page'.padEnd(40)} ${'first paint'.padStart(12)} ${'floor shown'.padStart(12)} ${'load'.padStart(8)}`);
for (const file of args) {
  const times = { paint: [], picture: [], load: [] };
  for (let run = 0; run < runs; run++) {
    const page = await browser.newPage({ viewport: { width: 1280, height: 900 } });
    await page.addInitScript(() => {
      document.addEventListener('DOMContentLoaded', () => requestAnimationFrame(() => {
        const channel = new MessageChannel();
        channel.port1.onmessage = () => { window.floorShown = performance.now(); };
        channel.port2.postMessage(0);
      }));
    });
    await page.goto(pathToFileURL(path.resolve(file)).href);
    await page.waitForFunction(() => window.floorShown !== undefined, null, { timeout: 120000 });
    const measured = await page.evaluate(() => ({
      paint: performance.getEntriesByName('first-contentful-paint')[0]?.startTime ?? NaN,
      picture: window.floorShown,
      load: performance.getEntriesByType('navigation')[0].loadEventEnd,
    }));
    for (const key of Object.keys(times)) times[key].push(measured[key]);
    await page.close();
  }
  const name = path.basename(path.dirname(file));
  console.log(`${name.padEnd(40)} ${median(times.paint).toFixed(0).padStart(12)} ` +
              `${median(times.picture).toFixed(0).padStart(12)} ${median(times.load).toFixed(0).padStart(8)}`);
}
await browser.close();
