"use strict";
const assert = require("node:assert/strict");
const path = require("node:path");
const test = require("node:test");
const { JSDOM } = require("jsdom");
const { markedWith, options, own, packages } = require("./page.js");
const fs = require("node:fs");

const { window } = new JSDOM("", { runScripts: "outside-only" });
window.eval("globalThis.marked = { parse: html => html }");
for (const file of [path.join(packages, "dompurify/dist/purify.min.js"), path.join(own, "copy-cleaning.js")])
  window.eval(fs.readFileSync(file, "utf8"));
/// What is copied of HTML.
const cleaned = html => window.marked.parse(html);

test("a copy keeps looks, links and pictures", () => {
  const kept = [
    "<p style=\"color: rgb(1, 2, 3); width: auto\">a<br>b</p>",
    "<img src=\"file:///a/b.png\" alt=\"\" style=\"max-width: 100%\">",
    "<img src=\"rel/a.png\"><img src=\"data:image/png;base64,AA==\">",
    "<img src=\"https://latex.codecogs.com/svg.image?x%5E2\" alt=\"formula\">",
    "<a href=\"https://a.org/\" title=\"t\">b</a><a href=\"mailto:a@b.c\">c</a><a href=\"#d\">d</a>",
    "<table><tbody><tr><td align=\"right\" colspan=\"2\">a</td></tr></tbody></table>",
    "<ol start=\"3\"><li><input type=\"checkbox\" disabled=\"\" checked=\"\">a</li></ol>",
  ];
  for (const html of kept) assert.equal(cleaned(html), html);
});

test("a copy holds nothing that runs or loads", () => {
  const rows = {
    "<b onclick=\"x\" data-x=\"y\">a</b>": "<b>a</b>",
    "<a href=\"java\tscript:x\">a</a>": "<a>a</a>",
    "<a href=\"&#106;avascript:x\">a</a>": "<a>a</a>",
    "<img src=\"x\" onerror=\"y\">": "<img src=\"x\">",
    "<form action=\"x\"><b formaction=\"y\">a</b></form>": "<b>a</b>",
    "<iframe src=\"x\"></iframe><script>x</script><video src=\"x\"></video>a": "a",
    "<svg><a xlink:href=\"javascript:x\"></a></svg>": "<svg><a></a></svg>",
    "<x-widget>a</x-widget>": "a",
    "<img src=\"x\" srcset=\"y 2x\">": "<img src=\"x\">",
  };
  for (const [html, expected] of Object.entries(rows)) assert.equal(cleaned(html), expected);
});

test("what nobody ends, and what a text has no use for, shows as it was written", () => {
  const marked = markedWith("marked-raw-html.js");
  const { document } = new JSDOM("").window;
  for (const words of ["<script>a</script>", "<!-- a", "<textarea>", "<link>", "<base href='x'>", "</meta>"]) {
    document.body.innerHTML = marked.parse(`a ${words} *b*`, options);
    assert.equal(document.body.textContent.trim(), `a ${words} b`);
    assert.equal(document.querySelectorAll("em").length, 1);
  }
});

test("a large picture comes through", () => {
  const marked = markedWith("marked-pictures.js");
  const picture = `data:image/png;base64,${"A".repeat(3_000_000)}`;
  assert.equal(marked.parse(`![](${picture})`, options), `<p><img src="${picture}" alt=""></p>\n`);
});
