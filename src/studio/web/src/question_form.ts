// The pending question as a modal form: a dialog model's fields by kind
// (text with its suggestions, integer, choice, check, list, password;
// shown-only fields as captions) and its buttons; a message box with its
// buttons; a command's prompt with a line to type. Each change goes to the
// model at once, and the form is built again from the model's answer, so a
// field that depends on another shows what the model made of it.

import type { DialogField, Pending } from "./api";
import { plainLabel } from "./menu_bar";

export interface Answer {
  id: number;
  action: "set" | "press" | "cancel" | "button" | "line";
  index?: number;
  value?: string;
}

let uniqueId = 0;

export class QuestionForm {
  private shownKey = "";

  constructor(private readonly host: HTMLElement, private readonly answer: (answer: Answer) => void) {}

  show(pending: Pending | null): void {
    // The same question with the same content: leave the user's focus alone.
    const key = pending ? JSON.stringify(pending) : "";
    if (key === this.shownKey) return;
    this.shownKey = key;
    if (!pending) {
      this.host.replaceChildren();
      this.host.hidden = true;
      return;
    }
    // The control being edited keeps its focus and what the user has typed
    // and not yet sent.
    const active = document.activeElement instanceof HTMLElement ? document.activeElement : null;
    const focused = active?.dataset.focusKey;
    const typed = active instanceof HTMLInputElement && active.value !== active.dataset.modelValue ? active.value : null;
    const box = document.createElement("form");
    box.className = `question ${pending.kind}`;
    box.dataset.kind = pending.kind;
    box.addEventListener("submit", (event) => event.preventDefault());
    if (pending.kind === "dialog") this.buildDialog(box, pending);
    else if (pending.kind === "message") this.buildMessage(box, pending);
    else this.buildPrompt(box, pending);
    this.host.replaceChildren(box);
    this.host.hidden = false;
    const again = focused ? box.querySelector<HTMLElement>(`[data-focus-key="${focused}"]`) : null;
    if (typed !== null && again instanceof HTMLInputElement) again.value = typed;
    (again ?? box.querySelector<HTMLElement>("input, select, button"))?.focus();
  }

  private buildDialog(box: HTMLFormElement, pending: Pending): void {
    const title = document.createElement("h2");
    title.textContent = pending.title ?? "";
    box.append(title);
    const grid = document.createElement("div");
    grid.className = "fields";
    (pending.fields ?? []).forEach((field, index) => {
      grid.append(...this.fieldRow(pending, field, index));
    });
    box.append(grid);
    if (pending.error) {
      const error = document.createElement("p");
      error.className = "error";
      error.textContent = pending.error;
      box.append(error);
    }
    const buttons = document.createElement("div");
    buttons.className = "buttons";
    (pending.buttons ?? []).forEach((label, index) => {
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = plainLabel(label);
      button.dataset.focusKey = `button-${index}`;
      if (index === 0) button.classList.add("default");
      button.addEventListener("click", () => this.answer({ id: pending.id, action: "press", index }));
      buttons.append(button);
    });
    // Closing the window cancels a dialog; a model without a Cancel button
    // gets one for it.
    if (!(pending.buttons ?? []).some((label) => plainLabel(label) === "Cancel")) {
      const cancel = document.createElement("button");
      cancel.type = "button";
      cancel.className = "cancel";
      cancel.textContent = "Cancel";
      cancel.addEventListener("click", () => this.answer({ id: pending.id, action: "cancel" }));
      buttons.append(cancel);
    }
    box.addEventListener("keydown", (event) => {
      if (event.key === "Escape") this.answer({ id: pending.id, action: "cancel" });
    });
    box.append(buttons);
  }

