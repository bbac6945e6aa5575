// The studio in a real browser (Debian's chromium, headless): a corpus floor
// identified from the dialog, its problems walked, a room edited, the floor
// exported and saved under another name; a floor sent to vantory-devserver
// through the site chooser and the sync dialog; and the refusal of requests
// without the token or from a foreign host or page.
//
// Environment: FLOORXPORT and DEVSERVER (the programs), SAMPLE (a small
// drawing of ours), CORPUS (the corpus folder; its test is skipped when
// absent), WORK (a scratch folder), SCREENSHOTS (optional: where to write
// the pictures for the documentation).
import { after, before, test } from "node:test";
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import path from "node:path";
import { launchChromium, missingBrowser } from "./chromium.mjs";
import { idle, pickMenu, press, question, rawGet, setField, startDevServer, startStudio } from "./studio_harness.mjs";

const { FLOORXPORT, DEVSERVER, SAMPLE, CORPUS, WORK, SCREENSHOTS } = process.env;
const CORPUS_FLOOR = CORPUS ? path.join(CORPUS, "openindoor6/plan.dxf") : "";
const missing = (await missingBrowser()) ?? (!FLOORXPORT ? "FLOORXPORT is not set" : null);

let browser;
before(async () => {
  if (missing) return;
  fs.rmSync(WORK, { recursive: true, force: true });
  fs.mkdirSync(WORK, { recursive: true });
  browser = await launchChromium();
});
after(async () => browser?.close());

async function openPage(studio) {
  const page = await browser.newPage({ viewport: { width: 1440, height: 900 } });
  page.on("pageerror", (error) => assert.fail(`page error: ${error.message}`));
  await page.goto(studio.url);
  await page.waitForFunction(() => document.body.dataset.firstPicture !== undefined, null, { timeout: 120000 });
  return page;
}

async function screenshot(page, name) {
  if (!SCREENSHOTS) return;
  fs.mkdirSync(SCREENSHOTS, { recursive: true });
  await page.screenshot({ path: path.join(SCREENSHOTS, name) });
}

function copyDrawing(source, name) {
  const target = path.join(WORK, name);
  fs.copyFileSync(source, target);
  return target;
}

test("refuses requests without the token, for a foreign Host and from a foreign Origin", { skip: missing ?? false }, async () => {
  const drawing = copyDrawing(SAMPLE, "guard.dxf");
  const studio = await startStudio(FLOORXPORT, drawing, path.join(WORK, "guard.reg"));
  try {
    const own = `127.0.0.1:${studio.port}`;
    const token = `token=${studio.token}`;
    const cases = [
      // One of each refusal (their cases are in tests/studio), and a pass.
      [`/api/state`, { Host: own }, 403, "refused: wrong token"],
      [`/?${token}`, { Host: `evil.example:${studio.port}` }, 403, "refused: foreign Host"],
      [`/api/state?${token}`, { Host: own, Origin: "null" }, 403, "refused: foreign Origin"],
      [`/api/state?${token}`, { Host: `localhost:${studio.port}`, Origin: `http://localhost:${studio.port}` }, 200, '"drawing"'],
    ];
    for (const [url, headers, status, text] of cases) {
      const response = await rawGet(studio.port, url, headers);
      assert.equal(response.status, status, `${url} ${JSON.stringify(headers)}`);
      assert.ok(response.body.includes(text), `${url}: ${response.body.slice(0, 80)}`);
    }
    // A page opened with a wrong token shows the refusal and nothing else.
    const page = await browser.newPage();
    const response = await page.goto(`http://localhost:${studio.port}/?token=wrong`);
    assert.equal(response.status(), 403);
    assert.match(await page.textContent("body"), /refused: wrong token/);
    // A page of another origin cannot drive the studio even with the token.
    const status = await page.evaluate(async (url) => {
      try {
        return (await fetch(url, { method: "POST", body: '{"line":"_UNITS"}' })).status;
      } catch {
        return "blocked";
      }
    }, `http://127.0.0.1:${studio.port}/api/run?${token}`);
    assert.ok(status === "blocked" || status === 403, `foreign page got ${status}`);
    const state = JSON.parse((await rawGet(studio.port, `/api/state?${token}`, { Host: own })).body);
    assert.equal(state.last, null, "no command ran");
    await page.close();
  } finally {
    assert.equal(await studio.stop(), 0);
  }
});

