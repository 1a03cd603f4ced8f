import js from "@eslint/js";
import { readFileSync } from "node:fs";
import { scriptFiles } from "./html_files.js";

// The page's files are joined to one script: each sees what the others declare, and no name twice.
const declared = new Map(
  scriptFiles.map(({ name, path }) => {
    const text = readFileSync(path, "utf8");
    return [name, [...text.matchAll(/^(?:const|class|function) (\w+)/gm)].map((match) => match[1])];
  }),
);

const browserNames = [
  "addEventListener",
  "clearTimeout",
  "console",
  "CustomEvent",
  "document",
  "getComputedStyle",
  "history",
  "innerWidth",
  "IntersectionObserver",
  "location",
  "performance",
  "requestAnimationFrame",
  "ResizeObserver",
  "scrollTo",
  "setTimeout",
];

const asGlobals = (names) => Object.fromEntries(names.map((name) => [name, "readonly"]));

const rules = {
  curly: "error",
  eqeqeq: "error",
  "no-eval": "error",
  "no-implied-eval": "error",
  "no-param-reassign": "error",
  "no-shadow": ["error", { hoist: "functions" }],
  "no-useless-concat": "error",
  "no-var": "error",
  "object-shorthand": "error",
  "prefer-const": "error",
  "prefer-template": "error",
  complexity: ["error", 10],
  "max-lines-per-function": ["error", 60],
};

const pageFile = ({ name }) => {
  const others = scriptFiles.filter((other) => other.name !== name);
  const used = others.flatMap((other) => declared.get(other.name));
  return {
    files: [`vorm/evaluation/report/html/${name}`],
    languageOptions: {
      ecmaVersion: 2022,
      sourceType: "script",
      parserOptions: { ecmaFeatures: { impliedStrict: true } },
      globals: asGlobals([...browserNames, ...used]),
    },
    rules: { "no-redeclare": "error", "no-unused-vars": ["error", { vars: "local" }] },
  };
};

export default [
  { linterOptions: { reportUnusedDisableDirectives: "error" } },
  js.configs.recommended,
  { rules },
  ...scriptFiles.map(pageFile),
  {
    files: ["tests/browser/*.js"],
    languageOptions: { ecmaVersion: 2022, globals: asGlobals([...browserNames, "process", "URL"]) },
  },
];
