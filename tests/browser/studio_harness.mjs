// What the studio's browser tests share: starting floorxport studio and
// vantory-devserver on loopback ports, raw HTTP requests with headers of the
// test's choosing, and driving the page's menu and question form.
import { spawn } from "node:child_process";
import http from "node:http";
import { once } from "node:events";

// Resolves with the first line of `child`'s standard output that matches
// `pattern`; rejects when the child exits first or after `ms`.
function firstMatch(child, pattern, ms) {
  return new Promise((resolve, reject) => {
    let text = "";
    const timer = setTimeout(() => reject(new Error(`no line matching ${pattern} within ${ms} ms:\n${text}`)), ms);
    child.stdout.on("data", (chunk) => {
      text += chunk;
      const match = text.match(pattern);
      if (match) {
        clearTimeout(timer);
        resolve(match);
      }
    });
    child.once("exit", (code) => {
      clearTimeout(timer);
      reject(new Error(`exited with ${code} before printing ${pattern}:\n${text}`));
    });
  });
}

async function stopChild(child) {
  if (child.exitCode !== null || child.signalCode !== null) return child.exitCode;
  const exited = once(child, "exit");
  child.kill("SIGTERM");
  const [code] = await exited;
  return code;
}

export async function startStudio(floorxport, drawing, settings) {
  const child = spawn(floorxport, ["--settings", settings, "studio", drawing, "--port", "0"], {
    stdio: ["ignore", "pipe", "inherit"],
  });
  const match = await firstMatch(child, /floorxport studio: (http:\/\/127\.0\.0\.1:(\d+)\/\?token=([0-9a-f]+))/, 120000);
  return { child, url: match[1], port: Number(match[2]), token: match[3], stop: () => stopChild(child) };
}

export async function startDevServer(binary, database, sample) {
  const child = spawn(binary, ["--db", database, "--seed-demo", "--sample-drawing", sample, "--port", "0", "--quiet"], {
    stdio: ["ignore", "pipe", "inherit"],
  });
  const match = await firstMatch(child, /vantory-devserver: listening on (\S+)/, 30000);
  return { child, url: match[1], stop: () => stopChild(child) };
}

// A GET with exactly these headers (Host included), as a foreign page or
// program would send it.
export function rawGet(port, path, headers) {
  return new Promise((resolve, reject) => {
    const request = http.request({ host: "127.0.0.1", port, path, headers, setHost: false }, (response) => {
      let body = "";
      response.on("data", (chunk) => (body += chunk));
      response.on("end", () => resolve({ status: response.statusCode, body }));
    });
    request.on("error", reject);
    request.end();
  });
}

// Picks a menu item by the labels shown ("PlanVault", "Analyze rooms").
export async function pickMenu(page, menu, item) {
  await page.locator(`.menu-title[data-label="${menu}"]`).click();
  await page.locator(`.menu-items.open .menu-item[data-label="${item}"]`).click();
}

// The pending question's form once one with `title` (a dialog's title or
// a message box's caption) or of `kind` shows.
export async function question(page, { title, kind } = {}) {
  let selector = "#question form.question";
  if (kind) selector += `[data-kind="${kind}"]`;
  const form = page.locator(selector);
  if (title) await form.locator("h2", { hasText: title }).waitFor({ timeout: 60000 });
  else await form.waitFor({ timeout: 60000 });
  return form;
}

// Sets a dialog field by its label as the model gives it ("Floor &Area Layer";
// "Save as type*" for a label that starts so).
export async function setField(page, label, value) {
  const match = label.endsWith("*") ? `^="${label.slice(0, -1)}"` : `="${label}"`;
  const control = page.locator(`#question [data-label${match}]`);
  const tag = await control.evaluate((node) => node.tagName.toLowerCase() + (node.type ? `:${node.type}` : ""));
  const before = await control.getAttribute("data-model-value");
  if (tag.startsWith("select")) await control.selectOption(value.split(","));
  else if (tag === "input:checkbox") await control.setChecked(value === "Yes");
  else {
    await control.fill(value);
    await control.press("Tab");
  }
  // The form is built again from the model: wait until it holds the value
  // (as the model spells it: a floor chosen by its id shows its name).
  if (tag !== "input:password" && before !== value) {
    await page.waitForFunction(
      ([selector, old]) => {
        const now = document.querySelector(selector);
        return now !== null && now.dataset.modelValue !== old;
      },
      [`#question [data-label${match}]`, before],
    );
  }
}

// Presses a dialog's button by the label shown ("OK", "Properties").
export async function press(page, label) {
  await page.locator("#question .buttons button", { hasText: new RegExp(`^${label}$`) }).click();
}

// Waits until no command runs and no question is pending.
export async function idle(page) {
  await page.waitForFunction(() => !document.body.classList.contains("busy") && document.querySelector("#question").hidden, null, {
    timeout: 120000,
  });
}
