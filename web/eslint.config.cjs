"use strict";
const js = require("@eslint/js");
const globals = require("globals");

const rules = {
  ...js.configs.recommended.rules,
  "eqeqeq": "error",
  "no-implicit-globals": "error",
  "no-shadow": "error",
  "no-unused-expressions": "error",
  "no-var": "error",
  "prefer-const": "error",
};

module.exports = [
  {
    files: ["web/*.js"],
    languageOptions: { sourceType: "script", globals: { ...globals.browser, DOMPurify: "readonly", hljs: "readonly", MathJax: "readonly",
      marked: "readonly", morphdom: "readonly", tessaly: "readonly" } },
    rules,
  },
  { files: ["web/*.cjs", "tests/web/*.{js,cjs}"], languageOptions: { sourceType: "commonjs", globals: globals.node }, rules },
];
