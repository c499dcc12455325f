"use strict";
const assert = require("node:assert/strict");
const fs = require("node:fs");
const path = require("node:path");
const test = require("node:test");
const { JSDOM } = require("jsdom");
const { options, own, packages } = require("./page.js");

const scripts = [
  path.join(packages, "marked/lib/marked.umd.js"),
  ...["formulas", "raw-html", "page-rules", "pictures"].map(name => path.join(own, `marked-${name}.js`)),
  path.join(packages, "morphdom/dist/morphdom-umd.min.js"),
  ...["marked-blocks.js", "preview-content.js"].map(name => path.join(own, name)),
].map(file => fs.readFileSync(file, "utf8"));
const revision = fs.readFileSync(path.join(own, "preview-revision.js"), "utf8");

// Stands for mathjax-start.js, MathJax and highlight.js.
const others = `{
  globalThis.MathJax = {};
  globalThis.hljs = {
    highlightElement(code) {
      code.classList.add("hljs");
      code.innerHTML = "<span>" + code.innerHTML + "</span>";
    },
  };
  const formulaSources = new WeakMap();
  const typesetFormulas = async formulas => formulas.filter(formula => !formulaSources.has(formula)).forEach(formula => {
    formulaSources.set(formula, formula.innerHTML);
    formula.innerHTML = "<mjx-container>" + formula.innerHTML.length + "</mjx-container>";
  });
  Object.assign(tessaly, { formulaSources, typesetFormulas });
}`;

/// The preview without an engine: what is loaded and drawn is left out.
class Page {
  constructor() {
    this.dom = new JSDOM("<div id='content'></div>", { runScripts: "outside-only", url: "https://a.org/page/1" });
    this.window = this.dom.window;
    this.window.HTMLImageElement.prototype.decode = async () => {};
    this.window.CSSStyleDeclaration.prototype[Symbol.iterator] = Array.prototype[Symbol.iterator];
    this.window.eval([...scripts, others, revision].join("\n"));
  }
  get root() {
    return this.window.document.getElementById("content");
  }
  async load(text) {
    this.text = text;
    this.root.innerHTML = this.window.marked.parse(text, options);
    this.root.querySelectorAll("pre code").forEach(code => this.window.hljs.highlightElement(code));
    this.window.tessaly.prepareContent(this.root);
    await this.window.tessaly.typesetFormulas([...this.root.querySelectorAll(".tessaly-formula")]);
  }
  async revise(text) {
    let start = 0;
    while (start < text.length && text[start] === this.text[start]) ++start;
    const most = Math.min(text.length, this.text.length) - start;
    let rest = 0;
    while (rest < most && text.at(-1 - rest) === this.text.at(-1 - rest)) ++rest;
    const isShown = await this.window.tessaly.revise({ start, removed: this.text.length - start - rest,
      text: text.slice(start, text.length - rest), length: text.length, stale: [] });
    this.text = text;
    return isShown;
  }
}

/// As in Numerical Recipes.
class Random {
  constructor(seed) {
    this.state = seed;
  }
  below(limit) {
    this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
    return Math.floor(this.state / 2 ** 32 * limit);
  }
  one(choices) {
    return choices[this.below(choices.length)];
  }
}

const pieces = [
  "word", "**b**", "\n", "\n\n", "- item\n", "1. x\n", "    code\n", "```\n", "# ", "> ", "$x_1$", "$$\ny\n$$\n", "`c`",
  "| a |\n| - |\n| b |\n", "<div>", "</div>", "<details open>\n\n", "\n\n</details>\n", "<b>", "</b>", "<a href='x'>", "<p>",
  "<!-- ", " -->", "<table>", "<textarea>", "<select>", "<svg>", "<pre>", "![](a.png)", "<img src='b.png' style='position:fixed'>",
  "<p style='z-index:1'>", "[x]", "[x]: /y\n", "[x]: /z\n", "---\n", "\\", "*", "_", "&lt;",
];
const lineAt = (text, place) => [text.lastIndexOf("\n", place - 1) + 1, (text.indexOf("\n", place) + 1 || text.length)];
const edited = (text, random) => {
  const place = random.below(text.length + 1);
  const [start, end] = lineAt(text, place);
  const other = lineAt(text, random.below(text.length + 1));
  return random.one([
    () => text.slice(0, place) + random.one(pieces) + text.slice(place),
    () => text.slice(0, start) + random.one(pieces) + text.slice(start),
    () => text.slice(0, place) + text.slice(place + 1 + random.below(30)),
    () => text.slice(0, start) + text.slice(end),
    () => text.slice(0, start) + text.slice(...other) + text.slice(start), // A line is copied
    () => other[0] < end ? text // or moved.
      : text.slice(0, start) + text.slice(end, other[1]) + text.slice(start, end) + text.slice(other[1]),
  ])();
};

/// Markdown that people wrote: what comes with the packages.
const writings = () => {
  const files = fs.readdirSync(packages, { recursive: true }).filter(name => /\.md$/i.test(name)).sort();
  const contents = files.map(name => fs.readFileSync(path.join(packages, name), "utf8"));
  return contents.map(text => text.replace(/\r\n?/g, "\n").slice(0, 2000));
};

test("after any edits the page is what it would be if it were loaded anew", async () => {
  const page = new Page();
  const anew = new Page();
  const texts = writings();
  assert.ok(texts.length >= 150, `${texts.length}`);
  let revised = 0;
  for (const [index, original] of texts.entries()) {
    const random = new Random(index + 1);
    let text = original;
    await page.load(text);
    for (let edit = 0; edit < 2; ++edit) {
      const before = text;
      for (let change = random.below(3); change >= 0; --change) text = edited(text, random);
      const isRevised = await page.revise(text).catch(() => false);
      if (!isRevised) await page.load(text);
      else ++revised;
      await anew.load(text);
      if (page.root.isEqualNode(anew.root)) continue; // The order of attributes does not matter.
      assert.equal(page.root.innerHTML, anew.root.innerHTML, JSON.stringify({ index, edit, before, text }));
    }
  }
  assert.ok(revised > texts.length, `${revised}`); // Else most pages were loaded anew.
});
