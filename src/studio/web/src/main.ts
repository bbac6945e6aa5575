// The studio's page: wires the floor, the menu bar, the question form, the
// problems and the command line to the studio's API, and follows the
// state by long polling. Requests that change something go out one after
// another, in the order the user made them.

import { ApiError, getFloor, getJson, getState, post } from "./api";
import type { MenuEntry, ProblemList, State } from "./api";
import { FloorView } from "./floor_view";
import { MenuBar, plainLabel } from "./menu_bar";
import { ProblemsPanel } from "./problems_panel";
import { QuestionForm } from "./question_form";
import { TranscriptPanel } from "./transcript_panel";

function element<T extends HTMLElement>(selector: string): T {
  const found = document.querySelector<T>(selector);
  if (!found) throw new Error(`the page has no ${selector}`);
  return found;
}

const status = element<HTMLElement>("#status");
function say(text: string, error = false): void {
  status.textContent = text;
  status.classList.toggle("error", error);
}

let queue: Promise<void> = Promise.resolve();
function send(path: string, body: unknown): void {
  queue = queue
    .then(() => post(path, body))
    .catch((error: unknown) => say(error instanceof Error ? error.message : String(error), true));
}

const floor = new FloorView(element("#floor"));
const menu = new MenuBar(element("#menubar"), (path) => send("/api/menu", { path }));
const question = new QuestionForm(element("#question"), (answer) => send("/api/answer", answer));
const problems = new ProblemsPanel(
  element("#problems"),
  (line) => send("/api/run", { line }),
  (box) => floor.zoomToBox(box),
);
const transcript = new TranscriptPanel(element("#transcript"), (line) => send("/api/run", { line }));

let shownRevision = -1;
let loadingRevision = -1;
let viewKey: string | null = null;
let busy: string | null = null;
let lastRun = 0;
let problemsRevision = -1;

async function loadPicture(revision: number): Promise<void> {
  loadingRevision = revision;
  try {
    const picture = await getFloor();
    const started = performance.now();
    floor.show(picture);
    shownRevision = picture.revision;
    if (!document.body.dataset.firstPicture) {
      // Wait for the paint: the next frame after the one the picture is in.
      requestAnimationFrame(() =>
        requestAnimationFrame(() => {
          document.body.dataset.firstPicture = String(performance.now());
          document.body.dataset.pictureBuildMs = String(performance.now() - started);
        }),
      );
    }
  } catch (error) {
    say(error instanceof ApiError && error.status === 404 ? "The drawing has nothing to draw." : String(error), true);
    shownRevision = revision;
  } finally {
    loadingRevision = -1;
  }
}

async function loadProblems(): Promise<void> {
  const list = await getJson<ProblemList>("/api/problems");
  problems.show(list);
  floor.setMarks(list.kinds);
  document.body.dataset.problems = String(list.kinds.reduce((sum, kind) => sum + kind.problems.length, 0));
}

function apply(state: State): void {
  transcript.append(state.transcript.from, state.transcript.text);
  const drawing = state.drawing;
  if (drawing) {
    element("#drawing-name").textContent = drawing.name;
    element("#drawing-name").title = drawing.path;
    document.body.classList.toggle("modified", drawing.modified);
    document.title = `${drawing.modified ? "* " : ""}${drawing.name} — FloorXport studio`;
    if (drawing.revision !== shownRevision && loadingRevision < 0) {
      void loadPicture(drawing.revision);
    }
  }
  question.show(state.pending);
  const progress = element<HTMLProgressElement>("#progress");
  const progressBox = element("#progress-box");
  progressBox.hidden = state.progress === null;
  if (state.progress) {
    progress.value = state.progress.percent;
    element("#progress-label").textContent = `${state.progress.label} ${state.progress.percent}%`;
  }
  busy = state.busy;
  document.body.classList.toggle("busy", busy !== null);
  // A run that ended since the last state, however quick it was.
  const ended = state.last !== null && state.last.run !== lastRun;
  if (busy !== null) say(`Running ${plainLabel(busy)}…`);
  else if (ended && state.last) {
    const last = state.last;
    const line = plainLabel(last.line);
    say(last.ok ? `${line}: done` : `${line}: ${last.problems.join("; ")}`, !last.ok);
  }
  lastRun = state.last?.run ?? 0;
  // Follow the editor's view when a command or a dialog zoomed it.
  const key = state.view ? JSON.stringify(state.view) : "";
  if (viewKey !== null && key !== viewKey && state.view && floor.shown) floor.showWorldView(state.view);
  viewKey = key;
  const revision = drawing?.revision ?? 0;
  if (ended || revision !== problemsRevision) {
    problemsRevision = revision;
    void loadProblems().catch((error: unknown) => say(String(error), true));
  }
  if (state.closing) say("The studio has stopped.", true);
}

async function follow(): Promise<void> {
  let version: number | undefined;
  for (;;) {
    try {
      const state = await getState(transcript.offset, version);
      version = state.version;
      apply(state);
      if (state.closing) return;
    } catch (error) {
      say(`No answer from the studio: ${String(error)}`, true);
      await new Promise((resolve) => setTimeout(resolve, 1000));
    }
  }
}

function setUpSaving(): void {
  element("#save").addEventListener("click", () => {
    queue = queue
      .then(() => post("/api/save", {}))
      .then(() => say("Saved."))
      .catch((error: unknown) => say(String(error instanceof Error ? error.message : error), true));
  });
  const form = element<HTMLFormElement>("#save-as");
  const path = element<HTMLInputElement>("#save-as-path");
  element("#save-as-open").addEventListener("click", () => {
    form.hidden = !form.hidden;
    path.value = element("#drawing-name").title;
    if (!form.hidden) path.focus();
  });
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const target = path.value.trim();
    if (target === "") return;
    form.hidden = true;
    queue = queue
      .then(() => post("/api/saveas", { path: target }))
      .then(() => say(`Saved as ${target}.`))
      .catch((error: unknown) => say(String(error instanceof Error ? error.message : error), true));
  });
  element("#fit").addEventListener("click", () => floor.fit());
}

setUpSaving();
void getJson<MenuEntry[]>("/api/menu").then((bar) => menu.show(bar));
void follow();
