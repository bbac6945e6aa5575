// The editor's menu bar: each popup a button that opens its items; a pick
// sends the item's path, and the host runs its macro as typed.

import type { MenuEntry } from "./api";

// "Analy&ze rooms" -> "Analyze rooms" with the mnemonic letter underlined.
function labelNode(label: string): DocumentFragment {
  const fragment = document.createDocumentFragment();
  for (let i = 0; i < label.length; ++i) {
    if (label[i] === "&" && i + 1 < label.length) {
      ++i;
      if (label[i] === "&") {
        fragment.append("&");
      } else {
        const u = document.createElement("u");
        u.textContent = label[i];
        fragment.append(u);
      }
    } else {
      fragment.append(label[i]);
    }
  }
  return fragment;
}

export function plainLabel(label: string): string {
  return label.replace(/&(&?)/g, "$1");
}

export class MenuBar {
  private open: HTMLElement | null = null;

  constructor(private readonly host: HTMLElement, private readonly pick: (path: string) => void) {
    document.addEventListener("pointerdown", (event) => {
      if (this.open && !this.host.contains(event.target as Node)) this.close();
    });
  }

  show(bar: MenuEntry[]): void {
    this.host.replaceChildren(
      ...bar.map((popup) => {
        const wrapper = document.createElement("div");
        wrapper.className = "menu";
        const button = document.createElement("button");
        button.className = "menu-title";
        button.dataset.label = plainLabel(popup.label);
        button.append(labelNode(popup.label));
        const list = this.itemList(popup.items ?? []);
        button.addEventListener("click", () => (this.open === list ? this.close() : this.openList(list)));
        wrapper.append(button, list);
        return wrapper;
      }),
    );
  }

  private itemList(items: MenuEntry[]): HTMLElement {
    const list = document.createElement("div");
    list.className = "menu-items";
    for (const item of items) {
      if (item.kind === "separator") {
        list.append(document.createElement("hr"));
      } else if (item.kind === "submenu") {
        const sub = document.createElement("div");
        sub.className = "submenu";
        const title = document.createElement("div");
        title.className = "menu-item submenu-title";
        title.append(labelNode(item.label));
        sub.append(title, this.itemList(item.items ?? []));
        list.append(sub);
      } else {
        const entry = document.createElement("button");
        entry.className = "menu-item";
        entry.dataset.label = plainLabel(item.label);
        entry.append(labelNode(item.label));
        entry.addEventListener("click", () => {
          this.close();
          if (item.path) this.pick(item.path);
        });
        list.append(entry);
      }
    }
    return list;
  }

  private openList(list: HTMLElement): void {
    this.close();
    list.classList.add("open");
    this.open = list;
  }

  private close(): void {
    this.open?.classList.remove("open");
    this.open = null;
  }
}