  private fieldRow(pending: Pending, field: DialogField, index: number): HTMLElement[] {
    // A label of several lines carries text for the field (a hint, or a list
    // of rows with cells joined by " | "); its last line names the field.
    const lines = field.label.split("\n");
    const name = lines.pop() ?? "";
    const label = document.createElement("label");
    label.textContent = plainLabel(name);
    const before = lines.length > 0 ? [this.captionBlock(lines, pending, index)] : [];
    const id = `field-${++uniqueId}`;
    label.htmlFor = id;
    const set = (value: string) => this.answer({ id: pending.id, action: "set", index, value });
    let control: HTMLElement;
    if (field.shown_only) {
      const caption = document.createElement("output");
      caption.textContent = field.value;
      caption.className = "caption";
      control = caption;
    } else if (field.kind === "choice") {
      const select = document.createElement("select");
      for (const item of field.items) select.append(new Option(item, item, false, item === field.value));
      select.addEventListener("change", () => set(select.value));
      control = select;
    } else if (field.kind === "check") {
      const check = document.createElement("input");
      check.type = "checkbox";
      check.checked = field.value === "Yes";
      check.addEventListener("change", () => set(check.checked ? "Yes" : "No"));
      control = check;
    } else if (field.kind === "list") {
      const select = document.createElement("select");
      select.multiple = true;
      select.size = Math.min(8, Math.max(3, field.items.length));
      const chosen = new Set(field.value ? field.value.split(",") : []);
      for (const item of field.items) select.append(new Option(item, item, false, chosen.has(item)));
      select.addEventListener("change", () =>
        set(Array.from(select.selectedOptions, (option) => option.value).join(",")),
      );
      control = select;
    } else {
      const input = document.createElement("input");
      input.type = field.kind === "password" ? "password" : field.kind === "integer" ? "number" : "text";
      input.value = field.value;
      if (field.kind === "password" && field.set) input.placeholder = "(set)";
      if (field.kind === "text" && field.items.length > 0) {
        const list = document.createElement("datalist");
        list.id = `${id}-items`;
        for (const item of field.items) list.append(new Option(item, item));
        input.setAttribute("list", list.id);
        label.append(list);
      }
      // Sent when the user leaves the field or presses Enter, as one value.
      input.addEventListener("change", () => {
        set(input.value);
        if (field.kind === "password") input.value = "";
      });
      control = input;
    }
    control.id = id;
    control.dataset.focusKey = `field-${index}`;
    control.dataset.label = name;
    control.dataset.modelValue = field.kind === "password" ? "" : field.value;
    if (pending.error_field === index) control.classList.add("refused");
    return [...before, label, control];
  }

  // Lines of " | " cells become a table whose rows pick themselves by
  // number (the first line holds the column captions); other lines stay text.
  private captionBlock(lines: string[], pending: Pending, index: number): HTMLElement {
    const block = document.createElement("div");
    block.className = "field-text";
    const rows = lines.filter((line) => line.includes(" | "));
    if (rows.length >= 2) {
      const table = document.createElement("table");
      table.className = "rows";
      rows.forEach((line, row) => {
        const tr = table.insertRow();
        for (const cell of line.split(" | ")) {
          const td = document.createElement(row === 0 ? "th" : "td");
          td.textContent = cell;
          tr.append(td);
        }
        if (row > 0) {
          tr.dataset.row = String(row);
          tr.addEventListener("click", () =>
            this.answer({ id: pending.id, action: "set", index, value: String(row) }),
          );
        }
      });
      const current = pending.fields?.[index]?.value;
      if (current) table.querySelector(`tr[data-row="${current}"]`)?.classList.add("selected");
      block.append(table);
    }
    const text = lines.filter((line) => rows.length < 2 || !line.includes(" | ")).join("\n").trim();
    if (text) {
      const p = document.createElement("p");
      p.textContent = text;
      block.append(p);
    }
    return block;
  }

  private buildMessage(box: HTMLFormElement, pending: Pending): void {
    const title = document.createElement("h2");
    title.textContent = pending.caption || "PlanVault";
    const text = document.createElement("p");
    text.className = `message-text icon-${pending.icon ?? "none"}`;
    text.textContent = pending.text ?? "";
    const buttons = document.createElement("div");
    buttons.className = "buttons";
    (pending.buttons ?? []).forEach((label, index) => {
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = label;
      if (index === 0) button.classList.add("default");
      button.addEventListener("click", () => this.answer({ id: pending.id, action: "button", value: label }));
      buttons.append(button);
    });
    box.append(title, text, buttons);
  }

  private buildPrompt(box: HTMLFormElement, pending: Pending): void {
    const title = document.createElement("h2");
    title.textContent = "Command line";
    const label = document.createElement("label");
    label.textContent = (pending.text ?? "").trim();
    const input = document.createElement("input");
    input.type = "text";
    input.className = "prompt-line";
    label.append(input);
    const ok = document.createElement("button");
    ok.type = "submit";
    ok.className = "default";
    ok.textContent = "OK";
    const cancel = document.createElement("button");
    cancel.type = "button";
    cancel.textContent = "Cancel";
    const buttons = document.createElement("div");
    buttons.className = "buttons";
    buttons.append(ok, cancel);
    box.addEventListener("submit", () => this.answer({ id: pending.id, action: "line", value: input.value }));
    cancel.addEventListener("click", () => this.answer({ id: pending.id, action: "cancel" }));
    box.append(title, label, buttons);
  }
}
