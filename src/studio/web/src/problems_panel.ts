// The analysis's problems: per kind its count, a "Next" button that runs
// the kind's zoom-to-next command (the view follows the editor's), and the
// list of its problems, each zooming the page's view when clicked.

import type { ProblemList } from "./api";

export class ProblemsPanel {
  constructor(
    private readonly host: HTMLElement,
    private readonly runCommand: (line: string) => void,
    private readonly zoomTo: (box: [number, number, number, number]) => void,
  ) {}

  show(list: ProblemList): void {
    if (!list.analysed && list.kinds.every((kind) => kind.problems.length === 0)) {
      const note = document.createElement("p");
      note.className = "note";
      note.textContent = "Analyze the rooms to see their problems.";
      this.host.replaceChildren(note);
      return;
    }
    this.host.replaceChildren(
      ...list.kinds.map((kind) => {
        const section = document.createElement("details");
        section.className = `problem-kind ${kind.kind}`;
        section.dataset.kind = kind.kind;
        const summary = document.createElement("summary");
        const swatch = document.createElement("span");
        swatch.className = "swatch";
        const label = document.createElement("span");
        label.className = "label";
        label.textContent = kind.label;
        const count = document.createElement("span");
        count.className = "count";
        count.textContent = String(kind.problems.length);
        const next = document.createElement("button");
        next.className = "next";
        next.textContent = "Next";
        next.title = kind.command;
        next.disabled = kind.problems.length === 0;
        next.addEventListener("click", (event) => {
          event.preventDefault();
          this.runCommand(kind.command);
        });
        summary.append(swatch, label, count, next);
        const items = document.createElement("ol");
        for (const problem of kind.problems) {
          const item = document.createElement("li");
          item.textContent = `${problem.name || "(no name)"} · ${problem.layer} · #${problem.handle}`;
          item.dataset.handle = problem.handle;
          if (problem.handle === kind.visited) item.className = "visited";
          if (problem.box) {
            const box = problem.box;
            item.addEventListener("click", () => this.zoomTo(box));
          }
          items.append(item);
        }
        section.append(summary, items);
        return section;
      }),
    );
  }
}