test("a corpus floor: identify, walk the problems, edit a room, export, save as", {
  skip: missing ?? (!fs.existsSync(CORPUS_FLOOR) ? `no corpus floor at ${CORPUS_FLOOR}` : false),
}, async () => {
  const drawing = copyDrawing(CORPUS_FLOOR, "plan.dxf");
  const original = fs.readFileSync(drawing);
  const studio = await startStudio(FLOORXPORT, drawing, path.join(WORK, "corpus.reg"));
  try {
    const page = await openPage(studio);
    assert.ok((await page.locator("#drawing text").count()) > 100, "the floor's texts are drawn");
    assert.equal(await page.locator(".menu-title").first().getAttribute("data-label"), "View");

    // Identify the rooms from the dialog.
    await pickMenu(page, "PlanVault", "Analyze rooms");
    await question(page, { title: "Room Identification" });
    await setField(page, "Floor &Area Layer", "ABY_Contour_Facade");
    await setField(page, "Room Contours &Layer", "ABY_Zone_ZIND");
    await setField(page, "Identification", "Text Entities");
    await setField(page, "&Name Attribute", "Texte_Pièces");
    await setField(page, "&Type Attribute", "Texte_Pièces");
    await setField(page, "&Description", "Texte_Pièces");
    await press(page, "OK");
    await idle(page);
    // 46 names outside any room, 2 empty contours, 3 rooms with two names.
    await page.waitForFunction(() => document.body.dataset.problems === "51");
    assert.equal(await page.locator("#marks rect").count(), 51);
    assert.equal(await page.locator(".problem-kind.areaNotFound .count").textContent(), "46");

    // Walk the problems of the first kind that has some.
    const kind = page.locator(".problem-kind", { has: page.locator(".next:not([disabled])") }).first();
    const viewBefore = await page.locator("#floor svg").first().getAttribute("viewBox");
    await kind.locator(".next").click();
    await idle(page);
    await page.waitForFunction(() => document.querySelector("#marks rect.visited") !== null);
    const first = await page.locator("#marks rect.visited").getAttribute("data-handle");
    await kind.locator("summary").click();  // opens the kind's list
    await screenshot(page, "studio-corpus-floor.png");
    assert.notEqual(await page.locator("#floor svg").first().getAttribute("viewBox"), viewBefore);
    await kind.locator(".next").click();
    await idle(page);
    await page.waitForFunction((handle) => {
      const visited = document.querySelector("#marks rect.visited");
      return visited !== null && visited.dataset.handle !== handle;
    }, first);

    // Edit the first room's properties from the room list.
    await pickMenu(page, "PlanVault", "Room List");
    await question(page, { title: "Room List" });
    await page.locator("#question table.rows tr[data-row='1']").click();
    await page.waitForSelector("#question table.rows tr.selected[data-row='1']");
    await press(page, "Properties");
    await question(page, { title: "Room Properties" });
    await setField(page, "&Name", "Studio test room");
    await press(page, "OK");
    await question(page, { title: "Room List" });
    await page.locator("#question table.rows td", { hasText: "Studio test room" }).first().waitFor();
    await press(page, "OK");
    await idle(page);
    assert.equal(fs.readFileSync(drawing).compare(original), 0, "the drawing's file is unchanged before saving");
    await page.waitForSelector("body.modified");

    // Export through the file dialog.
    const exported = path.join(WORK, "plan-export.svg");
    await pickMenu(page, "PlanVault", "Export");
    await question(page, { title: "Export to File" });
    await setField(page, "File name", exported);
    await setField(page, "Save as type*", "4");
    await press(page, "Save");
    await idle(page);
    assert.ok(fs.statSync(exported).size > 10000, "the SVG export was written");

    // A command that fails says so and leaves the drawing as it was.
    await page.fill(".command-line input", "NOSUCHCOMMAND");
    await page.press(".command-line input", "Enter");
    await page.waitForSelector("#status.error");
    assert.match(await page.textContent("#status"), /unknown command "NOSUCHCOMMAND"/);

    // Save As writes the edited drawing; the original file stays as it was.
    const saved = path.join(WORK, "plan-saved.dxf");
    await page.click("#save-as-open");
    await page.fill("#save-as-path", saved);
    await page.press("#save-as-path", "Enter");
    await page.waitForFunction(() => !document.body.classList.contains("modified"));
    assert.ok(fs.readFileSync(saved, "latin1").includes("Studio test room"));
    assert.equal(fs.readFileSync(drawing).compare(original), 0);
    await page.close();
  } finally {
    assert.equal(await studio.stop(), 0);
  }
});

test("sends a floor to the development server through the sync dialog", {
  skip: missing ?? (!DEVSERVER || !fs.existsSync(DEVSERVER) ? "DEVSERVER is not built" : false),
}, async () => {
  const server = await startDevServer(DEVSERVER, path.join(WORK, "dev.db"), SAMPLE);
  const drawing = copyDrawing(SAMPLE, "send.dxf");
  const studio = await startStudio(FLOORXPORT, drawing, path.join(WORK, "send.reg"));
  try {
    const page = await openPage(studio);
    // The floor outline comes from the analysis, typed on the command line.
    await page.fill(".command-line input", '_vantoryconvert "FloorArea" "RoomContours" T "RoomNames" "RoomTypes" "RoomDescriptions"');
    await page.press(".command-line input", "Enter");
    await page.waitForFunction(() => Number(document.body.dataset.problems) >= 0 && /done$/.test(document.querySelector("#status").textContent));
    await pickMenu(page, "PlanVault", "Send to Vantory");
    await question(page, { title: "Choose your Vantory site" });
    await setField(page, "&Site address", server.url);
    await press(page, "OK");
    const sync = await question(page, { title: "Vantory" });
    const tree = await sync.locator(".caption").first().textContent();
    const floorId = tree.match(/\b(?:id|#)\s*:?\s*(\d+)/i)?.[1] ?? tree.match(/(\d+)/)[1];
    await setField(page, "&Floor", floorId);
    await page.locator("#question .buttons button", { hasText: /^Send$/ }).waitFor();
    await setField(page, "Drawing Notes", "Sent from the studio");
    await screenshot(page, "studio-sync-dialog.png");
    await press(page, "Send");
    await idle(page);
    assert.match(await page.textContent(".transcript"), /PlanVault: File has been successfully sent to Vantory\./);
    await page.close();
    // The server has the drawing, with the notes typed in the dialog.
    const listing = spawnSync(FLOORXPORT, ["--settings", path.join(WORK, "send.reg"), "floors", "--server", server.url, "--json"], {
      encoding: "utf8",
    });
    assert.equal(listing.status, 0, listing.stderr);
    const floor = JSON.parse(listing.stdout).flatMap((building) => building.floors).find((f) => String(f.id) === floorId);
    assert.equal(floor.notes, "Sent from the studio");
    assert.equal(floor.drawingAvailable, true);
  } finally {
    assert.equal(await studio.stop(), 0);
    await server.stop();
  }
});
