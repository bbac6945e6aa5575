// The command line: the transcript as the console prints it, and a line to
// type commands into, as in the editor.

export class TranscriptPanel {
  private length = 0;
  private readonly text: HTMLPreElement;

  constructor(host: HTMLElement, run: (line: string) => void) {
    this.text = document.createElement("pre");
    this.text.className = "transcript";
    const form = document.createElement("form");
    form.className = "command-line";
    const label = document.createElement("label");
    label.textContent = "Command:";
    const input = document.createElement("input");
    input.type = "text";
    input.name = "command";
    input.autocomplete = "off";
    label.append(input);
    form.append(label);
    form.addEventListener("submit", (event) => {
      event.preventDefault();
      if (input.value.trim() !== "") run(input.value);
      input.value = "";
    });
    host.append(this.text, form);
  }

  // The transcript's byte offset the page has (the server counts UTF-8 bytes).
  get offset(): number {
    return this.length;
  }

  append(from: number, text: string): void {
    if (text === "" && from === this.length) return;
    const atBottom = this.text.scrollTop + this.text.clientHeight >= this.text.scrollHeight - 4;
    if (from < this.length) {
      // The server restarted the text at a character boundary: take it again.
      const bytes = new TextEncoder().encode(this.text.textContent ?? "");
      this.text.textContent = new TextDecoder().decode(bytes.slice(0, from));
    }
    this.text.append(text);
    this.length = from + new TextEncoder().encode(text).length;
    if (atBottom) this.text.scrollTop = this.text.scrollHeight;
  }
}
