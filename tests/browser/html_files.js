// The files of the page's script, in the order in which the build joins them.

import { readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";

const folder = new URL("../../vorm/evaluation/report/html/", import.meta.url);

export const scriptFiles = readFileSync(new URL("script_files.txt", folder), "utf8")
  .trim()
  .split("\n")
  .map((name) => ({ name, path: fileURLToPath(new URL(name, folder)) }));
