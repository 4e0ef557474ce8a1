#!/usr/bin/env node
// What is under the caret: the member, its kind, and what a code template expands to there. Editors ask this
// when the user rests on a line. It talks to `lintara serve` and needs nothing but Node's standard library.
//
// Usage: node under_caret.mjs PATH COMPONENT LINE [COLUMN] [--project NAME] [--template TEXT] [--json]
//                             [--lintara PROGRAM]
// Exit status: 0 done, 2 wrong usage, 3 something failed.
import { spawn } from "node:child_process";
import { createInterface } from "node:readline";
import process from "node:process";
import { parseArgs } from "node:util";

const usage =
  "usage: under_caret.mjs PATH COMPONENT LINE [COLUMN] [--project NAME] [--template TEXT] [--json]" +
  " [--lintara PROGRAM]";

class UsageError extends Error {}

// One `lintara serve` process. Requests may be sent ahead; each gets the answer with its id.
class Lintara {
  #waiting = new Map();
  #lastId = 0;
  #process;
  #ended;
  #failure = null;

  constructor(program, options = []) {
    this.#process = spawn(program, ["serve", ...options], { stdio: ["pipe", "pipe", "inherit"] });
    this.#ended = new Promise((resolve) => {
      this.#process.on("error", (error) => {
        this.#fail(new Error(`${program} cannot be started: ${error.message}`));
        resolve();
      });
      this.#process.on("close", (status, signal) => {
        this.#fail(new Error(`lintara ended without answering (${signal ?? `status ${status}`})`));
        resolve();
      });
    });
    // That nobody reads any more is told by the process's end.
    this.#process.stdin.on("error", () => {});
    createInterface({ input: this.#process.stdout, crlfDelay: Infinity }).on("line", (line) => this.#take(line));
  }

  call(method, params = {}) {
    return new Promise((resolve, reject) => {
      if (this.#failure) {
        reject(this.#failure);
        return;
      }
      const id = ++this.#lastId;
      this.#waiting.set(id, { resolve, reject });
      this.#process.stdin.write(JSON.stringify({ jsonrpc: "2.0", id, method, params }) + "\n");
    });
  }

  // The end of its input is what ends it.
  async end() {
    this.#process.stdin.end();
    await this.#ended;
  }

  #take(line) {
    let answer;
    try {
      answer = JSON.parse(line);
    } catch (error) {
      this.#fail(new Error(`an answer is no JSON: ${error.message}`));
      return;
    }
    const waiting = this.#waiting.get(answer.id);
    if (!waiting) {
      this.#fail(new Error(answer.error?.message ?? "an answer belongs to no request"));
      return;
    }
    this.#waiting.delete(answer.id);
    if (answer.error) {
      waiting.reject(new Error(`${answer.error.message} (${answer.error.code})`));
    } else {
      waiting.resolve(answer.result);
    }
  }

  // Nothing is answered any more.
  #fail(error) {
    this.#failure ??= error;
    for (const { reject } of this.#waiting.values()) {
      reject(this.#failure);
    }
    this.#waiting.clear();
  }
}

// The text for a terminal, which would take control characters in names for commands.
function printable(text) {
  const escaped = (c) => (c === "\t" || c === "\n" ? c : `\\x${c.codePointAt(0).toString(16).padStart(2, "0")}`);
  return text.replace(/[\p{Cc}\p{Cf}]/gu, escaped);
}

function wholeNumber(text, name) {
  if (!/^[1-9][0-9]{0,8}$/.test(text)) {
    throw new UsageError(`${name} has to be a whole number from 1 on, not "${text}"`);
  }
  return Number(text);
}

function readCommandLine() {
  let parsed;
  try {
    parsed = parseArgs({
      allowPositionals: true,
      options: {
        project: { type: "string" },
        template: { type: "string", default: "{ProjectName}.{ComponentName}.{MemberName}" },
        json: { type: "boolean", default: false },
        lintara: { type: "string", default: process.env.LINTARA ?? "lintara" },
      },
    });
  } catch (error) {
    throw new UsageError(error.message);
  }
  const [path, component, line, column = "1", ...more] = parsed.positionals;
  if (line === undefined || more.length > 0) {
    throw new UsageError(usage);
  }
  return { ...parsed.values, path, component, line: wholeNumber(line, "LINE"), column: wholeNumber(column, "COLUMN") };
}

// The one project that has such a component, or the one that was named.
function projectOf(projects, options) {
  const same = (a, b) => a.toLowerCase() === b.toLowerCase();
  const found = projects.filter(
    (project) =>
      (options.project === undefined || same(project.name, options.project)) &&
      project.components.some((component) => same(component.name, options.component)),
  );
  if (found.length !== 1) {
    const names = found.map((project) => project.name).join(", ");
    throw new Error(
      found.length === 0
        ? `no project that is open has a component ${options.component}`
        : `${options.component} is in ${names}: name one with --project`,
    );
  }
  return found[0].name;
}

async function ask(lintara, options) {
  const opened = await lintara.call("workspace.open", { path: options.path });
  const project = projectOf(opened.projects, options);
  const caret = { startLine: options.line, startColumn: options.column };
  await lintara.call("ide.activate", {
    project,
    component: options.component,
    ...caret,
    endLine: options.line,
    endColumn: options.column,
  });
  const [line, member, expansion] = await Promise.all([
    lintara.call("lintara.GetLineNumber"),
    lintara.call("lintara.GetMemberName"),
    lintara.call("lintara.ParsePseudoCode", { APseudoCodeString: options.template }),
  ]);
  // GetMemberType would read the first line of the member's block, which may be a comment; this reads its header.
  const kind =
    member.value === ""
      ? { value: "" }
      : await lintara.call("lintara.GetMemberTypeEx", {
          sComponentName: options.component,
          sMemberName: member.value,
        });
  return {
    project,
    component: options.component,
    line: line.value,
    member: member.value,
    kind: kind.value,
    expansion: expansion.value,
  };
}

function print(answer, asJson) {
  if (asJson) {
    console.log(JSON.stringify(answer));
    return;
  }
  console.log(answer.member === "" ? "the declarations" : `${answer.kind} ${answer.member}`);
  const expansion = answer.expansion.replaceAll("\r\n", "\n");
  console.log(process.stdout.isTTY ? printable(expansion) : expansion);
}

async function main() {
  const options = readCommandLine();
  const lintara = new Lintara(options.lintara);
  try {
    print(await ask(lintara, options), options.json);
  } finally {
    await lintara.end();
  }
}

try {
  await main();
} catch (error) {
  console.error(`under_caret: ${printable(error.message)}`);
  process.exitCode = error instanceof UsageError ? 2 : 3;
}
