// The studio's JSON API (studio_server.h). Every request carries the token
// from the page's own address; the server refuses requests without it.

const token = new URLSearchParams(location.search).get("token") ?? "";

export interface DialogField {
  label: string;
  kind: "text" | "integer" | "choice" | "check" | "list" | "password";
  value: string;
  set: boolean;
  items: string[];
  shown_only: boolean;
}

export interface Pending {
  id: number;
  kind: "dialog" | "message" | "prompt";
  error: string;
  error_field: number;
  title?: string;
  fields?: DialogField[];
  buttons?: string[];
  text?: string;
  caption?: string;
  icon?: string;
}

export interface WorldView {
  x: number;
  y: number;
  width: number;
  height: number;
}

export interface State {
  version: number;
  drawing: { name: string; path: string; modified: boolean; revision: number } | null;
  busy: string | null;
  progress: { label: string; percent: number } | null;
  pending: Pending | null;
  view: WorldView | null;
  last: { run: number; line: string; ok: boolean; problems: string[] } | null;
  closing?: boolean;
  transcript: { from: number; text: string };
}

export interface MenuEntry {
  kind?: "item" | "separator" | "submenu";
  label: string;
  path?: string;
  items?: MenuEntry[];
}

export interface Problem {
  handle: string;
  layer: string;
  name: string;
  box?: [number, number, number, number];
}

export interface ProblemKind {
  kind: string;
  label: string;
  command: string;
  visited: string;
  problems: Problem[];
}

export interface ProblemList {
  analysed: boolean;
  kinds: ProblemKind[];
}

export class ApiError extends Error {
  constructor(readonly status: number, message: string) {
    super(message);
  }
}

async function request(method: string, path: string, body?: unknown): Promise<Response> {
  const response = await fetch(path, {
    method,
    headers: { "X-Studio-Token": token, ...(body !== undefined ? { "Content-Type": "application/json" } : {}) },
    body: body !== undefined ? JSON.stringify(body) : undefined,
    cache: "no-store",
  });
  if (!response.ok && response.status !== 202) {
    let message = `${response.status} ${response.statusText}`;
    try {
      const data = await response.clone().json();
      if (typeof data.error === "string") message = data.error;
    } catch {
      message = (await response.text()).trim() || message;
    }
    throw new ApiError(response.status, message);
  }
  return response;
}

export async function getJson<T>(path: string): Promise<T> {
  return (await request("GET", path)).json() as Promise<T>;
}

export async function post(path: string, body: unknown): Promise<void> {
  await request("POST", path, body);
}

export interface FloorSvg {
  text: string;
  frame: [number, number, number, number];  // world min x, min y, max x, max y
  revision: number;
}

export async function getFloor(): Promise<FloorSvg> {
  const response = await request("GET", "/api/floor.svg");
  const frame = (response.headers.get("X-Floor-Frame") ?? "0 0 0 0").split(" ").map(Number);
  return {
    text: await response.text(),
    frame: [frame[0], frame[1], frame[2], frame[3]],
    revision: Number(response.headers.get("X-Floor-Revision") ?? 0),
  };
}

// Long polling: returns once the state's version differs from `version`.
export function getState(since: number, version?: number): Promise<State> {
  const wait = version !== undefined ? `&version=${version}` : "";
  return getJson<State>(`/api/state?since=${since}${wait}`);
}
